#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <string>

namespace tarvo {

/// What a start of the application was asked for.
struct StartWish {
    QString language;   ///< "es" or "en".
    std::string folder; ///< What the map shows first; empty for nothing in particular.
};

/// The running application as other programs of the session see it (org.freedesktop.Application): a second
/// start asks the first to show its window and ends.
class OneInstance final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    /// Another home than the one of the user's account has its own application; empty means the account's.
    explicit OneInstance(QDBusConnection bus, const std::string& home = {}, QObject* parent = nullptr);

    /// True when this process is the one that runs; also where there is no bus to ask. Otherwise the other
    /// one has been asked to show its window, and told the wish.
    bool claim(const StartWish& wish);

  public Q_SLOTS:
    // Named by the interface.
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData); // NOLINT(readability-identifier-naming)

  Q_SIGNALS:
    void activated(const tarvo::StartWish& wish);

  private:
    QDBusConnection bus_;
    QString name_;
};

} // namespace tarvo
