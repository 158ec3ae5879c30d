#pragma once

#include "TarvoApp/App/AppModel.h"

#include <QQmlEngine>
#include <QtQmlIntegration/qqmlintegration.h>

/// The names by which windows know the application's model, which belongs to whoever made the engine.
namespace tarvo {

struct AppInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::AppModel)
    QML_NAMED_ELEMENT(App)
    QML_SINGLETON

  public:
    static constexpr const char* property = "app";
    static AppModel* create(QQmlEngine* engine, QJSEngine*) {
        auto* const app = qobject_cast<AppModel*>(engine->property(property).value<QObject*>());
        QJSEngine::setObjectOwnership(app, QJSEngine::CppOwnership);
        return app;
    }
};

/// The kinds that views tell apart.
namespace KindsInWindows {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(tarvo::Kinds)
QML_NAMED_ELEMENT(Kinds)
} // namespace KindsInWindows

/// With the kinds of previews, which are its own.
struct PreviewDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::PreviewDesk)
    QML_NAMED_ELEMENT(PreviewKinds)
    QML_UNCREATABLE("The application has it.")
};

// The parts of the application's model, which views have from there.
struct SettingsInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::Settings)
    QML_ANONYMOUS
};

struct ItemsDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::ItemsDesk)
    QML_ANONYMOUS
};

struct RowListInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::RowList)
    QML_ANONYMOUS
};

struct ExplorerDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::ExplorerDesk)
    QML_ANONYMOUS
};

struct ExplorerListInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::ExplorerList)
    QML_ANONYMOUS
};

struct PhotosDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::PhotosDesk)
    QML_ANONYMOUS
};

struct PhotoListInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::PhotoList)
    QML_ANONYMOUS
};

struct PhotoPlacesInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::PhotoPlaces)
    QML_ANONYMOUS
};

struct MapModelInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::MapModel)
    QML_ANONYMOUS
};

struct TileListInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::TileList)
    QML_NAMED_ELEMENT(TileList)
    QML_UNCREATABLE("The map has them.")
};

struct ActivityInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::Activity)
    QML_ANONYMOUS
};

struct QuestionDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::QuestionDesk)
    QML_ANONYMOUS
};

struct VolumesDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::VolumesDesk)
    QML_ANONYMOUS
};

struct ScanningDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::ScanningDesk)
    QML_ANONYMOUS
};

struct TickedDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::TickedDesk)
    QML_ANONYMOUS
};

struct ExplainingDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::ExplainingDesk)
    QML_ANONYMOUS
};

struct ListDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::ListDesk)
    QML_ANONYMOUS
};

struct PlacesDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::PlacesDesk)
    QML_ANONYMOUS
};

struct GrowthDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::GrowthDesk)
    QML_ANONYMOUS
};

struct CelebrationDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::CelebrationDesk)
    QML_ANONYMOUS
};

struct HoldingDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::HoldingDesk)
    QML_ANONYMOUS
};

struct HistoryDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::HistoryDesk)
    QML_ANONYMOUS
};

struct CleaningDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::CleaningDesk)
    QML_ANONYMOUS
};

struct ArchivingDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::ArchivingDesk)
    QML_ANONYMOUS
};

struct FilesDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::FilesDesk)
    QML_ANONYMOUS
};

struct PickDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::PickDesk)
    QML_ANONYMOUS
};

struct MonitorDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::MonitorDesk)
    QML_ANONYMOUS
};

struct LoginDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::LoginDesk)
    QML_ANONYMOUS
};

struct HelpDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::HelpDesk)
    QML_ANONYMOUS
};

struct AgentDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::AgentDesk)
    QML_ANONYMOUS
};

} // namespace tarvo
