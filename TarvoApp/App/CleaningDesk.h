#pragma once

#include "TarvoApp/App/CelebrationDesk.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/ScanningDesk.h"
#include "TarvoApp/App/TickedDesk.h"
#include "TarvoApp/App/VolumesDesk.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarvo {

/// From what is ticked to freed space: the user's cleanup, and the one of every week.
class CleaningDesk final : public QObject {
    Q_OBJECT
    /// True while what is ticked may be changed as a whole, and cleaned.
    Q_PROPERTY(bool mayClean READ mayClean NOTIFY changed)
    /// The key of what a cleanup takes just now; empty while nothing is cleaned.
    Q_PROPERTY(QString inHand READ inHand NOTIFY stepChanged)
    Q_PROPERTY(QStringList lastFailures READ lastFailures NOTIFY outcomesChanged)

  public:
    CleaningDesk(const Ground& ground, ScanningDesk& scanning, TickedDesk& ticked, const VolumesDesk& volumes,
                 CelebrationDesk& celebration, QObject* parent = nullptr);

    /// Asks whether what is ticked is cleaned.
    Q_INVOKABLE void requestClean();
    /// Asks the same of the items and the chosen paths of a request, as they are now. What may not be cleaned
    /// is left out and told. `asks` makes the question of what is left.
    using Asks = std::function<asked::Clean(const Agreement&)>;
    void requestClean(const PlanRequest& request, const Asks& asks);
    /// Asks whether these are set aside: whole, whatever rules know of them. So many bytes of them are known
    /// to stay on the disk, since they have another name as well.
    void requestAside(const std::vector<std::string>& paths, std::int64_t keptBytes = 0);
    /// Tells what the last cleanup could not do.
    Q_INVOKABLE void showFailures();
    /// The cleanup of every week, which asks nobody; it finds out itself whether it is due.
    void cleanWeekly();

    [[nodiscard]] bool mayClean() const { return maySelectSafe(ground_.activity.phase()) && !isWaiting(); }
    /// True while the user has said yes to what has yet to begin: then nothing begins by itself.
    [[nodiscard]] bool isWaiting() const { return waiting_.has_value(); }
    [[nodiscard]] const std::vector<lumo::CleanupOutcome>& lastOutcomes() const { return lastOutcomes_; }
    [[nodiscard]] const QString& inHand() const { return inHand_; }
    [[nodiscard]] QStringList lastFailures() const;

  signals:
    void changed();
    void stepChanged();
    void outcomesChanged();

  private:
    /// A cleanup, to be carried out in the background.
    using Cleanup =
        std::function<lumo::Result<Cleaned>(const PlanRequest&, const Desk&, const CleanupWatch&)>;
    using WhenCleaned = std::function<void(const lumo::Result<Cleaned>&, const lumo::VolumeInfo& after)>;
    void ask(const Plan& plan, const Asks& asks);
    /// What the user agreed to.
    struct Agreed {
        Agreement what;
        std::vector<std::string> chosen = {};                  ///< See `PlanRequest`.
        std::optional<std::vector<lumo::PlanEntry>> plan = {}; ///< Of a file; absent for the window's own.
    };
    void begin(const Agreed& agreed);
    void cleanAgreed(const Agreed& agreed);
    void run(const Cleanup& cleanup, const WhenCleaned& whenDone);
    void cleaned(const lumo::Result<Cleaned>& result, const lumo::VolumeInfo& after);
    /// What is done goes from list and map while the rest is still cleaned.
    void showStep();
    /// After what is told already.
    void sayWhatWasLeft(const Cleaned& result, std::string told = {});
    /// What of it was not done, or is worth a remark, in one sentence; empty for nothing.
    [[nodiscard]] std::string whatWasLeft(const Cleaned& result) const;
    void cleanedByItself(const lumo::Result<Cleaned>& result);

    Ground ground_;
    ScanningDesk& scanning_;
    TickedDesk& ticked_;
    const VolumesDesk& volumes_;
    CelebrationDesk& celebration_;
    /// What the user agreed to and waits for the scan in hand to end.
    std::optional<Agreed> waiting_;
    QString inHand_;
    std::int64_t freeBeforeLastCleanup_ = 0;
    std::vector<lumo::CleanupOutcome> lastOutcomes_;
};

} // namespace tarvo
