#include "LumoAI/AnswerSchema.h"

#include "LumoAI/ModelText.h"

#include <algorithm>

namespace lumo {

namespace {

constexpr std::size_t mostCharacters = 600; // Of one text, which is to be a sentence.

JsonValue json(const AnswerProperty& property) {
    JsonValue::Object object;
    if (!property.choices.empty()) {
        object.push_back({"title", {property.choiceName}});
    }
    object.push_back({"type", {std::string("string")}});
    object.push_back({"description", {property.description}});
    if (!property.choices.empty()) {
        JsonValue::Array choices;
        for (const std::string& choice : property.choices) {
            choices.push_back({choice});
        }
        object.push_back({"enum", {std::move(choices)}});
    }
    return {std::move(object)};
}

Result<std::string> valueIn(const JsonValue& answer, const AnswerProperty& property) {
    const JsonValue* member = answer.find(property.name);
    const auto* written = member != nullptr ? std::get_if<std::string>(&member->value) : nullptr;
    if (written == nullptr) {
        return failure(property.name + ": expected a string");
    }
    if (property.choices.empty()) {
        return modelText(*written, mostCharacters);
    }
    const bool isChoice = std::ranges::find(property.choices, *written) != property.choices.end();
    return isChoice ? *written : std::string();
}

} // namespace

JsonValue AnswerSchema::json() const {
    JsonValue::Object members;
    JsonValue::Array names;
    for (const AnswerProperty& property : properties) {
        members.push_back({property.name, lumo::json(property)});
        names.push_back({property.name});
    }
    return {JsonValue::Object{{"title", {name}},
                              {"type", {std::string("object")}},
                              {"properties", {std::move(members)}},
                              {"required", {std::move(names)}},
                              {"additionalProperties", {false}}}};
}

Result<std::vector<std::string>> AnswerSchema::read(std::string_view answer) const {
    const Result<JsonValue> document = parseJson(answer);
    const auto* object = document ? std::get_if<JsonValue::Object>(&document->value) : nullptr;
    // With as many members as properties and each property among them, none is there twice or unasked.
    if (object == nullptr || object->size() != properties.size()) {
        return failure("expected an object with the members of " + name);
    }
    std::vector<std::string> values;
    for (const AnswerProperty& property : properties) {
        Result<std::string> value = valueIn(*document, property);
        if (!value) {
            return std::unexpected(value.error());
        }
        values.push_back(std::move(*value));
    }
    return values;
}

} // namespace lumo
