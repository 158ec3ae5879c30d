#include "TarvoApp/Views/WindowPlace.h"

#include "TarvoApp/App/Settings.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QScreen>

#include <algorithm>

namespace tarvo::WindowPlace {

namespace {

/// Enough of a window is on a screen to be taken by its title and pulled.
bool canBeReached(const QRect& place) {
    const QRect title(place.topLeft(), QSize(place.width(), 32));
    return std::ranges::any_of(QGuiApplication::screens(), [&](const QScreen* screen) {
        const QRect seen = screen->availableGeometry().intersected(title);
        return seen.width() >= 100 && seen.height() >= 16;
    });
}

} // namespace

std::optional<QRect> from(const QString& text) {
    static const QRegularExpression form(
        QStringLiteral("^(\\d{1,5})x(\\d{1,5})([+-]\\d{1,5})([+-]\\d{1,5})$"));
    const QRegularExpressionMatch found = form.match(text);
    if (!found.hasMatch()) {
        return std::nullopt;
    }
    return QRect(found.captured(3).toInt(), found.captured(4).toInt(), found.captured(1).toInt(),
                 found.captured(2).toInt());
}

QString text(const QRect& place) {
    return QString::asprintf("%dx%d%+d%+d", place.width(), place.height(), place.x(), place.y());
}

void remember(QQuickWindow& window, Settings& settings) {
    const auto kept = settings.value(preference::windowPlace);
    if (const auto place = kept ? from(shown(*kept)) : std::nullopt; place && canBeReached(*place)) {
        window.setGeometry(*place);
    }
    QObject::connect(&window, &QWindow::visibleChanged, &settings, [&window, &settings](bool isVisible) {
        // What fills the screen says nothing of the size that somebody chose.
        if (!isVisible && window.windowState() == Qt::WindowNoState) {
            settings.note(preference::windowPlace, bytesOf(text(window.geometry())));
        }
    });
}

} // namespace tarvo::WindowPlace
