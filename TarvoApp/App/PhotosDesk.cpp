#include "TarvoApp/App/PhotosDesk.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/Preview.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace tarvo {

using lumo::Words;
using lumo::ByteFormat::string;

namespace {

/// What the picture is called among those of the folder: there may be others of its name deeper in it.
std::string nameIn(const std::string& folder, const std::string& path) {
    return path != folder && lumo::isInside(path, folder) ? path.substr(folder.size() + 1)
                                                          : std::string(lumo::fileName(path));
}

std::string hintOf(PhotoSection section) {
    switch (section) {
    case PhotoSection::copies:
        return Words{"Los mismos bytes, en varios sitios. De cada grupo se propone conservar la primera.",
                     "The same bytes in several places. Of each group the first is proposed to stay."}
            .in();
    case PhotoSection::alike:
        return Words{"Se parecen mucho: míralas antes de decidir. La primera es la más grande y nítida.",
                     "They look much alike: see for yourself. The first is the largest and sharpest."}
            .in();
    case PhotoSection::bursts:
        return Words{"Hechas seguidas, a menos de dos segundos una de otra.",
                     "Taken one after the other, less than two seconds apart."}
            .in();
    case PhotoSection::blurred:
        return Words{"Solo una pista: también puede ser niebla, noche o un cielo liso.",
                     "Only a hint: it may as well be fog, night or a plain sky."}
            .in();
    case PhotoSection::screenshots:
    case PhotoSection::month:
        break;
    }
    return Words{"Las más grandes primero.", "The largest first."}.in();
}

} // namespace

PhotosDesk::PhotosDesk(const Ground& ground, CleaningDesk& cleaning, HoldingDesk& holding,
                       PreviewDesk& preview, std::string home, QObject* parent)
    : QObject(parent), ground_(ground), cleaning_(cleaning), holding_(holding), preview_(preview),
      home_(std::move(home)), thumbnails_(Thumbnails::ofHome(ground.services.desk.home)),
      list_(chosen_, this), places_(list_, this) {
    constexpr std::chrono::milliseconds betweenLooks{250};
    ticker_.setInterval(betweenLooks);
    connect(&ticker_, &QTimer::timeout, this, &PhotosDesk::progressed);
    connect(&ground.question, &QuestionDesk::accepted, this, [this](const Asked& agreed) {
        if (const auto* const clean = std::get_if<asked::Clean>(&agreed)) {
            wasAgreedHere_ = clean->isFromPhotos;
        }
    });
    connect(&ground.question, &QuestionDesk::changed, this, &PhotosDesk::undoChanged);
    connect(&holding, &HoldingDesk::changed, this, &PhotosDesk::undoChanged);
    connect(&ground.activity, &Activity::phaseChanged, this, [this] {
        // An archive sets its original aside.
        setSetAsideHere(wasSetAsideHere_ &&
                        !std::holds_alternative<phase::Archiving>(ground_.activity.phase()));
    });
    connect(&ground.activity, &Activity::rested, this, [this] {
        if (std::exchange(putsBack_, false)) {
            show();
        }
    });
    connect(&cleaning, &CleaningDesk::outcomesChanged, this, [this] {
        setSetAsideHere(wasAgreedHere_ &&
                        std::ranges::any_of(cleaning_.lastOutcomes(), [](const auto& outcome) {
                            return outcome.restorable.has_value();
                        }));
        if (!read_.photos.empty()) {
            show(); // What was set aside is no longer there.
        }
    });
}

PhotosDesk::~PhotosDesk() {
    forget();
}

void PhotosDesk::show() {
    forget();
    if (ground_.isDemo()) {
        return;
    }
    looking_ = std::make_shared<Looking>();
    ticker_.start();
    ground_.background.start(
        looking_->stop,
        [this, looking = looking_, folder = folder_, before = read_.photos, desk = ground_.services.desk,
         thumbnails = thumbnails_](const std::stop_token& stop) -> Background::Apply {
            // Thousands of photos: copied here, where nobody waits for that.
            const auto show = [this, looking](PhotosRead read, bool isLast) -> Background::Apply {
                return [this, looking, isLast, read = std::make_shared<PhotosRead>(std::move(read))] {
                    if (looking == looking_) {
                        looking_->total = read->unknownCount;
                        looking_ = isLast ? nullptr : looking_;
                        take(std::move(*read));
                    }
                };
            };
            PhotosRead read = readPhotos(
                folder, desk, [&](const std::string& path) { return thumbnails.lookAt(path); },
                {.onListed = [&](const PhotosRead& listed) { ground_.background.post(show(listed, false)); },
                 .looked = &looking->looked,
                 .before = before,
                 .stop = stop});
            return show(std::move(read), true);
        });
    emit progressed();
}

void PhotosDesk::forget() {
    if (const auto looking = std::exchange(looking_, nullptr)) {
        looking->stop.request_stop();
        ticker_.stop();
        emit progressed();
    }
}

void PhotosDesk::lookIn(const QUrl& folder) {
    folder_ = pathOf(folder);
    read_ = {};
    chapter_ = 0;
    chosen_.clear();
    showChapter();
    show();
}

void PhotosDesk::take(PhotosRead read) {
    const PhotoChapter* const before = shownChapter();
    const std::string title = before != nullptr ? before->title : std::string();
    read_ = std::move(read);
    const auto same = std::ranges::find(read_.chapters, title, &PhotoChapter::title);
    chapter_ = same != read_.chapters.end() ? static_cast<int>(same - read_.chapters.begin()) : 0;
    std::set<std::string> there;
    for (const Photo& photo : read_.photos) {
        if (chosen_.contains(photo.picture.path)) {
            there.insert(photo.picture.path);
        }
    }
    chosen_ = std::move(there);
    if (!looking_) {
        ticker_.stop();
    }
    showChapter();
    emit progressed();
}

void PhotosDesk::showChapter() {
    std::vector<PhotoEntry> entries;
    if (const PhotoChapter* const chapter = shownChapter()) {
        int group = 0;
        for (const PhotoGroup& photos : chapter->groups) {
            for (const std::size_t at : photos.photos) {
                const bool isFirst = at == photos.photos.front();
                entries.push_back({.id = read_.photos[at].picture.path,
                                   .photo = read_.photos[at],
                                   .name = nameIn(read_.folder, read_.photos[at].picture.path),
                                   .group = group,
                                   .isFirst = isFirst,
                                   .isProposed = isFirst && photos.proposesFirst});
            }
            ++group;
        }
    }
    list_.show(std::move(entries));
    emit changed();
    emit chosenChanged();
}

void PhotosDesk::setChapter(int index) {
    if (index != chapter_ && index >= 0 && index < static_cast<int>(read_.chapters.size())) {
        chapter_ = index;
        showChapter();
    }
}

const PhotoChapter* PhotosDesk::shownChapter() const {
    const auto at = static_cast<std::size_t>(chapter_);
    return at < read_.chapters.size() ? &read_.chapters[at] : nullptr;
}

// What the user decides.

void PhotosDesk::toggle(int index) {
    if (index < 0 || index >= list_.count()) {
        return;
    }
    const std::string& path = list_.entries()[static_cast<std::size_t>(index)].photo.picture.path;
    if (chosen_.erase(path) == 0) {
        chosen_.insert(path);
    }
    list_.refresh();
    emit chosenChanged();
}

void PhotosDesk::preview(int index) {
    if (index >= 0 && index < list_.count()) {
        const std::string& path = list_.entries()[static_cast<std::size_t>(index)].photo.picture.path;
        preview_.show(keyOf(path), std::string(lumo::fileName(path)), {path});
    }
}

void PhotosDesk::chooseRest() {
    for (const PhotoEntry& entry : list_.entries()) {
        if (!entry.isProposed && proposes()) {
            chosen_.insert(entry.photo.picture.path);
        }
    }
    list_.refresh();
    emit chosenChanged();
}

void PhotosDesk::chooseNone() {
    chosen_.clear();
    list_.refresh();
    emit chosenChanged();
}

void PhotosDesk::setAside() {
    if (chosen_.empty() || ground_.question.isAsking() || !cleaning_.mayClean() || ground_.isOnlyDemo()) {
        return;
    }
    std::vector<std::string> ids;
    for (const Photo& photo : read_.photos) {
        if (chosen_.contains(photo.picture.path)) {
            ids.push_back(photo.id);
        }
    }
    cleaning_.requestClean({.report = nullptr, .items = ids}, [](const Agreement& wanted) {
        return asked::Clean{.actions = wanted.actions, .shown = wanted.shown, .isFromPhotos = true};
    });
}

// What was set aside here last.

void PhotosDesk::setSetAsideHere(bool isSo) {
    wasSetAsideHere_ = isSo;
    emit undoChanged();
}

bool PhotosDesk::mayUndo() const {
    return offersUndo() && !ground_.activity.isBusy() && !ground_.question.isOpenInPhotos();
}

void PhotosDesk::undo() {
    if (mayUndo()) {
        holding_.undoLastCleanup();
        setSetAsideHere(false);
        putsBack_ = true;
    }
}

void PhotosDesk::leave() {
    forget();
    setSetAsideHere(false);
    putsBack_ = false;
}

// What is shown.

std::string PhotosDesk::nameOfFolder() const {
    return lumo::abbreviated(folder_.empty() ? read_.folder : folder_, home_);
}

QString PhotosDesk::folder() const {
    return shown(nameOfFolder());
}

QString PhotosDesk::busyText() const {
    if (!looking_) {
        return {};
    }
    if (looking_->total == 0) {
        return shown(Words{"Buscando fotos y vídeos…", "Looking for photos and videos…"}.in());
    }
    return shown(
        Words{"Comparando: {} de {}", "Comparing: {} of {}"}.with(looking_->looked.load(), looking_->total));
}

QString PhotosDesk::message() const {
    if (ground_.isDemo()) {
        return shown(Words{"El disco inventado no tiene fotos que repasar.",
                           "The made-up disk has no photos to review."}
                         .in());
    }
    if (read_.photos.empty() && !looking_) {
        return shown(Words{"No hay fotos ni vídeos en {}.", "There are no photos or videos in {}."}.with(
            nameOfFolder()));
    }
    if (read_.unreadableCount > 0) {
        return shown(Words{"Carpetas que no se pudieron leer: {}", "Folders that couldn't be read: {}"}.with(
            read_.unreadableCount));
    }
    return {};
}

QVariantList PhotosDesk::chapters() const {
    QVariantList chapters;
    for (const PhotoChapter& chapter : read_.chapters) {
        chapters.push_back(QVariantMap{{"title", shown(chapter.title)},
                                       {"facts", shown(itemsText(static_cast<std::int64_t>(chapter.count)) +
                                                       " · " + string(chapter.bytes))}});
    }
    return chapters;
}

QString PhotosDesk::hint() const {
    const PhotoChapter* const chapter = shownChapter();
    return chapter != nullptr ? shown(hintOf(chapter->section)) : QString();
}

bool PhotosDesk::proposes() const {
    const PhotoChapter* const chapter = shownChapter();
    return chapter != nullptr && chapter->groups.front().proposesFirst;
}

QString PhotosDesk::chosenText() const {
    if (chosen_.empty()) {
        return shown(Words{"Nada elegido: Espacio elige, las flechas mueven.",
                           "Nothing chosen: Space chooses, arrows move."}
                         .in());
    }
    std::int64_t bytes = 0;
    for (const Photo& photo : read_.photos) {
        if (chosen_.contains(photo.picture.path)) {
            bytes = lumo::checkedSum(bytes, photo.picture.bytes);
        }
    }
    return shown(itemsText(std::ssize(chosen_)) + " · " + string(bytes));
}

} // namespace tarvo
