#include "Fuzz/Check.h"
#include "LumoAI/ExplanationCache.h"

// Whatever numbers a file holds, every entry can be looked up, and what is kept is the same after writing.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto explanations = lumo::explanationsIn(text(data, size));
    check(lumo::explanationsIn(lumo::bytesOf(explanations)) == explanations);
    for (const auto& [path, cached] : explanations) {
        const lumo::Explanation& explanation = cached.explanation;
        lumo::ExplanationCache cache("/nonexistent");
        cache.store(explanation);
        lumo::FolderEvidence evidence;
        evidence.path = path;
        evidence.usage.allocatedBytes = explanation.sizeBytes;
        check(cache.lookup(evidence, explanation.createdAt) == explanation);
        evidence.usage.allocatedBytes = static_cast<std::int64_t>(size);
        const auto much = cache.lookup(evidence, {});
        check(!much || *much == explanation);
    }
    return 0;
}
