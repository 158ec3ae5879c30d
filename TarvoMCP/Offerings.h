#pragma once

#include "LumoCore/Basics/Result.h"
#include "TarvoMCP/Protocol.h"
#include "TarvoMCP/Tool.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What a server has for its clients, and how it is listed.
namespace tarvo::mcp {

/// A document that a client may read.
struct Resource {
    std::string uri; ///< With "{…}" at its end for a family of them.
    std::string name;
    std::string title;
    std::string description;
    /// Given what stands in place of the braces; "" without any. Fails in words when there is nothing to read
    /// there. Called from any thread.
    std::function<lumo::Result<JsonValue>(const std::string& given)> read;
};

struct PromptArgument {
    std::string name;
    std::string title;
    std::string description;
};

/// Words that a person has their client say to the model.
struct Prompt {
    std::string name;
    std::string title;
    std::string description;
    std::vector<PromptArgument> arguments; ///< All of them are needed.
    /// Given the arguments, which are an object; fails in words when one of them makes no sense.
    std::function<lumo::Result<std::string>(const JsonValue& arguments)> words;
};

struct Offerings {
    std::vector<Tool> tools;
    std::vector<Resource> resources = {};
    std::vector<Prompt> prompts = {};
};

/// The results of the methods that list, with what the peer's revision has: "tools/list", "resources/list",
/// "resources/templates/list" and "prompts/list"; absent for any other.
std::optional<JsonValue> listed(const Offerings& offerings, std::string_view method, const Peer& peer);

/// The document with that address and what stands in place of its braces; none when there is no such
/// document.
std::pair<const Resource*, std::string> resourceAt(const Offerings& offerings, const std::string& uri);

/// The result of reading a document.
JsonValue readResult(const std::string& uri, const JsonValue& document);

/// The result of a prompt for these parameters; fails in words that name what is wrong with them.
lumo::Result<JsonValue> promptResult(const Offerings& offerings, const JsonValue& params);

} // namespace tarvo::mcp
