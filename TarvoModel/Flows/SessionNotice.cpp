#include "TarvoModel/Flows/SessionNotice.h"

#include "Platform/ToolCommand.h"

#include <chrono>
#include <string_view>
#include <vector>

namespace tarvo {

void postSessionNotice(const Notification& notification, const std::string& home) {
    constexpr std::chrono::seconds patience{5};
    constexpr std::string_view service = "org.freedesktop.Notifications";
    const std::string name(service);
    // After "--", since the last word would pass for an option: how long it is shown is left to the desktop.
    const std::vector<std::string> words{"busctl",
                                         "--user",
                                         "--quiet",
                                         "--",
                                         "call",
                                         name,
                                         "/org/freedesktop/Notifications",
                                         name,
                                         "Notify",
                                         "susssasa{sv}i",
                                         std::string(applicationName),
                                         "0", // Replaces none: the number of an earlier one is not known.
                                         std::string(iconName),
                                         notification.title,
                                         notification.body,
                                         "0",
                                         "1",
                                         "desktop-entry",
                                         "s",
                                         std::string(applicationID),
                                         "-1"};
    (void)lumo::platform::runToolInTime(words, home, patience);
}

} // namespace tarvo
