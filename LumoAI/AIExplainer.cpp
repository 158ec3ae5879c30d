#include "LumoAI/AIExplainer.h"

#include "LumoAI/Instructions.h"
#include "LumoCore/Explaining/SafetyPolicy.h"

namespace lumo {

namespace {

Safety safetyFrom(std::string_view risk) {
    if (risk == "seguro") {
        return Safety::safe;
    }
    return risk == "conservar" ? Safety::keep : Safety::review;
}

} // namespace

Result<Explanation> AIExplainer::explain(const FolderEvidence& evidence, LanguageModel& model, Date now,
                                         const std::stop_token& stop, Language language) {
    const AnswerSchema schema = folderAnswerSchema(language);
    const Result<std::string> answer =
        model.respond({.instructions = std::string(folderInstructions(language)),
                       .prompt = evidence.promptDescription(now, language),
                       .schema = schema},
                      stop);
    if (!answer) {
        return std::unexpected(answer.error());
    }
    const Result<std::vector<std::string>> values = schema.read(*answer);
    if (!values) {
        return std::unexpected(values.error());
    }
    enum Property : std::size_t { whatItIs, owner, risk, reason, action };
    const Safety suggested = safetyFrom((*values)[risk]);
    const Safety final = SafetyPolicy::finalSafety(suggested, evidence);
    const auto freeing = caseNamed<FreeingAction>((*values)[action]).value_or(FreeingAction::reviewContents);
    return Explanation{.path = evidence.path,
                       .sizeBytes = evidence.usage.allocatedBytes,
                       .whatItIs = (*values)[whatItIs],
                       .owner = (*values)[owner],
                       .safety = final,
                       .suggestedSafety = suggested != final ? std::optional(suggested) : std::nullopt,
                       .reason = (*values)[reason],
                       .howToFree = SafetyPolicy::advice(freeing, final, evidence, language),
                       .note = SafetyPolicy::note(suggested, final, evidence, language),
                       .source = Explanation::Source::ai,
                       .createdAt = now};
}

} // namespace lumo
