#include "TarvoApp/App/DesktopServices.h"

#include "Platform/Environment.h"
#include "TarvoApp/App/Notifier.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoApp/App/ShareCard.h"
#include "TarvoModel/Flows/LoginItem.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>

namespace tarvo {

AppServices desktopServices(const std::string& home, const RunMode& mode, Notifier& notifier) {
    AppServices services = AppServices::ofThisMachine(home, mode);
    services.notify = [&notifier](const Notification& notification, const std::function<void()>& whenTaken) {
        notifier.send(notification, whenTaken);
    };
    const std::string settings = lumo::platform::environmentVariable("XDG_CONFIG_HOME").value_or("");
    services.startsAtLogin = [home, settings] { return LoginItem::isOn(home, settings); };
    const std::string program = bytesOf(QCoreApplication::applicationFilePath());
    services.setStartAtLogin = [home, settings, program](bool on) -> std::optional<std::string> {
        const lumo::Result<void> changed = LoginItem::set(home, program, on, settings);
        return changed ? std::nullopt : std::optional(changed.error().message);
    };
    services.drawCard = [](const ShareStats& stats, CardLook look) { return ShareCard::drawn(stats, look); };
    services.saveCard = [home, now = services.desk.now](const QImage& image) {
        return ShareCard::save(image, home, now());
    };
    services.copyCard = [](const QImage& image) { QGuiApplication::clipboard()->setImage(image); };
    return services;
}

} // namespace tarvo
