#pragma once

#include "LumoCore/Basics/Codec.h"
#include "TarvoMCP/Json.h"

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

/// JSON Schema: of arguments by hand, of records from the same list of fields that writes them, so that what
/// is promised of an answer and the answer cannot drift apart.
namespace tarvo::mcp {

/// JSON Schema of an object; members without "required" may be missing.
struct Property {
    std::string name;
    JsonValue schema;
    bool isRequired = false;
};
JsonValue schemaOf(std::vector<Property> properties);
/// The same with no others beside them.
JsonValue argumentsOf(std::vector<Property> properties);
/// Of a record that is given back. Which of its members are always there is not said: the lists of their
/// names took a fifth of all that a model is told of the tools, and it reads what is there.
JsonValue recordOf(std::vector<Property> properties);
/// The record without what is inside its records and lists, for one that is described in full elsewhere.
JsonValue outlineOf(JsonValue record, std::string_view description);
JsonValue schema(std::string_view type, std::string_view description = {});
JsonValue listOf(JsonValue items, std::string_view description = {});

/// What is said of fields, by their names; of several with one name, of the outermost.
using FieldWords = std::map<std::string_view, std::string>;

/// One of these texts.
JsonValue choiceOf(std::span<const std::string_view> names);
/// A moment, as records write it.
JsonValue momentSchema();
/// An object with one of the members.
JsonValue oneOf(std::vector<Property> cases);
/// With the words for the field, where there are any.
JsonValue withWords(JsonValue schema, std::string_view field, const FieldWords& words);

/// As below, inside these records.
template <class Type, class... Around>
JsonValue schemaIn(const FieldWords& words);

template <class... Around, class Record, class Member>
Property propertyOf(const lumo::Field<Record, Member>& field, const FieldWords& words,
                    const FieldWords& wordsInside) {
    JsonValue made;
    if constexpr (lumo::IsOptional<Member>::value) {
        made = schemaIn<typename Member::value_type, Around...>(wordsInside);
    } else {
        made = schemaIn<Member, Around...>(wordsInside);
    }
    return {std::string(field.name), withWords(std::move(made), field.name, words)};
}

template <class Type>
struct IsList : std::false_type {};
template <class Element>
struct IsList<std::vector<Element>> : std::true_type {};

template <class Type, class... Around>
struct CasesOf;
template <class... Cases, class... Around>
struct CasesOf<std::variant<Cases...>, Around...> {
    static JsonValue schema(const FieldWords& words) {
        return oneOf({{std::string(Cases::caseName), schemaIn<Cases, Around...>(words), true}...});
    }
};

template <class Type, class... Around>
JsonValue schemaIn(const FieldWords& words) {
    if constexpr (std::is_same_v<Type, bool>) {
        return schema("boolean");
    } else if constexpr (std::is_same_v<Type, std::int64_t>) {
        return schema("integer");
    } else if constexpr (std::is_same_v<Type, double>) {
        return schema("number");
    } else if constexpr (std::is_same_v<Type, std::string>) {
        return schema("string");
    } else if constexpr (std::is_same_v<Type, lumo::Date>) {
        return momentSchema();
    } else if constexpr (lumo::NamedEnum<Type>) {
        return choiceOf(lumo::EnumNames<Type>::values);
    } else if constexpr (IsList<Type>::value) {
        return listOf(schemaIn<typename Type::value_type, Around...>(words));
    } else if constexpr (!lumo::FieldRecord<Type>) {
        return CasesOf<Type, Around...>::schema(words);
    } else if constexpr ((std::is_same_v<Type, Around> || ...) || requires { Type::isPlain; }) {
        return schema("object"); // The same again, further in: said once. Or what tells itself.
    } else {
        return std::apply(
            [&](const auto&... field) {
                FieldWords inside = words;
                (inside.erase(field.name), ...);
                return recordOf({propertyOf<Type, Around...>(field, words, inside)...});
            },
            Type::fields);
    }
}

/// The schema of what `lumo::encode` makes of such a record.
template <lumo::FieldRecord Record>
JsonValue schemaOf(const FieldWords& words = {}) {
    return schemaIn<Record>(words);
}

} // namespace tarvo::mcp
