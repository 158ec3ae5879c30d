#include "TarvoApp/App/TickedDesk.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/CleanupTexts.h"
#include "TarvoModel/Showing/Goal.h"

#include <algorithm>
#include <utility>

namespace tarvo {

TickedDesk::TickedDesk(const Ground& ground, QObject* parent) : QObject(parent), ground_(ground) {
    connect(&ground.settings, &Settings::changed, this, &TickedDesk::changed); // With the goal.
}

void TickedDesk::takePlan(std::shared_ptr<const WholePlan> made) {
    hasPlan_ = true;
    hidden_.clear();
    std::shared_ptr<const ShownPlan> plan = made->plan();
    if (emptied_.hasAny()) {
        auto rest = std::make_shared<ShownPlan>(*plan);
        emptied_.leaveOut(rest->entries, rest->defaults, rest->rows);
        if (rest->entries.size() < plan->entries.size() || rest->rows.size() < plan->rows.size() ||
            rest->defaults.size() < plan->defaults.size()) {
            plan = std::move(rest);
        }
    }
    const auto& items = plan_.whole()->items();
    if (plan != made->plan() || items != made->items()) {
        made = std::make_shared<const WholePlan>(plan, items, ground_.shownHome());
    }
    show(std::move(made));
}

void TickedDesk::takeItems(std::shared_ptr<const WholePlan> made) {
    const auto& plan = plan_.whole()->plan();
    if (plan != made->plan()) {
        made = std::make_shared<const WholePlan>(plan, made->items(), ground_.shownHome());
    }
    show(std::move(made));
}

void TickedDesk::show(std::shared_ptr<const WholePlan> whole) {
    std::shared_ptr<const WholePlan> before = plan_.whole();
    plan_.take(hidden_.empty() ? std::move(whole) : whole->without(hidden_));
    ground_.background.drop(std::move(before));
    emit planChanged();
    ticksHaveChanged();
}

std::set<std::string> TickedDesk::takeOut(const std::vector<lumo::CleanupOutcome>& outcomes) {
    showWhatStayed(outcomes);
    std::set<std::string> gone = emptied_.take(outcomes, rows());
    gone.merge(plan_.whole()->takenAlong(gone));
    plan_.forget(gone);
    hide(gone); // At once: the scan that follows takes its time.
    ticksHaveChanged();
    emit taken(gone);
    return gone;
}

void TickedDesk::showWhatStayed(const std::vector<lumo::CleanupOutcome>& outcomes) {
    std::size_t shown = 0;
    for (const lumo::CleanupOutcome& outcome : outcomes) {
        if (outcome.status == lumo::CleanupStatus::failed || hasFreedNothing(outcome)) {
            shown += hidden_.erase(outcome.id);
        }
        if (hasFreedNothing(outcome)) {
            plan_.forget({outcome.id}); // Again it would free nothing.
        }
    }
    if (shown > 0) {
        const WholePlan& narrow = *plan_.whole();
        plan_.narrow(WholePlan(narrow.plan(), narrow.items(), ground_.shownHome()).without(hidden_));
        emit planChanged();
    }
}

void TickedDesk::hide(const std::set<std::string>& ids) {
    if (std::ranges::any_of(rows(), [&](const Row& row) { return ids.contains(row.id); })) {
        hidden_.insert(ids.begin(), ids.end());
        plan_.narrow(plan_.whole()->without(ids));
        emit planChanged();
    }
}

void TickedDesk::ticksHaveChanged() {
    shares_ = plan_.shares();
    emit changed();
}

void TickedDesk::toggle(const QString& key) {
    const lumo::PlanEntry* const holder = plan_.takenAlongBy(idOf(key));
    if (!plan_.toggle(idOf(key))) {
        return;
    }
    if (holder != nullptr) {
        ground_.activity.say(lumo::Words{"«{}» ya no está marcado: eso iba con ello",
                                         "“{}” is no longer selected: that went with it"}
                                 .with(lumo::printable(holder->action.title)));
    }
    ticksHaveChanged();
}

void TickedDesk::toggleAll(const std::vector<std::string>& ids) {
    if (plan_.toggleAll(ids)) {
        ticksHaveChanged();
    }
}

void TickedDesk::takeGoalOffer() {
    if (const auto offered = Goal::offer(ground_.settings.goalBytes(), plan_.whole()->reachable())) {
        ground_.settings.setGoalBytes(*offered);
    }
}

QString TickedDesk::goalBeyondText() const {
    return hasPlan_ ? shown(Goal::beyondText(ground_.settings.goalBytes(), plan_.whole()->reachable()))
                    : QString();
}

QString TickedDesk::goalOfferText() const {
    const auto offered = Goal::offer(ground_.settings.goalBytes(), plan_.whole()->reachable());
    return hasPlan_ && offered ? shown(Goal::offerText(*offered)) : QString();
}

void TickedDesk::selectSafe() {
    plan_.selectSafe(ground_.activity.phase());
    ticksHaveChanged();
}

void TickedDesk::deselectAll() {
    plan_.deselectAll();
    ticksHaveChanged();
}

void TickedDesk::raiseGoal() {
    ground_.settings.setGoalBytes(Goal::raised(ground_.settings.goalBytes()));
}

void TickedDesk::lowerGoal() {
    ground_.settings.setGoalBytes(Goal::lowered(ground_.settings.goalBytes()));
}

QString TickedDesk::goalText() const {
    return shown(Goal::goalText(ground_.settings.goalBytes()));
}

QString TickedDesk::goalMeterText() const {
    return shown(Goal::meterText(ground_.settings.goalBytes(), shares_.total));
}

double TickedDesk::goalFraction() const {
    return Goal::fraction(ground_.settings.goalBytes(), shares_.total);
}

bool TickedDesk::isGoalReached() const {
    return Goal::isReached(ground_.settings.goalBytes(), shares_.total);
}

QString TickedDesk::selectedBytesText() const {
    return shown(tarvo::selectedText(shares_));
}

QString TickedDesk::cleanTitleText() const {
    return shown(cleanTitle(shares_));
}

QString TickedDesk::cleanHelpText() const {
    return shown(cleanHelp(shares_));
}

QString TickedDesk::safeRecoverableText() const {
    return shown(lumo::ByteFormat::string(recoverable()));
}

} // namespace tarvo
