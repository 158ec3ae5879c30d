#include "LumoAI/ChatInterface.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace lumo {

namespace {

/// Enough for five sentences; a model that runs on without end is stopped there.
constexpr std::int64_t mostTokens = 512;
constexpr std::int64_t seed = 1;

JsonValue word(std::string_view text) {
    return {std::string(text)};
}

JsonValue messages(const ModelRequest& request) {
    const auto message = [](std::string_view role, const std::string& content) {
        return JsonValue{JsonValue::Object{{"role", word(role)}, {"content", {content}}}};
    };
    return {JsonValue::Array{message("system", request.instructions), message("user", request.prompt)}};
}

void addOllamaSettings(const ModelRequest& request, JsonValue::Object& body) {
    body.push_back(
        {"options",
         {JsonValue::Object{
             {"temperature", {std::int64_t{0}}}, {"seed", {seed}}, {"num_predict", {mostTokens}}}}});
    // Thinking aloud would use the time up; a model that cannot think is told nothing new.
    body.push_back({"think", {false}});
    if (request.schema) {
        body.push_back({"format", request.schema->json()});
    }
}

void addOpenAISettings(const ModelRequest& request, JsonValue::Object& body) {
    body.push_back({"temperature", {std::int64_t{0}}});
    body.push_back({"seed", {seed}});
    body.push_back({"max_tokens", {mostTokens}});
    if (request.schema) {
        const JsonValue::Object form{
            {"name", {request.schema->name}}, {"strict", {true}}, {"schema", request.schema->json()}};
        body.push_back(
            {"response_format", {JsonValue::Object{{"type", word("json_schema")}, {"json_schema", {form}}}}});
    }
}

const std::string* textAt(const JsonValue* object, std::string_view member) {
    const JsonValue* found = object != nullptr ? object->find(member) : nullptr;
    return found != nullptr ? std::get_if<std::string>(&found->value) : nullptr;
}

const JsonValue::Array* listAt(const JsonValue& object, std::string_view member) {
    const JsonValue* found = object.find(member);
    return found != nullptr ? std::get_if<JsonValue::Array>(&found->value) : nullptr;
}

/// Ollama names the machine that really runs a model, and the model there. Anything but an empty text there
/// counts: what is not understood must not be trusted.
bool isRemote(const JsonValue& entry) {
    return std::ranges::any_of(
        std::array<const char*, 2>{"remote_host", "remote_model"}, [&](const char* member) {
            const JsonValue* found = entry.find(member);
            return found != nullptr && *found != JsonValue{nullptr} && *found != word("");
        });
}

/// Ollama lists a model with its tag, which may be left out when it is the usual one.
bool isCalled(const JsonValue& entry, std::string_view model) {
    const std::string tagged = std::string(model) + ":latest";
    return std::ranges::any_of(std::array<const char*, 3>{"name", "model", "id"}, [&](const char* member) {
        const std::string* name = textAt(&entry, member);
        return name != nullptr && (*name == model || *name == tagged);
    });
}

Result<std::string> completeText(const JsonValue* message, const std::string* endReason) {
    const std::string* content = textAt(message, "content");
    if (content == nullptr) {
        return failure("the reply holds no message");
    }
    if (endReason != nullptr && *endReason == "length") {
        return failure("the answer was cut off");
    }
    return *content;
}

} // namespace

std::string_view chatPath(ChatInterface chat) {
    return chat == ChatInterface::ollama ? "/api/chat" : "/v1/chat/completions";
}

std::string_view modelsPath(ChatInterface chat) {
    return chat == ChatInterface::ollama ? "/api/tags" : "/v1/models";
}

std::string chatBody(ChatInterface chat, std::string_view model, const ModelRequest& request) {
    JsonValue::Object body{{"model", word(model)}, {"messages", messages(request)}, {"stream", {false}}};
    if (chat == ChatInterface::ollama) {
        addOllamaSettings(request, body);
    } else {
        addOpenAISettings(request, body);
    }
    return dumpJson({std::move(body)}, JsonLayout::line);
}

ModelStanding standingIn(ChatInterface chat, std::string_view models, std::string_view model) {
    const bool isOllama = chat == ChatInterface::ollama;
    const Result<JsonValue> document = parseJson(models);
    const auto* list = document ? listAt(*document, isOllama ? "models" : "data") : nullptr;
    // llama.cpp's server answers under Ollama's paths too, in its own words.
    if (list == nullptr || (isOllama && document->find("data") != nullptr)) {
        return ModelStanding::otherInterface;
    }
    const auto isAsked = [&](const JsonValue& entry) { return isCalled(entry, model); };
    const auto isAskedElsewhere = [&](const JsonValue& entry) { return isAsked(entry) && isRemote(entry); };
    if (std::ranges::any_of(*list, isAskedElsewhere)) {
        return ModelStanding::remote;
    }
    return !isOllama || std::ranges::any_of(*list, isAsked) ? ModelStanding::local : ModelStanding::missing;
}

Result<std::string> answerIn(ChatInterface chat, std::string_view reply) {
    const Result<JsonValue> document = parseJson(reply);
    if (!document) {
        return failure(document.error().message);
    }
    if (isRemote(*document)) {
        return failure("the answer came from another machine");
    }
    if (chat == ChatInterface::ollama) {
        return completeText(document->find("message"), textAt(&*document, "done_reason"));
    }
    const auto* choices = listAt(*document, "choices");
    if (choices == nullptr || choices->empty()) {
        return failure("the reply holds no choices");
    }
    return completeText(choices->front().find("message"), textAt(&choices->front(), "finish_reason"));
}

} // namespace lumo
