#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/HeldNotes.h"
#include "TarvoModel/Showing/CleanupTexts.h"
#include "TarvoModel/Showing/HeldItem.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// The cleanup log as a person reads it.
namespace tarvo {

/// Something that an action set aside.
struct HistoryPiece {
    std::string heldID; ///< By which it can be put back; empty when it is not held any more.
    std::string original;
    bool isIncomplete = false; ///< An emptying that failed removed parts of it.
    bool isBack = false;       ///< Somebody has put it back.

    friend bool operator==(const HistoryPiece&, const HistoryPiece&) = default;
};

/// What became of one action.
struct HistoryItem {
    std::string title;
    std::int64_t bytes = 0; ///< Freed and set aside together.
    bool hasFailed = false;
    std::string text; ///< See `becameText`.
    std::vector<HistoryPiece> pieces;

    friend bool operator==(const HistoryItem&, const HistoryItem&) = default;
};

/// The actions that were carried out together.
struct HistoryCleanup {
    std::size_t number = 0; ///< Of its first line in the log: stays the same while the log grows.
    lumo::Date date;        ///< When its last action ended.
    CleanupSums sums;
    std::string caller;             ///< The agent that asked for it; empty for the user's own.
    std::size_t failures = 0;       ///< Of its items.
    std::size_t held = 0;           ///< Pieces that can be put back.
    std::size_t back = 0;           ///< Pieces that were.
    std::int64_t backBytes = 0;     ///< Of the actions of which all is back.
    std::vector<HistoryItem> items; ///< Largest first.

    friend bool operator==(const HistoryCleanup&, const HistoryCleanup&) = default;
};

/// What is known now of all that cleanups set aside.
struct SetAsideNow {
    std::vector<HeldItem> held;
    lumo::HeldNotes notes = {};
};

/// The cleanups of the log, newest first, with what became of what they set aside. Lines that name their
/// cleanup are of that one. Of others, those since the moment that a batch is named by, up to the last one
/// with that batch, are one cleanup. Where there is none, those of one cleanup follow each other within
/// minutes and in the order of a plan, have one caller, and name no action twice. An archived original is
/// always one by itself.
std::vector<HistoryCleanup> historyRows(const std::vector<lumo::CleanupOutcome>& outcomes,
                                        const SetAsideNow& now,
                                        lumo::Language language = lumo::currentLanguage());

/// What became of an action, in a few words: "freed", "failed: …".
std::string becameText(const lumo::CleanupOutcome& outcome,
                       lumo::Language language = lumo::currentLanguage());

/// Whose wish a cleanup was: "asked for by Claude"; empty for the user's own.
std::string callerText(const std::string& caller, lumo::Language language = lumo::currentLanguage());

/// What a cleanup came to, in one line: what was freed and set aside, what failed, what can be put back or
/// was, and who asked for it.
std::string factsText(const HistoryCleanup& cleanup, lumo::Language language = lumo::currentLanguage());

/// What all of them came to: the sum of what is said of each, without the actions of which all is back.
std::string historyTotalText(const std::vector<HistoryCleanup>& cleanups,
                             lumo::Language language = lumo::currentLanguage());

/// What is said of a piece beside its place; empty when it can be put back whole.
std::string pieceText(const HistoryPiece& piece, lumo::Language language = lumo::currentLanguage());

/// Instead of cleanups, when there was none.
std::string noHistoryText(lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
