#pragma once

#include "TarvoMCP/Tool.h"
#include "TarvoMCP/Workspace.h"

#include <memory>
#include <vector>

/// The tools of the server. All of them work on one home and share the workspace, which must not be null.
namespace tarvo::mcp {

/// What a server has: no text of one that only looks speaks of tools that it has not.
enum class Offer { everything, looking };

/// Those that look and propose: they change nothing but what the program remembers of explanations.
std::vector<Tool> lookingTools(const std::shared_ptr<Workspace>& workspace, Offer offer = Offer::everything);

/// Those that change something, each after the user said yes to the very thing.
std::vector<Tool> changingTools(const std::shared_ptr<Workspace>& workspace);

/// What the server says of itself to a model.
std::string instructions(Offer offer);

} // namespace tarvo::mcp
