#include "TarvoApp/App/ExplorerDesk.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Exploring/SettingAside.h"
#include "TarvoModel/Exploring/WhatIsIt.h"
#include "TarvoModel/Showing/Preview.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace tarvo {

using lumo::EntryIndex;
using lumo::NamedEntry;
using lumo::NamedTree;
using lumo::Words;

namespace {

/// Whoever walks on at once does not want to see each folder on the map.
constexpr std::chrono::milliseconds beforeLeading{250};

/// So many entries are read, sorted and shown within a frame.
constexpr std::size_t mostReadAtOnce = 10'000;

/// Each age that can be chosen, from everything to the oldest.
std::vector<std::optional<std::int64_t>> agesToChoose() {
    std::vector<std::optional<std::int64_t>> ages{std::nullopt};
    while (const auto next = nextAge(ages.back())) {
        ages.push_back(next);
    }
    return ages;
}

} // namespace

ExplorerDesk::ExplorerDesk(const Ground& ground, const TickedDesk& ticked, ScanningDesk& scanning,
                           MapModel& map, CleaningDesk& cleaning, QObject* parent)
    : QObject(parent), ground_(ground), map_(map), cleaning_(cleaning), tree_(ground),
      safeties_(ground, ticked), list_([this](const NamedEntry& entry) { return safeties_.of(entry); }) {
    leading_.setSingleShot(true);
    leading_.setInterval(beforeLeading);
    connect(&leading_, &QTimer::timeout, this, &ExplorerDesk::leadMap);
    connect(&safeties_, &EntrySafeties::changed, &list_, &ExplorerList::tellSafeties);
    connect(&tree_, &HomeTree::changed, this, &ExplorerDesk::refresh);
    connect(&tree_, &HomeTree::replaced, this, &ExplorerDesk::takeTree);
    connect(&scanning, &ScanningDesk::touched, &tree_, &HomeTree::lookAgainAt);
    connect(&scanning, &ScanningDesk::wanted, &tree_, &HomeTree::measureAgain);
    connect(&ground.settings, &Settings::changed, this, &ExplorerDesk::protect);
    connect(&map, &MapModel::travelled, this, &ExplorerDesk::followMap);
}

void ExplorerDesk::setOpen(bool open) {
    if (isOpen_ == open) {
        return;
    }
    isOpen_ = open;
    if (open) {
        tree_.want();
        followMap();
    }
    emit openChanged();
}

// What is seen.

void ExplorerDesk::takeTree() {
    toRead_.reset();
    safeties_.take(tree_.tree());
    if (explorer_) {
        explorer_->goOnIn(tree_.tree());
    } else {
        explorer_ = std::make_unique<Explorer>(
            tree_.tree(), [this](const RowsWanted& wanted) { return readElsewhere(wanted); });
    }
    protect();
    show();
}

bool ExplorerDesk::readElsewhere(const RowsWanted& wanted) {
    // Old things are looked for in all that the folder holds.
    const bool isLarge = wanted.changedBefore ? tree_.tree()->entry(wanted.folder).sums.items > mostReadAtOnce
                                              : tree_.tree()->hasMoreThan(wanted.folder, mostReadAtOnce);
    toRead_ = isLarge ? std::optional(wanted) : std::nullopt;
    if (isLarge && !isReading_) {
        readNext();
    }
    return isLarge;
}

void ExplorerDesk::readNext() {
    isReading_ = true;
    ground_.background.start([this, tree = tree_.tree(), wanted = *std::exchange(toRead_, std::nullopt)](
                                 const std::stop_token&) -> Background::Apply {
        const auto read = std::make_shared<RowsRead>(readRows(*tree, wanted));
        return [this, tree, read] {
            isReading_ = false;
            if (tree == tree_.tree()) {
                explorer_->take(std::move(*read));
                show();
            }
            if (toRead_) {
                readNext();
            }
        };
    });
}

void ExplorerDesk::refresh() {
    if (explorer_) {
        explorer_->refresh();
        if (!goingTo_.empty()) {
            goTo(std::exchange(goingTo_, {}));
        }
        show();
    }
}

void ExplorerDesk::show() {
    list_.show(explorer_.get());
    emit changed();
}

int ExplorerDesk::current() const {
    return explorer_ ? static_cast<int>(explorer_->cursor()) : 0;
}

std::vector<NamedEntry> ExplorerDesk::way() const {
    std::vector<NamedEntry> way;
    if (explorer_) {
        for (NamedEntry at = explorer_->folder(); at.parent != lumo::noEntry;
             at = explorer_->tree().entry(at.parent)) {
            way.push_back(at);
        }
        std::ranges::reverse(way);
    }
    return way;
}

QStringList ExplorerDesk::titles() const {
    QStringList titles;
    for (const NamedEntry& folder : way()) {
        titles.push_back(shown(folder.name));
    }
    return titles;
}

QStringList ExplorerDesk::amounts() const {
    QStringList amounts;
    for (const NamedEntry& folder : way()) {
        amounts.push_back(shown(lumo::ByteFormat::string(folder.sums.bytes)));
    }
    return amounts;
}

QString ExplorerDesk::facts() const {
    if (!explorer_) {
        return {};
    }
    const NamedEntry folder = explorer_->folder();
    std::string facts = itemsText(folder.sums.items);
    if (explorer_->isAtTop()) {
        facts = lumo::ByteFormat::string(folder.sums.bytes) + " · " + facts;
    }
    const auto number = [](std::int64_t count) {
        return lumo::ByteFormat::number(static_cast<double>(count), 0);
    };
    if (tree_.isMeasuring()) {
        facts += " · " + Words{"midiendo: {}", "measuring: {}"}.with(number(tree_.foundCount()));
    } else if (explorer_->isAtTop() && tree_.unreadableCount() > 0) {
        facts +=
            " · " + Words{"{} sin poder leer", "{} could not be read"}.with(number(tree_.unreadableCount()));
    }
    return shown(facts);
}

QString ExplorerDesk::emptyText() const {
    if (!explorer_ || !explorer_->rows().empty()) {
        return {};
    }
    if (!explorer_->filter().empty() && !explorer_->isReading()) {
        return shown(Words{"Ningún nombre así.", "No such name."}.in());
    }
    if (explorer_->folder().is(lumo::EntryTraits::unreadable)) {
        return shown(Words{"No se pudo leer.", "It could not be read."}.in());
    }
    if (tree_.isMeasuring() || explorer_->isReading()) {
        return shown(Words{"Todavía nada…", "Nothing yet…"}.in());
    }
    return shown((explorer_->olderThanDays() ? Words{"Nada tan antiguo.", "Nothing that old."}
                                             : Words{"Está vacía.", "It is empty."})
                     .in());
}

int ExplorerDesk::order() const {
    return explorer_ ? static_cast<int>(explorer_->order()) : 0;
}

void ExplorerDesk::setOrder(int order) {
    if (explorer_ && order >= 0 && order <= static_cast<int>(ExplorerOrder::items)) {
        explorer_->setOrder(static_cast<ExplorerOrder>(order));
        show();
    }
}

QString ExplorerDesk::filter() const {
    return explorer_ ? QString::fromStdString(explorer_->filter()) : QString(); // As it was typed.
}

void ExplorerDesk::setFilter(const QString& letters) {
    if (explorer_ && filter() != letters) {
        explorer_->setFilter(bytesOf(letters));
        show();
    }
}

QStringList ExplorerDesk::ages() const {
    QStringList ages{shown(Words{"De cualquier edad", "Of any age"}.in())};
    for (const auto& days : agesToChoose()) {
        if (days) {
            ages.push_back(shown(lumo::capitalized(tarvo::ageText(*days))));
        }
    }
    return ages;
}

int ExplorerDesk::age() const {
    const auto ages = agesToChoose();
    const auto now =
        std::ranges::find(ages, explorer_ ? explorer_->olderThanDays() : std::optional<std::int64_t>());
    return static_cast<int>(now - ages.begin());
}

void ExplorerDesk::setAge(int age) {
    const auto ages = agesToChoose();
    if (age >= 0 && age < static_cast<int>(ages.size())) {
        showOlderThan(ages[static_cast<std::size_t>(age)]);
    }
}

void ExplorerDesk::showNextAge() {
    if (explorer_) {
        showOlderThan(nextAge(explorer_->olderThanDays()));
    }
}

void ExplorerDesk::showOlderThan(std::optional<std::int64_t> days) {
    if (explorer_ && explorer_->olderThanDays() != days) {
        explorer_->setOlderThan(days, ground_.services.desk.now());
        show();
    }
}

QString ExplorerDesk::ageText() const {
    const auto days = explorer_ ? explorer_->olderThanDays() : std::nullopt;
    return days ? shown(lumo::capitalized(tarvo::ageText(*days)) + ": " +
                        lumo::ByteFormat::string(explorer_->rowsBytes()))
                : QString();
}

QString ExplorerDesk::markedText() const {
    return explorer_ ? shown(tarvo::markedText(*explorer_)) : QString();
}

// Steps.

bool ExplorerDesk::hasRow(int row) const {
    return explorer_ && row >= 0 && static_cast<std::size_t>(row) < explorer_->rows().size();
}

int ExplorerDesk::rowOf(const QString& key) const {
    const std::vector<std::string> paths = map_.pathsOf(idOf(key));
    const auto entry =
        explorer_ && paths.size() == 1 ? explorer_->tree().entryAt(paths.front()) : std::nullopt;
    if (!entry) {
        return -1;
    }
    const auto row = std::ranges::find(explorer_->rows(), *entry, &NamedEntry::index);
    return row == explorer_->rows().end() ? -1 : static_cast<int>(row - explorer_->rows().begin());
}

void ExplorerDesk::moveTo(int row) {
    if (explorer_ && row != current()) {
        explorer_->moveTo(static_cast<std::size_t>(std::max(row, 0)));
        emit changed();
    }
}

bool ExplorerDesk::enter(int row) {
    if (!hasRow(row)) {
        return false;
    }
    explorer_->moveTo(static_cast<std::size_t>(row));
    const bool isFolder = explorer_->enter();
    if (isFolder) {
        hasMoved();
    }
    return isFolder;
}

void ExplorerDesk::leave() {
    if (explorer_ && explorer_->leave()) {
        hasMoved();
    }
}

void ExplorerDesk::leaveTo(int depth) {
    const std::vector<NamedEntry> folders = way();
    const auto level = static_cast<std::size_t>(std::max(depth, 0));
    if (level < folders.size()) {
        explorer_->goTo(folders[level].index);
        hasMoved();
    }
}

void ExplorerDesk::goTo(const std::string& path) {
    if (!explorer_ || explorer_->path() == path) {
        return;
    }
    const auto entry = explorer_->tree().entryAt(path);
    if (!entry) {
        goingTo_ = tree_.isMeasuring() ? path : std::string();
        return;
    }
    const std::vector<NamedEntry> folders = way();
    const auto left = std::ranges::find(folders, *entry, &NamedEntry::parent);
    if (left != folders.end()) {
        // Whoever comes out of a folder goes on from its row.
        explorer_->goTo(left->index);
    } else if (explorer_->tree().entry(*entry).is(lumo::EntryTraits::folder)) {
        explorer_->goInto(*entry);
    } else {
        explorer_->goTo(*entry);
    }
    show();
}

void ExplorerDesk::toggleMark(int row) {
    if (!hasRow(row)) {
        return;
    }
    explorer_->moveTo(static_cast<std::size_t>(row));
    const NamedEntry entry = *explorer_->current();
    if (const auto reason = explorer_->toggleMark()) {
        ground_.activity.say(*reason);
    } else if (explorer_->isMarked(entry.index)) {
        justMarked_ = explorer_->tree().pathOf(entry.index);
        protect();
    }
    list_.tellMarks();
    emit changed();
}

void ExplorerDesk::protect() {
    if (!explorer_) {
        return;
    }
    if (isLookingUp_) {
        looksUpAgain_ = true;
        return;
    }
    isLookingUp_ = true;
    ground_.background.start([this, preferences = ground_.settings.preferences(), home = ground_.shownHome(),
                              paths = explorer_->inQuestion()](const std::stop_token&) -> Background::Apply {
        return [this, never = neverTouched(preferences, home, paths)] { takeNeverTouched(never); };
    });
}

void ExplorerDesk::takeNeverTouched(const NeverTouched& never) {
    isLookingUp_ = false;
    explorer_->protect(never);
    if (std::exchange(looksUpAgain_, false)) {
        protect(); // More was marked meanwhile, or other folders are protected.
    } else if (const std::string path = std::exchange(justMarked_, {}); !path.empty()) {
        const auto marked = explorer_->tree().entryAt(path);
        if (const auto reason = marked ? explorer_->whyNotMarked(*marked) : std::nullopt) {
            ground_.activity.say(*reason);
        }
    }
    list_.tellMarks();
    emit changed();
}

void ExplorerDesk::clearMarks() {
    if (explorer_) {
        explorer_->clearMarks();
        list_.tellMarks();
        emit changed();
    }
}

// The map beside it.

void ExplorerDesk::hasMoved() {
    goingTo_.clear();
    show();
    leading_.start();
}

void ExplorerDesk::leadMap() {
    // A scan would take it off again; when that has ended, the map is led once more.
    if (!isOpen_ || ground_.activity.isBusy()) {
        return;
    }
    if (explorer_->isAtTop()) {
        ledTo_.clear();
        map_.zoomOut(0);
    } else {
        ledTo_ = explorer_->path();
        map_.follow(ledTo_);
    }
}

void ExplorerDesk::followMap() {
    // What the map shows only now was asked for before the user went on here.
    if (!isOpen_ || leading_.isActive()) {
        return;
    }
    const auto& levels = map_.zoomStack();
    const SharedPaths paths = levels.empty() ? SharedPaths{ground_.shownHome()} : levels.back().paths;
    // The map goes straight on to where the bytes are: whoever has led it there stays where they are.
    const bool isLed = !ledTo_.empty() && paths.size() == 1 && lumo::isInside(paths.front(), ledTo_);
    ledTo_.clear();
    if (!isLed && paths.size() == 1) {
        goTo(paths.front());
    }
}

void ExplorerDesk::settle() {
    if (isOpen_ && explorer_ && !explorer_->isAtTop()) {
        leadMap();
    }
}

// What can be done with it.

std::vector<EntryIndex> ExplorerDesk::chosenWith(int row) const {
    if (!hasRow(row)) {
        return explorer_->chosen();
    }
    const EntryIndex entry = explorer_->rows()[static_cast<std::size_t>(row)].index;
    return explorer_->isMarked(entry) ? explorer_->chosen() : std::vector{entry};
}

int ExplorerDesk::togetherWith(int row) const {
    return explorer_ ? static_cast<int>(chosenWith(row).size()) : 0;
}

void ExplorerDesk::setAside(int row) {
    if (!explorer_) {
        return;
    }
    const std::vector<EntryIndex> entries = chosenWith(row);
    if (const auto reason = whyNotWhole(*explorer_, entries)) {
        ground_.activity.say(lumo::capitalized(*reason) + ".");
        return;
    }
    if (ground_.isOnlyDemo()) {
        return;
    }
    // Among very many names that takes a while.
    ground_.background.start([this, entries, tree = tree_.tree(), paths = explorer_->tree().pathsOf(entries),
                              support = lumo::OwnFiles::support(ground_.shownHome())](
                                 const std::stop_token&) -> Background::Apply {
        const std::int64_t kept = tree->keptWithout(entries, tree->entryAt(support));
        return [this, paths, kept] { cleaning_.requestAside(paths, kept); };
    });
}

void ExplorerDesk::explain(int row) {
    if (!hasRow(row)) {
        return;
    }
    const NamedEntry entry = explorer_->rows()[static_cast<std::size_t>(row)];
    ground_.background.start(
        [this, path = explorer_->tree().pathOf(entry.index), unread = unreadLine(entry),
         whatItIs = ground_.services.whatItIs](const std::stop_token& stop) -> Background::Apply {
            std::vector<ExplanationLine> lines = whatItIs(path, stop);
            if (unread) {
                lines.push_back(*unread);
            }
            std::string told = lumo::printable(path);
            for (const ExplanationLine& line : lines) {
                told += "\n\n" + line.label + ": " + line.text;
            }
            return [this, told, name = std::string(lumo::fileName(path))] {
                if (!ground_.question.isAsking()) {
                    ground_.question.ask(asked::Told{.title = name, .message = told});
                }
            };
        });
}

} // namespace tarvo
