#include "LumoAI/AIExplainer.h"

#include "LumoAI/Instructions.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/HeuristicExplainer.h"
#include "LumoCore/Explaining/ModelGuard.h"
#include "LumoCore/Explaining/SafetyPolicy.h"

#include <algorithm>

namespace lumo {

namespace {

Safety safetyFrom(std::string_view risk) {
    if (risk == "seguro") {
        return Safety::safe;
    }
    return risk == "conservar" ? Safety::keep : Safety::review;
}

} // namespace

bool AIExplainer::isFitToShow(const Explanation& explanation, std::string_view evidence) {
    return std::ranges::all_of(
        std::initializer_list<std::string_view>{explanation.whatItIs, explanation.owner, explanation.reason,
                                                explanation.howToFree},
        [&](std::string_view text) { return ModelGuard::isFitToShow(text, evidence); });
}

Result<Explanation> AIExplainer::explain(const FolderEvidence& evidence, LanguageModel& model, Date now,
                                         const std::stop_token& stop, Language language, System system) {
    const AnswerSchema schema = folderAnswerSchema(language);
    const std::string prompt = evidence.promptDescription(now, language);
    const Result<std::string> answer = model.respond(
        {.instructions = folderInstructions(language, system), .prompt = prompt, .schema = schema}, stop);
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
    Explanation explanation{
        .path = evidence.path,
        .sizeBytes = evidence.usage.allocatedBytes,
        .whatItIs = (*values)[whatItIs],
        .owner = (*values)[owner].empty() ? Words{"desconocida", "unknown"}.in(language) : (*values)[owner],
        .safety = final,
        .suggestedSafety = suggested != final ? std::optional(suggested) : std::nullopt,
        // What speaks for another safety than the final one would contradict it.
        .reason = suggested == final ? (*values)[reason]
                                     : HeuristicExplainer::explain(evidence, now, language, system).reason,
        .howToFree = SafetyPolicy::advice(freeing, final, evidence, language, system),
        .note = SafetyPolicy::note(suggested, final, evidence, language, system),
        .source = Explanation::Source::ai,
        .createdAt = now};
    if (!isFitToShow(explanation, prompt)) {
        return failure("the answer is empty, proposes commands or names figures that nobody measured");
    }
    return explanation;
}

} // namespace lumo
