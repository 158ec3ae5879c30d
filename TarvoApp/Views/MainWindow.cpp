#include "TarvoApp/Views/MainWindow.h"

#include "TarvoApp/Views/WindowTypes.h"

#include <QQuickWindow>
#include <QUrl>

// The linker leaves out what nobody calls, and with it the types of the windows.
extern void qml_register_types_Tarvo();

namespace tarvo {

MainWindow::MainWindow(AppModel& app) : desktop_(app) {
    [[maybe_unused]] volatile auto registration = &qml_register_types_Tarvo;
    engine_.setProperty(AppInWindows::property, QVariant::fromValue<QObject*>(&app));
    engine_.setProperty(Desktop::property, QVariant::fromValue<QObject*>(&desktop_));
    engine_.setUiLanguage(desktop_.language());
    engine_.addImportPath(QStringLiteral(":/qt/qml"));
    // By the module's name: loading the file alone would not register what the module has from C++.
    engine_.loadData("import Tarvo\nMain {}", QUrl(QStringLiteral("qrc:/qt/qml/Window.qml")));
    app.start();
}

QQuickWindow* MainWindow::window() const {
    const QList<QObject*> roots = engine_.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(roots.front());
}

void MainWindow::raise() const {
    if (QQuickWindow* const shown = window()) {
        shown->show();
        shown->raise();
        shown->requestActivate();
    }
}

} // namespace tarvo
