#include "TarvoApp/App/Ground.h"

#include "TarvoModel/Showing/DemoDisk.h"

#include <string>

namespace tarvo {

std::string Ground::shownHome() const {
    return services.shownHome();
}

bool Ground::isOnlyDemo() const {
    if (isDemo()) {
        activity.say(std::string(DemoDisk::notice()));
    }
    return isDemo();
}

} // namespace tarvo
