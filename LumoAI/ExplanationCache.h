#pragma once

#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/Explaining/FolderEvidence.h"
#include "Platform/SystemError.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace lumo {

/// An explanation as the file keeps it: with the language it was asked for in.
struct CachedExplanation {
    Explanation explanation;
    std::string language = {}; ///< "es" or "en"; empty when the file does not say.

    friend bool operator==(const CachedExplanation&, const CachedExplanation&) = default;
};

/// The explanations that models gave, by folder, so that they are not asked again soon. In memory from the
/// loading of the file to its saving.
class ExplanationCache final {
  public:
    static constexpr std::chrono::seconds maximumAge{2592000};

    /// Loads the file of a home folder, which lies among its caches, or "explicaciones.json" in any folder. A
    /// missing file and one that does not decode are an empty cache, and so is one that cannot be read.
    static ExplanationCache ofHome(const std::string& home);
    explicit ExplanationCache(const std::string& folder);

    [[nodiscard]] const std::string& path() const { return path_; }

    /// The explanation of the folder, unless it is 30 days old, was given for a size that is less than 0.75
    /// or more than 1.33 of today's, or is known to be in another language.
    [[nodiscard]] std::optional<Explanation> lookup(const FolderEvidence& evidence, Date now,
                                                    Language language = currentLanguage()) const;

    /// Keeps the explanation, which is in that language, in place of any older one of its folder.
    void store(const Explanation& explanation, Language language = currentLanguage());

    /// Writes the file whole, and its folder if there is none. A file that was there and could not be read is
    /// left alone, with the reason for an error.
    [[nodiscard]] platform::SystemResult<void> save() const;

  private:
    std::string path_;
    std::map<std::string, CachedExplanation> entries_;
    std::optional<platform::SystemError> readProblem_;
};

/// The explanations in such a file by folder; none when it does not decode.
std::map<std::string, CachedExplanation> explanationsIn(std::string_view bytes);

/// The bytes of such a file.
std::string bytesOf(const std::map<std::string, CachedExplanation>& explanations);

/// One JSON object: the explanation's members and "language".
template <>
struct codec::Coder<CachedExplanation> {
    static JsonValue encode(const CachedExplanation& cached);
    static Result<CachedExplanation> decode(const JsonValue& document);
};

} // namespace lumo
