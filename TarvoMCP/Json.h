#pragma once

#include "LumoCore/Basics/JsonValue.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Building and reading documents without much ado.
namespace tarvo::mcp {

using lumo::JsonValue;

inline JsonValue word(std::string_view text) {
    return {std::string(text)};
}

inline JsonValue number(std::int64_t value) {
    return {value};
}

inline JsonValue flag(bool value) {
    return {value};
}

inline JsonValue object(std::initializer_list<JsonValue::Member> members) {
    return {JsonValue::Object(members)};
}

inline JsonValue list(std::vector<JsonValue> values) {
    return {std::move(values)};
}

/// The member when it is an object; null otherwise.
inline const JsonValue* objectIn(const JsonValue& document, std::string_view name) {
    const JsonValue* found = document.find(name);
    return found != nullptr && std::holds_alternative<JsonValue::Object>(found->value) ? found : nullptr;
}

/// The member when it is a text; null otherwise.
inline const std::string* textIn(const JsonValue& document, std::string_view name) {
    const JsonValue* found = document.find(name);
    return found != nullptr ? std::get_if<std::string>(&found->value) : nullptr;
}

} // namespace tarvo::mcp
