#include "LumoAI/ExplanationCache.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "Platform/StateFile.h"

#include <algorithm>

namespace lumo {

namespace {

/// Sizes in a file may be anything, so their ratio is taken without a difference or a product that might not
/// fit.
double ratio(std::int64_t before, std::int64_t now) {
    constexpr std::int64_t least = 1;
    return static_cast<double>(std::max(before, least)) / static_cast<double>(std::max(now, least));
}

void sortMembers(JsonValue& document) {
    if (auto* object = std::get_if<JsonValue::Object>(&document.value)) {
        std::ranges::sort(*object, {}, &JsonValue::Member::name);
        for (JsonValue::Member& member : *object) {
            sortMembers(member.value);
        }
    }
}

} // namespace

ExplanationCache ExplanationCache::ofHome(const std::string& home) {
    return ExplanationCache(OwnFiles::caches(home));
}

ExplanationCache::ExplanationCache(const std::string& folder) : path_(folder + "/explicaciones.json") {
    const auto bytes = platform::readWhole(path_, mostJsonBytes);
    if (bytes) {
        entries_ = explanationsIn(*bytes);
    } else if (!bytes.error().isMissing()) {
        readProblem_ = bytes.error();
    }
}

std::optional<Explanation> ExplanationCache::lookup(const FolderEvidence& evidence, Date now) const {
    constexpr double leastRatio = 0.75;
    constexpr double mostRatio = 1.33;
    const auto found = entries_.find(evidence.path);
    if (found == entries_.end() || now - found->second.createdAt >= maximumAge) {
        return std::nullopt;
    }
    const double grown = ratio(found->second.sizeBytes, evidence.usage.allocatedBytes);
    return grown >= leastRatio && grown <= mostRatio ? std::optional(found->second) : std::nullopt;
}

void ExplanationCache::store(const Explanation& explanation) {
    entries_.insert_or_assign(explanation.path, explanation);
}

platform::SystemResult<void> ExplanationCache::save() const {
    if (readProblem_) {
        return std::unexpected(*readProblem_);
    }
    if (const auto made = platform::makePrivateFolder(std::string(parentOf(path_))); !made) {
        return made;
    }
    return platform::replaceWhole(path_, bytesOf(entries_));
}

std::map<std::string, Explanation> explanationsIn(std::string_view bytes) {
    auto explanations = decodeJson<std::map<std::string, Explanation>>(bytes);
    if (!explanations) {
        return {};
    }
    // The path inside is what the explanation is shown for; one under a wrong key would be another folder's.
    std::erase_if(*explanations, [](const auto& entry) { return entry.first != entry.second.path; });
    return std::move(*explanations);
}

std::string bytesOf(const std::map<std::string, Explanation>& explanations) {
    JsonValue document = encode(explanations);
    sortMembers(document);
    return dumpJson(document, JsonLayout::indented) + "\n";
}

} // namespace lumo
