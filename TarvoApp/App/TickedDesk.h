#pragma once

#include "TarvoApp/App/Ground.h"
#include "TarvoModel/Showing/Emptied.h"
#include "TarvoModel/Showing/TickedPlan.h"
#include "TarvoModel/Showing/WholePlan.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tarvo {

/// The plan that is shown, what of it is ticked, and how near that comes to the goal.
class TickedDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString goalText READ goalText NOTIFY changed)
    Q_PROPERTY(QString goalMeterText READ goalMeterText NOTIFY changed)
    Q_PROPERTY(double goalFraction READ goalFraction NOTIFY changed)
    Q_PROPERTY(bool isGoalReached READ isGoalReached NOTIFY changed)
    /// That the goal is beyond all that can be ticked, and the words that set it to that; empty otherwise.
    Q_PROPERTY(QString goalBeyondText READ goalBeyondText NOTIFY changed)
    Q_PROPERTY(QString goalOfferText READ goalOfferText NOTIFY changed)
    Q_PROPERTY(qint64 selectedBytes READ selectedBytes NOTIFY changed)
    Q_PROPERTY(qint64 selectedTrashBytes READ selectedTrashBytes NOTIFY changed)
    Q_PROPERTY(qint64 selectedToolBytes READ selectedToolBytes NOTIFY changed)
    Q_PROPERTY(QString selectedText READ selectedBytesText NOTIFY changed)
    Q_PROPERTY(bool hasTicked READ hasTicked NOTIFY changed)
    Q_PROPERTY(QString cleanTitle READ cleanTitleText NOTIFY changed)
    Q_PROPERTY(QString cleanHelp READ cleanHelpText NOTIFY changed)
    Q_PROPERTY(QString safeRecoverable READ safeRecoverableText NOTIFY planChanged)

  public:
    explicit TickedDesk(const Ground& ground, QObject* parent = nullptr);

    /// Takes over a new plan; what is ticked is reconciled with it. Where it was put together with other
    /// items than are shown, it is put together again.
    void takePlan(std::shared_ptr<const WholePlan> made);
    /// Takes over what closer looks found, likewise with the plan that is shown.
    void takeItems(std::shared_ptr<const WholePlan> made);
    /// Takes out what a cleanup has taken, and shows again what it could not take; the ids of the first.
    std::set<std::string> takeOut(const std::vector<lumo::CleanupOutcome>& outcomes);
    /// Shows those rows no more, until the next plan: a cleanup has been there.
    void hide(const std::set<std::string>& ids);
    /// What was set aside has come back.
    void putBack() { emptied_.putBack(); }

    Q_INVOKABLE void toggle(const QString& key);
    /// Ticks or unticks all of these that can be ticked.
    void toggleAll(const std::vector<std::string>& ids);
    /// Sets the goal to what can be reached.
    Q_INVOKABLE void takeGoalOffer();
    Q_INVOKABLE void selectSafe();
    Q_INVOKABLE void deselectAll();
    Q_INVOKABLE void raiseGoal();
    Q_INVOKABLE void lowerGoal();

    [[nodiscard]] const TickedPlan& plan() const { return plan_; }
    /// All rows, whatever is searched for: those of the plan, then those of the items.
    [[nodiscard]] const std::vector<Row>& rows() const { return plan_.whole()->rows(); }
    /// What is ticked, with what its paths meant when they were shown.
    [[nodiscard]] Agreement agreement() const {
        lumo::ResolvedPaths shown = plan_.whole()->plan()->shown;
        const lumo::ResolvedPaths& ofItems = plan_.whole()->items()->shown;
        shown.insert(ofItems.begin(), ofItems.end());
        return {.actions = plan_.selectedActions(), .shown = std::move(shown)};
    }
    [[nodiscard]] std::int64_t recoverable() const { return plan_.whole()->plan()->recoverable; }
    [[nodiscard]] const CleanupShares& shares() const { return shares_; }

    [[nodiscard]] QString goalText() const;
    [[nodiscard]] QString goalMeterText() const;
    [[nodiscard]] double goalFraction() const;
    [[nodiscard]] bool isGoalReached() const;
    [[nodiscard]] QString goalBeyondText() const;
    [[nodiscard]] QString goalOfferText() const;
    [[nodiscard]] qint64 selectedBytes() const { return shares_.total; }
    [[nodiscard]] qint64 selectedTrashBytes() const { return shares_.trash; }
    [[nodiscard]] qint64 selectedToolBytes() const { return shares_.tool; }
    [[nodiscard]] QString selectedBytesText() const;
    [[nodiscard]] bool hasTicked() const { return plan_.hasTicked(); }
    [[nodiscard]] QString cleanTitleText() const;
    [[nodiscard]] QString cleanHelpText() const;
    [[nodiscard]] QString safeRecoverableText() const;

  signals:
    /// Other things are ticked, or count otherwise.
    void changed();
    /// There are other rows.
    void planChanged();
    /// A cleanup has taken these.
    void taken(const std::set<std::string>& ids);

  private:
    void show(std::shared_ptr<const WholePlan> whole);
    void showWhatStayed(const std::vector<lumo::CleanupOutcome>& outcomes);
    void ticksHaveChanged();

    Ground ground_;
    TickedPlan plan_;
    Emptied emptied_;
    std::set<std::string> hidden_; ///< Rows of this plan that a cleanup has done.
    CleanupShares shares_;
    bool hasPlan_ = false; ///< Until then nobody knows what can be reached.
};

} // namespace tarvo
