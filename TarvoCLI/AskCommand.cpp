#include "LumoAI/ModelWriters.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/DiskSummary.h"
#include "LumoCore/Explaining/HelpAssistant.h"
#include "Platform/Clock.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/DiskFacts.h"
#include "TarvoCLI/Paragraph.h"
#include "TarvoCLI/Table.h"
#include "TarvoCLI/UsersModel.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <memory>

namespace tarvo {

using lumo::HelpAnswer;
using lumo::HelpTopic;
using lumo::Words;
namespace HelpAssistant = lumo::HelpAssistant;
namespace HelpCatalog = lumo::HelpCatalog;

namespace {

struct AskArguments {
    std::vector<std::string> words;
    bool listsTopics = false;
};

template <class Value>
ExitCode printJson(const Value& value) {
    return print(lumo::dumpJson(lumo::encode(value), lumo::JsonLayout::indented) + "\n");
}

std::string topicText(const HelpTopic& topic, const Invocation& invocation) {
    return tinted(topic.question, Tint::strong, invocation) + "\n" +
           paragraph(topic.answer, readingColumns());
}

/// The topics by their questions, and how to read one.
std::string listText(const std::vector<const HelpTopic*>& topics, const Invocation& invocation) {
    Table table({{.tint = Tint::faint}, {.mayShrink = true}});
    for (const HelpTopic* topic : topics) {
        table.add({topic->id, topic->question});
    }
    const std::string how =
        Words{"Para leer una: tarvo preguntar --topics {}", "To read one: tarvo ask --topics {}"}.with(
            topics.front()->id);
    return table.lines(2, outputColumns(), invocation) + tinted(how, Tint::faint, invocation) + "\n";
}

ExitCode showTopics(const std::string& words, const Invocation& invocation) {
    const std::vector<HelpTopic>& all = HelpCatalog::topics();
    if (words.empty()) {
        std::vector<const HelpTopic*> topics;
        for (const HelpTopic& topic : all) {
            topics.push_back(&topic);
        }
        return invocation.isJson ? printJson(all) : print(listText(topics, invocation));
    }
    const HelpTopic* topic = HelpCatalog::topicNamed(words);
    if (topic == nullptr) {
        return complain(Words{"la ayuda no tiene «{}»; mira tarvo preguntar --topics",
                              "the help has no “{}”; see tarvo ask --topics"}
                            .with(lumo::printable(words)),
                        ExitCode::usage);
    }
    return invocation.isJson ? printJson(std::vector<HelpTopic>{*topic})
                             : print(topicText(*topic, invocation));
}

/// What stands under an answer that the help did not have.
std::string relatedText(const std::string& question, const HelpAnswer& answer, const Invocation& invocation) {
    std::vector<const HelpTopic*> related;
    for (const std::string& id : answer.sources) {
        related.push_back(HelpCatalog::topicNamed(id));
    }
    if (related.empty()) {
        constexpr std::size_t mostShown = 6;
        for (const HelpTopic& topic : HelpCatalog::topics()) {
            if (related.size() < mostShown) {
                related.push_back(&topic);
            }
        }
    }
    std::string shown = listText(related, invocation);
    if (HelpCatalog::isAboutThisMac(question)) {
        shown += tinted(Words{"Qué ocupa sitio en tu disco te lo dicen tarvo resumen y tarvo analizar.",
                              "What takes room on your disk is told by tarvo summary and tarvo scan."}
                            .in(),
                        Tint::faint, invocation) +
                 "\n";
    }
    return shown;
}

std::string answerText(const std::string& question, const HelpAnswer& answer, const Invocation& invocation) {
    if (answer.byAI) {
        return paragraph(answer.text, readingColumns()) +
               tinted(Words{"Lo ha escrito la IA de tu equipo con lo que dice la ayuda.",
                            "Written by the AI on your computer from what the help says."}
                          .in(),
                      Tint::faint, invocation) +
               "\n";
    }
    const HelpTopic* topic =
        answer.sources.size() == 1 ? HelpCatalog::topicNamed(answer.sources.front()) : nullptr;
    if (topic != nullptr && topic->answer == answer.text) {
        return topicText(*topic, invocation);
    }
    if (const HelpTopic* asked = HelpCatalog::topicAskedFor(question)) {
        return topicText(*asked, invocation);
    }
    return paragraph(answer.text, readingColumns()) + "\n" + relatedText(question, answer, invocation);
}

/// The answer, with the model's help only where the help does not know. Then the disk is measured first,
/// since questions that no fixed text can answer are mostly about it.
std::expected<HelpAnswer, ExitCode> answerTo(const std::string& question, const Invocation& invocation) {
    const bool isKnown =
        HelpCatalog::directAnswer(question) || HelpCatalog::topicAskedFor(question) != nullptr;
    const auto model = isKnown ? nullptr : usersModel(invocation);
    if (!model) {
        return HelpAssistant::answer(question, {}, {});
    }
    const auto disk = measuredDisk({}, invocation);
    if (!disk) {
        return std::unexpected(disk.error());
    }
    const auto facts = [&] {
        return lumo::DiskSummary::facts(*disk->report, disk->recoverable, lumo::platform::now());
    };
    HelpAnswer answer;
    const bool isDone = watchModel(invocation, [&](const std::stop_token& stop) {
        answer = HelpAssistant::answer(question, facts, lumo::helpWriter(*model, stop));
    });
    return isDone ? std::expected<HelpAnswer, ExitCode>(std::move(answer))
                  : std::unexpected(ExitCode::interrupted);
}

ExitCode runAsk(const AskArguments& arguments, const Invocation& invocation) {
    const std::string question = fmt::format("{}", fmt::join(arguments.words, " "));
    if (arguments.listsTopics) {
        return showTopics(question, invocation);
    }
    if (arguments.words.empty()) {
        return complain(Words{"falta la pregunta: tarvo preguntar ¿cómo deshago una limpieza?, o tarvo "
                              "preguntar --topics para ver las que hay",
                              "the question is missing: tarvo ask how do I undo a cleanup, or tarvo ask "
                              "--topics to see those there are"}
                            .in(),
                        ExitCode::usage);
    }
    const auto answer = answerTo(question, invocation);
    if (!answer) {
        return answer.error();
    }
    return invocation.isJson ? printJson(*answer) : print(answerText(question, *answer, invocation));
}

} // namespace

void addAskCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(app, "preguntar", "ask", "pregunta lo que quieras saber de Tarvo AI",
                                   "ask what you want to know about Tarvo AI");
    const auto arguments = std::make_shared<AskArguments>();
    // As they are: the library would take a word in square brackets apart.
    const auto gather = [arguments](const CLI::results_t& words) {
        arguments->words = words;
        return true;
    };
    command
        ->add_option("question", CLI::callback_t(gather),
                     Words{"con tus palabras, con o sin comillas", "in your words, quoted or not"}.in())
        ->type_name("")
        ->option_text(Words{"PREGUNTA", "QUESTION"}.in())
        ->expected(-1)
        ->take_all();
    command->add_flag("--topics", arguments->listsTopics,
                      Words{"las preguntas que hay; con la palabra de una, su respuesta",
                            "the questions there are; with the word of one, its answer"}
                          .in());
    command->callback([arguments, &chosen] {
        chosen = [arguments](const Invocation& invocation) { return runAsk(*arguments, invocation); };
    });
}

} // namespace tarvo
