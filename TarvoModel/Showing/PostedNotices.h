#pragma once

#include "TarvoModel/Showing/Notification.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace tarvo {

/// Which numbers the desktop's notification service gave to ours, so that a notification replaces the earlier
/// one with its id. One with the same id waits while the earlier one is on its way, since its number is not
/// known before the service has answered.
class PostedNotices final {
  public:
    /// The number that is to be replaced, 0 for none, when the notification is to be posted now. Absent when
    /// it waits; it takes the place of another that waits.
    std::optional<std::uint32_t> begin(const Notification& notification);

    /// Takes the service's answer to the last one with that id, absent when it failed. Returns the one that
    /// waited for it, which is to begin now.
    std::optional<Notification> end(const std::string& id, std::optional<std::uint32_t> number);

    /// True for a number of ours that is still shown.
    [[nodiscard]] bool has(std::uint32_t number) const;

    /// Forgets a number: the service may give it to somebody else's from now on.
    void forget(std::uint32_t number);

    /// Forgets all numbers, as a service does that ends.
    void forgetAll();

  private:
    struct Notice {
        std::uint32_t number = 0;
        bool isOnItsWay = false;
        std::optional<Notification> waiting;
    };

    std::map<std::string, Notice> notices_; ///< By our ids.
};

} // namespace tarvo
