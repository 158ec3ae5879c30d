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
    plannedRows_ = std::move(plan.rows);
    plannedShown_ = std::move(plan.shown);
    recoverable_ = plan.recoverable;
    hasPlan_ = true;
    plan_.take(std::move(plan.entries), std::move(plan.defaults));
    show();
}

void TickedDesk::takeItems(ShownItems items) {
    items_ = std::move(items);
    plan_.takeItems(std::move(items_.entries));
    show();
}

void TickedDesk::show() {
    giveTiles(items_.rows, plannedRows_, ground_.shownHome());
    rows_ = plannedRows_;
    rows_.insert(rows_.end(), items_.rows.begin(), items_.rows.end());
    // What another row stands for is reached by that.
    std::set<std::string> covered;
    for (const Row& row : items_.rows) {
        if (!row.hasTile && !row.paths.empty()) {
            covered.insert(row.id);
        }
    }
    reachable_ = Goal::reachable(plan_, covered);
    emit planChanged();
    ticksHaveChanged();
}

std::set<std::string> TickedDesk::takeOut(const std::vector<lumo::CleanupOutcome>& outcomes) {
    std::set<std::string> done = emptied_.take(outcomes);
    plan_.forget(done);
    ticksHaveChanged();
    emit taken(done);
    return done;
}

void TickedDesk::hide(const std::set<std::string>& ids) {
    const auto isHidden = [&](const Row& row) { return ids.contains(row.id); };
    std::erase_if(plannedRows_, isHidden);
    std::erase_if(items_.rows, isHidden);
    if (std::erase_if(rows_, isHidden) > 0) {
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
