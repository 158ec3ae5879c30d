#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Cleanup/CleanupAction.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/Holding.h"

#include <cstdint>
#include <string>
#include <vector>

/// What the user is asked and told around a cleanup, the same words in every face.
namespace tarvo {

/// What a cleanup does with the bytes that it was estimated to free.
struct CleanupShares {
    std::int64_t total = 0;
    std::int64_t trash = 0; ///< Set aside: the user's own.
    std::int64_t tool = 0;  ///< Deleted by another tool's own command, for good.

    friend bool operator==(const CleanupShares&, const CleanupShares&) = default;
};

/// The shares of the actions, which are taken to be deleted at once when they recreate themselves.
CleanupShares sharesOf(const std::vector<lumo::CleanupAction>& actions);

/// What the confirmation of a cleanup says.
std::string confirmationMessage(const CleanupShares& shares,
                                lumo::Language language = lumo::currentLanguage());

/// What cleanups freed and set aside. Failed ones count with what they had done before.
struct CleanupSums {
    std::int64_t freed = 0;
    std::int64_t trashed = 0;
};
CleanupSums sumsOf(const std::vector<lumo::CleanupOutcome>& outcomes);

/// The sentence after a cleanup.
std::string cleanupDone(const CleanupSums& sums, lumo::Language language = lumo::currentLanguage());

/// The sentence after something was put back.
std::string restoredText(const lumo::TrashOperationResult& result,
                         lumo::Language language = lumo::currentLanguage());

/// The question before the holding area is emptied, what that means, and the sentence afterwards.
std::string emptyQuestion(lumo::Language language = lumo::currentLanguage());
std::string emptyExplanation(lumo::Language language = lumo::currentLanguage());
std::string emptiedText(const lumo::Holding::Emptied& emptied,
                        lumo::Language language = lumo::currentLanguage());

/// What is said when something was deleted because its time was over.
std::string purgedText(std::int64_t bytes, lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
