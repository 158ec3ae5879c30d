#pragma once

#include "LumoCore/Rules/Rule.h"

#include <cstdint>
#include <optional>
#include <string>

namespace lumo {

/// What a folder is, and what to do about it, in words for the user.
struct Explanation {
    /// Who says so: a model, a rule of thumb, or, where it is certain, the catalogue, a project, an inventory
    /// or the place itself.
    enum class Source { ai, heuristic, catalogue, project, inventory, place };

    std::string path;           ///< Of the folder. What the explanation is known by.
    std::int64_t sizeBytes = 0; ///< What the folder took then.
    std::string whatItIs;
    std::string owner; ///< The application or tool that it belongs to.
    Safety safety = Safety::review;
    std::optional<Safety> suggestedSafety; ///< What a model had said, when the policy overruled it.
    std::string reason;                    ///< Why that safety.
    std::string howToFree;
    std::optional<std::string> note; ///< What the policy says when it overruled the model.
    Source source = Source::heuristic;
    Date createdAt;

    static constexpr auto fields = std::tuple{
        field("path", &Explanation::path),          field("sizeBytes", &Explanation::sizeBytes),
        field("whatItIs", &Explanation::whatItIs),  field("owner", &Explanation::owner),
        field("safety", &Explanation::safety),      field("suggestedSafety", &Explanation::suggestedSafety),
        field("reason", &Explanation::reason),      field("howToFree", &Explanation::howToFree),
        field("note", &Explanation::note),          field("source", &Explanation::source),
        field("createdAt", &Explanation::createdAt)};
    friend bool operator==(const Explanation&, const Explanation&) = default;
};

template <>
struct EnumNames<Explanation::Source> {
    static constexpr std::array<std::string_view, 6> values{"ai",      "heuristic", "catalogue",
                                                            "project", "inventory", "place"};
};

} // namespace lumo
