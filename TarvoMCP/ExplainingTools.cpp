#include "TarvoMCP/Tools.h"

#include "LumoAI/ExplanationService.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Clock.h"
#include "TarvoMCP/Lines.h"
#include "TarvoModel/Flows/HelpReply.h"
#include "TarvoModel/Flows/ModelChoice.h"
#include "TarvoModel/Showing/ExplanationTexts.h"

#include <fmt/format.h>

namespace tarvo::mcp {

using lumo::Words;
namespace platform = lumo::platform;

namespace {

/// All that a person is shown of it, so that an agent does not pass on half of it.
std::string textOf(const lumo::Explanation& explanation) {
    std::string text;
    for (const ExplanationLine& line : explanationLines(explanation)) {
        text += fmt::format("{}: {}\n", line.label, named(line.text));
    }
    return text +
           (explanation.source == lumo::Explanation::Source::ai
                ? Words{"Escrito por un modelo de este equipo, que puede equivocarse; el riesgo y qué hacer "
                        "los pone Tarvo AI.",
                        "Written by a model on this computer, which may be wrong; the risk and what to do "
                        "come from Tarvo AI."}
                      .in()
                : Words{"Lo dicen reglas fijas, no un modelo.", "Said by fixed rules, not by a model."}.in());
}

ToolAnswer explainFolder(Workspace& workspace, const ToolCall& call) {
    const auto given = textArgument(call.arguments, "path");
    if (!given) {
        return problem(given.error());
    }
    const auto path = workspace.pathNamed(given->value_or(""));
    if (!path) {
        return problem(path.error());
    }
    const auto model = chosenModel(Preferences::load(workspace.home()));
    const auto explanations =
        lumo::ExplanationService::explain({*path}, *model,
                                          {.home = workspace.home(),
                                           .cacheHome = workspace.home(),
                                           .installed = lumo::Installed::ofThisMachine(workspace.home()),
                                           .now = platform::now(),
                                           .watch = {nullptr, call.stop}});
    if (explanations.empty()) {
        return stopped();
    }
    const lumo::Explanation& explanation = explanations.begin()->second;
    return {.text = textOf(explanation), .structured = lumo::encode(explanation)};
}

ToolAnswer help(const ToolCall& call) {
    const auto question = textArgument(call.arguments, "question");
    if (!question) {
        return problem(question.error());
    }
    // The agent is a model itself.
    HelpReply reply = answerTo(question->value_or(""), {});
    if (reply.topic != nullptr) {
        reply.answer.text = reply.topic->answerWithoutCommands;
    } else {
        // What the windows would show under it.
        reply.answer.text = Words{"La ayuda no responde a eso.", "The help has no answer to that."}.in();
        for (const lumo::HelpTopic* topic : reply.related) {
            reply.answer.text += "\n• " + topic->question;
        }
    }
    return {.text = reply.answer.text, .structured = lumo::encode(reply.answer)};
}

} // namespace

std::vector<Tool> explainingTools(const std::shared_ptr<Workspace>& workspace) {
    std::vector<Tool> tools;
    tools.push_back(
        {.name = "explain_folder",
         .title = Words{"Explicar una carpeta", "Explain a folder"}.in(),
         .description =
             Words{
                 "Dice qué es una carpeta, de qué app es, cuánto riesgo tiene borrarla y qué conviene hacer.",
                 "Says what a folder is, which app it belongs to, how risky deleting it is and what to do "
                 "about it."}
                 .in(),
         .input = argumentsOf(
             {{"path",
               schema("string",
                      Words{"de cualquier sitio: ~/.cache, /opt/x", "anywhere: ~/.cache, /opt/x"}.in()),
               true}}),
         .output = schemaOf<lumo::Explanation>(),
         .hints = {},
         .run = [workspace](const ToolCall& call) { return explainFolder(*workspace, call); }});
    tools.push_back(
        {.name = "help",
         .title = Words{"Ayuda de Tarvo AI", "Tarvo AI help"}.in(),
         .description = Words{"Responde con el texto de la ayuda a preguntas sobre Tarvo AI.",
                              "Answers questions about Tarvo AI with the text of its help."}
                            .in(),
         .input = argumentsOf({{"question", schema("string"), true}}),
         .output = schemaOf<lumo::HelpAnswer>(
             {{"sources", Words{"identificadores de temas de la ayuda", "ids of help topics"}.in()}}),
         .hints = {},
         .run = [](const ToolCall& call) { return help(call); }});
    return tools;
}

} // namespace tarvo::mcp
