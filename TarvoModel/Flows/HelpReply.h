#pragma once

#include "LumoAI/LanguageModel.h"
#include "LumoCore/Explaining/HelpAssistant.h"

#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

namespace tarvo {

/// What an answer may draw on besides the help itself. Neither is called when the help has the answer.
struct HelpSources {
    lumo::HelpAssistant::Facts facts;
    /// Empty, or gives null, when no model is to be asked.
    std::function<std::unique_ptr<lumo::LanguageModel>()> model;
};

/// What every face answers a question with, and shows beside it.
struct HelpReply {
    lumo::HelpAnswer answer;
    const lumo::HelpTopic* topic = nullptr; ///< Whose answer it is word for word; none when no topic has it.
    std::vector<const lumo::HelpTopic*>
        related;                  ///< Those the answer names, in the language they are told in.
    bool isAboutThisDisk = false; ///< What no fixed text can answer: a scan or the summary can.
};

/// Whether the help itself answers the question: in the given language or, since people ask in theirs
/// whatever the interface's is, in the other one.
bool isInHelp(const std::string& question, lumo::Language language = lumo::currentLanguage());

/// Answers from the help where it can, else by the model with the facts, else with the closest topics. Never
/// fails; it may take as long as the sources do. A stop ends the asking of the model.
HelpReply answerTo(const std::string& question, const HelpSources& sources, const std::stop_token& stop = {},
                   lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
