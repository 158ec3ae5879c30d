#include "Platform/PropertyList.h"

#include "Platform/StateFile.h"

#include <plist/plist.h>

#include <cstdint>
#include <memory>
#include <string_view>

namespace lumo::platform {

namespace {

constexpr std::size_t mostBytes = std::size_t{4} * 1024 * 1024;

struct FreeList {
    void operator()(void* node) const { plist_free(node); }
};

/// The library reads and frees nested lists by recursion, so that a file made to nest deeply would use up the
/// stack. Depth is at most the number of containers, and no application's list has nearly as many.
constexpr std::uint64_t mostContainers = 16384;

std::uint64_t openingTags(std::string_view bytes) {
    std::uint64_t count = 0;
    for (std::size_t at = bytes.find('<'); at != std::string_view::npos; at = bytes.find('<', at + 1)) {
        const std::string_view tag = bytes.substr(at + 1);
        count += tag.starts_with("array") || tag.starts_with("dict") ? 1U : 0U;
    }
    return count;
}

/// How many objects a binary list says it holds: eight bytes, most significant first, in the middle of the 32
/// that end it.
std::uint64_t objectCount(std::string_view bytes) {
    constexpr std::size_t fromEnd = 24;
    if (bytes.size() < fromEnd) {
        return 0;
    }
    std::uint64_t count = 0;
    for (const char byte : bytes.substr(bytes.size() - fromEnd, sizeof count)) {
        count = count << 8 | static_cast<unsigned char>(byte);
    }
    return count;
}

plist_t parse(const std::string& bytes) {
    plist_t list = nullptr;
    const auto size = static_cast<std::uint32_t>(bytes.size());
    if (bytes.starts_with("bplist")) {
        if (objectCount(bytes) <= mostContainers) {
            plist_from_bin(bytes.data(), size, &list);
        }
    } else if (openingTags(bytes) <= mostContainers) {
        plist_from_xml(bytes.data(), size, &list);
    }
    return list;
}

/// The library ends the process when asked for a copy of a string, or of a key, that holds a zero byte: so
/// the values are looked at in place, and keys are looked up instead of listed.
std::optional<std::string> stringValue(plist_t node) {
    if (node == nullptr || plist_get_node_type(node) != PLIST_STRING) {
        return std::nullopt;
    }
    std::uint64_t length = 0;
    const char* value = plist_get_string_ptr(node, &length);
    if (value == nullptr || std::string_view(value).size() != length) {
        return std::nullopt;
    }
    return std::string(value, length);
}

} // namespace

std::optional<std::map<std::string, std::string>>
parsePropertyListStrings(const std::string& bytes, std::span<const char* const> keys) {
    if (bytes.empty() || bytes.size() > mostBytes) {
        return std::nullopt;
    }
    plist_t parsed = parse(bytes);
    const std::unique_ptr<void, FreeList> list(parsed);
    if (!list || plist_get_node_type(parsed) != PLIST_DICT) {
        return std::nullopt;
    }
    std::map<std::string, std::string> strings;
    for (const char* key : keys) {
        if (const std::optional<std::string> text = stringValue(plist_dict_get_item(parsed, key))) {
            strings.emplace(key, *text);
        }
    }
    return strings;
}

std::optional<std::map<std::string, std::string>> readPropertyListStrings(const std::string& path,
                                                                          std::span<const char* const> keys) {
    const SystemResult<std::string> bytes = readWhole(path, mostBytes);
    return bytes ? parsePropertyListStrings(*bytes, keys) : std::nullopt;
}

} // namespace lumo::platform
