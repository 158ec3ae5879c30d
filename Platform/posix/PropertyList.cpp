#include "Platform/PropertyList.h"

#include "Platform/StateFile.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace lumo::platform {

namespace {

constexpr std::size_t mostBytes = std::size_t{4} * 1024 * 1024;

struct FreeList {
    void operator()(void* node) const { plist_free(node); }
};

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

using Text = std::unique_ptr<char, FreeText>;

/// The library frees nested lists by recursion, so that a file made to nest deeply would use up the stack. No
/// application's list comes near this depth.
bool isNestedTooDeeply(std::string_view bytes) {
    constexpr int mostLevels = 128;
    int level = 0;
    for (std::size_t at = bytes.find('<'); at != std::string_view::npos; at = bytes.find('<', at + 1)) {
        const std::string_view tag = bytes.substr(at + 1);
        if (tag.starts_with("array") || tag.starts_with("dict")) {
            ++level;
        } else if (tag.starts_with("/array") || tag.starts_with("/dict")) {
            --level;
        }
        if (level > mostLevels) {
            return true;
        }
    }
    return false;
}

std::optional<std::string> stringValue(plist_t node) {
    if (plist_get_node_type(node) != PLIST_STRING) {
        return std::nullopt;
    }
    char* value = nullptr;
    plist_get_string_val(node, &value);
    const Text owned(value);
    return owned ? std::optional<std::string>(owned.get()) : std::nullopt;
}

} // namespace

std::optional<std::map<std::string, std::string>> parsePropertyListStrings(const std::string& bytes) {
    if (bytes.empty() || bytes.size() > mostBytes ||
        (!bytes.starts_with("bplist") && isNestedTooDeeply(bytes))) {
        return std::nullopt;
    }
    plist_t parsed = nullptr;
    plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &parsed);
    const std::unique_ptr<void, FreeList> list(parsed);
    if (!list || plist_get_node_type(parsed) != PLIST_DICT) {
        return std::nullopt;
    }
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(parsed, &iterator);
    const std::unique_ptr<void, decltype(&std::free)> iteratorOwner(iterator, &std::free);
    std::map<std::string, std::string> strings;
    for (;;) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(parsed, iterator, &key, &value);
        const Text ownedKey(key);
        if (!ownedKey) {
            return strings;
        }
        if (const std::optional<std::string> text = stringValue(value)) {
            strings.emplace(ownedKey.get(), *text);
        }
    }
}

std::optional<std::map<std::string, std::string>> readPropertyListStrings(const std::string& path) {
    const SystemResult<std::string> bytes = readWhole(path, mostBytes);
    return bytes ? parsePropertyListStrings(*bytes) : std::nullopt;
}

} // namespace lumo::platform
