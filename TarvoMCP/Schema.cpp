#include "TarvoMCP/Schema.h"

#include <algorithm>
#include <iterator>

namespace tarvo::mcp {

namespace {

void describe(JsonValue& schema, std::string description) {
    std::get<JsonValue::Object>(schema.value).push_back({"description", {std::move(description)}});
}

} // namespace

JsonValue schemaOf(std::vector<Property> properties) {
    std::vector<JsonValue> required;
    for (const Property& property : properties) {
        if (property.isRequired) {
            required.push_back(word(property.name));
        }
    }
    JsonValue schema = recordOf(std::move(properties));
    if (!required.empty()) {
        std::get<JsonValue::Object>(schema.value).push_back({"required", list(std::move(required))});
    }
    return schema;
}

JsonValue recordOf(std::vector<Property> properties) {
    JsonValue::Object members;
    for (Property& property : properties) {
        members.push_back({std::move(property.name), std::move(property.schema)});
    }
    return object({{"type", word("object")}, {"properties", {std::move(members)}}});
}

JsonValue outlineOf(JsonValue record, std::string_view description) {
    const auto isDetail = [](const JsonValue::Member& member) {
        return member.name == "properties" || member.name == "items";
    };
    for (JsonValue::Member& part : std::get<JsonValue::Object>(record.value)) {
        if (part.name == "properties") {
            for (JsonValue::Member& property : std::get<JsonValue::Object>(part.value.value)) {
                std::erase_if(std::get<JsonValue::Object>(property.value.value), isDetail);
            }
        }
    }
    describe(record, std::string(description));
    return record;
}

JsonValue argumentsOf(std::vector<Property> properties) {
    JsonValue schema = schemaOf(std::move(properties));
    std::get<JsonValue::Object>(schema.value).push_back({"additionalProperties", flag(false)});
    return schema;
}

JsonValue schema(std::string_view type, std::string_view description) {
    JsonValue::Object members{{"type", word(type)}};
    if (!description.empty()) {
        members.push_back({"description", word(description)});
    }
    return {std::move(members)};
}

JsonValue listOf(JsonValue items, std::string_view description) {
    JsonValue value = schema("array", description);
    std::get<JsonValue::Object>(value.value).push_back({"items", std::move(items)});
    return value;
}

JsonValue choiceOf(std::span<const std::string_view> names) {
    JsonValue::Array values;
    std::ranges::transform(names, std::back_inserter(values), word);
    return object({{"type", word("string")}, {"enum", {std::move(values)}}});
}

JsonValue momentSchema() {
    return object({{"type", word("string")}, {"format", word("date-time")}});
}

JsonValue oneOf(std::vector<Property> cases) {
    JsonValue::Array schemas;
    for (Property& each : cases) {
        schemas.push_back(schemaOf({std::move(each)}));
    }
    return object({{"oneOf", {std::move(schemas)}}});
}

JsonValue withWords(JsonValue schema, std::string_view field, const FieldWords& words) {
    if (const auto said = words.find(field); said != words.end()) {
        describe(schema, said->second);
    }
    return schema;
}

} // namespace tarvo::mcp
