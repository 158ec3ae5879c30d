#include "LumoAI/LocalModelPlace.h"

#include "LumoAI/ModelText.h"

#include <charconv>

namespace lumo {

namespace {

/// The address of "127.0.0.1:11434", written in no other way than this one.
std::optional<platform::LoopbackAddress> addressFrom(std::string_view written) {
    using Family = platform::LoopbackFamily;
    const std::string_view digits = written.substr(written.rfind(':') + 1);
    for (const Family family : {Family::ipv4, Family::ipv6}) {
        platform::LoopbackAddress address{.family = family};
        const auto [stop, problem] =
            std::from_chars(digits.data(), digits.data() + digits.size(), address.port);
        if (problem == std::errc() && address.port != 0 && hostAndPort(address) == written) {
            return address;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<LocalModelPlace> LocalModelPlace::parse(std::string_view text) {
    constexpr std::string_view scheme = "http://";
    constexpr std::size_t mostCharacters = 200;
    const std::size_t blank = text.find(' ');
    if (!text.starts_with(scheme) || blank == std::string_view::npos) {
        return std::nullopt;
    }
    const auto address = addressFrom(text.substr(scheme.size(), blank - scheme.size()));
    const std::string_view model = text.substr(blank + 1);
    if (!address || model.empty() || modelText(model, mostCharacters) != model) {
        return std::nullopt;
    }
    return LocalModelPlace{.address = *address, .model = std::string(model)};
}

} // namespace lumo
