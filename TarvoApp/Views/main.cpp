#include "LumoCore/Basics/Words.h"
#include "Platform/Environment.h"
#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/App/DesktopServices.h"
#include "TarvoApp/App/Notifier.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoApp/Views/MainWindow.h"
#include "TarvoApp/Views/OneInstance.h"
#include "TarvoApp/Views/Pictures.h"

#include <QCommandLineParser>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QIcon>
#include <QQuickWindow>

namespace {

using tarvo::bytesOf;
using tarvo::shown;

void describe(QCommandLineParser& parser) {
    parser.addHelpOption();
    parser.addOptions({
        {"demo", shown(lumo::Words{"muestra un disco inventado; no limpia nada",
                                   "shows a made-up disk; cleans nothing"}
                           .in())},
        {"bienvenida", shown(lumo::Words{"muestra la bienvenida otra vez", "shows the welcome again"}.in())},
        {"captura",
         shown(lumo::Words{"guarda imágenes de la ventana y termina", "saves pictures of the window and ends"}
                   .in()),
         shown(lumo::Words{"carpeta", "folder"}.in())},
        {"home",
         shown(lumo::Words{"la carpeta personal que se mira", "the home folder that is looked at"}.in()),
         shown(lumo::Words{"carpeta", "folder"}.in())},
        {"idioma", shown(lumo::Words{"es o en", "es or en"}.in()),
         shown(lumo::Words{"idioma", "language"}.in())},
        {"apariencia", shown(lumo::Words{"light o dark", "light or dark"}.in()),
         shown(lumo::Words{"apariencia", "appearance"}.in())},
    });
    for (const auto* hidden : {"tamano", "texto"}) {
        QCommandLineOption option(hidden, {}, hidden);
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }
}

/// For pictures: a window of that size, "900x600", and text of that scale.
void dress(const QCommandLineParser& parser, tarvo::AppModel& app, QQuickWindow& window) {
    const QStringList size = parser.value("tamano").split('x');
    if (size.size() == 2) {
        window.resize(size.front().toInt(), size.back().toInt());
    }
    if (parser.isSet("texto") && app.isDemo()) {
        app.settings()->setTextScale(parser.value("texto").toDouble());
    }
}

int run(const QCommandLineParser& parser, const tarvo::RunMode& mode) {
    tarvo::OneInstance instance(QDBusConnection::sessionBus());
    if (mode.isForReal() && !instance.claim()) {
        return 0;
    }
    const std::string home = parser.isSet("home") ? bytesOf(parser.value("home"))
                                                  : lumo::platform::environmentVariable("HOME").value_or("");
    tarvo::Notifier notifier(QDBusConnection::sessionBus(), mode);
    tarvo::AppModel app(tarvo::desktopServices(home, mode, notifier));
    tarvo::MainWindow windows(app);
    if (windows.window() == nullptr) {
        return 1;
    }
    windows.desktop().setAppearance(parser.value("apariencia"));
    dress(parser, app, *windows.window());
    if (mode.isCapturing) {
        return tarvo::takePictures(windows, app, parser.value("captura")) ? 0 : 1;
    }
    QObject::connect(&instance, &tarvo::OneInstance::activated, [&] { windows.raise(); });
    QObject::connect(&notifier, &tarvo::Notifier::activated, [&] { windows.raise(); });
    return QGuiApplication::exec();
}

} // namespace

int main(int count, char** arguments) {
    const auto mode = tarvo::RunMode::from(lumo::platform::processArguments());
    if (mode.isCapturing && !lumo::platform::hasScreen()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen") {
        qputenv("QT_QUICK_BACKEND", "software");
    }
    QGuiApplication::setApplicationName(QStringLiteral("tarvo-app"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tarvo AI"));
    QGuiApplication::setDesktopFileName(QStringLiteral("tarvo-ai"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QGuiApplication application(count, arguments);
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/qt/qml/Tarvo/tarvo-ai.png")));
    QCommandLineParser parser;
    describe(parser);
    parser.process(application);
    return run(parser, mode);
}
