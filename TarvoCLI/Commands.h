#pragma once

#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/Console.h"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarvo {

/// What a command does once its arguments are read.
using Action = std::function<ExitCode(const Invocation&)>;

/// Adds a command under its name in the interface language, and under the other one as well.
CLI::App* addCommand(CLI::App& parent, std::string_view spanish, std::string_view english,
                     std::string_view meaningEs, std::string_view meaningEn);

/// Accepts decimal digits, at most that many; otherwise says the problem, in which "{}" stands for the word.
CLI::Validator isDecimal(std::size_t mostDigits, std::string_view problemEs, std::string_view problemEn);

/// Reads a number in decimal, which a validator has found to be one: the library would read "010" as octal.
CLI::callback_t inDecimal(std::optional<std::int64_t>& number);

/// Adds the option that says how many days old something must be.
void addOlderOption(CLI::App& command, std::optional<std::int64_t>& days, const lumo::Words& meaning);

/// Collects the words of an option, or its one word, as they are: the library would take one in square
/// brackets apart.
CLI::callback_t wordsInto(std::vector<std::string>& words);
CLI::callback_t wordInto(std::string& word);

/// Each adds one command or a few; when one was given, `chosen` becomes what it does.
void addScanCommand(CLI::App& app, Action& chosen);
void addPlanCommand(CLI::App& app, Action& chosen);
void addCleanCommand(CLI::App& app, Action& chosen);
void addFindCommand(CLI::App& app, Action& chosen);
void addHoldingCommands(CLI::App& app, Action& chosen);
void addHistoryCommand(CLI::App& app, Action& chosen);
void addRulesCommand(CLI::App& app, Action& chosen);
void addAppsCommand(CLI::App& app, Action& chosen);
void addFolderCommand(CLI::App& app, Action& chosen);
void addExplainCommand(CLI::App& app, Action& chosen);
void addExploreCommand(CLI::App& app, Action& chosen);
void addArchiveCommand(CLI::App& app, Action& chosen);
void addGrowthCommand(CLI::App& app, Action& chosen);
void addSummaryCommand(CLI::App& app, Action& chosen);
void addAskCommand(CLI::App& app, Action& chosen);
void addSpaceCommand(CLI::App& app, Action& chosen);
void addSettingsCommand(CLI::App& app, Action& chosen);
void addAgentsCommand(CLI::App& app, Action& chosen);
void addMapCommand(CLI::App& app, Action& chosen);
void addWeeklyCommand(CLI::App& app, Action& chosen);
void addMcpCommand(CLI::App& app, Action& chosen);

} // namespace tarvo
