#include "Fuzz/Check.h"
#include "Platform/PropertyList.h"

#include <array>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr auto keys = std::to_array<const char*>({"CFBundleIdentifier", "CFBundleName", ""});
    lumo::platform::parsePropertyListStrings(std::string(text(data, size)), keys);
    return 0;
}
