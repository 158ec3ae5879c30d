#pragma once

#include "LumoCore/Basics/Result.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lumo {

/// One member of an object. A template, since objects are needed before the values they hold are complete.
template <class Value>
struct JsonMember {
    std::string name;
    Value value;

    friend bool operator==(const JsonMember&, const JsonMember&) = default;
};

/// A JSON document in memory. Objects keep the order of their members. Strings are bytes: see `dumpJson`.
struct JsonValue {
    using Array = std::vector<JsonValue>;
    using Member = JsonMember<JsonValue>;
    using Object = std::vector<Member>;

    std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, Array, Object> value = nullptr;

    /// The member's value; none when there is no such member or this is no object.
    [[nodiscard]] const JsonValue* find(std::string_view name) const;

    friend bool operator==(const JsonValue&, const JsonValue&) = default;
};

enum class JsonLayout {
    line,     ///< On one line without a blank.
    spaced,   ///< On one line with a blank after each colon and comma.
    indented, ///< A line for each value, two blanks further in for each level.
};

/// The document as UTF-8. A byte that is not part of valid UTF-8 is written as the private-use character
/// U+EF80 + (byte - 0x80), and so are the bytes of such characters themselves; `parseJson` turns them back,
/// so that every file name survives the round trip exactly.
std::string dumpJson(const JsonValue& document, JsonLayout layout);

/// The document on one line as a text that is put into another document: there it reads as `dumpJson` writes
/// the document itself. What stands for stray bytes would be marked a second time otherwise.
std::string jsonInText(const JsonValue& document);

/// The largest document and the deepest nesting that are read.
inline constexpr std::size_t mostJsonBytes = std::size_t{64} * 1024 * 1024;
inline constexpr std::size_t mostJsonDepth = 64;

/// Reads one document. Fails on anything malformed, on bytes that are not UTF-8, on whole numbers beyond 64
/// bits and beyond the limits above.
Result<JsonValue> parseJson(std::string_view bytes);

} // namespace lumo
