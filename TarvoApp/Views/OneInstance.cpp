#include "TarvoApp/Views/OneInstance.h"

#include <QDBusMessage>

namespace tarvo {

namespace {

const auto name = QStringLiteral("ai.tarvo.TarvoAI");
const auto path = QStringLiteral("/ai/tarvo/TarvoAI");
const auto applicationInterface = QStringLiteral("org.freedesktop.Application");

} // namespace

OneInstance::OneInstance(QDBusConnection bus, QObject* parent) : QObject(parent), bus_(std::move(bus)) {}

bool OneInstance::claim() {
    if (!bus_.isConnected()) {
        return true;
    }
    // The object first: whoever finds the name may call it at once.
    bus_.registerObject(path, this, QDBusConnection::ExportScriptableSlots);
    if (bus_.registerService(name)) {
        return true;
    }
    QDBusMessage call =
        QDBusMessage::createMethodCall(name, path, applicationInterface, QStringLiteral("Activate"));
    call << QVariantMap();
    bus_.call(call, QDBus::Block, 2000);
    return false;
}

void OneInstance::Activate(const QVariantMap&) {
    emit activated();
}

} // namespace tarvo
