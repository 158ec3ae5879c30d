#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/ArchiveTexts.h"
#include "TarvoModel/Showing/DemoDisk.h"

// The application's model around archiving one item.
namespace tarvo {

void AppModel::requestArchive(const QString& key) {
    const std::string path = pathOf(key);
    if (path.empty() || isBusy()) {
        return;
    }
    if (isDemo()) {
        setNotice(DemoDisk::notice());
        return;
    }
    archivable_.reset();
    archiveRefusal_.clear();
    const auto work = beginWork();
    doing_ = lumo::Words{"Calculando cuánto se comprime…", "Finding out how it compresses…"}.in(
        lumo::currentLanguage());
    setPhase(phase::Archiving{.title = std::string(lumo::fileName(path))});
    background_.start(
        [this, path, work, desk = services_.desk](const std::stop_token& end) -> Background::Apply {
            const std::stop_callback forward(end, [&] { work->stop.request_stop(); });
            if (const auto refusal = tarvo::archiveRefusal(path, desk)) {
                return [this, reason = *refusal] {
                    archiveRefusal_ = reason;
                    setPhase(phase::Idle{});
                    emit archiveChanged();
                };
            }
            const Archivable item{.path = path,
                                  .estimate = lumo::Archiver::estimate(path, lumo::Archiver::usualSamples,
                                                                       lumo::Archiver::usualSampleBytes,
                                                                       work->stop.get_token())};
            return [this, item] { estimated(item); };
        });
}

void AppModel::estimated(const Archivable& item) {
    if (!work_->stop.stop_requested()) {
        archivable_ = item;
    }
    setPhase(phase::Idle{});
    emit archiveChanged();
}

void AppModel::cancelArchive() {
    archivable_.reset();
    archiveRefusal_.clear();
    emit archiveChanged();
}

void AppModel::archive() {
    if (!archivable_ || isBusy()) {
        return;
    }
    const Archivable item = *archivable_;
    cancelArchive();
    const auto work = beginWork();
    setPhase(phase::Archiving{.title = std::string(lumo::fileName(item.path))});
    background_.start(
        [this, item, work, desk = services_.desk](const std::stop_token& end) -> Background::Apply {
            const std::stop_callback forward(end, [&] { work->stop.request_stop(); });
            const lumo::Archiver::ArchiveControl control{.expectedBytes = item.estimate.compressedBytes,
                                                         .progress = &work->archive,
                                                         .stop = work->stop.get_token()};
            return [this, result = tarvo::archive(item.path, desk, control)] { archived(result); };
        });
}

void AppModel::archived(const std::expected<Archived, NotArchived>& result) {
    if (!result) {
        setPhase(phase::Idle{});
        setNotice(result.error().reason);
        return;
    }
    const std::string shownPath = lumo::abbreviated(result->archive, services_.desk.home);
    lastCleanup_.reset();
    beginScan();
    setNotice(result->outcome.status == lumo::CleanupStatus::done
                  ? archivedText(shownPath, result->archiveBytes)
                  : originalKeptText(shownPath, result->outcome.message.value_or("")));
}

QVariantMap AppModel::archiveRequest() const {
    if (!archivable_) {
        return {};
    }
    const std::string name(lumo::fileName(archivable_->path));
    const std::string archiveName(lumo::fileName(lumo::Archiver::destination(archivable_->path)));
    return {{"title", shown(archiveQuestion(name))},
            {"message", shownLines(lumo::printable(estimateText(name, archivable_->estimate)) + "\n\n" +
                                   lumo::printable(archiveExplanation(archiveName)))},
            {"acceptText", shown(lumo::Words{"Archivar", "Archive"}.in())}};
}

QString AppModel::archiveRefusalTitle() const {
    return shown(tarvo::archiveRefusalTitle());
}

QString AppModel::archiveRefusalMessage() const {
    return shown(archiveRefusal_);
}

} // namespace tarvo
