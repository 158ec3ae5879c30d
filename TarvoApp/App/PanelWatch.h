#pragma once

#include <QDBusConnection>
#include <QObject>

namespace tarvo {

/// Knows whether the desktop has a panel that shows items of applications (StatusNotifierItem). At login the
/// panel may come later than its items, and the service that registers them before anything that shows them.
class PanelWatch final : public QObject {
    Q_OBJECT

  public:
    /// Asks at once; the answer comes with `changed`.
    explicit PanelWatch(const QDBusConnection& bus, QObject* parent = nullptr);

    [[nodiscard]] bool isThere() const { return isThere_; }

  signals:
    void changed();

  private Q_SLOTS:
    void ask();

  private:
    QDBusConnection bus_;
    bool isThere_ = false;
};

} // namespace tarvo
