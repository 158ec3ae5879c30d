#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"
#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/App/DesktopServices.h"
#include "TarvoApp/App/Notifier.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoApp/Views/CommandLineWords.h"
#include "TarvoApp/Views/MainWindow.h"
#include "TarvoApp/Views/OneInstance.h"
#include "TarvoApp/Views/Pictures.h"
#include "TarvoApp/Views/ReleaseNotes.h"
#include "TarvoModel/Flows/GivenPath.h"
#include "TarvoModel/Flows/LanguageChoice.h"

#include <QCommandLineParser>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QIcon>
#include <QQuickWindow>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>

namespace {

using tarvo::bytesOf;
using tarvo::shown;

/// Qt's own words on a command line are English.
void speakOfCommandLine(tarvo::CommandLineWords& spanish) {
    if (lumo::currentLanguage() == lumo::Language::es) {
        QCoreApplication::installTranslator(&spanish);
    }
}

void describe(QCommandLineParser& parser) {
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(
        shown(lumo::Words{"carpeta", "folder"}.in()),
        shown(lumo::Words{"la carpeta que enseña el mapa", "the folder that the map shows"}.in()),
        shown(lumo::Words{"[carpeta]", "[folder]"}.in()));
    parser.addOptions({
        {"oculta",
         shown(
             lumo::Words{"empieza en el panel, sin ventana", "begins in the panel, without a window"}.in())},
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

/// One line on standard error.
void say(const std::string& line) {
    std::fputs((line + "\n").c_str(), stderr);
}

/// The folder of that name, from the root on; absent when there is none, which has been said.
std::optional<std::string> folderAt(const std::string& name) {
    std::string path = lumo::platform::absolutePath(name).value_or("");
    if (path.empty() || !lumo::platform::isFolderThroughLinks(path)) {
        say("tarvo-app: " +
            lumo::Words{"no existe la carpeta {}", "there is no folder {}"}.with(lumo::printable(name)));
        return std::nullopt;
    }
    return path;
}

/// Runs until the windows are left; the folder is what the map shows first, unless it is empty.
int run(const QCommandLineParser& parser, const tarvo::RunMode& mode, const std::string& home,
        const std::string& folder) {
    tarvo::OneInstance instance(QDBusConnection::sessionBus(), home);
    const QString language = lumo::currentLanguage() == lumo::Language::es ? "es" : "en";
    if (mode.isForReal() && !instance.claim({.language = language, .folder = folder})) {
        say(folder.empty() ? lumo::Words{"Tarvo AI ya está abierto: he mostrado su ventana.",
                                         "Tarvo AI is open already: its window was shown."}
                                 .in()
                           : lumo::Words{"Tarvo AI ya está abierto: su ventana enseñará {}.",
                                         "Tarvo AI is open already: its window will show {}."}
                                 .with(lumo::printable(folder)));
        return 0;
    }
    tarvo::Notifier notifier(QDBusConnection::sessionBus(), mode);
    tarvo::AppModel app(tarvo::desktopServices(home, mode, notifier));
    if (!folder.empty()) {
        app.places()->openFolder(folder);
    }
    tarvo::MainWindow windows(app, parser.isSet("oculta") ? tarvo::MainWindow::Begin::inPanel
                                                          : tarvo::MainWindow::Begin::shown);
    if (windows.window() == nullptr) {
        return 1;
    }
    windows.desktop().setAppearance(parser.value("apariencia"));
    dress(parser, app, *windows.window());
    if (mode.isCapturing) {
        return tarvo::takePictures(windows, app, parser.value("captura")) ? 0 : 1;
    }
    QObject::connect(&instance, &tarvo::OneInstance::activated,
                     [&](const tarvo::StartWish& wish) { windows.answer(wish); });
    QObject::connect(&notifier, &tarvo::Notifier::activated, [&] { windows.raise(); });
    return QGuiApplication::exec();
}

/// False after saying what of the command line nobody understands.
bool understands(QCommandLineParser& parser) {
    if (parser.parse(QCoreApplication::arguments())) {
        return true;
    }
    say("tarvo-app: " + bytesOf(parser.errorText()));
    return false;
}

/// True when somebody says where Qt draws, which need not be a screen: without one of them it would abort.
bool canDraw() {
    return lumo::platform::hasScreen() || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") ||
           std::ranges::any_of(lumo::platform::processArguments(),
                               [](const std::string& word) { return word.ends_with("-platform"); });
}

/// Answers what needs no screen; the status to end with, absent when it takes a window.
std::optional<int> answerWithoutScreen(int count, char** arguments) {
    const auto asks = [](const std::string& word) {
        return word == "-h" || word == "--help" || word == "--help-all" || word == "-v" ||
               word == "--version";
    };
    const bool isAsked = std::ranges::any_of(lumo::platform::processArguments(), asks);
    if (!isAsked && canDraw()) {
        return std::nullopt;
    }
    const QCoreApplication application(count, arguments);
    tarvo::CommandLineWords words;
    speakOfCommandLine(words);
    QCommandLineParser parser;
    describe(parser);
    if (isAsked) {
        parser.process(application);
    } else if (!understands(parser)) {
        return 2;
    }
    say("tarvo-app: " + lumo::Words{"aquí no hay pantalla; en una terminal sirve la orden tarvo",
                                    "there is no screen here; in a terminal the command tarvo serves"}
                            .in());
    return 1;
}

/// Reads the rest of what was asked for, and does it.
int runAsAsked(const QCommandLineParser& parser, const tarvo::RunMode& mode) {
    // None is made where there is none: somebody meant another.
    auto home =
        tarvo::givenHome(parser.isSet("home") ? std::optional(bytesOf(parser.value("home"))) : std::nullopt);
    if (!home && !mode.isDemo) {
        say("tarvo-app: " + home.error().message);
        return 2;
    }
    std::optional<std::string> folder = "";
    if (!parser.positionalArguments().isEmpty()) {
        folder = folderAt(bytesOf(parser.positionalArguments().front()));
    }
    return folder ? run(parser, mode, home.value_or(""), *folder) : 2;
}

} // namespace

int main(int count, char** arguments) {
    QCoreApplication::setApplicationName(QStringLiteral("tarvo-app"));
    QCoreApplication::setApplicationVersion(tarvo::ReleaseNotes::version());
    tarvo::speakAsChosen(lumo::platform::environmentVariable("HOME").value_or(""));
    const auto mode = tarvo::RunMode::from(lumo::platform::processArguments());
    if (mode.isCapturing && !lumo::platform::hasScreen()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (const auto status = answerWithoutScreen(count, arguments)) {
        return *status;
    }
    // Panels know their items by this name, and by the same as the windows'.
    QCoreApplication::setApplicationName(QStringLiteral("ai.tarvo.TarvoAI"));
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen") {
        qputenv("QT_QUICK_BACKEND", "software");
    }
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tarvo AI"));
    QGuiApplication::setDesktopFileName(QStringLiteral("ai.tarvo.TarvoAI"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QGuiApplication application(count, arguments);
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/qt/qml/Tarvo/tarvo-ai.png")));
    tarvo::CommandLineWords words;
    speakOfCommandLine(words);
    QCommandLineParser parser;
    describe(parser);
    return understands(parser) ? runAsAsked(parser, mode) : 2;
}
