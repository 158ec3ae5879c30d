#pragma once

#include <QRect>
#include <QString>

#include <optional>

class QQuickWindow;

namespace tarvo {

class Settings;

/// The size and place that the main window had last, as the preferences keep it: "1180x760+40+60".
namespace WindowPlace {

/// What the text says; absent when it is none.
std::optional<QRect> from(const QString& text);
QString text(const QRect& place);

/// Gives the window what was kept, unless it would lie outside every screen by now, and keeps what it has
/// whenever it is hidden or closed. Both must outlive the application's event loop.
void remember(QQuickWindow& window, Settings& settings);

} // namespace WindowPlace
} // namespace tarvo
