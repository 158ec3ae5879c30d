#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Flows/PuttingBack.h"
#include "TarvoModel/Flows/WeeklyCleanup.h"
#include "TarvoModel/Showing/DemoDisk.h"

#include <algorithm>
#include <iterator>
#include <utility>

// The application's model from what is ticked to freed space, and back.
namespace tarvo {

using lumo::Words;

// The user's cleanup.

void AppModel::requestClean() {
    if (isAsking() || !maySelectSafe(phase_) || plan_.selectedActions().empty()) {
        return;
    }
    agreed_ = {.actions = plan_.selectedActions(), .shown = shown_};
    if (isDemo()) {
        setNotice(DemoDisk::notice());
        celebrate(ShareStats::make(DemoDisk::outcomes(agreed_.actions, services_.desk.now()),
                                   {.freeBefore = volume_.availableBytes,
                                    .freeAfter = volume_.availableBytes + shares_.total - shares_.trash,
                                    .capacity = volume_.totalBytes,
                                    .lifetimeBefore = 0}));
        return;
    }
    setConfirming(true);
}

void AppModel::cancelClean() {
    setConfirming(false);
}

void AppModel::setConfirming(bool isAsked) {
    confirming_ = isAsked;
    emit confirmingChanged();
    emit selectionChanged(); // The amount on the buttons is the question's while it is open.
}

bool AppModel::isAsking() const {
    return confirming_ || waiting_ || confirmingEmpty_ || confirmingEmptyFromSettings_ || archivable_;
}

void AppModel::clean() {
    if (isDemo() || !confirming_) {
        return;
    }
    setConfirming(false);
    if (isBusy()) {
        // The user has seen enough: the rest of the scan is not worth waiting for.
        waiting_ = agreed_;
        emit phaseChanged();
        work_->stop.request_stop();
        return;
    }
    cleanAgreed(agreed_);
}

void AppModel::cleanAgreed(const Agreement& agreed) {
    freeBeforeLastCleanup_ = freeNow_.value_or(0);
    runCleanup([agreed](const PlanRequest& request, const Desk& desk,
                        const CleanupWatch& watch) { return tarvo::clean(request, agreed, desk, watch); },
               [this](const lumo::Result<Cleaned>& result, const lumo::VolumeInfo& after) {
                   cleaned(result, after);
               });
}

void AppModel::runCleanup(const Cleanup& cleanup, const WhenCleaned& whenDone) {
    const auto work = beginWork();
    setPhase(phase::Cleaning{});
    background_.start([this, work, cleanup, whenDone, request = planRequest(), desk = services_.desk,
                       carryOut = services_.carryOut,
                       volumeInfo = services_.volumeInfo](const std::stop_token& end) -> Background::Apply {
        const std::stop_callback forward(end, [&] { work->stop.request_stop(); });
        const auto tellTitles = [&](const std::vector<lumo::CleanupAction>& actions) {
            std::vector<std::string> titles;
            for (const lumo::CleanupAction& action : actions) {
                titles.push_back(action.title);
            }
            background_.post([work, titles] { work->titles = titles; });
        };
        const auto result = cleanup(request, desk,
                                    {.onPlanned = tellTitles,
                                     .onBegin = [&](std::size_t at) { work->action = at; },
                                     .stop = work->stop.get_token(),
                                     .cancelTool = work->cancelTool.get_token(),
                                     .carryOut = carryOut});
        return [this, whenDone, result, after = volumeInfo(desk.home)] {
            if (result) {
                const std::set<std::string> done = emptied_.take(result->outcomes);
                cleanedSince_.insert(done.begin(), done.end());
                plan_.forget(done);
                selectionHasChanged();
            }
            whenDone(result, after);
        };
    });
}

void AppModel::cleaned(const lumo::Result<Cleaned>& result, const lumo::VolumeInfo& after) {
    if (!result) {
        setPhase(phase::Idle{});
        setNotice(result.error().message);
        return;
    }
    lastOutcomes_ = result->outcomes;
    lastCleanup_ = sumsOf(lastOutcomes_);
    setShare(ShareStats::make(lastOutcomes_, {.freeBefore = freeBeforeLastCleanup_,
                                              .freeAfter = after.availableBytes,
                                              .capacity = after.totalBytes,
                                              .lifetimeBefore = result->lifetimeBefore}));
    if (lastShare_->isWorthCelebrating()) {
        celebrate(*lastShare_);
    }
    emit outcomesChanged();
    beginScan();
    const auto failed = static_cast<std::size_t>(lastFailures().size());
    if (failed > 0) {
        setNotice(failedText(failed, bytesOf(lastFailures().front())), failed > 1);
    } else if (result->logProblem) {
        setNotice(*result->logProblem);
    } else if (!result->leftOut.empty()) {
        setNotice(leftOutText(result->leftOut.size(), result->leftOut.front().title,
                              result->leftOut.front().reason));
    }
}

void AppModel::cleanedByItself(const lumo::Result<Cleaned>& result) {
    if (result) {
        // What a full disk did not take is remembered here, so that it does not run again in a minute.
        settings_.note(preference::lastWeeklyCleanup, services_.desk.now());
        settings_.note(preference::lastWeeklyCleanupBytes, sumsOf(result->outcomes).freed);
    }
    settings_.reload();
    emit autoCleanStatusChanged();
    if (!result || result->outcomes.empty()) {
        setPhase(phase::Idle{});
        return;
    }
    beginScan();
    const std::int64_t freed = sumsOf(result->outcomes).freed;
    if (const auto notice = WeeklyCleanup::notice(freed)) {
        setNotice(*notice);
        services_.notify(*WeeklyCleanup::notification(freed));
    }
}

// What others may be shown.

void AppModel::setShare(const ShareStats& stats) {
    lastShare_ = stats;
    emit celebrationChanged();
}

void AppModel::celebrate(const ShareStats& stats) {
    setShare(stats);
    background_.start([this, stats, draw = services_.drawCard](const std::stop_token&) -> Background::Apply {
        return [this, stats, card = draw(stats)] {
            celebration_ = stats;
            celebrationImage_ = card;
            emit celebrationChanged();
        };
    });
}

void AppModel::closeCelebration() {
    celebration_.reset();
    celebrationImage_ = {};
    emit celebrationChanged();
}

void AppModel::saveShareImage() {
    if (celebrationImage_.isNull()) {
        return;
    }
    if (isDemo()) {
        setNotice(DemoDisk::notice());
        return;
    }
    background_.start([this, image = celebrationImage_,
                       save = services_.saveCard](const std::stop_token&) -> Background::Apply {
        return [this, saved = save(image)] { setNotice(saved ? imageSavedText() : saved.error().message); };
    });
}

void AppModel::copyCelebrationImage() {
    if (!celebrationImage_.isNull()) {
        services_.copyCard(celebrationImage_);
        setNotice(imageCopiedText());
    }
}

// What is set aside.

void AppModel::takeHeld(HeldState held) {
    held_ = std::move(held);
    heldTotals_ = totalsOf(held_.batches);
    emit holdingChanged();
}

void AppModel::refreshHolding() {
    if (isDemo()) {
        return;
    }
    background_.start([this, desk = services_.desk](const std::stop_token&) -> Background::Apply {
        return [this, held = heldState(desk)] {
            if (held) {
                takeHeld(*held);
            } else {
                setNotice(held.error().message);
            }
        };
    });
}

void AppModel::change(const std::string& doing,
                      const std::function<lumo::Result<Changed>(const Desk&)>& change) {
    if (isBusy()) {
        setNotice(Words{"Ahora hay otra cosa en marcha: vuelve a probar cuando acabe",
                        "Something else is going on: try again when it has ended"}
                      .in(lumo::currentLanguage()));
        return;
    }
    if (isDemo()) {
        setNotice(DemoDisk::notice());
        return;
    }
    beginWork();
    doing_ = doing;
    setPhase(phase::Cleaning{});
    background_.start([this, change, desk = services_.desk](const std::stop_token&) -> Background::Apply {
        return [this, changed = change(desk)] { say(changed); };
    });
}

void AppModel::say(const lumo::Result<Changed>& changed) {
    if (!changed) {
        setPhase(phase::Idle{});
        setNotice(changed.error().message);
        return;
    }
    if (lastShare_ && changed->freed > 0) {
        setShare(lastShare_->withEmptied(changed->freed));
    }
    if (changed->putsBack) {
        emptied_.putBack();
    }
    lastCleanup_.reset();
    beginScan();
    setNotice(changed->notice);
}

void AppModel::undoLastCleanup() {
    change(Words{"Devolviendo a su sitio…", "Putting back…"}.in(lumo::currentLanguage()),
           [](const Desk& desk) -> lumo::Result<Changed> {
               const auto restored = undo(desk);
               if (!restored) {
                   return std::unexpected(restored.error());
               }
               return Changed{.notice = restoredText(*restored), .putsBack = true};
           });
    if (!doing_.empty()) {
        lastShare_.reset();
        emit celebrationChanged();
    }
}

void AppModel::requestEmpty(bool isFromSettings) {
    if (isAsking() || held_.batches.empty()) {
        return;
    }
    emptying_ = held_.batches;
    (isFromSettings ? confirmingEmptyFromSettings_ : confirmingEmpty_) = true;
    emit confirmingChanged();
    emit holdingChanged();
}

void AppModel::cancelEmpty() {
    confirmingEmpty_ = false;
    confirmingEmptyFromSettings_ = false;
    emit confirmingChanged();
}

void AppModel::emptyHolding() {
    if (!confirmingEmpty_ && !confirmingEmptyFromSettings_) {
        return;
    }
    cancelEmpty();
    change(Words{"Vaciando…", "Emptying…"}.in(lumo::currentLanguage()),
           [agreed = emptying_](const Desk& desk) -> lumo::Result<Changed> {
               const auto emptied = emptyAgreed(agreed, desk);
               if (!emptied) {
                   return std::unexpected(emptied.error());
               }
               return Changed{.notice = emptiedText(*emptied), .freed = emptied->freed};
           });
}

} // namespace tarvo
