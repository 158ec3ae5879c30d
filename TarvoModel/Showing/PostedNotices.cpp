#include "TarvoModel/Showing/PostedNotices.h"

#include <algorithm>
#include <utility>

namespace tarvo {

std::optional<std::uint32_t> PostedNotices::begin(const Notification& notification) {
    Notice& notice = notices_[notification.id];
    if (notice.isOnItsWay) {
        notice.waiting = notification;
        return std::nullopt;
    }
    notice.isOnItsWay = true;
    return notice.number;
}

std::optional<Notification> PostedNotices::end(const std::string& id, std::optional<std::uint32_t> number) {
    Notice& notice = notices_[id];
    notice.isOnItsWay = false;
    notice.number = number.value_or(0);
    return std::exchange(notice.waiting, std::nullopt);
}

bool PostedNotices::has(std::uint32_t number) const {
    return number != 0 &&
           std::ranges::any_of(notices_, [&](const auto& entry) { return entry.second.number == number; });
}

void PostedNotices::forget(std::uint32_t number) {
    for (auto& [id, notice] : notices_) {
        if (notice.number == number) {
            notice.number = 0;
        }
    }
}

void PostedNotices::forgetAll() {
    for (auto& [id, notice] : notices_) {
        notice.number = 0;
    }
}

} // namespace tarvo
