#include "TarvoApp/App/CleaningDesk.h"

#include "LumoCore/Basics/Words.h"
#include "LumoCore/Inventories/DetailItem.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Flows/WeeklyCleanup.h"
#include "TarvoModel/Showing/DemoDisk.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace tarvo {

CleaningDesk::CleaningDesk(const Ground& ground, ScanningDesk& scanning, TickedDesk& ticked,
                           const VolumesDesk& volumes, CelebrationDesk& celebration, QObject* parent)
    : QObject(parent), ground_(ground), scanning_(scanning), ticked_(ticked), volumes_(volumes),
      celebration_(celebration) {
    connect(&ground.question, &QuestionDesk::accepted, this, [this](const Asked& agreed) {
        if (const auto* const asked = std::get_if<asked::Clean>(&agreed)) {
            const asked::FromFile file = asked->file.value_or(asked::FromFile());
            begin({.what = {.actions = asked->actions, .shown = asked->shown, .refused = file.refused},
                   .chosen = asked->chosen,
                   .plan = file.plan});
        }
    });
    connect(&ground.activity, &Activity::phaseChanged, this, &CleaningDesk::changed);
    connect(&ground.activity, &Activity::stopWanted, this, [this] {
        if (std::exchange(waiting_, std::nullopt)) {
            emit changed();
        }
    });
    connect(&ground.activity, &Activity::progressed, this, &CleaningDesk::showStep);
    connect(&ground.activity, &Activity::rested, this, [this] {
        if (waiting_) {
            cleanAgreed(*std::exchange(waiting_, std::nullopt));
        }
    });
}

// The user's cleanup.

void CleaningDesk::requestClean() {
    if (ground_.question.isAsking() || !mayClean() || !ticked_.hasTicked()) {
        return;
    }
    const Agreement ticked = ticked_.agreement();
    if (ground_.isOnlyDemo()) {
        const lumo::VolumeInfo volume = volumes_.volume();
        const CleanupShares& shares = ticked_.shares();
        celebration_.celebrate(
            ShareStats::make(DemoDisk::outcomes(ticked.actions, ground_.services.desk.now()),
                             {.freeBefore = volume.availableBytes,
                              .freeAfter = volume.availableBytes + shares.total - shares.trash,
                              .capacity = volume.totalBytes,
                              .lifetimeBefore = 0}));
        return;
    }
    asked::Clean question{.actions = ticked.actions, .shown = ticked.shown};
    if (scanning_.isFromFile()) {
        question.file = asked::FromFile{.name = scanning_.fileName(),
                                        .deleted = deletedPaths(ticked.actions, ground_.services.desk.home)};
    }
    if (!dependsOnCompany(ticked)) {
        ground_.question.ask(std::move(question));
        return;
    }
    ground_.background.start(
        [this, ticked, question, desk = ground_.services.desk](const std::stop_token&) -> Background::Apply {
            return [this, question, wanted = together(ticked, desk)]() mutable {
                question.actions = wanted.actions;
                question.shown = wanted.shown;
                if (!ground_.question.isAsking() && mayClean()) {
                    ground_.question.ask(std::move(question));
                }
            };
        });
}

void CleaningDesk::requestClean(const PlanRequest& request, const Asks& asks) {
    if (ground_.question.isAsking() || !mayClean() || ground_.isOnlyDemo()) {
        return;
    }
    ground_.background.start(
        [this, request, asks, desk = ground_.services.desk](const std::stop_token&) -> Background::Apply {
            return [this, asks, plan = planned(request, desk)] { ask(plan, asks); };
        });
}

void CleaningDesk::requestAside(const std::vector<std::string>& paths, std::int64_t keptBytes) {
    if (paths.empty()) {
        return;
    }
    requestClean({.report = nullptr, .chosen = paths}, [paths, keptBytes](const Agreement& wanted) {
        // Of what is left out nobody knows how much of that it is.
        const bool isAll = wanted.actions.size() == paths.size();
        return asked::Clean{.actions = wanted.actions,
                            .shown = wanted.shown,
                            .chosen = paths,
                            .keptBytes = isAll ? keptBytes : 0};
    });
}

void CleaningDesk::ask(const Plan& plan, const Asks& asks) {
    const Agreement wanted = agreementTo(plan);
    const auto blocked = std::ranges::find_if(
        plan.entries, [](const lumo::PlanEntry& entry) { return entry.skipReason.has_value(); });
    if (!plan.unknownItems.empty()) {
        ground_.activity.say(unknownItemsText(plan.unknownItems));
    } else if (blocked != plan.entries.end()) {
        ground_.activity.say(blocked->action.title + ": " + *blocked->skipReason);
    }
    if (!wanted.actions.empty() && !ground_.question.isAsking() && mayClean()) {
        ground_.question.ask(asks(wanted));
    }
}

void CleaningDesk::begin(const Agreed& agreed) {
    if (ground_.isDemo()) {
        return;
    }
    if (ground_.activity.isBusy()) {
        // The user has seen enough: the rest of the scan is not worth waiting for.
        waiting_ = agreed;
        emit changed();
        ground_.activity.task()->stop.request_stop();
        return;
    }
    cleanAgreed(agreed);
}

void CleaningDesk::cleanAgreed(const Agreed& agreed) {
    freeBeforeLastCleanup_ = volumes_.freeNow().value_or(0);
    run(
        [agreed](PlanRequest request, const Desk& desk, const CleanupWatch& watch) {
            request.chosen = agreed.chosen;
            return tarvo::clean(agreed.plan ? requestForSaved(*agreed.plan, request) : request, agreed.what,
                                desk, watch);
        },
        [this](const lumo::Result<Cleaned>& result, const lumo::VolumeInfo& after) {
            cleaned(result, after);
        });
}

void CleaningDesk::run(const Cleanup& cleanup, const WhenCleaned& whenDone) {
    const auto task = ground_.activity.begin(phase::Cleaning{});
    ground_.background.start(task->stop, [this, task, cleanup, whenDone, request = scanning_.planRequest(),
                                          desk = ground_.services.desk, carryOut = ground_.services.carryOut,
                                          volumeInfo =
                                              ground_.services.volumeInfo](const std::stop_token& stop) {
        std::vector<std::string> touched;
        const auto tellSteps = [&](const std::vector<lumo::CleanupAction>& actions) {
            std::vector<CleanupStep> steps;
            for (const lumo::CleanupAction& action : actions) {
                steps.push_back({action.id, action.title, action.estimatedBytes});
                std::ranges::move(lumo::CleanupExecutor::touchedPaths(action), std::back_inserter(touched));
            }
            ground_.background.post([task, steps] { task->steps = steps; });
        };
        const auto result = cleanup(request, desk,
                                    {.onPlanned = tellSteps,
                                     .onBegin = [&](std::size_t at) { task->action = at; },
                                     .stop = stop,
                                     .cancelTool = task->cancelTool.get_token(),
                                     .carryOut = carryOut});
        return Background::Apply([this, whenDone, result, touched, after = volumeInfo(desk.home)] {
            emit scanning_.touched(touched);
            if (result) {
                scanning_.takeOut(ticked_.takeOut(result->outcomes));
            }
            whenDone(result, after);
        });
    });
}

void CleaningDesk::cleaned(const lumo::Result<Cleaned>& result, const lumo::VolumeInfo& after) {
    if (!result) {
        ground_.activity.rest();
        ground_.activity.say(result.error().message);
        return;
    }
    lastOutcomes_ = result->outcomes;
    celebration_.take(ShareStats::make(lastOutcomes_, {.freeBefore = freeBeforeLastCleanup_,
                                                       .freeAfter = after.availableBytes,
                                                       .capacity = after.totalBytes,
                                                       .lifetimeBefore = result->lifetimeBefore}));
    emit outcomesChanged();
    scanning_.rescan(sumsOf(lastOutcomes_));
    sayWhatWasLeft(*result);
}

void CleaningDesk::sayWhatWasLeft(const Cleaned& result, std::string told) {
    for (const std::string& more :
         {result.notBegun > 0 ? stoppedText(result.notBegun) : std::string(), whatWasLeft(result)}) {
        if (!told.empty() && !more.empty()) {
            told += told.ends_with('.') ? " " : ". ";
        }
        told += more;
    }
    if (!told.empty()) {
        ground_.activity.say(told, lastFailures().size() > 1);
    }
}

std::string CleaningDesk::whatWasLeft(const Cleaned& result) const {
    const QStringList failures = lastFailures();
    if (!failures.isEmpty()) {
        return failedText(static_cast<std::size_t>(failures.size()), bytesOf(failures.front()));
    }
    if (result.logProblem) {
        return *result.logProblem;
    }
    if (!result.leftOut.empty()) {
        return leftOutText(result.leftOut.size(), result.leftOut.front().title,
                           result.leftOut.front().reason);
    }
    return remarkText(result.outcomes).value_or("");
}

QStringList CleaningDesk::lastFailures() const {
    QStringList failures;
    for (const lumo::CleanupOutcome& outcome : lastOutcomes_) {
        if (outcome.status == lumo::CleanupStatus::failed) {
            failures.push_back(shown(outcome.title + ": " + outcome.message.value_or("")));
        }
    }
    return failures;
}

void CleaningDesk::showFailures() {
    ground_.question.ask(
        asked::Told{.title = lumo::Words{"Esto no se pudo limpiar", "This couldn't be cleaned"}.in(),
                    .message = bytesOf(lastFailures().join("\n\n")) + "\n\n" +
                               lumo::Words{"Analiza otra vez y, si todavía lo quieres limpiar, márcalo y "
                                           "confírmalo de nuevo.",
                                           "Scan again and, if you still want it cleaned, tick and confirm "
                                           "it once more."}
                                   .in()});
}

void CleaningDesk::showStep() {
    const std::shared_ptr<Task>& task = ground_.activity.task();
    const std::size_t at = task ? task->action.load() : 0;
    const bool isCleaning = task && at < task->steps.size();
    const QString inHand = isCleaning ? keyOf(task->steps[at].id) : QString();
    if (inHand == inHand_) {
        return;
    }
    inHand_ = inHand;
    if (isCleaning) {
        std::set<std::string> done;
        for (std::size_t step = 0; step < at; ++step) {
            done.insert(task->steps[step].id);
        }
        ticked_.hide(done);
    }
    emit stepChanged();
}

// The cleanup of every week.

void CleaningDesk::cleanWeekly() {
    run(WeeklyCleanup::run,
        [this](const lumo::Result<Cleaned>& result, const lumo::VolumeInfo&) { cleanedByItself(result); });
}

void CleaningDesk::cleanedByItself(const lumo::Result<Cleaned>& result) {
    if (result) {
        // What a full disk did not take is remembered here, so that it does not run again in a minute.
        ground_.settings.note(preference::lastWeeklyCleanup, ground_.services.desk.now());
        ground_.settings.note(preference::lastWeeklyCleanupBytes, sumsOf(result->outcomes).freed);
    }
    ground_.settings.reload();
    if (!result || (result->outcomes.empty() && result->notBegun == 0)) {
        ground_.activity.rest();
        return;
    }
    lastOutcomes_ = result->outcomes;
    scanning_.rescan();
    const std::int64_t freed = sumsOf(result->outcomes).freed;
    sayWhatWasLeft(*result, WeeklyCleanup::notice(freed).value_or(""));
    if (const auto notification = WeeklyCleanup::notification(freed)) {
        ground_.services.notify(*notification, {});
    }
}

} // namespace tarvo
