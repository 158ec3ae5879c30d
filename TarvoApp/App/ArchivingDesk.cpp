#include "TarvoApp/App/ArchivingDesk.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/ArchiveTexts.h"

#include <optional>

namespace tarvo {

namespace {

/// What the user is asked about archiving the item, or told instead; called in the background.
Asked questionAbout(const std::string& path, const Desk& desk, const std::stop_token& stop) {
    if (const auto refusal = archiveRefusal(path, desk)) {
        return asked::Told{.title = archiveRefusalTitle(), .message = *refusal};
    }
    return asked::Archive{.path = path,
                          .archivePath = lumo::Archiver::destination(path),
                          .estimate = lumo::Archiver::estimate(path, lumo::Archiver::usualSamples,
                                                               lumo::Archiver::usualSampleBytes, stop)};
}

} // namespace

ArchivingDesk::ArchivingDesk(const Ground& ground, const PlacesDesk& places, ScanningDesk& scanning,
                             QObject* parent)
    : QObject(parent), ground_(ground), places_(places), scanning_(scanning) {
    connect(&ground.question, &QuestionDesk::accepted, this, [this](const Asked& agreed) {
        if (const auto* const asked = std::get_if<asked::Archive>(&agreed)) {
            archive(*asked);
        }
    });
}

void ArchivingDesk::requestArchive(const QString& key) {
    const std::string path = places_.pathOf(key);
    if (path.empty() || ground_.activity.isBusy() || scanning_.isOnlyToLookAt() || ground_.isOnlyDemo()) {
        return;
    }
    const auto task = ground_.activity.begin(
        phase::Archiving{.title = std::string(lumo::fileName(path))},
        lumo::Words{"Calculando cuánto se comprime…", "Finding out how it compresses…"}.in());
    ground_.background.start(
        task->stop, [this, path, desk = ground_.services.desk](const std::stop_token& stop) {
            return Background::Apply([this, stop, question = questionAbout(path, desk, stop)] {
                ground_.activity.rest();
                if (!stop.stop_requested()) {
                    ground_.question.ask(question);
                }
            });
        });
}

void ArchivingDesk::archive(const asked::Archive& agreed) {
    if (ground_.activity.isBusy()) {
        return;
    }
    const auto task =
        ground_.activity.begin(phase::Archiving{.title = std::string(lumo::fileName(agreed.path))});
    ground_.background.start(
        task->stop, [this, agreed, task, desk = ground_.services.desk](const std::stop_token& stop) {
            const lumo::Archiver::ArchiveControl control{
                .expectedBytes = agreed.estimate.compressedBytes, .progress = &task->archive, .stop = stop};
            return Background::Apply(
                [this, path = agreed.path, result = tarvo::archive(agreed.path, desk, control)] {
                    archived(path, result);
                });
        });
}

void ArchivingDesk::archived(const std::string& path, const std::expected<Archived, NotArchived>& result) {
    if (!result) {
        ground_.activity.rest();
        ground_.activity.say(result.error().reason);
        return;
    }
    const std::string shownPath = lumo::abbreviated(result->archive, ground_.services.desk.home);
    emit scanning_.touched({path, result->archive});
    scanning_.rescan();
    ground_.activity.say(result->outcome.status == lumo::CleanupStatus::done
                             ? archivedText(shownPath, result->archiveBytes)
                             : originalKeptText(shownPath, result->outcome.message.value_or("")));
}

} // namespace tarvo
