#pragma once

#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/TickedDesk.h"
#include "TarvoApp/App/VolumesDesk.h"
#include "TarvoModel/Flows/SavedFiles.h"
#include "TarvoModel/Flows/ScanResult.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarvo {

/// Scans in two passes, and plans again when what counts for the plan has changed. Others take over what is
/// found; here stays the report.
class ScanningDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool hasReport READ hasReport NOTIFY reportChanged)
    /// What could not be read; empty when everything could.
    Q_PROPERTY(QString unreadable READ unreadableText NOTIFY reportChanged)
    /// False once the home is gone or cannot be read: that nothing is found is then no good news.
    Q_PROPERTY(bool hasSeenHome READ hasSeenHome NOTIFY reportChanged)
    /// What is said of a report that came from a file; empty while a scan's is shown.
    Q_PROPERTY(QString openedText READ openedText NOTIFY reportChanged)
    /// What goes on, or what the last look at the disk came to.
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusChanged)

  public:
    ScanningDesk(const Ground& ground, const VolumesDesk& volumes, const TickedDesk& ticked,
                 QObject* parent = nullptr);

    /// Both passes; nothing happens while something else goes on.
    Q_INVOKABLE void scan();
    /// Shows a saved report in the place of a scan's, until the next scan has something to show.
    void show(const OpenedReport& opened, const std::string& fileName);
    /// The same after a change of the home, whose work ends with it. What a cleanup came to is the status
    /// until something else happens.
    void rescan(const std::optional<CleanupSums>& lastCleanup = std::nullopt);
    /// What is gone although the last full report still has it.
    void takeOut(const std::set<std::string>& ids) { cleanedSince_.insert(ids.begin(), ids.end()); }

    [[nodiscard]] bool hasReport() const { return report_ != nullptr; }
    [[nodiscard]] bool hasSeenHome() const { return hasSeenHome_; }
    /// Null before the first pass; shared with later work on it.
    [[nodiscard]] const std::shared_ptr<const lumo::ScanReport>& report() const { return report_; }
    /// True while a saved report is shown: what it says of the disk may be long over.
    [[nodiscard]] bool isFromFile() const { return opened_.has_value(); }
    /// True while that is another home's, of which nothing can be done here.
    [[nodiscard]] bool isOnlyToLookAt() const { return opened_ && opened_->isOfOtherHome; }
    /// The name of its file; empty for none.
    [[nodiscard]] std::string fileName() const { return opened_ ? opened_->fileName : std::string(); }
    /// True once a scan has seen all there is.
    [[nodiscard]] bool hasFullReport() const { return fullReport_ != nullptr; }
    /// When the last pass ended.
    [[nodiscard]] std::optional<lumo::Date> lastScanDate() const { return lastScanDate_; }
    /// What a plan for this window takes into account besides what is stored.
    [[nodiscard]] PlanRequest planRequest() const;
    [[nodiscard]] QString unreadableText() const;
    [[nodiscard]] QString openedText() const;
    [[nodiscard]] QString statusText() const;

  signals:
    void reportChanged();
    void statusChanged();
    /// Somebody wants to know what is on the disk now; a scan follows.
    void wanted();
    /// What stands at these absolute paths was changed by the application. A scan may follow.
    void touched(const std::vector<std::string>& paths);
    /// A scan begins: what was known of folders may be no longer true.
    void beginning();
    /// A pass has ended with this; the listener takes out what it wants.
    void found(const std::shared_ptr<tarvo::ScanResult>& result);
    /// The report is planned anew.
    void planned(const std::shared_ptr<const tarvo::WholePlan>& plan);
    /// Both passes have ended and nothing else goes on.
    void ended();

  private:
    /// What the preferences say of plans.
    [[nodiscard]] PlanRequest preferredPlan() const;
    void runPass(ScanPass pass);
    void passEnded(ScanPass pass, const std::shared_ptr<ScanResult>& result);
    void finish();
    void takeOver(const std::shared_ptr<ScanResult>& result);
    void loadDemo();
    void purge();
    void settingsHaveChanged();
    void replan();

    /// The file that the report came from.
    struct Opened {
        std::string fileName;
        std::string text;
        bool isOfOtherHome = false;
    };

    Ground ground_;
    const VolumesDesk& volumes_;
    const TickedDesk& ticked_;
    std::optional<Opened> opened_; ///< Absent while a scan's report is shown.
    std::shared_ptr<const lumo::ScanReport> report_;
    bool hasSeenHome_ = true;                            ///< When that was made.
    std::shared_ptr<const lumo::ScanReport> fullReport_; ///< The last one of a full pass.
    std::set<std::string> cleanedSince_;                 ///< What it still has and is gone.
    std::optional<lumo::Date> lastScanDate_;
    std::optional<CleanupSums> lastCleanup_; ///< For the status line, until something else happens.
    std::int64_t walkedBytes_ = 0;           ///< By the last scan.
    std::int64_t purged_ = 0;                ///< Since the last scan began.
    lumo::Date wallAnchor_; ///< A moment on both clocks, to notice when the wall clock was set.
    double steadyAnchor_ = 0;
    std::int64_t plannedDays_ = 0; ///< The preferences by which the plan was made.
    std::vector<std::string> plannedFolders_;
    bool replansWhenStored_ = false;
    int replans_ = 0; ///< Of several that were begun only the last one counts.
};

} // namespace tarvo
