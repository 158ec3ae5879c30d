#pragma once

#include "TarvoApp/App/AgentDesk.h"
#include "TarvoApp/App/ArchivingDesk.h"
#include "TarvoApp/App/CelebrationDesk.h"
#include "TarvoApp/App/CleaningDesk.h"
#include "TarvoApp/App/ExplainingDesk.h"
#include "TarvoApp/App/ExplorerDesk.h"
#include "TarvoApp/App/FilesDesk.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/GrowthDesk.h"
#include "TarvoApp/App/HelpDesk.h"
#include "TarvoApp/App/HistoryDesk.h"
#include "TarvoApp/App/HoldingDesk.h"
#include "TarvoApp/App/ItemsDesk.h"
#include "TarvoApp/App/LoginDesk.h"
#include "TarvoApp/App/MonitorDesk.h"
#include "TarvoApp/App/PhotosDesk.h"
#include "TarvoApp/App/PickDesk.h"
#include "TarvoApp/App/PlacesDesk.h"
#include "TarvoApp/App/PreviewDesk.h"
#include "TarvoApp/App/ScanningDesk.h"
#include "TarvoApp/App/TickedDesk.h"
#include "TarvoApp/App/VolumesDesk.h"

#include <QObject>
#include <QString>

#include <memory>

namespace tarvo {

/// The one state object of the application, in parts: each holds its records and has its operations, and
/// windows bind to the part. What is decided is decided by functions of the model over records. Here is how
/// the parts begin, and how a scan's result goes to all of them. All of it lives on the main thread; what
/// takes long runs in the background, one thing at a time. When it goes, the action in hand of a cleanup is
/// finished, and nothing else.
class AppModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isDemo READ isDemo CONSTANT)
    Q_PROPERTY(bool isCapturing READ isCapturing CONSTANT)
    Q_PROPERTY(QString home READ home CONSTANT)
    Q_PROPERTY(QString demoNotice READ demoNotice CONSTANT)
    Q_PROPERTY(bool started READ isStarted NOTIFY startedChanged)
    Q_PROPERTY(bool showWelcome READ showsWelcome NOTIFY welcomeChanged)

    Q_PROPERTY(tarvo::Settings* settings READ settings CONSTANT)
    Q_PROPERTY(tarvo::Activity* activity READ activity CONSTANT)
    Q_PROPERTY(tarvo::QuestionDesk* question READ question CONSTANT)
    Q_PROPERTY(tarvo::VolumesDesk* volumes READ volumes CONSTANT)
    Q_PROPERTY(tarvo::ScanningDesk* scanning READ scanning CONSTANT)
    Q_PROPERTY(tarvo::TickedDesk* ticked READ ticked CONSTANT)
    Q_PROPERTY(tarvo::ItemsDesk* items READ items CONSTANT)
    Q_PROPERTY(tarvo::ExplainingDesk* explaining READ explaining CONSTANT)
    Q_PROPERTY(tarvo::PlacesDesk* places READ places CONSTANT)
    Q_PROPERTY(tarvo::ListDesk* list READ list CONSTANT)
    /// The list's and the map's own, which most views want.
    Q_PROPERTY(tarvo::RowList* rows READ rows CONSTANT)
    Q_PROPERTY(tarvo::MapModel* map READ map CONSTANT)
    Q_PROPERTY(tarvo::GrowthDesk* growth READ growth CONSTANT)
    Q_PROPERTY(tarvo::CelebrationDesk* celebrating READ celebrating CONSTANT)
    Q_PROPERTY(tarvo::HoldingDesk* holding READ holding CONSTANT)
    Q_PROPERTY(tarvo::HistoryDesk* history READ history CONSTANT)
    Q_PROPERTY(tarvo::CleaningDesk* cleaning READ cleaning CONSTANT)
    Q_PROPERTY(tarvo::ExplorerDesk* explorer READ explorer CONSTANT)
    Q_PROPERTY(tarvo::PhotosDesk* photos READ photos CONSTANT)
    Q_PROPERTY(tarvo::ArchivingDesk* archiving READ archiving CONSTANT)
    Q_PROPERTY(tarvo::FilesDesk* files READ files CONSTANT)
    Q_PROPERTY(tarvo::PickDesk* picking READ picking CONSTANT)
    Q_PROPERTY(tarvo::MonitorDesk* monitor READ monitor CONSTANT)
    Q_PROPERTY(tarvo::LoginDesk* login READ login CONSTANT)
    Q_PROPERTY(tarvo::HelpDesk* help READ help CONSTANT)
    Q_PROPERTY(tarvo::AgentDesk* agents READ agents CONSTANT)
    Q_PROPERTY(tarvo::PreviewDesk* preview READ preview CONSTANT)

  public:
    explicit AppModel(AppServices services, QObject* parent = nullptr);
    /// Returns when all work has stopped.
    ~AppModel() override;

    /// Called once, when the main window is first shown.
    Q_INVOKABLE void start();
    Q_INVOKABLE void finishWelcome();

    [[nodiscard]] bool isDemo() const { return services_.mode.isDemo; }
    [[nodiscard]] bool isCapturing() const { return services_.mode.isCapturing; }
    [[nodiscard]] QString home() const;
    [[nodiscard]] QString demoNotice() const;
    [[nodiscard]] bool isStarted() const { return started_; }
    [[nodiscard]] bool showsWelcome() const { return showWelcome_; }

    [[nodiscard]] Settings* settings() { return &settings_; }
    [[nodiscard]] Activity* activity() { return &activity_; }
    [[nodiscard]] QuestionDesk* question() { return &question_; }
    [[nodiscard]] VolumesDesk* volumes() { return &volumes_; }
    [[nodiscard]] ScanningDesk* scanning() { return &scanning_; }
    [[nodiscard]] TickedDesk* ticked() { return &ticked_; }
    [[nodiscard]] ItemsDesk* items() { return &items_; }
    [[nodiscard]] ExplainingDesk* explaining() { return &explaining_; }
    [[nodiscard]] PlacesDesk* places() { return &places_; }
    [[nodiscard]] ListDesk* list() { return &list_; }
    [[nodiscard]] RowList* rows() { return list_.rows(); }
    [[nodiscard]] MapModel* map() { return places_.map(); }
    [[nodiscard]] GrowthDesk* growth() { return &growth_; }
    [[nodiscard]] CelebrationDesk* celebrating() { return &celebrating_; }
    [[nodiscard]] HoldingDesk* holding() { return &holding_; }
    [[nodiscard]] HistoryDesk* history() { return &history_; }
    [[nodiscard]] CleaningDesk* cleaning() { return &cleaning_; }
    [[nodiscard]] ExplorerDesk* explorer() { return &explorer_; }
    [[nodiscard]] PhotosDesk* photos() { return &photos_; }
    [[nodiscard]] ArchivingDesk* archiving() { return &archiving_; }
    [[nodiscard]] FilesDesk* files() { return &files_; }
    [[nodiscard]] PickDesk* picking() { return &picking_; }
    [[nodiscard]] MonitorDesk* monitor() { return &monitor_; }
    [[nodiscard]] LoginDesk* login() { return &login_; }
    [[nodiscard]] HelpDesk* help() { return &help_; }
    [[nodiscard]] AgentDesk* agents() { return &agents_; }
    [[nodiscard]] PreviewDesk* preview() { return &preview_; }

  signals:
    void startedChanged();
    void welcomeChanged();

  private:
    void begin();
    /// Gives every part what it wants of a pass.
    void take(const std::shared_ptr<ScanResult>& result);
    void scanEnded();

    AppServices services_;
    Settings settings_;
    Background background_;
    Activity activity_;
    QuestionDesk question_;
    Ground ground_; ///< The parts below stand on it; each may use those above it.
    VolumesDesk volumes_;
    TickedDesk ticked_;
    ScanningDesk scanning_;
    ItemsDesk items_;
    ExplainingDesk explaining_;
    PreviewDesk preview_;
    ListDesk list_;
    CelebrationDesk celebrating_;
    CleaningDesk cleaning_;
    PlacesDesk places_;
    GrowthDesk growth_;
    HoldingDesk holding_;
    HistoryDesk history_;
    ExplorerDesk explorer_;
    PhotosDesk photos_;
    ArchivingDesk archiving_;
    FilesDesk files_;
    PickDesk picking_;
    MonitorDesk monitor_;
    LoginDesk login_;
    HelpDesk help_;
    AgentDesk agents_;
    bool started_ = false;
    bool showWelcome_ = false;
};

} // namespace tarvo
