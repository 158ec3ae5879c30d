#pragma once

#include <string>
#include <string_view>

namespace tarvo {

/// As what the desktop knows the application: its name for people, the name of its desktop entry and of all
/// that is found by that (its description, its windows, its notifications), and the name of its icon.
inline constexpr std::string_view applicationName = "Tarvo AI";
inline constexpr std::string_view applicationID = "ai.tarvo.TarvoAI";
inline constexpr std::string_view iconName = "tarvo-ai";

/// What the desktop is asked to show. A notification replaces the earlier one with its id.
struct Notification {
    std::string id;
    std::string title;
    std::string body;

    friend bool operator==(const Notification&, const Notification&) = default;
};

} // namespace tarvo
