#include "TarvoModel/Flows/HelpReply.h"

#include "LumoAI/ModelWriters.h"

namespace tarvo {

using lumo::HelpTopic;
using lumo::Language;
namespace HelpAssistant = lumo::HelpAssistant;
namespace HelpCatalog = lumo::HelpCatalog;

bool isInHelp(const std::string& question, Language language) {
    return HelpCatalog::topicAskedFor(question, language) != nullptr;
}

HelpReply answerTo(const std::string& question, const HelpSources& sources, const std::stop_token& stop,
                   Language language) {
    if (const HelpTopic* topic = HelpCatalog::topicAskedFor(question, language)) {
        return {.answer = {.text = topic->answer, .byAI = false, .sources = {topic->id}},
                .topic = topic,
                .related = {topic}};
    }
    const auto model = sources.model ? sources.model() : nullptr;
    HelpReply reply{.answer = HelpAssistant::answer(question, sources.facts,
                                                    model ? lumo::helpWriter(*model, stop, language)
                                                          : lumo::HelpWriter::Write(),
                                                    language),
                    .isAboutThisDisk = HelpCatalog::isAboutThisMac(question)};
    for (const std::string& id : reply.answer.sources) {
        reply.related.push_back(HelpCatalog::topicNamed(id, language));
    }
    return reply;
}

} // namespace tarvo
