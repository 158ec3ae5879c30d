#include "TarvoMCP/Message.h"

#include "LumoCore/Basics/Text.h"

namespace tarvo::mcp {

namespace {

bool isID(const JsonValue& value) {
    return std::holds_alternative<std::string>(value.value) ||
           std::holds_alternative<std::int64_t>(value.value);
}

std::string line(JsonValue::Object members) {
    members.insert(members.begin(), {"jsonrpc", word("2.0")});
    return dumpJson({std::move(members)}, lumo::JsonLayout::line);
}

/// The id to answer with, as far as the message has one.
JsonValue idOf(const JsonValue& document) {
    const JsonValue* id = document.find("id");
    return id != nullptr && isID(*id) ? *id : JsonValue();
}

Message invalid(const JsonValue& document, std::string reason) {
    return Malformed{idOf(document), ErrorCode::invalidRequest, std::move(reason)};
}

Message readResponse(const JsonValue& document) {
    const JsonValue* result = document.find("result");
    const JsonValue* error = document.find("error");
    const bool hasError = error != nullptr && *error != JsonValue(); // Some put a null beside a result.
    if ((result != nullptr) == hasError) {
        return invalid(document, "a message has a method, a result or an error");
    }
    return Response{idOf(document), result != nullptr ? std::optional(*result) : std::nullopt};
}

} // namespace

Message readMessage(std::string_view text) {
    const auto document = lumo::parseJson(text);
    if (!document) {
        return Malformed{{}, ErrorCode::parseError, document.error().message};
    }
    const auto* members = std::get_if<JsonValue::Array>(&document->value);
    if (members != nullptr && !members->empty()) {
        return Batch{*members};
    }
    return messageIn(*document);
}

Message messageIn(const JsonValue& document) {
    if (!std::holds_alternative<JsonValue::Object>(document.value)) {
        return Malformed{{}, ErrorCode::invalidRequest, "a message is one object"};
    }
    const std::string* version = textIn(document, "jsonrpc");
    if (version == nullptr || *version != "2.0") {
        return invalid(document, "jsonrpc: expected \"2.0\"");
    }
    if (document.find("method") == nullptr) {
        return readResponse(document);
    }
    const std::string* method = textIn(document, "method");
    const JsonValue* params = document.find("params");
    if (method == nullptr) {
        return invalid(document, "method: expected a string");
    }
    const bool hasParams = params != nullptr && std::holds_alternative<JsonValue::Object>(params->value);
    const JsonValue given = hasParams ? *params : JsonValue();
    const JsonValue* id = document.find("id");
    if (id == nullptr) {
        return Notification{*method, given}; // Never answered, whatever is wrong with it.
    }
    if (params != nullptr && !hasParams) {
        return Malformed{idOf(document), ErrorCode::invalidParams, "params: expected an object"};
    }
    return isID(*id) ? Message(Request{*id, *method, given})
                     : invalid(document, "id: expected a string or a whole number");
}

std::string shown(const std::string* named) {
    constexpr std::size_t mostColumns = 200;
    return named != nullptr ? lumo::shortened(lumo::printable(*named), mostColumns) : std::string();
}

std::string requestLine(const JsonValue& id, std::string_view method, JsonValue params) {
    return line({{"id", id}, {"method", word(method)}, {"params", std::move(params)}});
}

std::string notificationLine(std::string_view method, JsonValue params) {
    return line({{"method", word(method)}, {"params", std::move(params)}});
}

std::string resultLine(const JsonValue& id, JsonValue result) {
    return line({{"id", id}, {"result", std::move(result)}});
}

std::string errorLine(const JsonValue& id, ErrorCode code, std::string_view reason,
                      std::optional<JsonValue> data) {
    JsonValue::Object error{{"code", number(static_cast<std::int64_t>(code))}, {"message", word(reason)}};
    if (data) {
        error.push_back({"data", std::move(*data)});
    }
    return line({{"id", id}, {"error", {std::move(error)}}});
}

} // namespace tarvo::mcp
