#include "TarvoApp/Views/Pictures.h"

#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoApp/Views/MainWindow.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QImage>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <functional>

namespace tarvo {

namespace {

/// Whether tiles of a map are still being made, a few a frame.
bool isFilling(const QQuickWindow& window) {
    const auto items = window.findChildren<QQuickItem*>();
    return std::ranges::any_of(items,
                               [](const QQuickItem* item) { return item->property("filling").toBool(); });
}

/// How long a window may take to have everything in its place, and how long it is given at least.
constexpr std::chrono::milliseconds patience{20'000};
constexpr std::chrono::milliseconds settling{400};
constexpr std::chrono::milliseconds travelling{1000};

void wait(std::chrono::milliseconds longest, const std::function<bool()>& isDone) {
    const QDeadlineTimer deadline(longest);
    while (!isDone() && !deadline.hasExpired()) {
        QEventLoop loop;
        QTimer::singleShot(std::chrono::milliseconds(20), &loop, &QEventLoop::quit);
        loop.exec();
    }
}

/// The largest tile of what recreates itself that can be opened.
QString openableKey(const MapModel& map) {
    const QString safe = shown(groupTitle(RowGroup::safe));
    for (int row = 0; row < map.count(); ++row) {
        if (map.tile(row, TileList::canZoomRole).toBool() &&
            map.tile(row, TileList::wordRole).toString() == safe) {
            return map.tile(row, TileList::keyRole).toString();
        }
    }
    return {};
}

/// The first row of the group.
QString rowKey(const RowList& rows, RowGroup group) {
    const auto found = std::ranges::find(rows.rows(), group, &Row::group);
    return found == rows.rows().end() ? QString() : keyOf(found->id);
}

/// A cleanup as the made-up disk would have had it.
ShareStats madeUpCleanup() {
    return {.freedBytes = 15'100'000'000,
            .items = {{lumo::Category::packageCache, 7'200'000'000},
                      {lumo::Category::buildOutput, 5'400'000'000},
                      {lumo::Category::appCache, 2'500'000'000}},
            .freeBefore = 38'200'000'000,
            .freeAfter = 53'300'000'000,
            .capacity = 494'000'000'000,
            .lifetimeBytes = 112'000'000'000};
}

/// Takes the pictures of one run and remembers whether all were saved.
class Photographer {
  public:
    Photographer(MainWindow& windows, const QDir& folder) : windows_(windows), folder_(folder) {}

    void take(QQuickWindow* window, const QString& name, const QString& appearance = light) {
        windows_.desktop().setAppearance(appearance);
        wait(settling, [] { return false; });
        wait(patience, [&] { return window == nullptr || !isFilling(*window); });
        const QString file =
            QStringLiteral("%1-%2-%3.png").arg(name, windows_.desktop().language(), appearance);
        isSaved_ = window != nullptr && window->grabWindow().save(folder_.filePath(file)) && isSaved_;
    }
    void takeBoth(QQuickWindow* window, const QString& name) {
        take(window, name);
        take(window, name, QStringLiteral("dark"));
    }
    [[nodiscard]] bool hasSaved() const { return isSaved_; }

  private:
    static inline const QString light = QStringLiteral("light");
    MainWindow& windows_;
    QDir folder_;
    bool isSaved_ = true;
};

/// The explorer with something marked.
void takeExplorer(Photographer& photographer, MainWindow& windows, AppModel& app) {
    QMetaObject::invokeMethod(windows.window(), "explore");
    wait(patience, [&] { return app.explorer()->entries()->count() > 1; });
    app.explorer()->toggleMark(1);
    photographer.takeBoth(windows.window(), QStringLiteral("explorer"));
    app.explorer()->clearMarks();
    app.explorer()->setOpen(false);
    windows.window()->setProperty("pane", 1);
}

void takeSettings(Photographer& photographer, MainWindow& windows) {
    QQuickWindow* const settings = windows.open(MainWindow::Side::settings);
    const QStringList tabs{"general", "cleaning", "alerts", "ai", "about"};
    for (int tab = 0; settings != nullptr && tab < tabs.size(); ++tab) {
        if (tab > 0) {
            QMetaObject::invokeMethod(settings, "turn", Q_ARG(int, 1));
        }
        // The one that is scrolled otherwise.
        settings->resize(settings->width(), tabs[tab] == QLatin1String("ai") ? 840 : 560);
        photographer.takeBoth(settings, QStringLiteral("settings-") + tabs[tab]);
    }
    settings->close();
}

void takeHelp(Photographer& photographer, MainWindow& windows, AppModel& app) {
    QQuickWindow* const window = windows.open(MainWindow::Side::help);
    HelpDesk& help = *app.help();
    help.setExpandedHelp(QStringLiteral("apartado"));
    photographer.takeBoth(window, QStringLiteral("help"));
    help.setHelpQuestion(shown(lumo::Words{"¿Sirve para el móvil?", "Does it work on my phone?"}.in()));
    help.ask();
    wait(patience, [&] { return !help.isBusy(); });
    photographer.takeBoth(window, QStringLiteral("help-answer"));
    window->close();
}

/// All that is known of a folder that no rule knows, and what is in it.
void takeDetails(Photographer& photographer, MainWindow& windows, AppModel& app) {
    const QString key = rowKey(*app.rows(), RowGroup::unclassified);
    if (key.isEmpty()) {
        return;
    }
    app.places()->openRow(key, true);
    app.places()->gatherEvidence(key);
    app.places()->revealRow(key);
    wait(patience, [&] { return app.places()->flashRow().isEmpty(); });
    photographer.takeBoth(windows.window(), QStringLiteral("details"));
    app.places()->openRow(key, false);
    app.places()->showPreview(key);
    wait(patience, [&] { return !app.preview()->isBusy(); });
    QQuickWindow* const preview = windows.open(MainWindow::Side::preview);
    photographer.takeBoth(preview, QStringLiteral("preview"));
    preview->close();
    app.places()->revealRow(rowKey(*app.rows(), RowGroup::safe));
    wait(patience, [&] { return app.places()->flashRow().isEmpty(); });
}

/// What a closer look found of one kind.
void takeItems(Photographer& photographer, MainWindow& windows, AppModel& app) {
    wait(patience, [&] { return !app.items()->isLooking(); });
    app.list()->showKind(static_cast<int>(lumo::InventoryKind::large));
    photographer.takeBoth(windows.window(), QStringLiteral("items"));
    app.list()->showKind(-1);
}

/// What the cleanups did, and how things grew.
void takeLookingBack(Photographer& photographer, MainWindow& windows, AppModel& app) {
    QQuickWindow* const history = windows.open(MainWindow::Side::history);
    wait(patience, [&] { return !app.history()->isBusy(); });
    photographer.takeBoth(history, QStringLiteral("history"));
    history->close();
    QQuickWindow* const growth = windows.open(MainWindow::Side::growth);
    wait(patience, [&] { return !app.growth()->isBusy(); });
    photographer.takeBoth(growth, QStringLiteral("growth"));
    growth->close();
}

/// What lies over the main window: the menu, the question before a cleanup, and the dialog for a file.
void takeOverlays(Photographer& photographer, MainWindow& windows, AppModel& app) {
    QQuickWindow* const window = windows.window();
    const auto call = [&](const char* name, const char* operation) {
        if (auto* const object = window->findChild<QObject*>(QLatin1String(name))) {
            QMetaObject::invokeMethod(object, operation);
        }
    };
    call("more", "clicked");
    photographer.takeBoth(window, QStringLiteral("menu"));
    call("moreMenu", "close");
    app.question()->ask(asked::Clean{.actions = app.ticked()->plan().selectedActions(), .shown = {}});
    photographer.takeBoth(window, QStringLiteral("question"));
    app.question()->cancel();
    call("files", "saveReport");
    photographer.takeBoth(window, QStringLiteral("file"));
    call("files", "leave");
}

} // namespace

bool takePictures(MainWindow& windows, AppModel& app, const QString& folder) {
    QQuickWindow* const window = windows.window();
    if (window == nullptr || !QDir().mkpath(folder)) {
        return false;
    }
    Photographer photographer(windows, QDir(folder));
    wait(patience, [&] { return app.scanning()->hasReport() && !app.activity()->isBusy(); });
    photographer.takeBoth(window, QStringLiteral("main"));
    takeDetails(photographer, windows, app);
    takeItems(photographer, windows, app);
    takeExplorer(photographer, windows, app);
    takeSettings(photographer, windows);
    takeHelp(photographer, windows, app);
    takeLookingBack(photographer, windows, app);
    QQuickWindow* const news = windows.open(MainWindow::Side::news);
    photographer.takeBoth(news, QStringLiteral("news"));
    news->close();
    app.celebrating()->celebrate(madeUpCleanup());
    wait(patience, [&] { return app.celebrating()->isCelebrating(); });
    photographer.takeBoth(window, QStringLiteral("celebration"));
    app.celebrating()->closeCelebration();
    takeOverlays(photographer, windows, app);
    window->setProperty("pane", 0);
    app.map()->zoomInto(openableKey(*app.map()));
    wait(patience, [&] { return app.map()->depth() > 0; });
    wait(travelling, [] { return false; });
    photographer.takeBoth(window, QStringLiteral("map-zoom"));
    return photographer.hasSaved();
}

} // namespace tarvo
