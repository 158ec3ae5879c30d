#include "TarvoApp/App/PanelWatch.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <utility>

namespace tarvo {

namespace {

const auto service = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto path = QStringLiteral("/StatusNotifierWatcher");

} // namespace

PanelWatch::PanelWatch(const QDBusConnection& bus, QObject* parent) : QObject(parent), bus_(bus) {
    auto* const owners =
        new QDBusServiceWatcher(service, bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(owners, &QDBusServiceWatcher::serviceOwnerChanged, this, &PanelWatch::ask);
    for (const auto* name : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus_.connect(service, path, service, QLatin1String(name), this, SLOT(ask()));
    }
    ask();
}

void PanelWatch::ask() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << service << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        const bool isThere = !reply.isError() && reply.value().variant().toBool();
        if (std::exchange(isThere_, isThere) != isThere) {
            emit changed();
        }
        answer->deleteLater();
    });
}

} // namespace tarvo
