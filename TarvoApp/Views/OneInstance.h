#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

namespace tarvo {

/// The running application as other programs of the session see it (org.freedesktop.Application): a second
/// start asks the first to show its window and ends.
class OneInstance final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    explicit OneInstance(QDBusConnection bus, QObject* parent = nullptr);

    /// True when this process is the one that runs; also where there is no bus to ask. Otherwise the other
    /// one has been asked to show its window.
    bool claim();

  public Q_SLOTS:
    // Named by the interface.
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData); // NOLINT(readability-identifier-naming)

  Q_SIGNALS:
    void activated();

  private:
    QDBusConnection bus_;
};

} // namespace tarvo
