#include "LumoCore/Explaining/ShortSize.h"

#include "LumoCore/Basics/ByteFormat.h"

namespace lumo {

std::string shortSize(std::int64_t bytes, Language language) {
    constexpr std::int64_t megabyte = 1000000;
    constexpr std::int64_t gigabyte = 1000 * megabyte;
    if (bytes < megabyte / 2 || bytes >= gigabyte) {
        return ByteFormat::string(bytes, language);
    }
    const std::int64_t megabytes = (bytes + megabyte / 2) / megabyte;
    return ByteFormat::number(static_cast<double>(megabytes), 0, language) + " MB";
}

} // namespace lumo
