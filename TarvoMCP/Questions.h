#pragma once

#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Rules/CleanupAction.h"
#include "LumoCore/Scanning/ScanReport.h"

#include <string>
#include <string_view>
#include <vector>

/// What the user is asked before a tool changes something, and told where it cannot be asked. Names are shown
/// with all that is invisible in them; no line has more than 120 characters.
namespace tarvo::mcp {

/// Who asks, and about whose home.
struct Asking {
    std::string caller;
    std::string home;
};

/// First all that nobody can take back and all that is the user's own, each with its count, size and paths;
/// then the largest of what recreates itself.
std::string cleaningQuestion(const std::vector<lumo::CleanupAction>& actions, const lumo::ScanReport& report,
                             const Asking& asking);

std::string restoringQuestion(const std::vector<lumo::TrashedItem>& items, const Asking& asking);

/// `lines` say what comes of it.
std::string archivingQuestion(const std::string& path, const std::vector<std::string>& lines,
                              const Asking& asking);

/// The text with no line longer than 120 characters: broken at blanks where there are any.
std::string inShortLines(std::string_view text);

} // namespace tarvo::mcp
