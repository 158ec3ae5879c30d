#pragma once

#include "LumoCore/Explaining/DiskSummary.h"
#include "LumoCore/Inventories/SystemSpace.h"
#include "TarvoApp/App/AgentDesk.h"
#include "TarvoApp/App/AppServices.h"
#include "TarvoApp/App/Background.h"
#include "TarvoApp/App/HelpDesk.h"
#include "TarvoApp/App/MapModel.h"
#include "TarvoApp/App/PreviewDesk.h"
#include "TarvoApp/App/RowList.h"
#include "TarvoApp/App/Settings.h"
#include "TarvoModel/Flows/Archiving.h"
#include "TarvoModel/Flows/ScanResult.h"
#include "TarvoModel/Showing/Emptied.h"
#include "TarvoModel/Showing/Goal.h"

#include <QImage>
#include <QObject>
#include <QTimer>
#include <QVariantList>

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

namespace tarvo {

/// The one state object of the application: windows read it and call its operations. It holds and schedules;
/// what is decided is decided by functions of the model's other records. Lives on the main thread. What takes
/// long runs in the background, one thing at a time, and its results are applied here. When it goes, the
/// action in hand of a cleanup is finished, and nothing else.
class AppModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isDemo READ isDemo CONSTANT)
    Q_PROPERTY(bool isCapturing READ isCapturing CONSTANT)
    Q_PROPERTY(QString home READ home CONSTANT)
    Q_PROPERTY(QString demoNotice READ demoNotice CONSTANT)
    Q_PROPERTY(tarvo::Settings* settings READ settings CONSTANT)
    Q_PROPERTY(tarvo::RowList* rows READ rows CONSTANT)
    Q_PROPERTY(tarvo::MapModel* map READ map CONSTANT)
    Q_PROPERTY(tarvo::HelpDesk* help READ help CONSTANT)
    Q_PROPERTY(tarvo::AgentDesk* agents READ agents CONSTANT)
    Q_PROPERTY(tarvo::PreviewDesk* preview READ preview CONSTANT)

    Q_PROPERTY(QString phase READ phaseName NOTIFY phaseChanged)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY phaseChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY statusChanged)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    /// True when `lastFailures` says more than the notice.
    Q_PROPERTY(bool noticeHasDetails READ hasNoticeDetails NOTIFY noticeChanged)
    Q_PROPERTY(bool started READ isStarted NOTIFY phaseChanged)
    Q_PROPERTY(bool monitoring READ isMonitoring NOTIFY phaseChanged)
    Q_PROPERTY(bool showWelcome READ showsWelcome NOTIFY welcomeChanged)
    Q_PROPERTY(QString aiUnavailableReason READ aiUnavailableReason NOTIFY summaryChanged)

    Q_PROPERTY(bool hasReport READ hasReport NOTIFY reportChanged)
    Q_PROPERTY(QVariantList growth READ growth NOTIFY reportChanged)
    Q_PROPERTY(QString growthSince READ growthSince NOTIFY reportChanged)
    Q_PROPERTY(QString freeNow READ freeNowText NOTIFY freeChanged)
    /// True below the limit at which the user wants to be warned.
    Q_PROPERTY(bool spaceIsLow READ isSpaceLow NOTIFY freeChanged)
    Q_PROPERTY(QString capacity READ capacityText NOTIFY freeChanged)
    Q_PROPERTY(double usedShare READ usedShare NOTIFY freeChanged)
    Q_PROPERTY(QString systemSpace READ systemSpaceText NOTIFY freeChanged)
    /// Empty when everything could be read.
    Q_PROPERTY(QString unreadable READ unreadableText NOTIFY reportChanged)
    Q_PROPERTY(QString safeRecoverable READ safeRecoverableText NOTIFY reportChanged)
    Q_PROPERTY(QString summary READ summaryText NOTIFY summaryChanged)
    Q_PROPERTY(bool summaryByAI READ isSummaryByAI NOTIFY summaryChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchChanged)
    Q_PROPERTY(int focusSearch READ focusSearch NOTIFY searchChanged)
    Q_PROPERTY(QString hovered READ hovered WRITE setHovered NOTIFY hoverChanged)
    Q_PROPERTY(QString mapHovered READ mapHovered WRITE setMapHovered NOTIFY hoverChanged)
    Q_PROPERTY(QString scrollToRow READ scrollToRow NOTIFY scrollChanged)
    Q_PROPERTY(QString flashRow READ flashRow NOTIFY scrollChanged)
    Q_PROPERTY(bool canExplain READ canExplain NOTIFY reportChanged)

    Q_PROPERTY(QString goalText READ goalText NOTIFY selectionChanged)
    Q_PROPERTY(QString goalMeterText READ goalMeterText NOTIFY selectionChanged)
    Q_PROPERTY(double goalFraction READ goalFraction NOTIFY selectionChanged)
    Q_PROPERTY(bool isGoalReached READ isGoalReached NOTIFY selectionChanged)
    Q_PROPERTY(qint64 selectedBytes READ selectedBytes NOTIFY selectionChanged)
    Q_PROPERTY(qint64 selectedTrashBytes READ selectedTrashBytes NOTIFY selectionChanged)
    Q_PROPERTY(qint64 selectedToolBytes READ selectedToolBytes NOTIFY selectionChanged)
    Q_PROPERTY(QString selectedText READ selectedBytesText NOTIFY selectionChanged)
    /// True while what is ticked may be changed as a whole, and cleaned.
    Q_PROPERTY(bool mayClean READ mayClean NOTIFY phaseChanged)
    Q_PROPERTY(bool hasTicked READ hasTicked NOTIFY selectionChanged)
    Q_PROPERTY(bool confirming READ isConfirming NOTIFY confirmingChanged)
    Q_PROPERTY(QString confirmationText READ confirmationText NOTIFY confirmingChanged)
    Q_PROPERTY(QString cleanTitle READ cleanTitleText NOTIFY selectionChanged)
    Q_PROPERTY(QString cleanHelp READ cleanHelpText NOTIFY selectionChanged)

    Q_PROPERTY(qint64 holdingBytes READ holdingBytes NOTIFY holdingChanged)
    Q_PROPERTY(QString holdingTitle READ holdingTitle NOTIFY holdingChanged)
    Q_PROPERTY(QString holdingText READ holdingText NOTIFY holdingChanged)
    Q_PROPERTY(QString holdingQuestion READ holdingQuestion NOTIFY holdingChanged)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY holdingChanged)
    Q_PROPERTY(bool confirmingEmpty READ isConfirmingEmpty NOTIFY confirmingChanged)
    Q_PROPERTY(bool confirmingEmptyFromSettings READ isConfirmingEmptyFromSettings NOTIFY confirmingChanged)
    Q_PROPERTY(QStringList lastFailures READ lastFailures NOTIFY outcomesChanged)
    Q_PROPERTY(bool celebration READ isCelebrating NOTIFY celebrationChanged)
    Q_PROPERTY(QImage celebrationImage READ celebrationImage NOTIFY celebrationChanged)
    Q_PROPERTY(QString celebrationText READ celebrationText NOTIFY celebrationChanged)
    Q_PROPERTY(QVariantMap archiveRequest READ archiveRequest NOTIFY archiveChanged)
    Q_PROPERTY(QString archiveRefusalTitle READ archiveRefusalTitle NOTIFY archiveChanged)
    /// Empty while nothing was refused.
    Q_PROPERTY(QString archiveRefusalMessage READ archiveRefusalMessage NOTIFY archiveChanged)
    Q_PROPERTY(QString autoCleanStatus READ autoCleanStatusText NOTIFY autoCleanStatusChanged)
    Q_PROPERTY(bool launchAtLogin READ launchesAtLogin WRITE setLaunchAtLogin NOTIFY loginChanged)
    Q_PROPERTY(QString launchAtLoginError READ launchAtLoginError NOTIFY loginChanged)
    Q_PROPERTY(QVariantList otherVolumes READ otherVolumeList NOTIFY volumesChanged)

  public:
    explicit AppModel(AppServices services, QObject* parent = nullptr);
    /// Returns when all work has stopped.
    ~AppModel() override;

    // Scanning.
    /// Called once, when the main window is first shown.
    Q_INVOKABLE void start();
    Q_INVOKABLE void finishWelcome();
    /// Both passes; nothing happens while something else goes on.
    Q_INVOKABLE void scan();
    /// Asks what goes on to stop: a cleanup after the action in hand, a second time also a tool that runs.
    Q_INVOKABLE void stop();
    Q_INVOKABLE void explain();
    Q_INVOKABLE void refreshSummary();
    /// One look of the monitor at the disk, which may begin a scan, warn, or clean.
    Q_INVOKABLE void look();
    Q_INVOKABLE void refreshVolumes();
    Q_INVOKABLE void openVolume(int index);
    /// Shows all of the home on the map, whatever rules know of it.
    Q_INVOKABLE void openHome(const QString& title);

    /// Shows that folder on the map, as soon as no scan would take it off again.
    void openFolder(const std::string& path);

    // What is ticked.
    Q_INVOKABLE void toggle(const QString& key);
    Q_INVOKABLE void selectSafe();
    Q_INVOKABLE void deselectAll();
    Q_INVOKABLE void raiseGoal();
    Q_INVOKABLE void lowerGoal();
    Q_INVOKABLE void search() { ++focusSearch_, emit searchChanged(); }
    /// Scrolls the list to the row and lights it for a moment.
    Q_INVOKABLE void revealRow(const QString& key);
    /// The path that a row or tile stands for, as bytes that `Settings::protectPath` takes; empty for
    /// several.
    [[nodiscard]] std::string pathOf(const QString& key) const;
    Q_INVOKABLE void protect(const QString& key);
    /// True when the row or tile stands for something on the disk.
    Q_INVOKABLE [[nodiscard]] bool canPreview(const QString& key) const;
    /// Shows what the row or tile stands for, without another program.
    Q_INVOKABLE void showPreview(const QString& key);
    /// Finds out what the explanation of a folder that no rule knows rests on; its row shows it then.
    Q_INVOKABLE void gatherEvidence(const QString& key);

    // Cleaning.
    Q_INVOKABLE void requestClean();
    Q_INVOKABLE void cancelClean();
    Q_INVOKABLE void clean();
    Q_INVOKABLE void undoLastCleanup();
    Q_INVOKABLE void requestEmpty(bool isFromSettings);
    Q_INVOKABLE void cancelEmpty();
    Q_INVOKABLE void emptyHolding();
    /// Draws the card of a cleanup and shows it.
    void celebrate(const ShareStats& stats);
    Q_INVOKABLE void closeCelebration();
    Q_INVOKABLE void saveShareImage();
    Q_INVOKABLE void copyCelebrationImage();
    Q_INVOKABLE void dismissNotice() { setNotice({}); }
    Q_INVOKABLE void refreshHolding();

    // Archiving.
    /// Finds out what archiving the row's or tile's one path would save; then `archiveRequest` asks, or
    /// `archiveRefusalMessage` says why not.
    Q_INVOKABLE void requestArchive(const QString& key);
    Q_INVOKABLE void archive();
    Q_INVOKABLE void cancelArchive();

    [[nodiscard]] bool isDemo() const { return services_.mode.isDemo; }
    [[nodiscard]] bool isCapturing() const { return services_.mode.isCapturing; }
    [[nodiscard]] QString home() const;
    [[nodiscard]] QString demoNotice() const;
    [[nodiscard]] Settings* settings() { return &settings_; }
    [[nodiscard]] RowList* rows() { return &rows_; }
    [[nodiscard]] MapModel* map() { return &map_; }
    [[nodiscard]] HelpDesk* help() { return &help_; }
    [[nodiscard]] AgentDesk* agents() { return &agents_; }
    [[nodiscard]] PreviewDesk* preview() { return &preview_; }

    [[nodiscard]] const Phase& phase() const { return phase_; }
    [[nodiscard]] QString phaseName() const;
    [[nodiscard]] bool isBusy() const { return !isIdle(phase_); }
    [[nodiscard]] QString statusText() const;
    [[nodiscard]] QString progressText() const;
    [[nodiscard]] QString notice() const;
    [[nodiscard]] bool hasNoticeDetails() const { return noticeHasDetails_; }
    [[nodiscard]] bool isStarted() const { return started_; }
    [[nodiscard]] bool isMonitoring() const { return monitoring_; }
    [[nodiscard]] bool isLooking() const { return isLooking_; }
    [[nodiscard]] bool showsWelcome() const { return showWelcome_; }
    [[nodiscard]] QString aiUnavailableReason() const;

    [[nodiscard]] bool hasReport() const { return report_ != nullptr; }
    [[nodiscard]] const lumo::ScanReport* report() const { return report_.get(); }
    [[nodiscard]] const TickedPlan& plan() const { return plan_; }
    [[nodiscard]] QVariantList growth() const;
    [[nodiscard]] QString growthSince() const;
    [[nodiscard]] std::optional<std::int64_t> freeNow() const { return freeNow_; }
    [[nodiscard]] QString freeNowText() const;
    [[nodiscard]] bool isSpaceLow() const;
    [[nodiscard]] QString capacityText() const;
    [[nodiscard]] double usedShare() const;
    [[nodiscard]] QString systemSpaceText() const;
    [[nodiscard]] QString unreadableText() const;
    [[nodiscard]] QString safeRecoverableText() const;
    [[nodiscard]] QString summaryText() const;
    [[nodiscard]] bool isSummaryByAI() const { return summary_.byAI; }
    [[nodiscard]] QString searchText() const { return searchText_; }
    void setSearchText(const QString& text);
    [[nodiscard]] int focusSearch() const { return focusSearch_; }
    [[nodiscard]] QString hovered() const { return hovered_; }
    void setHovered(const QString& key);
    [[nodiscard]] QString mapHovered() const { return mapHovered_; }
    void setMapHovered(const QString& key);
    [[nodiscard]] QString scrollToRow() const { return scrollToRow_; }
    [[nodiscard]] QString flashRow() const { return flashRow_; }
    [[nodiscard]] bool canExplain() const;

    [[nodiscard]] QString goalText() const;
    [[nodiscard]] QString goalMeterText() const;
    [[nodiscard]] double goalFraction() const;
    [[nodiscard]] bool isGoalReached() const;
    [[nodiscard]] qint64 selectedBytes() const { return shares_.total; }
    [[nodiscard]] qint64 selectedTrashBytes() const { return shares_.trash; }
    [[nodiscard]] qint64 selectedToolBytes() const { return shares_.tool; }
    [[nodiscard]] QString selectedBytesText() const;
    [[nodiscard]] bool mayClean() const { return maySelectSafe(phase_) && !waiting_; }
    [[nodiscard]] bool hasTicked() const { return !plan_.selectedActions().empty(); }
    [[nodiscard]] bool isConfirming() const { return confirming_; }
    [[nodiscard]] QString confirmationText() const;
    [[nodiscard]] QString cleanTitleText() const;
    [[nodiscard]] QString cleanHelpText() const;

    [[nodiscard]] qint64 holdingBytes() const { return heldTotals_.bytes; }
    [[nodiscard]] QString holdingTitle() const;
    [[nodiscard]] QString holdingText() const;
    [[nodiscard]] QString holdingQuestion() const;
    [[nodiscard]] bool canUndo() const { return held_.canUndo; }
    [[nodiscard]] bool isConfirmingEmpty() const { return confirmingEmpty_; }
    [[nodiscard]] bool isConfirmingEmptyFromSettings() const { return confirmingEmptyFromSettings_; }
    [[nodiscard]] const std::vector<lumo::CleanupOutcome>& lastOutcomes() const { return lastOutcomes_; }
    [[nodiscard]] QStringList lastFailures() const;
    [[nodiscard]] const std::optional<ShareStats>& lastShare() const { return lastShare_; }
    [[nodiscard]] bool isCelebrating() const { return celebration_.has_value(); }
    [[nodiscard]] QString celebrationText() const;
    [[nodiscard]] const QImage& celebrationImage() const { return celebrationImage_; }
    /// "title", "message" and "acceptText" of the question; empty while nothing is asked.
    [[nodiscard]] QVariantMap archiveRequest() const;
    [[nodiscard]] QString archiveRefusalTitle() const;
    [[nodiscard]] QString archiveRefusalMessage() const;
    [[nodiscard]] QString autoCleanStatusText() const;
    [[nodiscard]] bool launchesAtLogin() const { return services_.startsAtLogin(); }
    void setLaunchAtLogin(bool isOn);
    [[nodiscard]] QString launchAtLoginError() const;
    [[nodiscard]] QVariantList otherVolumeList() const;

  signals:
    void phaseChanged();
    void statusChanged();
    void noticeChanged();
    void welcomeChanged();
    void reportChanged();
    void freeChanged();
    void summaryChanged();
    void searchChanged();
    void hoverChanged();
    void scrollChanged();
    void selectionChanged();
    void confirmingChanged();
    void holdingChanged();
    void outcomesChanged();
    void celebrationChanged();
    void archiveChanged();
    void autoCleanStatusChanged();
    void loginChanged();
    void volumesChanged();

  private:
    /// What the work in hand is told and tells, shared with its thread.
    struct Work {
        std::stop_source stop;
        std::stop_source cancelTool;
        lumo::ScanProgress scan;
        std::atomic<std::size_t> action = 0; ///< The one in hand of a cleanup.
        std::vector<std::string> titles;     ///< Of its actions; not changed once it has begun.
        lumo::Archiver::ArchiveProgress archive;
    };

    // Scanning.
    void beginScan();
    void runPass(ScanPass pass);
    void passEnded(ScanPass pass, std::optional<ScanResult> result);
    void apply(ScanResult result);
    void finishScan();
    void loadDemo();
    void purge();
    void startMonitoring();
    void lookAt(const lumo::VolumeInfo& volume);
    void checkLowSpace();
    void autoCleanIfDue();
    void explained(std::map<std::string, lumo::Explanation> explanations);
    void takeCertain(const std::map<std::string, lumo::Explanation>& certain);

    void forgetEvidence();
    void replan();
    /// What a plan for this window takes into account besides what is stored.
    [[nodiscard]] PlanRequest planRequest() const;
    void askModel();
    [[nodiscard]] HelpSources helpSources() const;

    // Cleaning.
    /// A cleanup, to be carried out in the background.
    using Cleanup =
        std::function<lumo::Result<Cleaned>(const PlanRequest&, const Desk&, const CleanupWatch&)>;
    using WhenCleaned = std::function<void(const lumo::Result<Cleaned>&, const lumo::VolumeInfo& after)>;
    void runCleanup(const Cleanup& cleanup, const WhenCleaned& whenDone);
    void cleanAgreed(const Agreement& agreed);
    void cleaned(const lumo::Result<Cleaned>& result, const lumo::VolumeInfo& after);
    void cleanedByItself(const lumo::Result<Cleaned>& result);
    void setShare(const ShareStats& stats);
    void takeHeld(HeldState held);
    /// What a change of the home came to.
    struct Changed {
        std::string notice;
        std::int64_t freed = 0;
        bool putsBack = false; ///< Something that was set aside is where it was.
    };
    /// Runs the change in the background, says what came of it, and scans again.
    void change(const std::string& doing, const std::function<lumo::Result<Changed>(const Desk&)>& change);
    void say(const lumo::Result<Changed>& changed);

    /// An item that may be archived, and what that would come to.
    struct Archivable {
        std::string path;
        lumo::Archiver::Estimate estimate;
    };
    void estimated(const Archivable& item);
    void archived(const std::expected<Archived, NotArchived>& result);

    void setConfirming(bool isAsked);
    /// True while the user has been asked something, or has said yes to what has yet to begin: then nothing
    /// begins by itself.
    [[nodiscard]] bool isAsking() const;
    void setPhase(Phase phase);
    void setNotice(const std::string& notice, bool hasDetails = false);
    void setFree(const lumo::VolumeInfo& volume);
    void selectionHasChanged();
    void showRows();
    void showMap();
    void settingsHaveChanged();
    std::shared_ptr<Work> beginWork();

    AppServices services_;
    Settings settings_;
    TickedPlan plan_;
    Emptied emptied_;
    std::map<std::string, lumo::Explanation> explanations_;
    std::map<std::string, std::string> evidence_; ///< By path, in words; empty while it is gathered.
    RowList rows_;

    Phase phase_;
    std::shared_ptr<Work> work_;
    /// What the user agreed to and waits for the scan in hand to end.
    std::optional<Agreement> waiting_;
    std::string doing_; ///< What is said of the work instead of the phase's own words.
    std::string notice_;
    bool noticeHasDetails_ = false;
    bool started_ = false;
    bool monitoring_ = false;
    bool showWelcome_ = false;
    bool isLooking_ = false;

    std::shared_ptr<const lumo::ScanReport> report_;
    std::shared_ptr<const lumo::ScanReport> fullReport_; ///< The last one of a full pass.
    std::set<std::string> cleanedSince_;                 ///< What it still has and is gone.
    std::vector<Row> allRows_;
    lumo::Growth growth_;
    lumo::VolumeInfo volume_;
    std::optional<std::int64_t> freeNow_;
    std::optional<lumo::SystemSpace> systemSpace_;
    std::optional<lumo::Date> lastScanDate_;
    std::int64_t recoverable_ = 0;
    std::int64_t purged_ = 0; ///< Since the last scan began.
    lumo::Date wallAnchor_;   ///< A moment on both clocks, to notice when the wall clock was set.
    double steadyAnchor_ = 0;
    std::int64_t freeBeforeLastCleanup_ = 0;
    lumo::DiskSummaryText summary_;
    std::optional<std::string> aiUnavailableReason_;
    std::vector<Volume> otherVolumes_;

    std::string folderWanted_; ///< To be shown when the scan has ended; empty for none.
    QString searchText_;
    int focusSearch_ = 0;
    QString hovered_;
    QString mapHovered_;
    QString scrollToRow_;
    QString flashRow_;

    CleanupShares shares_;
    lumo::ResolvedPaths shown_;    ///< What the paths of the plan that is shown meant.
    Agreement agreed_;             ///< What the confirmation that is shown is about.
    std::int64_t plannedDays_ = 0; ///< The preferences by which the plan was made.
    QStringList plannedFolders_;
    bool replansWhenStored_ = false;
    int replans_ = 0; ///< Of several that were begun only the last one counts.
    bool confirming_ = false;
    bool confirmingEmpty_ = false;
    bool confirmingEmptyFromSettings_ = false;
    HeldState held_;
    std::vector<lumo::Holding::Batch> emptying_; ///< What the question about emptying is about.
    HeldTotals heldTotals_;
    std::vector<lumo::CleanupOutcome> lastOutcomes_;
    std::optional<CleanupSums> lastCleanup_; ///< For the status line, until something else happens.
    std::optional<ShareStats> lastShare_;
    std::optional<ShareStats> celebration_;
    QImage celebrationImage_;
    std::optional<Archivable> archivable_;
    std::string archiveRefusal_;
    std::optional<std::string> launchAtLoginError_;

    QTimer monitor_;
    QTimer ticker_;         ///< While something goes on, its progress is read a few times a second.
    Background background_; ///< Goes first, since its work uses the rest.
    MapModel map_;          ///< Uses the background.
    HelpDesk help_;
    AgentDesk agents_;
    PreviewDesk preview_;
};

} // namespace tarvo
