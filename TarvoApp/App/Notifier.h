#pragma once

#include "LumoCore/Basics/Language.h"
#include "TarvoModel/Showing/Notification.h"
#include "TarvoModel/Showing/PostedNotices.h"
#include "TarvoModel/Showing/RunMode.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <map>
#include <string>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace tarvo {

/// Posts notifications to the desktop's notification service (org.freedesktop.Notifications). Belongs to one
/// thread, which it never holds up: every answer is awaited in that thread's event loop, and what fails is
/// dropped without a word.
class Notifier final : public QObject {
    Q_OBJECT

  public:
    /// Asks the service on the bus at once whether it is there, unless the application is not run for real:
    /// then nothing is ever sent. The language is that of the button, where a desktop shows one.
    Notifier(const QDBusConnection& bus, const RunMode& mode,
             lumo::Language language = lumo::currentLanguage(), QObject* parent = nullptr);

    /// True when the service has answered and has not left the bus since.
    [[nodiscard]] bool isAvailable() const { return isAvailable_; }

    /// Posts the notification in place of an earlier one with its id. A service that is not running is
    /// started by the bus where it knows how, so this is worth a try before `isAvailable`. `whenTaken` is
    /// called once the service has it; never when nobody took it, or a later one with its id came first.
    void send(const Notification& notification, const std::function<void()>& whenTaken = {});

  Q_SIGNALS:
    /// The user clicked one of the notifications that this object sent.
    void activated();
    void availabilityChanged();

  private Q_SLOTS:
    void takeAction(uint number, const QString& action, const QDBusMessage& message);
    void takeClosing(uint number, uint reason, const QDBusMessage& message);
    void takeOwner(const QString& service, const QString& earlier, const QString& owner);

  private:
    void listen();
    void ask();
    void begin(const Notification& notification);
    void post(const Notification& notification, std::uint32_t replaced);
    void takeAnswer(const std::string& id, QDBusPendingCallWatcher& answer);
    void setAvailable(bool isAvailable);

    QDBusConnection bus_;
    bool isForReal_ = false;
    bool isAvailable_ = false;
    lumo::Language language_;
    QString server_; ///< Who answered last, by the unique name on the bus.
    PostedNotices posted_;
    std::map<std::string, std::function<void()>> whenTaken_; ///< Of those on their way, by our ids.
};

} // namespace tarvo
