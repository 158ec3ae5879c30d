#include "TarvoModel/Showing/HistoryRows.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/Archiver.h"
#include "LumoCore/Scanning/ScanReport.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <span>

namespace tarvo {

using lumo::CleanupOutcome;
using lumo::Language;
using lumo::TrashedItem;
using lumo::Words;
using lumo::ByteFormat::string;

namespace {

/// What became of what was set aside, as one looks it up.
struct Whereabouts {
    std::map<std::string, const HeldItem*> held; ///< By their ids.
    const lumo::HeldNotes& notes;
};

std::string batchOf(const CleanupOutcome& outcome) {
    return outcome.restorable && !outcome.restorable->empty()
               ? std::string(lumo::Holding::batchOf(outcome.restorable->front().inTrash))
               : std::string();
}

/// Where in a plan an action of that kind has its place: what rules find comes first, then the projects, then
/// what somebody pointed at one by one.
int placeInPlan(std::string_view id) {
    if (id.starts_with(lumo::artifactIDPrefix)) {
        return 1;
    }
    constexpr std::string_view appCachePrefix = "cache-app:";
    return id.find(':') == std::string_view::npos || id.starts_with(appCachePrefix) ? 0 : 2;
}

/// Whether the two lines are of one cleanup; absent where the later one does not say. No cleanup goes on
/// after a line that is older than such names, or that was owed by one that was killed.
std::optional<bool> areTogether(const CleanupOutcome& earlier, const CleanupOutcome& later) {
    return later.cleanup ? std::optional(earlier.cleanup == later.cleanup) : std::nullopt;
}

/// True when the two lines, one after the other, may be of one cleanup as far as both tell by themselves.
bool mayBeTogether(const CleanupOutcome& earlier, const CleanupOutcome& later) {
    // An action that takes longer has others after it that begin a cleanup of their own: no harm.
    constexpr std::chrono::minutes longest{5};
    return later.date >= earlier.date && later.date - earlier.date <= longest &&
           later.caller == earlier.caller && placeInPlan(later.id) >= placeInPlan(earlier.id) &&
           !earlier.id.starts_with(lumo::Archiver::idPrefix);
}

/// The line from which on all up to that one are of its cleanup, as its batch tells: the nearest that has the
/// same, else the first since it was begun. A batch is named by the moment at which its cleanup begins, and
/// no other one goes on before that ends.
std::size_t sinceItsBatch(std::span<const CleanupOutcome> log, std::size_t line) {
    const std::string batch = batchOf(log[line]);
    const auto begun = lumo::dateFromStampText(lumo::fileName(batch));
    std::size_t first = line;
    while (first > 0 && log[first - 1].caller == log[line].caller) {
        const CleanupOutcome& before = log[first - 1];
        const std::string other = batchOf(before);
        if (areTogether(before, log[first]) == false) {
            return first;
        }
        if (other == batch) {
            return first - 1;
        }
        if (!other.empty() || !begun || before.date < *begun || before.date > log[first].date) {
            return first;
        }
        --first;
    }
    return first;
}

/// The first line of each cleanup of the log, in its order.
std::vector<std::size_t> firstLines(std::span<const CleanupOutcome> log) {
    std::vector<std::size_t> firsts;
    std::set<std::string> ids; // Of the cleanup in hand.
    for (std::size_t line = 0; line < log.size(); ++line) {
        const std::string batch = batchOf(log[line]);
        const std::optional<bool> isKnown = line > 0 ? areTogether(log[line - 1], log[line]) : std::nullopt;
        std::size_t since = line;
        if (isKnown) {
            since = *isKnown ? line - 1 : line;
        } else if (!batch.empty()) {
            since = sinceItsBatch(log, line);
        } else if (line > 0 && !ids.contains(log[line].id) && mayBeTogether(log[line - 1], log[line])) {
            since = line - 1;
        }
        const std::size_t cleanups = firsts.size();
        while (!firsts.empty() && firsts.back() > since) {
            firsts.pop_back();
        }
        const bool goesOn = since < line && (isKnown || batch.empty() || batchOf(log[since]) == batch);
        if (firsts.empty() || (firsts.back() < since && !goesOn)) {
            firsts.push_back(since);
        }
        if (firsts.size() != cleanups || firsts.back() == since) {
            ids.clear();
            since = firsts.back();
        } else {
            since = line;
        }
        for (; since <= line; ++since) {
            ids.insert(log[since].id);
        }
    }
    return firsts;
}

HistoryPiece pieceOf(const TrashedItem& item, const Whereabouts& now) {
    const auto found = now.held.find(heldIDOf(item));
    if (found == now.held.end()) {
        return {.heldID = {}, .original = item.original, .isBack = now.notes.wasPutBack(item.inTrash)};
    }
    return {.heldID = found->first,
            .original = found->second->original,
            .isIncomplete = found->second->isIncomplete};
}

HistoryItem itemOf(const CleanupOutcome& outcome, const Whereabouts& now, Language language) {
    HistoryItem item{.title = outcome.title,
                     .bytes = lumo::saturatedSum(outcome.freedBytes, outcome.trashedBytes),
                     .hasFailed = outcome.status == lumo::CleanupStatus::failed,
                     .text = becameText(outcome, language),
                     .pieces = {}};
    for (const TrashedItem& each : outcome.restorable.value_or(std::vector<TrashedItem>())) {
        item.pieces.push_back(pieceOf(each, now));
    }
    return item;
}

HistoryCleanup cleanupOf(std::span<const CleanupOutcome> outcomes, std::size_t number, const Whereabouts& now,
                         Language language) {
    HistoryCleanup cleanup{.number = number,
                           .date = outcomes.back().date,
                           .sums = sumsOf({outcomes.begin(), outcomes.end()}),
                           .caller = outcomes.front().caller.value_or(""),
                           .items = {}};
    for (const CleanupOutcome& outcome : outcomes) {
        HistoryItem item = itemOf(outcome, now, language);
        cleanup.failures += item.hasFailed ? 1U : 0U;
        for (const HistoryPiece& piece : item.pieces) {
            cleanup.held += piece.heldID.empty() ? 0U : 1U;
            cleanup.back += piece.isBack ? 1U : 0U;
        }
        if (!item.pieces.empty() && std::ranges::all_of(item.pieces, &HistoryPiece::isBack)) {
            cleanup.backBytes =
                lumo::saturatedSum(cleanup.backBytes, std::max<std::int64_t>(outcome.trashedBytes, 0));
        }
        cleanup.items.push_back(std::move(item));
    }
    lumo::sortLargestFirst(cleanup.items, &HistoryItem::bytes);
    return cleanup;
}

} // namespace

std::vector<HistoryCleanup> historyRows(const std::vector<CleanupOutcome>& outcomes, const SetAsideNow& now,
                                        Language language) {
    Whereabouts whereabouts{.held = {}, .notes = now.notes};
    for (const HeldItem& item : now.held) {
        if (!item.id.empty()) {
            whereabouts.held.emplace(item.id, &item);
        }
    }
    const std::span<const CleanupOutcome> log(outcomes);
    const std::vector<std::size_t> firsts = firstLines(log);
    std::vector<HistoryCleanup> cleanups;
    for (std::size_t at = 0; at < firsts.size(); ++at) {
        const std::size_t end = at + 1 < firsts.size() ? firsts[at + 1] : log.size();
        cleanups.push_back(
            cleanupOf(log.subspan(firsts[at], end - firsts[at]), firsts[at], whereabouts, language));
    }
    std::ranges::reverse(cleanups);
    return cleanups;
}

std::string becameText(const CleanupOutcome& outcome, Language language) {
    if (outcome.status == lumo::CleanupStatus::failed) {
        return Words{"falló: ", "failed: "}.in(language) +
               outcome.message.value_or(
                   Words{"se interrumpió a medias", "it was cut short half-way"}.in(language));
    }
    if (outcome.message) {
        return *outcome.message;
    }
    return (outcome.restorable || outcome.trashedBytes > 0 ? Words{"apartado", "set aside"}
                                                           : Words{"liberado", "freed"})
        .in(language);
}

std::string callerText(const std::string& caller, Language language) {
    return caller.empty() ? std::string() : Words{"a petición de {}", "asked for by {}"}.in(language, caller);
}

std::string factsText(const HistoryCleanup& cleanup, Language language) {
    std::string text;
    const auto add = [&](bool isTrue, const std::string& fact) {
        if (isTrue) {
            text += (text.empty() ? "" : " · ") + fact;
        }
    };
    const auto& [freed, trashed] = cleanup.sums;
    add(freed > 0 || trashed == 0, Words{"{} liberados", "{} freed"}.in(language, string(freed, language)));
    add(trashed > 0, Words{"{} apartados", "{} set aside"}.in(language, string(trashed, language)));
    add(cleanup.failures == 1, Words{"1 fallo", "1 failure"}.in(language));
    add(cleanup.failures > 1, Words{"{} fallos", "{} failures"}.in(language, cleanup.failures));
    add(cleanup.held == 1, Words{"1 elemento puede volver", "1 item can go back"}.in(language));
    add(cleanup.held > 1,
        Words{"{} elementos pueden volver", "{} items can go back"}.in(language, cleanup.held));
    add(cleanup.back == 1, Words{"1 elemento devuelto", "1 item put back"}.in(language));
    add(cleanup.back > 1, Words{"{} elementos devueltos", "{} items put back"}.in(language, cleanup.back));
    add(!cleanup.caller.empty(), callerText(cleanup.caller, language));
    return text;
}

std::string historyTotalText(const std::vector<HistoryCleanup>& cleanups, Language language) {
    std::int64_t sum = 0;
    for (const HistoryCleanup& cleanup : cleanups) {
        const auto& [freed, trashed] = cleanup.sums;
        sum = lumo::saturatedSum(sum, lumo::saturatedSum(freed, trashed) - cleanup.backBytes);
    }
    const std::string total = string(sum, language);
    return cleanups.size() == 1
               ? Words{"{} en una limpieza", "{} in one cleanup"}.in(language, total)
               : Words{"{} en {} limpiezas", "{} in {} cleanups"}.in(language, total, cleanups.size());
}

std::string pieceText(const HistoryPiece& piece, Language language) {
    if (piece.isBack) {
        return Words{"devuelto", "put back"}.in(language);
    }
    if (piece.heldID.empty()) {
        return Words{"ya no está apartado", "no longer set aside"}.in(language);
    }
    return piece.isIncomplete ? Words{"le faltan partes", "parts of it are gone"}.in(language)
                              : std::string();
}

std::string noHistoryText(Language language) {
    return Words{
        "Todavía no se ha limpiado nada. Aquí verás cada limpieza y podrás devolver a su sitio lo que "
        "siga apartado.",
        "Nothing has been cleaned yet. Here you will see each cleanup, and can put back what is still "
        "set aside."}
        .in(language);
}

} // namespace tarvo
