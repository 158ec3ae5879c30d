#include "LumoCore/Basics/UniqueID.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <random>

namespace lumo {

std::string uniqueID() {
    std::random_device random;
    std::array<std::uint32_t, 4> words = {};
    for (std::uint32_t& word : words) {
        word = random();
    }
    words[1] = (words[1] & 0xFFFF0FFFU) | 0x00004000U; // The version, 4.
    words[2] = (words[2] & 0x3FFFFFFFU) | 0x80000000U; // The variant of the standard.
    return fmt::format("{:08X}-{:04X}-{:04X}-{:04X}-{:04X}{:08X}", words[0], words[1] >> 16U,
                       words[1] & 0xFFFFU, words[2] >> 16U, words[2] & 0xFFFFU, words[3]);
}

bool isUniqueID(std::string_view text) {
    constexpr std::string_view shape = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    if (text.size() != shape.size()) {
        return false;
    }
    for (std::size_t index = 0; index < shape.size(); ++index) {
        const char c = text[index];
        const bool isDigit = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
        if (shape[index] == 'x' ? !isDigit : c != '-') {
            return false;
        }
    }
    return true;
}

} // namespace lumo
