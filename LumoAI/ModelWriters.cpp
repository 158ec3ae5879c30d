#include "LumoAI/ModelWriters.h"

#include "LumoAI/WithTimeout.h"

namespace lumo {

namespace {

std::optional<std::string> answerInTime(LanguageModel& model, std::string_view instructions,
                                        std::string prompt, std::chrono::milliseconds limit,
                                        const std::stop_token& stop) {
    const ModelRequest request{.instructions = std::string(instructions), .prompt = std::move(prompt)};
    const auto answer = withTimeout(
        limit, [&](const std::stop_token& either) { return model.respond(request, either); }, stop);
    return answer && *answer ? std::optional(**answer) : std::nullopt;
}

} // namespace

AISummaryWriter::Write summaryWriter(LanguageModel& model, const std::stop_token& stop, Language language,
                                     std::chrono::milliseconds limit) {
    if (model.unavailableReason(language)) {
        return {};
    }
    return [&model, stop, language, limit](const std::vector<std::string>& facts) {
        return answerInTime(model, AISummaryWriter::instructions(language), AISummaryWriter::prompt(facts),
                            limit, stop);
    };
}

HelpWriter::Write helpWriter(LanguageModel& model, const std::stop_token& stop, Language language,
                             std::chrono::milliseconds limit) {
    if (model.unavailableReason(language)) {
        return {};
    }
    return [&model, stop, language, limit](const std::string& question, const std::string& context) {
        return answerInTime(model, HelpWriter::instructions(language),
                            HelpWriter::prompt(question, context, language), limit, stop);
    };
}

} // namespace lumo
