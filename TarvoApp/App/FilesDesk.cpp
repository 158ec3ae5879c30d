#include "TarvoApp/App/FilesDesk.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tarvo {

using lumo::Words;

namespace {

/// What the planner would leave out now, and why.
std::vector<std::string> leftOutLines(const Plan& plan) {
    std::vector<std::string> lines;
    for (const lumo::PlanEntry& entry : plan.entries) {
        if (entry.skipReason) {
            lines.push_back(entry.action.title + ": " + *entry.skipReason);
        }
    }
    return lines;
}

std::string joinedLines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "\n") + lumo::printable(line);
    }
    return text;
}

} // namespace

FilesDesk::FilesDesk(const Ground& ground, ScanningDesk& scanning, const TickedDesk& ticked, QObject* parent)
    : QObject(parent), ground_(ground), scanning_(scanning), ticked_(ticked) {
    connect(&ground.activity, &Activity::phaseChanged, this, &FilesDesk::changed);
    connect(&scanning, &ScanningDesk::reportChanged, this, &FilesDesk::changed);
    connect(&ticked, &TickedDesk::changed, this, &FilesDesk::changed);
}

// Opening.

void FilesDesk::open(const QUrl& file) {
    const std::string path = pathOf(file);
    if (!mayOpen() || path.empty() || ground_.isOnlyDemo()) {
        return;
    }
    const auto task = ground_.activity.begin(
        phase::Scanning{}, Words{"Abriendo {}…", "Opening {}…"}.with(lumo::printable(lumo::fileName(path))));
    ground_.background.start(task->stop, [this, path, request = scanning_.planRequest(),
                                          desk = ground_.services.desk](const std::stop_token& stop) {
        return Background::Apply([this, stop, path, file = openedFile(path, request, desk)] {
            ground_.activity.rest();
            if (!stop.stop_requested()) {
                opened(file, path);
            }
        });
    });
}

void FilesDesk::opened(const lumo::Result<OpenedFile>& file, const std::string& path) {
    const std::string name(lumo::fileName(path));
    if (!file) {
        ground_.activity.say(file.error().message);
    } else if (const auto* const report = std::get_if<OpenedReport>(&*file)) {
        scanning_.show(*report, name);
    } else {
        askAbout(std::get<OpenedPlan>(*file), name);
    }
}

void FilesDesk::askAbout(const OpenedPlan& plan, const std::string& name) {
    const Agreement all = agreementTo(plan.now);
    asked::FromFile file{.name = name,
                         .deleted = deletedPaths(all.actions, ground_.services.desk.home),
                         .leftOut = leftOutLines(plan.now),
                         .plan = plan.saved,
                         .refused = all.refused};
    if (all.actions.empty()) {
        ground_.question.ask(asked::Told{
            .title = Words{"El plan {} no limpiaría nada ahora", "The plan {} would clean nothing now"}.with(
                lumo::printable(name)),
            .message = joinedLines(file.leftOut)});
        return;
    }
    ground_.question.ask(asked::Clean{.actions = all.actions, .shown = all.shown, .file = std::move(file)});
}

// Saving.

void FilesDesk::save(const QUrl& file,
                     const std::function<lumo::Result<void>(const std::string& path)>& write) {
    const std::string path = pathOf(file);
    if (path.empty() || ground_.isOnlyDemo()) {
        return;
    }
    ground_.background.start([this, path, write](const std::stop_token&) -> Background::Apply {
        return [this, path, saved = write(path)] {
            ground_.activity.say(saved ? Words{"Guardado: {}", "Saved: {}"}.with(lumo::printable(
                                             lumo::abbreviated(path, ground_.services.desk.home)))
                                       : saved.error().message);
        };
    });
}

void FilesDesk::saveReport(const QUrl& file) {
    if (maySaveReport()) {
        save(file, [report = scanning_.report()](const std::string& path) {
            return tarvo::saveReport(*report, path);
        });
    }
}

void FilesDesk::savePlan(const QUrl& file) {
    if (maySavePlan()) {
        save(file, [actions = ticked_.plan().selectedActions()](const std::string& path) {
            return tarvo::savePlan(actions, path);
        });
    }
}

QString FilesDesk::reportName() const {
    return shown(reportFileName(ground_.services.desk.now()));
}

QString FilesDesk::planName() const {
    return shown(planFileName(ground_.services.desk.now()));
}

} // namespace tarvo
