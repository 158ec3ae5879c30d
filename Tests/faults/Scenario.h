#pragma once

#include "LumoCore/Rules/CleanupAction.h"
#include "Tests/support/TempHome.h"

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace tarvo::faults {

using testing::Arguments;
using testing::Child;
using testing::hangLimit;
using testing::Ran;

/// One operation that is to be survived. The home that it works on is furnished by `furnish`; paths are
/// relative to it. In commands "@plan" stands for the file with the plan, "@home" for the home folder,
/// "@tarvo" for the program under test, and a first word with a slash for another program.
struct Scenario {
    std::string name;
    std::vector<lumo::CleanupAction> plan;   ///< What "clean" takes, here or in the preparation.
    std::vector<Arguments> preparation = {}; ///< Run once before the command under test; they succeed.
    Arguments command;
    bool endsItems = false; ///< The command deletes set-aside items for good.
    /// Whether what an exit status of 0 says is true, for commands that report nothing else.
    std::function<bool(const std::string& home)> isDone = {};
    std::string program = {}; ///< Instead of the one that was built.
    Arguments mayAppear = {}; ///< What the command may leave beside what was there.
    /// What is wrong with the home after the next start, before anything is taken back; empty when nothing
    /// is.
    std::function<std::string(const std::string& home)> problem = {};
};

/// For the names of tests.
inline void PrintTo(const Scenario& scenario, std::ostream* out) {
    *out << scenario.name;
}

const std::vector<Scenario>& scenarios();
const Scenario& scenarioNamed(const std::string& name);

/// "home" with files, folders, links and strange names, and "canary" beside it, which nothing may change.
void furnish(const testing::TempHome& slot);

/// The rule whose places take any name that begins like a screenshot's, of whatever kind.
inline const std::string shots = "desktop-screenshots";

/// Actions on paths relative to a home. Titles tell those with one id apart.
lumo::CleanupAction review(std::string id, Arguments items, std::string title = "Own files");
lumo::CleanupAction safe(std::string id, Arguments items);
/// The action with the full paths.
lumo::CleanupAction placedIn(const std::string& home, lumo::CleanupAction action);
/// A saved plan, as "clean --plan" takes it.
std::string planDocument(const std::vector<lumo::CleanupAction>& actions);

inline const Arguments cleanPlan{"clean", "--plan", "@plan", "--yes", "--json"};

} // namespace tarvo::faults
