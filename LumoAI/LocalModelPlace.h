#pragma once

#include "Platform/LoopbackHttp.h"

#include <optional>
#include <string>
#include <string_view>

namespace lumo {

/// Which model of which program on this machine is to be asked.
struct LocalModelPlace {
    platform::LoopbackAddress address;
    std::string model; ///< The name by which the program knows it.

    /// From "http://127.0.0.1:11434 llama3.2": an address, a blank and the model's name. The host is
    /// literally 127.0.0.1 or [::1], since a name could come to mean another machine; the port is there; and
    /// nothing follows it, so that no user, path or query can make the address look like what it is not.
    /// Absent for any other text.
    static std::optional<LocalModelPlace> parse(std::string_view text);

    friend bool operator==(const LocalModelPlace&, const LocalModelPlace&) = default;
};

} // namespace lumo
