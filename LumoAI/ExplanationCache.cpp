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

std::string nameOf(Language language) {
    return language == Language::es ? "es" : "en";
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

std::optional<Explanation> ExplanationCache::lookup(const FolderEvidence& evidence, Date now,
                                                    Language language) const {
    constexpr double leastRatio = 0.75;
    constexpr double mostRatio = 1.33;
    const auto found = entries_.find(evidence.path);
    if (found == entries_.end()) {
        return std::nullopt;
    }
    const auto& [explanation, written] = found->second;
    if (now - explanation.createdAt >= maximumAge || (!written.empty() && written != nameOf(language))) {
        return std::nullopt;
    }
    const double grown = ratio(explanation.sizeBytes, evidence.usage.allocatedBytes);
    return grown >= leastRatio && grown <= mostRatio ? std::optional(explanation) : std::nullopt;
}

void ExplanationCache::store(const Explanation& explanation, Language language) {
    entries_.insert_or_assign(explanation.path, CachedExplanation{explanation, nameOf(language)});
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

std::map<std::string, CachedExplanation> explanationsIn(std::string_view bytes) {
    auto explanations = decodeJson<std::map<std::string, CachedExplanation>>(bytes);
    if (!explanations) {
        return {};
    }
    // The path inside is what the explanation is shown for; one under a wrong key would be another folder's.
    std::erase_if(*explanations,
                  [](const auto& entry) { return entry.first != entry.second.explanation.path; });
    return std::move(*explanations);
}

std::string bytesOf(const std::map<std::string, CachedExplanation>& explanations) {
    JsonValue document = encode(explanations);
    sortMembers(document);
    return dumpJson(document, JsonLayout::indented) + "\n";
}

JsonValue codec::Coder<CachedExplanation>::encode(const CachedExplanation& cached) {
    JsonValue document = lumo::encode(cached.explanation);
    if (!cached.language.empty()) {
        std::get<JsonValue::Object>(document.value).push_back({"language", {cached.language}});
    }
    return document;
}

Result<CachedExplanation> codec::Coder<CachedExplanation>::decode(const JsonValue& document) {
    Result<Explanation> explanation = lumo::decode<Explanation>(document);
    if (!explanation) {
        return std::unexpected(explanation.error());
    }
    CachedExplanation cached{.explanation = std::move(*explanation)};
    if (const JsonValue* language = document.find("language")) {
        const auto* name = std::get_if<std::string>(&language->value);
        cached.language = name != nullptr ? *name : std::string();
    }
    return cached;
}

} // namespace lumo
