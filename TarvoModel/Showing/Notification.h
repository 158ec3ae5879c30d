#pragma once

#include <string>

namespace tarvo {

/// What the desktop is asked to show. A notification replaces the earlier one with its id.
struct Notification {
    std::string id;
    std::string title;
    std::string body;

    friend bool operator==(const Notification&, const Notification&) = default;
};

} // namespace tarvo
