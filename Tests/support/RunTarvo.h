#pragma once

#include "LumoCore/Basics/JsonValue.h"
#include "Tests/support/TempHome.h"

#include <string>
#include <vector>

namespace tarvo::testing {

/// Runs the command for the home folder, in Spanish unless the words or the environment say otherwise.
Ran runTarvo(const TempHome& home, const std::vector<std::string>& words,
             const std::vector<std::string>& environment = {"TARVO_IDIOMA=es"});

/// The same in Spanish on a terminal, with the text typed.
Ran runTarvoOnTerminal(const TempHome& home, const std::vector<std::string>& words, std::string_view typed);

/// The one document that the command prints with --json; that it failed or said anything else fails the test.
lumo::JsonValue jsonOf(const TempHome& home, std::vector<std::string> words);

/// The document in the text, which is one.
lumo::JsonValue json(const std::string& text);

} // namespace tarvo::testing
