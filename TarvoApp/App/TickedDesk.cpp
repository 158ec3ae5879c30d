#include "TarvoApp/App/TickedDesk.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/Goal.h"

#include <utility>

namespace tarvo {

TickedDesk::TickedDesk(const Ground& ground, QObject* parent) : QObject(parent), ground_(ground) {
    connect(&ground.settings, &Settings::changed, this, &TickedDesk::changed); // With the goal.
}

void TickedDesk::take(ShownPlan plan) {
    emptied_.leaveOut(plan.entries, plan.defaults, plan.rows);
    rows_ = std::move(plan.rows);
    shown_ = std::move(plan.shown);
    recoverable_ = plan.recoverable;
    reachable_ = Goal::reachable(plan.entries);
    hasPlan_ = true;
    plan_.take(std::move(plan.entries), std::move(plan.defaults));
    emit planChanged();
    ticksHaveChanged();
}

std::set<std::string> TickedDesk::takeOut(const std::vector<lumo::CleanupOutcome>& outcomes) {
    std::set<std::string> done = emptied_.take(outcomes);
    plan_.forget(done);
    ticksHaveChanged();
    return done;
}

void TickedDesk::hide(const std::set<std::string>& ids) {
    if (std::erase_if(rows_, [&](const Row& row) { return ids.contains(row.id); }) > 0) {
        emit planChanged();
    }
}

void TickedDesk::ticksHaveChanged() {
    shares_ = plan_.shares();
    emit changed();
}

void TickedDesk::toggle(const QString& key) {
    if (plan_.toggle(idOf(key))) {
        ticksHaveChanged();
    }
}

void TickedDesk::toggleAll(const std::vector<std::string>& ids) {
    if (plan_.toggleAll(ids)) {
        ticksHaveChanged();
    }
}

void TickedDesk::takeGoalOffer() {
    if (const auto offered = Goal::offer(ground_.settings.goalBytes(), reachable_)) {
        ground_.settings.setGoalBytes(*offered);
    }
}

QString TickedDesk::goalBeyondText() const {
    return hasPlan_ ? shown(Goal::beyondText(ground_.settings.goalBytes(), reachable_)) : QString();
}

QString TickedDesk::goalOfferText() const {
    const auto offered = Goal::offer(ground_.settings.goalBytes(), reachable_);
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
    return shown(lumo::ByteFormat::string(recoverable_));
}

} // namespace tarvo
