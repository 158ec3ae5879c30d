#include "TarvoApp/Views/MainWindow.h"

#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/Views/PhotoPictures.h"
#include "TarvoApp/Views/WindowPlace.h"
#include "TarvoApp/Views/WindowTypes.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QQuickWindow>
#include <QUrl>

#include <array>
#include <utility>

// The linker leaves out what nobody calls, and with it the types of the windows.
extern void qml_register_types_Tarvo();

namespace tarvo {

MainWindow::MainWindow(AppModel& app, Begin begin) : app_(app), desktop_(app) {
    desktop_.setBeginsInPanel(begin == Begin::inPanel);
    [[maybe_unused]] volatile auto registration = &qml_register_types_Tarvo;
    engine_.setProperty(AppInWindows::property, QVariant::fromValue<QObject*>(&app));
    engine_.setProperty(Desktop::property, QVariant::fromValue<QObject*>(&desktop_));
    engine_.setUiLanguage(desktop_.language());
    // The dialogs that are not ours speak the same language.
    for (const auto& [translator, part] :
         {std::pair(&dialogWords_, "qtdeclarative"), {&systemWords_, "qtbase"}}) {
        if (translator->load(QLocale(desktop_.language()), QLatin1String(part), QStringLiteral("_"),
                             QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
            QCoreApplication::installTranslator(translator);
        }
    }
    engine_.addImageProvider(QStringLiteral("photos"), new PhotoPictures(app.photos()->thumbnails()));
    engine_.addImportPath(QStringLiteral(":/qt/qml"));
    // By the module's name: loading the file alone would not register what the module has from C++.
    engine_.loadData("import Tarvo\nMain {}", QUrl(QStringLiteral("qrc:/qt/qml/Window.qml")));
    if (window() != nullptr && !app.isDemo() && !app.isCapturing()) {
        WindowPlace::remember(*window(), *app.settings());
    }
    app.start();
}

QQuickWindow* MainWindow::window() const {
    const QList<QObject*> roots = engine_.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(roots.front());
}

QQuickWindow* MainWindow::open(Side side) {
    constexpr std::array<std::pair<const char*, const char*>, 7> names{{{"openSettings", "settings"},
                                                                        {"openHelp", "help"},
                                                                        {"openNews", "news"},
                                                                        {"openPreview", "preview"},
                                                                        {"openHistory", "history"},
                                                                        {"openGrowth", "growth"},
                                                                        {"openPhotos", "photos"}}};
    const auto& [operation, name] = names.at(static_cast<std::size_t>(side));
    auto* const sides = window()->findChild<QObject*>(QStringLiteral("sides"));
    if (sides == nullptr || !QMetaObject::invokeMethod(sides, operation)) {
        return nullptr;
    }
    const auto* const loader = sides->findChild<QObject*>(QLatin1String(name));
    return qobject_cast<QQuickWindow*>(loader->property("item").value<QObject*>());
}

void MainWindow::raise() const {
    if (QQuickWindow* const shown = window()) {
        Desktop::bringBack(shown);
    }
}

void MainWindow::answer(const StartWish& wish) {
    raise();
    if (!wish.folder.empty()) {
        app_.places()->openFolder(wish.folder);
    }
    if (!wish.language.isEmpty() && wish.language != desktop_.language()) {
        app_.activity()->say(
            lumo::Words{"Esta ventana sigue en español: para verla en inglés, sal con Ctrl+Q "
                        "y vuelve a abrirla.",
                        "This window stays in English: to see it in Spanish, quit with Ctrl+Q "
                        "and open it again."}
                .in());
    }
}

} // namespace tarvo
