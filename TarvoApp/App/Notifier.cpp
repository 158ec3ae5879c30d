#include "TarvoApp/App/Notifier.h"

#include "LumoCore/Basics/Words.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QStringList>
#include <QVariantMap>

#include <optional>
#include <utility>

namespace tarvo {

namespace {

// The names by which all desktops of freedesktop.org know this service.
const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString defaultAction = QStringLiteral("default"); // A click on the notification itself.

QDBusMessage callOf(const char* method) {
    return QDBusMessage::createMethodCall(service, path, service, QString::fromLatin1(method));
}

QVariantList argumentsOf(const Notification& notification, std::uint32_t replaced, lumo::Language language) {
    constexpr int asTheDesktopLikes = -1;
    const QString button = QString::fromStdString(lumo::Words{"Abrir", "Open"}.in(language));
    const QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("ai.tarvo.TarvoAI")},
                            {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")}};
    return {QStringLiteral("Tarvo AI"),
            replaced,
            QStringLiteral("tarvo-ai"),
            QString::fromStdString(notification.title),
            QString::fromStdString(notification.body),
            QStringList{defaultAction, button},
            hints,
            asTheDesktopLikes};
}

} // namespace

Notifier::Notifier(const QDBusConnection& bus, const RunMode& mode, lumo::Language language, QObject* parent)
    : QObject(parent), bus_(bus), isForReal_(mode.isForReal()), language_(language) {
    if (isForReal_ && bus_.isConnected()) {
        listen();
        ask();
    }
}

void Notifier::send(const Notification& notification, const std::function<void()>& whenTaken) {
    if (isForReal_ && bus_.isConnected()) {
        whenTaken_[notification.id] = whenTaken;
        begin(notification);
    }
}

void Notifier::begin(const Notification& notification) {
    if (const std::optional<std::uint32_t> replaced = posted_.begin(notification)) {
        post(notification, *replaced);
    }
}

void Notifier::listen() {
    // Without the service's name, since the library would wait for the bus to say whose it is. Who speaks is
    // compared when a signal comes.
    bus_.connect({}, path, service, QStringLiteral("ActionInvoked"), this,
                 SLOT(takeAction(uint, QString, QDBusMessage)));
    bus_.connect({}, path, service, QStringLiteral("NotificationClosed"), this,
                 SLOT(takeClosing(uint, uint, QDBusMessage)));
    auto* watcher = new QDBusServiceWatcher(service, bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &Notifier::takeOwner);
}

void Notifier::ask() {
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(callOf("GetServerInformation")), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        setAvailable(!answer->isError());
    });
}

void Notifier::post(const Notification& notification, std::uint32_t replaced) {
    QDBusMessage call = callOf("Notify");
    call.setArguments(argumentsOf(notification, replaced, language_));
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, id = notification.id] {
        answer->deleteLater();
        takeAnswer(id, *answer);
    });
}

void Notifier::takeAnswer(const std::string& id, QDBusPendingCallWatcher& answer) {
    std::optional<std::uint32_t> number;
    const QDBusMessage reply = answer.reply();
    if (!answer.isError() && reply.signature() == QLatin1String("u")) {
        number = reply.arguments().constFirst().toUInt();
        server_ = reply.service();
    }
    if (const std::optional<Notification> next = posted_.end(id, number)) {
        begin(*next);
        return;
    }
    const std::function<void()> whenTaken = std::exchange(whenTaken_[id], {});
    if (number && whenTaken) {
        whenTaken();
    }
}

void Notifier::takeAction(uint number, const QString& action, const QDBusMessage& message) {
    if (message.service() == server_ && action == defaultAction && posted_.has(number)) {
        Q_EMIT activated();
    }
}

void Notifier::takeClosing(uint number, uint /*reason*/, const QDBusMessage& message) {
    if (message.service() == server_) {
        posted_.forget(number);
    }
}

void Notifier::takeOwner(const QString& /*service*/, const QString& /*earlier*/, const QString& owner) {
    // Another service counts afresh: our old numbers may be somebody else's there.
    posted_.forgetAll();
    setAvailable(!owner.isEmpty());
}

void Notifier::setAvailable(bool isAvailable) {
    if (isAvailable != isAvailable_) {
        isAvailable_ = isAvailable;
        Q_EMIT availabilityChanged();
    }
}

} // namespace tarvo
