#include "TarvoMCP/Tool.h"

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"

namespace tarvo::mcp {

namespace {

JsonValue content(std::string_view text) {
    return object({{"type", word("text")}, {"text", word(text)}});
}

/// What is as the protocol takes it for granted is not said: models pay for each word.
JsonValue hintsOf(const Tool& tool, const Peer& peer) {
    JsonValue::Object hints;
    if (!peer.readsRecords()) {
        hints.push_back({"title", word(tool.title)});
    }
    if (tool.hints.isReadOnly) {
        hints.push_back({"readOnlyHint", flag(true)}); // The next two are of tools that change something.
    } else {
        hints.push_back({"destructiveHint", flag(tool.hints.isDestructive)});
        if (tool.hints.isIdempotent) {
            hints.push_back({"idempotentHint", flag(true)});
        }
    }
    hints.push_back({"openWorldHint", flag(false)});
    return {std::move(hints)};
}

template <class Value>
lumo::Result<std::optional<Value>> argument(const JsonValue& arguments, std::string_view name) {
    const JsonValue* given = arguments.find(name);
    if (given == nullptr || std::holds_alternative<std::nullptr_t>(given->value)) {
        return std::optional<Value>();
    }
    lumo::Result<Value> value = lumo::decode<Value>(*given);
    if (!value) {
        return lumo::failure(std::string(name) + value.error().message);
    }
    return std::optional<Value>(std::move(*value));
}

} // namespace

ToolAnswer problem(const std::string& text) {
    constexpr std::size_t mostColumns = 4000; // Some name all ids of a home.
    return {.text = lumo::shortened(text, mostColumns), .isProblem = true};
}

ToolAnswer problem(const lumo::Failure& failure) {
    return problem(failure.message);
}

ToolAnswer pending() {
    return {.text = {}, .isPending = true};
}

JsonValue described(const Tool& tool, const Peer& peer) {
    JsonValue::Object members{{"name", word(tool.name)}};
    if (peer.readsRecords()) {
        members.push_back({"title", word(tool.title)});
    }
    members.push_back({"description", word(tool.description)});
    members.push_back({"inputSchema", tool.input});
    if (peer.readsRecords()) {
        members.push_back({"outputSchema", tool.output});
    }
    if (peer.readsHints()) {
        members.push_back({"annotations", hintsOf(tool, peer)});
    }
    return {std::move(members)};
}

JsonValue resultOf(const ToolAnswer& answer, bool readsRecords) {
    std::vector<JsonValue> blocks{content(answer.text)};
    if (!answer.structured) {
        return object({{"content", list(std::move(blocks))}, {"isError", flag(answer.isProblem)}});
    }
    if (!readsRecords) {
        blocks.push_back(content(lumo::jsonInText(*answer.structured)));
        return object({{"content", list(std::move(blocks))}, {"isError", flag(answer.isProblem)}});
    }
    // The record is not said a second time: models are often shown both.
    return object({{"content", list(std::move(blocks))},
                   {"structuredContent", *answer.structured},
                   {"isError", flag(answer.isProblem)}});
}

lumo::Result<std::optional<std::string>> textArgument(const JsonValue& arguments, std::string_view name) {
    return argument<std::string>(arguments, name);
}

lumo::Result<bool> flagArgument(const JsonValue& arguments, std::string_view name) {
    const auto given = argument<bool>(arguments, name);
    return given ? lumo::Result<bool>(given->value_or(false)) : std::unexpected(given.error());
}

lumo::Result<std::optional<std::int64_t>> numberArgument(const JsonValue& arguments, std::string_view name) {
    return argument<std::int64_t>(arguments, name);
}

lumo::Result<std::optional<std::vector<std::string>>> textsArgument(const JsonValue& arguments,
                                                                    std::string_view name) {
    return argument<std::vector<std::string>>(arguments, name);
}

lumo::Result<void> checkNames(const Tool& tool, const JsonValue& arguments) {
    const JsonValue* known = tool.input.find("properties");
    for (const auto& member : std::get<JsonValue::Object>(arguments.value)) {
        if (known == nullptr || known->find(member.name) == nullptr) {
            return lumo::failure(
                lumo::Words{"no hay ningún argumento «{}»", "there is no argument “{}”"}.with(
                    lumo::printable(member.name)));
        }
    }
    const JsonValue* required = tool.input.find("required");
    for (const JsonValue& name :
         required != nullptr ? std::get<JsonValue::Array>(required->value) : JsonValue::Array()) {
        if (arguments.find(std::get<std::string>(name.value)) == nullptr) {
            return lumo::failure(lumo::Words{"falta el argumento «{}»", "the argument “{}” is missing"}.with(
                std::get<std::string>(name.value)));
        }
    }
    return {};
}

} // namespace tarvo::mcp
