#pragma once

#include "TarvoMCP/Json.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// Messages of JSON-RPC 2.0, one a line, as the Model Context Protocol has them on standard input and output.
namespace tarvo::mcp {

/// Clients send questions, not data; what is longer is not read.
inline constexpr std::size_t mostMessageBytes = std::size_t{1024} * 1024;

/// The codes of errors (JSON-RPC 2.0; the last one is the protocol's own).
enum class ErrorCode {
    parseError = -32700,
    invalidRequest = -32600,
    methodNotFound = -32601,
    invalidParams = -32602,
    internalError = -32603,
    serverIsBusy = -32000,
    noSuchResource = -32002, ///< Up to revision 2025-11-25; invalidParams from then on.
    unsupportedVersion = -32022,
};

struct Request {
    JsonValue id; ///< A text or a whole number.
    std::string method;
    JsonValue params; ///< An object, or null when there are none.
};

struct Notification {
    std::string method;
    JsonValue params;
};

/// What the client says to a request of ours.
struct Response {
    JsonValue id;
    std::optional<JsonValue> result; ///< Absent for an error.
};

/// What is no message; answered with the code, and with the id where there is one.
struct Malformed {
    JsonValue id; ///< Null when it cannot be told.
    ErrorCode code = ErrorCode::parseError;
    std::string reason;
};

/// Several messages in one list; those that are no messages are told when they are read.
struct Batch {
    std::vector<JsonValue> members; ///< One at least.
};

using Message = std::variant<Request, Notification, Response, Malformed, Batch>;

/// Reads one line. Never fails: what is wrong with it is a kind of message.
Message readMessage(std::string_view line);

/// Reads a member of a batch, which is no batch itself.
Message messageIn(const JsonValue& document);

/// What a client named, as an error may show it; "" where it named nothing.
std::string shown(const std::string* named);

/// Messages of ours, each one line without its line feed.
std::string requestLine(const JsonValue& id, std::string_view method, JsonValue params);
std::string notificationLine(std::string_view method, JsonValue params);
std::string resultLine(const JsonValue& id, JsonValue result);
std::string errorLine(const JsonValue& id, ErrorCode code, std::string_view reason,
                      std::optional<JsonValue> data = {});

} // namespace tarvo::mcp
