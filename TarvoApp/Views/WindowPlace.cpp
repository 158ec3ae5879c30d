#include "TarvoApp/Views/WindowPlace.h"

#include "TarvoApp/App/Settings.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QScreen>

#include <algorithm>

namespace tarvo::WindowPlace {

namespace {

/// What a desktop's title and frame take at most, as far as one knows before a window is shown.
constexpr int titleHeight = 32;
constexpr int frameWidth = 4;

/// Enough of a window is on a screen to be taken by its title and pulled.
bool canBeReached(const QRect& place) {
    const QRect title(place.topLeft(), QSize(place.width(), titleHeight));
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
        // Wayland tells no place; on another desktop the title would lie above the screen.
        place->topLeft().isNull() ? window.resize(place->size()) : window.setGeometry(*place);
    } else if (window.screen() != nullptr) {
        // A compositor that places windows itself takes the whole screen for free, its own panel and title
        // too.
        const QSize room =
            window.screen()->availableSize() - QSize(2 * frameWidth, 2 * titleHeight + frameWidth);
        window.resize(window.size().boundedTo(room).expandedTo(window.minimumSize()));
    }
    QObject::connect(&window, &QWindow::visibleChanged, &settings, [&window, &settings](bool isVisible) {
        // What fills the screen says nothing of the size that somebody chose.
        if (!isVisible && window.windowState() == Qt::WindowNoState) {
            settings.note(preference::windowPlace, bytesOf(text(window.geometry())));
        }
    });
}

QRect over(const QRect& other, QSize size, const QRect& screen, const QList<QPoint>& taken) {
    const QRect room = screen.adjusted(frameWidth, titleHeight, -frameWidth, -frameWidth);
    const QSize fitting = size.boundedTo(room.size());
    const auto within = [&](QPoint corner) {
        return QPoint(std::clamp(corner.x(), room.left(), room.right() + 1 - fitting.width()),
                      std::clamp(corner.y(), room.top(), room.bottom() + 1 - fitting.height()));
    };
    QPoint corner = within(other.topLeft() + QPoint((other.width() - fitting.width()) / 2,
                                                    (other.height() - fitting.height()) / 2));
    // Those that lie beneath it keep their titles in sight.
    for (qsizetype step = 0; step < taken.size() && taken.contains(corner); ++step) {
        corner = within(corner + QPoint(titleHeight, titleHeight));
    }
    return {corner, fitting};
}

} // namespace tarvo::WindowPlace
