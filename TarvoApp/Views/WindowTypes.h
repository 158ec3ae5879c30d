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

struct SettingsInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::Settings)
    QML_ANONYMOUS
};

struct RowListInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::RowList)
    QML_ANONYMOUS
};

struct MapModelInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::MapModel)
    QML_ANONYMOUS
};

struct HelpDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::HelpDesk)
    QML_ANONYMOUS
};

struct PreviewDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::PreviewDesk)
    QML_ANONYMOUS
};

struct AgentDeskInWindows {
    Q_GADGET
    QML_FOREIGN(tarvo::AgentDesk)
    QML_ANONYMOUS
};

} // namespace tarvo
