#include "TarvoApp/App/AppModel.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Flows/WeeklyCleanup.h"
#include "TarvoModel/Showing/DemoDisk.h"
#include "TarvoModel/Showing/Preview.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace tarvo {

using lumo::Words;
using lumo::ByteFormat::string;

namespace {

/// Of the pool: the work in hand, what a look at the disk needs, listings, and a model that takes its time.
constexpr std::size_t threads = 4;
/// How often progress is read while something goes on.
constexpr std::chrono::milliseconds tickInterval{200};
/// How long a row that was asked for stays lit.
constexpr std::chrono::milliseconds flashTime{1600};

Settings::Keeping keepingIn(const RunMode& mode) {
    return mode.isDemo ? Settings::Keeping::inMemory : Settings::Keeping::stored;
}

std::string_view nameOf(const Phase& phase) {
    constexpr std::array<std::string_view, std::variant_size_v<Phase>> names{
        "idle", "scanning", "scanningFolders", "cleaning", "explaining", "archiving"};
    return names.at(phase.index());
}

} // namespace

AppModel::AppModel(AppServices services, QObject* parent)
    : QObject(parent), services_(std::move(services)),
      settings_(services_.desk.home, keepingIn(services_.mode)),
      rows_(plan_, explanations_, evidence_, bytesOf(home())),
      showWelcome_(services_.mode.showsWelcome(settings_.isWelcomeSeen())), background_(threads),
      map_(plan_, background_, services_.folders), help_([this] { return helpSources(); }),
      agents_(services_.desk.home, isDemo() ? AgentDesk::Access::none : AgentDesk::Access::full),
      preview_(services_.preview, bytesOf(home())) {
    connect(&settings_, &Settings::changed, this, &AppModel::settingsHaveChanged);
    connect(&settings_, &Settings::stored, this, [this] {
        if (std::exchange(replansWhenStored_, false)) {
            replan();
        }
    });
    connect(&settings_, &Settings::failed, this, [this](const QString& why) { setNotice(bytesOf(why)); });
    connect(&map_, &MapModel::couldNotOpen, this, [this](const QString& title) {
        setNotice(Words{"No hay nada que ver en «{}»: está vacía o no se puede leer",
                        "There is nothing to see in “{}”: it is empty or can't be read"}
                      .with(bytesOf(title)));
    });
    connect(&monitor_, &QTimer::timeout, this, &AppModel::look);
    connect(&ticker_, &QTimer::timeout, this, &AppModel::statusChanged);
    monitor_.setInterval(monitorInterval);
    ticker_.setInterval(tickInterval);
    plannedDays_ = settings_.activeProjectDays();
    plannedFolders_ = settings_.protectedFolders();
    wallAnchor_ = services_.desk.now();
    steadyAnchor_ = services_.steadySeconds();
    map_.setTextScale(settings_.textScale());
    if (!isDemo()) {
        askModel();
    }
}

AppModel::~AppModel() {
    if (work_) {
        work_->stop.request_stop();
    }
}

// What is going on.

QString AppModel::home() const {
    return shown(isDemo() ? DemoDisk::home() : std::string_view(services_.desk.home));
}

QString AppModel::demoNotice() const {
    return isDemo() ? shown(DemoDisk::notice()) : QString();
}

QString AppModel::phaseName() const {
    return shown(nameOf(phase_));
}

void AppModel::setPhase(Phase phase) {
    phase_ = std::move(phase);
    if (isBusy()) {
        ticker_.start();
    } else {
        ticker_.stop();
        work_.reset();
        doing_.clear();
    }
    emit phaseChanged();
    emit statusChanged();
    if (!isBusy() && waiting_) {
        cleanAgreed(*std::exchange(waiting_, std::nullopt));
    }
}

std::shared_ptr<AppModel::Work> AppModel::beginWork() {
    work_ = std::make_shared<Work>();
    return work_;
}

void AppModel::stop() {
    if (std::exchange(waiting_, std::nullopt)) {
        emit phaseChanged();
    }
    if (work_ && !work_->stop.request_stop()) {
        work_->cancelTool.request_stop();
    }
}

QString AppModel::statusText() const {
    if (isBusy()) {
        return shown(doing_.empty() ? busyText(phase_).value_or("") : doing_);
    }
    if (!report_) {
        return {};
    }
    lumo::VolumeInfo volume = volume_;
    volume.availableBytes = freeNow_.value_or(volume.availableBytes);
    return shown(idleText(volume, report_->durationSeconds, lastCleanup_));
}

QString AppModel::progressText() const {
    if (!work_ || !doing_.empty()) {
        return {};
    }
    if (std::holds_alternative<phase::Cleaning>(phase_)) {
        const std::size_t action = work_->action;
        return action < work_->titles.size() ? shown(Words{"{} de {}: {}", "{} of {}: {}"}.with(
                                                   action + 1, work_->titles.size(), work_->titles[action]))
                                             : QString();
    }
    if (std::holds_alternative<phase::Archiving>(phase_)) {
        const bool isChecking = work_->archive.phase == lumo::Archiver::ArchivePhase::checking;
        return shown(string(isChecking ? work_->archive.checkedBytes : work_->archive.writtenBytes));
    }
    const std::int64_t entries = work_->scan.walked.entries;
    return entries == 0 ? QString()
                        : shown(fmt::format("{} · {}", itemsText(entries), string(work_->scan.walked.bytes)));
}

QString AppModel::notice() const {
    return shown(notice_);
}

void AppModel::setNotice(const std::string& notice, bool hasDetails) {
    notice_ = notice;
    noticeHasDetails_ = hasDetails;
    emit noticeChanged();
}

void AppModel::settingsHaveChanged() {
    map_.setTextScale(settings_.textScale());
    showMap();
    emit selectionChanged(); // With the goal.
    emit freeChanged();      // With the limit of what is little.
    emit autoCleanStatusChanged();
    const bool hasSamePlan =
        plannedDays_ == settings_.activeProjectDays() && plannedFolders_ == settings_.protectedFolders();
    plannedDays_ = settings_.activeProjectDays();
    plannedFolders_ = settings_.protectedFolders();
    if (!hasSamePlan) {
        // Once now with what is protected here, and once more when what is stored no longer says otherwise.
        replansWhenStored_ = true;
        replan();
    }
}

// What was found.

QVariantList AppModel::growth() const {
    QVariantList items;
    for (const lumo::GrowthItem& item : growth_.items) {
        items.push_back(QVariantMap{{"key", keyOf(item.id)},
                                    {"name", shown(item.name)},
                                    {"delta", shown("+" + string(item.delta))},
                                    {"now", shown(string(item.now))}});
    }
    return items;
}

QString AppModel::growthSince() const {
    return growth_.since ? shown(lumo::dayText(*growth_.since)) : QString();
}

void AppModel::setFree(const lumo::VolumeInfo& volume) {
    if (freeNow_ != volume.availableBytes || volume_ != volume) {
        volume_ = volume;
        freeNow_ = volume.availableBytes;
        emit freeChanged();
        emit statusChanged();
    }
}

QString AppModel::freeNowText() const {
    return freeNow_ && volume_.totalBytes > 0 ? shown(string(*freeNow_)) : QString();
}

bool AppModel::isSpaceLow() const {
    return volume_.totalBytes > 0 && freeNow_ &&
           *freeNow_ < lumo::checkedProduct(settings_.lowSpaceGB(), std::int64_t{1'000'000'000});
}

QString AppModel::capacityText() const {
    return volume_.totalBytes > 0 ? shown(string(volume_.totalBytes)) : QString();
}

double AppModel::usedShare() const {
    return volume_.totalBytes > 0
               ? 1 - static_cast<double>(freeNow_.value_or(0)) / static_cast<double>(volume_.totalBytes)
               : 0;
}

QString AppModel::systemSpaceText() const {
    if (!systemSpace_ || systemSpace_->purgeableBytes == 0) {
        return {};
    }
    return shown(Words{"El sistema libera solo ", "The system frees "}.in(lumo::currentLanguage()) +
                 string(systemSpace_->purgeableBytes) +
                 Words{" más cuando hace falta", " more by itself when needed"}.in(lumo::currentLanguage()));
}

QString AppModel::unreadableText() const {
    return report_ ? shown(tarvo::unreadableText(report_->unreadableCount())) : QString();
}

QString AppModel::safeRecoverableText() const {
    return shown(string(recoverable_));
}

QString AppModel::summaryText() const {
    return shown(summary_.text);
}

QString AppModel::aiUnavailableReason() const {
    return shown(aiUnavailableReason_.value_or(""));
}

void AppModel::setSearchText(const QString& text) {
    if (searchText_ != text) {
        searchText_ = text;
        showRows();
        emit searchChanged();
    }
}

void AppModel::showRows() {
    rows_.show(rowsMatching(bytesOf(searchText_), allRows_));
}

void AppModel::showMap() {
    std::vector<Row> rows = allRows_;
    for (Row& row : rows) {
        // Under the pointer an unknown folder has only its path, until it is known what it is.
        const auto told = row.paths.empty() ? explanations_.end() : explanations_.find(row.paths.front());
        if (row.group == RowGroup::unclassified && told != explanations_.end()) {
            row.detail = told->second.whatItIs + " · " + row.detail;
        }
    }
    map_.show(rows, volume_, settings_.showWholeDisk());
}

void AppModel::setHovered(const QString& key) {
    if (hovered_ != key) {
        hovered_ = key;
        emit hoverChanged();
    }
}

void AppModel::setMapHovered(const QString& key) {
    if (mapHovered_ != key) {
        mapHovered_ = key;
        emit hoverChanged();
    }
}

void AppModel::revealRow(const QString& key) {
    scrollToRow_ = key;
    flashRow_ = key;
    emit scrollChanged();
    QTimer::singleShot(flashTime, this, [this, key] {
        if (flashRow_ == key) {
            scrollToRow_.clear();
            flashRow_.clear();
            emit scrollChanged();
        }
    });
}

std::string AppModel::pathOf(const QString& key) const {
    const std::vector<std::string> paths = map_.pathsOf(idOf(key));
    return paths.size() == 1 ? paths.front() : std::string();
}

void AppModel::protect(const QString& key) {
    for (const std::string& path : map_.pathsOf(idOf(key))) {
        settings_.protectPath(path);
    }
}

bool AppModel::canPreview(const QString& key) const {
    return !map_.pathsOf(idOf(key)).empty();
}

void AppModel::showPreview(const QString& key) {
    const std::string id = idOf(key);
    const std::vector<std::string> paths = map_.pathsOf(id);
    const auto row = std::ranges::find(allRows_, id, &Row::id);
    const std::string name(paths.empty() ? std::string_view() : lumo::fileName(paths.front()));
    preview_.show(key, row == allRows_.end() ? name : row->title, paths);
}

void AppModel::forgetEvidence() {
    evidence_.clear();
    rows_.refresh();
}

void AppModel::gatherEvidence(const QString& key) {
    const std::string path = pathOf(key);
    if (path.empty() || !evidence_.emplace(path, std::string()).second) {
        return;
    }
    background_.start([this, path, gather = services_.evidence,
                       now = services_.desk.now()](const std::stop_token& end) -> Background::Apply {
        const std::string told = gather(path, end).promptDescription(now);
        return [this, path, told] {
            evidence_[path] = told;
            rows_.refresh();
        };
    });
}

bool AppModel::canExplain() const {
    return report_ && !report_->unclassified.empty();
}

// What is ticked.

void AppModel::toggle(const QString& key) {
    if (plan_.toggle(idOf(key))) {
        selectionHasChanged();
    }
}

void AppModel::selectSafe() {
    plan_.selectSafe(phase_);
    selectionHasChanged();
}

void AppModel::deselectAll() {
    plan_.deselectAll();
    selectionHasChanged();
}

void AppModel::selectionHasChanged() {
    shares_ = plan_.shares();
    rows_.refresh();
    map_.refresh();
    emit selectionChanged();
}

void AppModel::raiseGoal() {
    settings_.setGoalBytes(Goal::raised(settings_.goalBytes()));
}

void AppModel::lowerGoal() {
    settings_.setGoalBytes(Goal::lowered(settings_.goalBytes()));
}

QString AppModel::goalText() const {
    return shown(Goal::goalText(settings_.goalBytes()));
}

QString AppModel::goalMeterText() const {
    return shown(Goal::meterText(settings_.goalBytes(), shares_.total));
}

double AppModel::goalFraction() const {
    return Goal::fraction(settings_.goalBytes(), shares_.total);
}

bool AppModel::isGoalReached() const {
    return Goal::isReached(settings_.goalBytes(), shares_.total);
}

QString AppModel::selectedBytesText() const {
    return shown(tarvo::selectedText(shares_));
}

QString AppModel::confirmationText() const {
    return shown(confirmationMessage(sharesOf(agreed_.actions)));
}

QString AppModel::cleanTitleText() const {
    return shown(cleanTitle(confirming_ ? sharesOf(agreed_.actions) : shares_));
}

QString AppModel::cleanHelpText() const {
    return shown(cleanHelp(shares_));
}

// What is set aside.

QString AppModel::holdingTitle() const {
    return shown(heldTitle(heldTotals_));
}

QString AppModel::holdingText() const {
    return heldTotals_.expiry ? shown(heldText(*heldTotals_.expiry)) : QString();
}

QString AppModel::holdingQuestion() const {
    const bool isAsked = confirmingEmpty_ || confirmingEmptyFromSettings_;
    return shown(emptyBannerQuestion(isAsked ? totalsOf(emptying_) : heldTotals_));
}

QStringList AppModel::lastFailures() const {
    QStringList failures;
    for (const lumo::CleanupOutcome& outcome : lastOutcomes_) {
        if (outcome.status == lumo::CleanupStatus::failed) {
            failures.push_back(shown(outcome.title + ": " + outcome.message.value_or("")));
        }
    }
    return failures;
}

QString AppModel::celebrationText() const {
    return celebration_ ? shown(celebration_->postText()) : QString();
}

QString AppModel::autoCleanStatusText() const {
    return shown(WeeklyCleanup::autoCleanStatus(settings_.autoCleanWeekly(),
                                                WeeklyCleanup::storedRecord(settings_.preferences()),
                                                services_.desk.now())
                     .value_or(""));
}

void AppModel::setLaunchAtLogin(bool isOn) {
    if (isDemo()) {
        return;
    }
    launchAtLoginError_ = services_.setStartAtLogin(isOn);
    emit loginChanged();
}

QString AppModel::launchAtLoginError() const {
    return shown(launchAtLoginError_.value_or(""));
}

QVariantList AppModel::otherVolumeList() const {
    QVariantList volumes;
    for (const Volume& volume : otherVolumes_) {
        volumes.push_back(QVariantMap{{"name", shown(volume.name)},
                                      {"path", shown(volume.path)},
                                      {"total", shown(string(volume.total))},
                                      {"free", shown(string(volume.free))}});
    }
    return volumes;
}

} // namespace tarvo
