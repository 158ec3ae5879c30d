#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/DiskSummary.h"
#include "Platform/Clock.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/DiskFacts.h"
#include "TarvoCLI/Paragraph.h"
#include "TarvoCLI/Table.h"
#include "TarvoCLI/UsersModel.h"
#include "TarvoModel/Flows/HelpReply.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <memory>

namespace tarvo {

using lumo::HelpTopic;
using lumo::Words;
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
std::string relatedText(const HelpReply& reply, const Invocation& invocation) {
    std::vector<const HelpTopic*> related = reply.related;
    if (related.empty()) {
        constexpr std::size_t mostShown = 6;
        for (const HelpTopic& topic : HelpCatalog::topics()) {
            if (related.size() < mostShown) {
                related.push_back(&topic);
            }
        }
    }
    std::string shown = listText(related, invocation);
    if (reply.isAboutThisDisk) {
        shown += tinted(Words{"Qué ocupa sitio en tu disco te lo dicen tarvo resumen y tarvo analizar.",
                              "What takes room on your disk is told by tarvo summary and tarvo scan."}
                            .in(),
                        Tint::faint, invocation) +
                 "\n";
    }
    return shown;
}

std::string answerText(const HelpReply& reply, const Invocation& invocation) {
    if (reply.topic != nullptr) {
        return topicText(*reply.topic, invocation);
    }
    const std::string answer = paragraph(reply.answer.text, readingColumns());
    if (reply.answer.byAI) {
        return answer +
               tinted(Words{"Lo ha escrito la IA de tu equipo con lo que dice la ayuda.",
                            "Written by the AI on your computer from what the help says."}
                          .in(),
                      Tint::faint, invocation) +
               "\n";
    }
    return answer + "\n" + relatedText(reply, invocation);
}

/// With the model's help only where the help does not know. Then the disk is measured first, since questions
/// that no fixed text can answer are mostly about it.
std::expected<HelpReply, ExitCode> replyTo(const std::string& question, const Invocation& invocation) {
    auto model = isInHelp(question) ? nullptr : usersModel(invocation);
    if (!model) {
        return answerTo(question, {});
    }
    const auto disk = measuredDisk({}, invocation);
    if (!disk) {
        return std::unexpected(disk.error());
    }
    const HelpSources sources{
        .facts =
            [&] { return lumo::DiskSummary::facts(*disk->report, disk->recoverable, lumo::platform::now()); },
        .model = [&] { return std::move(model); }};
    HelpReply reply;
    const bool isDone = watchModel(
        invocation, [&](const std::stop_token& stop) { reply = answerTo(question, sources, stop); });
    return isDone ? std::expected<HelpReply, ExitCode>(std::move(reply))
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
    const auto reply = replyTo(question, invocation);
    if (!reply) {
        return reply.error();
    }
    return invocation.isJson ? printJson(reply->answer) : print(answerText(*reply, invocation));
}

} // namespace

void addAskCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(app, "preguntar", "ask", "pregunta lo que quieras saber de Tarvo AI",
                                   "ask what you want to know about Tarvo AI");
    const auto arguments = std::make_shared<AskArguments>();
    command
        ->add_option(Words{"pregunta", "question"}.in(), wordsInto(arguments->words),
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
