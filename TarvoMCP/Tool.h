#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/Result.h"
#include "TarvoMCP/Consent.h"
#include "TarvoMCP/Json.h"
#include "TarvoMCP/Protocol.h"
#include "TarvoMCP/Schema.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

/// What the server offers: functions that a model may call.
namespace tarvo::mcp {

/// How far work is.
struct Progress {
    double done = 0; ///< Only ever grows.
    std::string message;
    std::optional<double> total = {}; ///< What `done` comes to in the end, where that is known.
};

/// One call, and the way back to whoever made it.
struct ToolCall {
    JsonValue arguments; ///< An object.
    std::string caller;  ///< What the client calls itself.
    std::stop_token stop = {};
    /// Tells how far the work is, from any thread. A figure that stands still is told as a sign of life, now
    /// and then.
    std::function<void(const Progress&)> progress = {};
    /// Asks the user whether the subject, which says exactly what would be done, may be done.
    std::function<Consent(const std::string& question, const std::string& subject)> ask = {};
};

/// What came of a call. `problem` is one that the model can understand and put right.
struct ToolAnswer {
    std::string text;                         ///< What matters, in fifteen lines at most.
    std::optional<JsonValue> structured = {}; ///< As the output schema has it; absent with a problem.
    bool isProblem = false;
    bool isPending = false; ///< The question to the user is the answer.
};

/// A text that would be too long for an answer loses its middle.
ToolAnswer problem(const std::string& text);
ToolAnswer problem(const lumo::Failure& failure);
ToolAnswer pending();

/// What clients are told about a tool so that they can judge it.
struct ToolHints {
    bool isReadOnly = true;
    bool isDestructive = false;
    bool isIdempotent = true;
};

struct Tool {
    std::string name;
    std::string title;
    std::string description;
    JsonValue input;  ///< JSON Schema of an object.
    JsonValue output; ///< JSON Schema of an object.
    ToolHints hints;
    std::function<ToolAnswer(const ToolCall& call)> run;
};

/// The tool as a list of tools has it, with what the peer's revision knows of tools.
JsonValue described(const Tool& tool, const Peer& peer);

/// The answer as the result of a call; for clients that do not read records, the record is a text, too.
JsonValue resultOf(const ToolAnswer& answer, bool readsRecords);

/// The arguments of a call, checked while they are read; a failure says what is wrong with them.
lumo::Result<std::optional<std::string>> textArgument(const JsonValue& arguments, std::string_view name);
lumo::Result<bool> flagArgument(const JsonValue& arguments, std::string_view name);
lumo::Result<std::optional<std::int64_t>> numberArgument(const JsonValue& arguments, std::string_view name);
/// Absent when not given, which is something else than an empty list.
lumo::Result<std::optional<std::vector<std::string>>> textsArgument(const JsonValue& arguments,
                                                                    std::string_view name);

/// Fails when there is an argument that the tool does not have, since a misspelt one must not be passed over,
/// or when one is missing that it needs.
lumo::Result<void> checkNames(const Tool& tool, const JsonValue& arguments);

} // namespace tarvo::mcp
