#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/JsonValue.h"

#include <array>
#include <concepts>
#include <map>
#include <optional>
#include <tuple>
#include <type_traits>

/// JSON of records. A record names its fields once, in a static `fields` made of `field(...)`, and both
/// directions follow from that list:
///
/// - an absent optional field is left out, and may be missing or null;
/// - an enumeration is a string, by its `EnumNames`; a payload enumeration (a `std::variant` of records that
/// each
///   have a `caseName`) is an object with that one member; unknown cases are refused;
/// - members that no field names are passed over, so that newer programs can add some.
///
/// A failure says where in the document it lies, in English.
namespace lumo {

template <class Record, class Member>
struct Field {
    using Type = Member;
    std::string_view name;
    Member Record::* member;
};

template <class Record, class Member>
constexpr Field<Record, Member> field(std::string_view name, Member Record::* member) {
    return {name, member};
}

/// The names of an enumeration's cases in their order: specialise with `static constexpr std::array values`.
template <class Enumeration>
struct EnumNames;

template <class Type>
concept NamedEnum = std::is_enum_v<Type> && requires { EnumNames<Type>::values.size(); };

template <class Type>
concept FieldRecord = requires { std::tuple_size_v<std::remove_cvref_t<decltype(Type::fields)>>; };

template <class Type>
struct IsOptional : std::false_type {};
template <class Type>
struct IsOptional<std::optional<Type>> : std::true_type {};

namespace codec {

/// One way of writing a type down, chosen by the type.
template <class Type>
struct Coder;

} // namespace codec

template <class Type>
JsonValue encode(const Type& value) {
    return codec::Coder<Type>::encode(value);
}

template <class Type>
Result<Type> decode(const JsonValue& document) {
    return codec::Coder<Type>::decode(document);
}

namespace codec {

/// A failure of something inside, with the place it lies at before it.
inline Failure within(std::string_view place, const Failure& inner) {
    // A list's "[3]" follows its name without a point, and so does the colon before what is wrong.
    const bool needsPoint = !inner.message.starts_with('[') && !inner.message.starts_with(':');
    return {std::string(place) + (needsPoint ? "." : "") + inner.message};
}

} // namespace codec

/// Reads a whole document as a record.
template <class Type>
Result<Type> decodeJson(std::string_view bytes) {
    const Result<JsonValue> document = parseJson(bytes);
    if (!document) {
        return failure(document.error().message);
    }
    Result<Type> value = decode<Type>(*document);
    return value ? value : std::unexpected(codec::within("document", value.error()));
}

template <NamedEnum Enumeration>
constexpr std::string_view nameOf(Enumeration value) {
    return EnumNames<Enumeration>::values[static_cast<std::size_t>(value)];
}

template <NamedEnum Enumeration>
constexpr std::optional<Enumeration> caseNamed(std::string_view name) {
    const auto& names = EnumNames<Enumeration>::values;
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (names[index] == name) {
            return static_cast<Enumeration>(index);
        }
    }
    return std::nullopt;
}

namespace codec {

inline std::unexpected<Failure> expected(std::string_view what) {
    return failure(": expected " + std::string(what));
}

/// Types that JSON has itself.
template <class Type, class Stored>
struct PlainCoder {
    static JsonValue encode(const Type& value) { return {static_cast<Stored>(value)}; }
};

template <>
struct Coder<bool> : PlainCoder<bool, bool> {
    static Result<bool> decode(const JsonValue& document) {
        const auto* value = std::get_if<bool>(&document.value);
        return value != nullptr ? Result<bool>(*value) : expected("true or false");
    }
};

template <>
struct Coder<std::int64_t> : PlainCoder<std::int64_t, std::int64_t> {
    static Result<std::int64_t> decode(const JsonValue& document) {
        const auto* value = std::get_if<std::int64_t>(&document.value);
        return value != nullptr ? Result<std::int64_t>(*value) : expected("a whole number");
    }
};

template <>
struct Coder<double> : PlainCoder<double, double> {
    static Result<double> decode(const JsonValue& document) {
        if (const auto* whole = std::get_if<std::int64_t>(&document.value)) {
            return static_cast<double>(*whole);
        }
        const auto* value = std::get_if<double>(&document.value);
        return value != nullptr ? Result<double>(*value) : expected("a number");
    }
};

template <>
struct Coder<std::string> : PlainCoder<std::string, std::string> {
    static Result<std::string> decode(const JsonValue& document) {
        const auto* value = std::get_if<std::string>(&document.value);
        return value != nullptr ? Result<std::string>(*value) : expected("a string");
    }
};

template <>
struct Coder<Date> {
    static JsonValue encode(const Date& value) { return {isoText(value)}; }
    static Result<Date> decode(const JsonValue& document) {
        const auto* value = std::get_if<std::string>(&document.value);
        const std::optional<Date> date = value != nullptr ? dateFromIsoText(*value) : std::nullopt;
        return date ? Result<Date>(*date) : expected("a date like 2025-03-14T09:30:05Z");
    }
};

template <NamedEnum Enumeration>
struct Coder<Enumeration> {
    static JsonValue encode(const Enumeration& value) { return {std::string(nameOf(value))}; }
    static Result<Enumeration> decode(const JsonValue& document) {
        const auto* name = std::get_if<std::string>(&document.value);
        const auto value = name != nullptr ? caseNamed<Enumeration>(*name) : std::nullopt;
        return value ? Result<Enumeration>(*value) : expected("one of the known values");
    }
};

template <class Element>
struct Coder<std::vector<Element>> {
    static JsonValue encode(const std::vector<Element>& values) {
        JsonValue::Array array;
        array.reserve(values.size());
        for (const Element& value : values) {
            array.push_back(lumo::encode(value));
        }
        return {std::move(array)};
    }
    static Result<std::vector<Element>> decode(const JsonValue& document) {
        const auto* array = std::get_if<JsonValue::Array>(&document.value);
        if (array == nullptr) {
            return expected("a list");
        }
        std::vector<Element> values;
        values.reserve(array->size());
        for (std::size_t index = 0; index < array->size(); ++index) {
            Result<Element> value = lumo::decode<Element>((*array)[index]);
            if (!value) {
                return std::unexpected(within("[" + std::to_string(index) + "]", value.error()));
            }
            values.push_back(std::move(*value));
        }
        return values;
    }
};

template <class Element>
struct Coder<std::map<std::string, Element>> {
    static JsonValue encode(const std::map<std::string, Element>& values) {
        JsonValue::Object object;
        for (const auto& [name, value] : values) {
            object.push_back({name, lumo::encode(value)});
        }
        return {std::move(object)};
    }
    static Result<std::map<std::string, Element>> decode(const JsonValue& document) {
        const auto* object = std::get_if<JsonValue::Object>(&document.value);
        if (object == nullptr) {
            return expected("an object");
        }
        std::map<std::string, Element> values;
        for (const JsonValue::Member& member : *object) {
            Result<Element> value = lumo::decode<Element>(member.value);
            if (!value) {
                return std::unexpected(within(member.name, value.error()));
            }
            values.insert_or_assign(member.name, std::move(*value));
        }
        return values;
    }
};

template <class Record, class Member>
void encodeField(const Record& record, const Field<Record, Member>& field, JsonValue::Object& object) {
    const Member& value = record.*field.member;
    if constexpr (IsOptional<Member>::value) {
        if (value) {
            object.push_back({std::string(field.name), lumo::encode(*value)});
        }
    } else {
        object.push_back({std::string(field.name), lumo::encode(value)});
    }
}

/// Decodes one field into the record; the failure, if any.
template <class Record, class Member>
std::optional<Failure> decodeField(const JsonValue& document, const Field<Record, Member>& field,
                                   Record& record) {
    const JsonValue* found = document.find(field.name);
    if constexpr (IsOptional<Member>::value) {
        if (found == nullptr || std::holds_alternative<std::nullptr_t>(found->value)) {
            return std::nullopt;
        }
        auto value = lumo::decode<typename Member::value_type>(*found);
        if (!value) {
            return within(field.name, value.error());
        }
        record.*field.member = std::move(*value);
    } else {
        if (found == nullptr) {
            return Failure{std::string(field.name) + ": missing"};
        }
        auto value = lumo::decode<Member>(*found);
        if (!value) {
            return within(field.name, value.error());
        }
        record.*field.member = std::move(*value);
    }
    return std::nullopt;
}

template <FieldRecord Record>
struct Coder<Record> {
    static JsonValue encode(const Record& record) {
        JsonValue::Object object;
        std::apply([&](const auto&... field) { (encodeField(record, field, object), ...); }, Record::fields);
        return {std::move(object)};
    }
    static Result<Record> decode(const JsonValue& document) {
        if (!std::holds_alternative<JsonValue::Object>(document.value)) {
            return expected("an object");
        }
        Record record;
        std::optional<Failure> problem;
        std::apply(
            [&](const auto&... field) {
                ((problem = problem ? problem : decodeField(document, field, record)), ...);
            },
            Record::fields);
        if (problem) {
            return std::unexpected(*problem);
        }
        return record;
    }
};

template <class... Cases>
struct Coder<std::variant<Cases...>> {
    using Value = std::variant<Cases...>;

    static JsonValue encode(const Value& value) {
        return std::visit(
            [](const auto& chosen) -> JsonValue {
                using Case = std::remove_cvref_t<decltype(chosen)>;
                return {JsonValue::Object{{std::string(Case::caseName), lumo::encode(chosen)}}};
            },
            value);
    }
    static Result<Value> decode(const JsonValue& document) {
        const auto* object = std::get_if<JsonValue::Object>(&document.value);
        if (object == nullptr || object->size() != 1) {
            return expected("an object with one member");
        }
        Result<Value> result = failure(object->front().name + ": unknown case");
        (tryCase<Cases>(object->front(), result) || ...);
        return result;
    }

  private:
    template <class Case>
    static bool tryCase(const JsonValue::Member& member, Result<Value>& result) {
        if (member.name != Case::caseName) {
            return false;
        }
        Result<Case> payload = lumo::decode<Case>(member.value);
        if (payload) {
            result = Value(std::move(*payload));
        } else {
            result = std::unexpected(within(member.name, payload.error()));
        }
        return true;
    }
};

} // namespace codec

} // namespace lumo
