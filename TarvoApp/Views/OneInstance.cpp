#include "TarvoApp/Views/OneInstance.h"

#include "Platform/Environment.h"
#include "Platform/Folder.h"

#include <QCryptographicHash>
#include <QDBusMessage>

namespace tarvo {

namespace {

const auto usualName = QStringLiteral("ai.tarvo.TarvoAI");
const auto path = QStringLiteral("/ai/tarvo/TarvoAI");
const auto applicationInterface = QStringLiteral("org.freedesktop.Application");

// Of the data that the interface leaves to us.
const auto languageKey = QStringLiteral("ai.tarvo.language");
const auto folderKey = QStringLiteral("ai.tarvo.folder");

/// What is added to the name where the home is not that of the account. $HOME tells nothing here: it may
/// differ from one start to the next, while the session's bus stays.
QString markOf(const std::string& home) {
    const auto usual = lumo::platform::accountHome();
    if (home.empty() || (usual && lumo::platform::isSamePlace(home, *usual))) {
        return {};
    }
    const std::string place =
        lumo::platform::resolvedPath(home, lumo::platform::FinalLink::followed).value_or(home);
    // A path holds what no name on the bus may.
    const QByteArray hash =
        QCryptographicHash::hash(QByteArray::fromStdString(place), QCryptographicHash::Sha1);
    return QStringLiteral(".home") + QString::fromLatin1(hash.toHex());
}

} // namespace

OneInstance::OneInstance(QDBusConnection bus, const std::string& home, QObject* parent)
    : QObject(parent), bus_(std::move(bus)), name_(usualName + markOf(home)) {}

bool OneInstance::claim(const StartWish& wish) {
    if (!bus_.isConnected()) {
        return true;
    }
    // The object first: whoever finds the name may call it at once.
    bus_.registerObject(path, this, QDBusConnection::ExportScriptableSlots);
    if (bus_.registerService(name_)) {
        return true;
    }
    QDBusMessage call =
        QDBusMessage::createMethodCall(name_, path, applicationInterface, QStringLiteral("Activate"));
    // A name need not be text.
    call << QVariantMap{{languageKey, wish.language}, {folderKey, QByteArray::fromStdString(wish.folder)}};
    bus_.call(call, QDBus::Block, 2000);
    return false;
}

void OneInstance::Activate(const QVariantMap& platformData) {
    emit activated({.language = platformData.value(languageKey).toString(),
                    .folder = platformData.value(folderKey).toByteArray().toStdString()});
}

} // namespace tarvo
