#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Rules/CleanupAction.h"
#include "Platform/SystemError.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the user is asked and told around a cleanup, the same words in every face.
namespace tarvo {

/// What a cleanup takes, by what becomes of it, each in the order given.
struct Going {
    std::vector<lumo::CleanupAction> forGood;   ///< Deleted by another tool, and nobody can bring it back.
    std::vector<lumo::CleanupAction> own;       ///< The user's own: set aside.
    std::vector<lumo::CleanupAction> recreated; ///< Gone at once, and back when it is needed.
};
Going goingOf(const std::vector<lumo::CleanupAction>& actions);

/// The paths of all that the actions delete at once, with "~" for the home.
std::vector<std::string> deletedPaths(const std::vector<lumo::CleanupAction>& actions,
                                      const std::string& home);

/// Where the first of the paths lies, with "~" for the home, if the thing is called as that file is: there
/// may be others of the name. Empty for what has a name of its own.
std::string folderOfNamesake(std::string_view name, const std::vector<std::string>& paths,
                             const std::string& home);

/// What the actions are estimated to free together.
std::int64_t bytesOf(const std::vector<lumo::CleanupAction>& actions);

/// What a cleanup does with the bytes that it was estimated to free.
struct CleanupShares {
    std::int64_t total = 0;
    std::int64_t trash = 0; ///< Set aside: the user's own.
    std::int64_t tool = 0;  ///< Deleted by another tool's own command, for good.

    friend bool operator==(const CleanupShares&, const CleanupShares&) = default;
};

/// The shares of the actions, which are taken to be deleted at once when they recreate themselves.
CleanupShares sharesOf(const std::vector<lumo::CleanupAction>& actions);

/// Counts one more action.
void add(const lumo::CleanupAction& action, CleanupShares& shares);

/// What the confirmation of a cleanup says. What may hold more than its size tells is named, on a line below.
std::string confirmationMessage(const std::vector<lumo::CleanupAction>& actions,
                                lumo::Language language = lumo::currentLanguage());

/// What cleanups freed and set aside. Failed ones count with what they had done before.
struct CleanupSums {
    std::int64_t freed = 0;
    std::int64_t trashed = 0;

    friend bool operator==(const CleanupSums&, const CleanupSums&) = default;
};
CleanupSums sumsOf(const std::vector<lumo::CleanupOutcome>& outcomes);

/// The sentence after a cleanup.
std::string cleanupDone(const CleanupSums& sums, lumo::Language language = lumo::currentLanguage());

/// The sentence after a cleanup that was stopped before so many of its items.
std::string stoppedText(std::size_t count, lumo::Language language = lumo::currentLanguage());

/// The sentence after a cleanup of which so many items failed, with what the first of them says.
std::string failedText(std::size_t count, std::string_view first,
                       lumo::Language language = lumo::currentLanguage());

/// True when it was done and has neither freed nor set aside anything.
bool hasFreedNothing(const lumo::CleanupOutcome& outcome);

/// The sentence after a cleanup of which an item was done and still left something, with what the first of
/// them says, and what to do where it left all; absent when none has.
std::optional<std::string> remarkText(const std::vector<lumo::CleanupOutcome>& outcomes,
                                      lumo::Language language = lumo::currentLanguage());

/// The sentence after a cleanup that left so many agreed items as they were, with the first and its reason.
std::string leftOutText(std::size_t count, std::string_view first, std::string_view reason,
                        lumo::Language language = lumo::currentLanguage());

/// Why the cleanup log, or what is set aside, cannot be shown, as the end of a sentence.
std::string unreadableHistoryText(const lumo::platform::SystemError& error,
                                  lumo::Language language = lumo::currentLanguage());
std::string unreadableHoldingText(const lumo::platform::SystemError& error,
                                  lumo::Language language = lumo::currentLanguage());

/// The sentence after something was put back.
std::string restoredText(const lumo::TrashOperationResult& result,
                         lumo::Language language = lumo::currentLanguage(),
                         lumo::System system = lumo::currentSystem());

/// The question before the holding area is emptied, what that means, and the sentence afterwards.
std::string emptyQuestion(lumo::Language language = lumo::currentLanguage());
std::string emptyExplanation(lumo::Language language = lumo::currentLanguage());
std::string emptiedText(const lumo::Holding::Emptied& emptied,
                        lumo::Language language = lumo::currentLanguage(),
                        lumo::System system = lumo::currentSystem());

/// What the button does that asks for the confirmation, and what the one in it does: as much as the selection
/// allows to say, with the keys of the system.
std::string requestCleanHelp(lumo::Language language = lumo::currentLanguage(),
                             lumo::System system = lumo::currentSystem());
std::string cleanHelp(const CleanupShares& shares, lumo::Language language = lumo::currentLanguage(),
                      lumo::System system = lumo::currentSystem());

/// What the button in the confirmation says: the amount with the verb, so that nobody agrees to a surprise.
std::string cleanTitle(const CleanupShares& shares, lumo::Language language = lumo::currentLanguage());

/// All that is set aside now.
struct HeldTotals {
    std::int64_t bytes = 0;
    std::optional<lumo::Date> expiry; ///< When the oldest batch goes; absent when there is none.

    friend bool operator==(const HeldTotals&, const HeldTotals&) = default;
};
HeldTotals totalsOf(const std::vector<lumo::Holding::Batch>& batches);

/// The banner over what is set aside: how much, until when, and the question before all of it goes.
std::string heldTitle(const HeldTotals& held, lumo::Language language = lumo::currentLanguage());
std::string heldText(lumo::Date expiry, lumo::Language language = lumo::currentLanguage());
std::string emptyBannerQuestion(const HeldTotals& held, lumo::Language language = lumo::currentLanguage());

/// What is said when something was deleted because its time was over.
std::string purgedText(std::int64_t bytes, lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
