#include "TarvoApp/Views/Pictures.h"

#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/Views/MainWindow.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QImage>
#include <QQuickWindow>

#include <algorithm>
#include <functional>

namespace tarvo {

namespace {

/// How long a window may take to have everything in its place, and how long it is given at least.
constexpr std::chrono::milliseconds patience{20'000};
constexpr std::chrono::milliseconds settling{400};

void wait(std::chrono::milliseconds longest, const std::function<bool()>& isDone) {
    const QDeadlineTimer deadline(longest);
    while (!isDone() && !deadline.hasExpired()) {
        QEventLoop loop;
        QTimer::singleShot(std::chrono::milliseconds(20), &loop, &QEventLoop::quit);
        loop.exec();
    }
}

/// The largest tile that can be opened.
QString openableKey(const MapModel& map) {
    for (int row = 0; row < map.count(); ++row) {
        const QModelIndex tile = map.index(row);
        if (map.data(tile, MapModel::canZoomRole).toBool()) {
            return map.data(tile, MapModel::keyRole).toString();
        }
    }
    return {};
}

} // namespace

bool takePictures(MainWindow& windows, AppModel& app, const QString& folder) {
    QQuickWindow* const window = windows.window();
    if (window == nullptr || !QDir().mkpath(folder)) {
        return false;
    }
    const auto never = [] { return false; };
    wait(patience, [&] { return app.hasReport() && !app.isBusy(); });
    const auto take = [&](const QString& name, const QString& appearance) {
        windows.desktop().setAppearance(appearance);
        wait(settling, never);
        const QString file =
            QStringLiteral("%1-%2-%3.png").arg(name, windows.desktop().language(), appearance);
        return window->grabWindow().save(QDir(folder).filePath(file));
    };
    bool isSaved = take(QStringLiteral("main"), QStringLiteral("light"));
    isSaved = take(QStringLiteral("main"), QStringLiteral("dark")) && isSaved;
    app.map()->zoomInto(openableKey(*app.map()));
    wait(patience, [&] { return app.map()->depth() > 0; });
    return take(QStringLiteral("map-zoom"), QStringLiteral("light")) && isSaved;
}

} // namespace tarvo
