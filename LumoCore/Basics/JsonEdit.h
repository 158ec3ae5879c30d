#pragma once

#include "LumoCore/Basics/JsonValue.h"

#include <cstddef>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Changing one value in a JSON document that another program keeps. The document is never taken apart and
/// put together again: only the bytes of that value change, so that the order and spelling of keys, the
/// digits of numbers, escapes, line ends and a byte order mark are afterwards what they were.
///
/// Documents are objects. A path is the keys that lead from the document to a value, at least one.
namespace lumo::JsonEdit {

using Path = std::span<const std::string_view>;

/// Why a document was not changed.
enum class Problem {
    malformed, ///< It is no JSON object, not UTF-8, larger than 64 MiB or deeper than 64 levels.
    ambiguous, ///< It names a key of the path twice in one object, and programs differ in which one holds.
};

template <class Value>
using Edited = std::expected<Value, Problem>;

/// The text of the value at the path; absent when there is none. Of a key that is there twice the last one
/// holds, as most programs have it.
Edited<std::optional<std::string>> valueAt(std::string_view document, Path path);

/// The document with that value at the path. What is no object on the way is replaced by one. A new member
/// comes last and is written as those before it: on a line of its own with the document's indentation (two
/// blanks where it shows none), or on the same line.
Edited<std::string> withValue(std::string_view document, Path path, const JsonValue& value);

/// The document without the member at the path; the same document when there is none. The object that held
/// it stays.
Edited<std::string> withoutValue(std::string_view document, Path path);

} // namespace lumo::JsonEdit
