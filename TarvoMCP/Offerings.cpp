#include "TarvoMCP/Offerings.h"

#include "LumoCore/Basics/Words.h"
#include "TarvoMCP/Message.h"

#include <algorithm>
#include <iterator>

namespace tarvo::mcp {

namespace {

constexpr std::string_view jsonType = "application/json";

/// Name and description, with the title where the peer knows titles.
JsonValue::Object introduced(std::string_view name, std::string_view title, std::string_view description,
                             const Peer& peer) {
    JsonValue::Object members{{"name", word(name)}};
    if (peer.readsRecords()) {
        members.push_back({"title", word(title)});
    }
    members.push_back({"description", word(description)});
    return members;
}

bool isFamily(const Resource& resource) {
    return resource.uri.ends_with('}');
}

JsonValue described(const Resource& resource, const Peer& peer) {
    JsonValue::Object members = introduced(resource.name, resource.title, resource.description, peer);
    members.insert(members.begin(), {isFamily(resource) ? "uriTemplate" : "uri", word(resource.uri)});
    members.push_back({"mimeType", word(jsonType)});
    return {std::move(members)};
}

JsonValue described(const Prompt& prompt, const Peer& peer) {
    JsonValue::Object members = introduced(prompt.name, prompt.title, prompt.description, peer);
    JsonValue::Array arguments;
    for (const PromptArgument& each : prompt.arguments) {
        JsonValue::Object argument = introduced(each.name, each.title, each.description, peer);
        argument.push_back({"required", flag(true)});
        arguments.push_back({std::move(argument)});
    }
    members.push_back({"arguments", {std::move(arguments)}});
    return {std::move(members)};
}

template <class Element>
JsonValue listOfDescribed(std::string_view name, const std::vector<Element>& elements, const Peer& peer,
                          const std::function<bool(const Element&)>& isMeant = {}) {
    JsonValue::Array all;
    for (const Element& each : elements) {
        if (!isMeant || isMeant(each)) {
            all.push_back(described(each, peer));
        }
    }
    constexpr std::int64_t hour = 3600000; // They are those of the program.
    return cacheable(object({{std::string(name), {std::move(all)}}}), peer, hour);
}

} // namespace

std::optional<JsonValue> listed(const Offerings& offerings, std::string_view method, const Peer& peer) {
    if (method == "tools/list") {
        return listOfDescribed("tools", offerings.tools, peer);
    }
    if (method == "prompts/list") {
        return listOfDescribed("prompts", offerings.prompts, peer);
    }
    if (method == "resources/list") {
        return listOfDescribed<Resource>("resources", offerings.resources, peer,
                                         [](const Resource& each) { return !isFamily(each); });
    }
    if (method == "resources/templates/list") {
        return listOfDescribed<Resource>("resourceTemplates", offerings.resources, peer, isFamily);
    }
    return std::nullopt;
}

std::pair<const Resource*, std::string> resourceAt(const Offerings& offerings, const std::string& uri) {
    for (const Resource& resource : offerings.resources) {
        const std::string_view before = std::string_view(resource.uri).substr(0, resource.uri.find('{'));
        if (isFamily(resource) ? uri.starts_with(before) && uri.size() > before.size()
                               : uri == resource.uri) {
            return {&resource, uri.substr(before.size())};
        }
    }
    return {nullptr, {}};
}

JsonValue readResult(const std::string& uri, const JsonValue& document) {
    return object({{"contents", list({object({{"uri", word(uri)},
                                              {"mimeType", word(jsonType)},
                                              {"text", word(lumo::jsonInText(document))}})})}});
}

lumo::Result<JsonValue> promptResult(const Offerings& offerings, const JsonValue& params) {
    const std::string* name = textIn(params, "name");
    const auto prompt = std::ranges::find_if(
        offerings.prompts, [&](const Prompt& each) { return name != nullptr && each.name == *name; });
    if (prompt == offerings.prompts.end()) {
        return lumo::failure("Unknown prompt: " + shown(name));
    }
    const JsonValue* given = objectIn(params, "arguments");
    const JsonValue arguments = given != nullptr ? *given : object({});
    for (const auto& member : std::get<JsonValue::Object>(arguments.value)) {
        if (std::ranges::find(prompt->arguments, member.name, &PromptArgument::name) ==
            prompt->arguments.end()) {
            return lumo::failure(
                lumo::Words{"no hay ningún argumento «{}»", "there is no argument “{}”"}.with(
                    shown(&member.name)));
        }
    }
    for (const PromptArgument& argument : prompt->arguments) {
        if (textIn(arguments, argument.name) == nullptr) {
            return lumo::failure(
                lumo::Words{"falta el argumento «{}»", "the argument “{}” is missing"}.with(argument.name));
        }
    }
    const auto words = prompt->words(arguments);
    if (!words) {
        return std::unexpected(words.error());
    }
    const JsonValue content = object({{"type", word("text")}, {"text", word(*words)}});
    return object({{"description", word(prompt->description)},
                   {"messages", list({object({{"role", word("user")}, {"content", content}})})}});
}

} // namespace tarvo::mcp
