#pragma once

#include "TarvoMCP/Offerings.h"
#include "TarvoMCP/Tool.h"
#include "TarvoMCP/Workspace.h"

#include <memory>
#include <string>
#include <vector>

/// What this server has for agents. All of it works on one home and shares the workspace, which must not be
/// null.
namespace tarvo::mcp {

/// What a server has: no text of one that only looks speaks of tools that it has not.
enum class Offer { everything, looking };

Offerings offeringsOf(const std::shared_ptr<Workspace>& workspace, Offer offer);

/// Those that look and propose: they change nothing but what the program remembers of explanations.
std::vector<Tool> lookingTools(const std::shared_ptr<Workspace>& workspace, Offer offer = Offer::everything);

/// Those that change something, each after the user said yes to the very thing.
std::vector<Tool> changingTools(const std::shared_ptr<Workspace>& workspace);

/// Of those that look: sizes, single items, what folders are, and cleanups before and after they are carried
/// out.
std::vector<Tool> measuringTools(const std::shared_ptr<Workspace>& workspace);
std::vector<Tool> findingTools(const std::shared_ptr<Workspace>& workspace);
std::vector<Tool> explainingTools(const std::shared_ptr<Workspace>& workspace);
std::vector<Tool> planTools(const std::shared_ptr<Workspace>& workspace, Offer offer);

/// The last report, the plans and the history, as far as there are any.
std::vector<Resource> resources(const std::shared_ptr<Workspace>& workspace);

/// What a person may have their agent do.
std::vector<Prompt> prompts(Offer offer);

/// What the server says of itself to a model.
std::string instructions(Offer offer);

} // namespace tarvo::mcp
