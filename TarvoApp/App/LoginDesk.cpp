#include "TarvoApp/App/LoginDesk.h"

#include "TarvoApp/App/QtText.h"

namespace tarvo {

LoginDesk::LoginDesk(const Ground& ground, QObject* parent) : QObject(parent), ground_(ground) {}

void LoginDesk::refreshLogin() {
    if (ground_.isDemo()) {
        return;
    }
    ground_.background.start(
        [this, startsAtLogin = ground_.services.startsAtLogin](const std::stop_token&) -> Background::Apply {
            return [this, isOn = startsAtLogin()] {
                isOn_ = isOn;
                emit changed();
            };
        });
}

void LoginDesk::setLaunchAtLogin(bool isOn) {
    if (ground_.isDemo()) {
        return;
    }
    ground_.background.start(
        [this, isOn, set = ground_.services.setStartAtLogin,
         startsAtLogin = ground_.services.startsAtLogin](const std::stop_token&) -> Background::Apply {
            const std::optional<std::string> error = set(isOn);
            return [this, error, isOnNow = startsAtLogin()] {
                isOn_ = isOnNow;
                error_ = error.value_or("");
                emit changed();
            };
        });
}

QString LoginDesk::launchAtLoginError() const {
    return shown(error_);
}

} // namespace tarvo
