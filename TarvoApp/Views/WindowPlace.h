#pragma once

#include <QList>
#include <QRect>
#include <QString>

#include <optional>

class QQuickWindow;

namespace tarvo {

class Settings;

/// Where windows are. What the main window had last is kept in the preferences: "1180x760+40+60".
namespace WindowPlace {

/// What the text says; absent when it is none.
std::optional<QRect> from(const QString& text);
QString text(const QRect& place);

/// Gives the window what was kept, unless it would lie outside every screen by now: then no more than its
/// screen has room for. Keeps what it has whenever it is hidden or closed. Both must outlive the
/// application's event loop.
void remember(QQuickWindow& window, Settings& settings);

/// A place of that size over the middle of another window, wholly on its screen as far as the screen has
/// room for it and a title above, and beside those that would lie beneath it to the point. Without frames.
QRect over(const QRect& other, QSize size, const QRect& screen, const QList<QPoint>& taken);

} // namespace WindowPlace
} // namespace tarvo
