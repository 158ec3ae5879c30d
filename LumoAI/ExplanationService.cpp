#include "LumoAI/ExplanationService.h"

#include "LumoAI/AIExplainer.h"
#include "LumoAI/ExplanationCache.h"
#include "LumoAI/WithTimeout.h"
#include "LumoCore/Explaining/HeuristicExplainer.h"
#include "LumoCore/Explaining/KnownPlaces.h"

namespace lumo {

namespace {

/// What a model said of the folder lately, if that is still true of it.
std::optional<Explanation> remembered(const ExplanationCache& cache, const FolderEvidence& evidence,
                                      const ExplanationSettings& settings) {
    std::optional<Explanation> kept = cache.lookup(evidence, settings.now, settings.language);
    const std::string shown = evidence.promptDescription(settings.now, settings.language);
    return kept && AIExplainer::isFitToShow(*kept, shown) ? kept : std::nullopt;
}

/// What the model says of the folder in time; absent when it fails.
std::optional<Explanation> askModel(const FolderEvidence& evidence, LanguageModel& model,
                                    const ExplanationSettings& settings) {
    const auto explained = withTimeout(
        settings.modelTime,
        [&](const std::stop_token& stop) {
            return AIExplainer::explain(evidence, model, settings.now, stop, settings.language,
                                        settings.system);
        },
        settings.watch.stop);
    return explained && *explained ? std::optional(**explained) : std::nullopt;
}

} // namespace

std::map<std::string, Explanation> ExplanationService::explain(const std::vector<std::string>& folders,
                                                               LanguageModel& model,
                                                               const ExplanationSettings& settings) {
    std::map<std::string, Explanation> explanations;
    if (folders.empty()) {
        return explanations;
    }
    const bool isModelUsable = !model.unavailableReason(settings.language);
    const KnownPlaces known(HomePlaces::ofThisMachine(settings.home), settings.installed, settings.language);
    ExplanationCache cache = ExplanationCache::ofHome(settings.cacheHome);
    bool isCacheChanged = false;
    for (std::size_t index = 0; index < folders.size(); ++index) {
        const FolderEvidence evidence = FolderEvidence::gather(
            folders[index], settings.home, settings.installed, settings.watch, settings.language);
        std::optional<Explanation> explanation = known.explain(evidence, settings.now);
        if (!explanation) {
            explanation = remembered(cache, evidence, settings);
        }
        if (!explanation && isModelUsable) {
            explanation = askModel(evidence, model, settings);
            if (explanation) {
                cache.store(*explanation, settings.language);
                isCacheChanged = true;
            }
        }
        if (settings.watch.stop.stop_requested()) {
            break;
        }
        explanations.insert_or_assign(
            folders[index], explanation ? *explanation
                                        : HeuristicExplainer::explain(evidence, settings.now,
                                                                      settings.language, settings.system));
        if (settings.progress) {
            settings.progress(index + 1, folders.size());
        }
    }
    if (isCacheChanged) {
        static_cast<void>(cache.save()); // Only costs asking again.
    }
    return explanations;
}

} // namespace lumo
