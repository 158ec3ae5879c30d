#include "TarvoModel/Showing/HistoryRows.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/HistoryLog.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <set>
#include <span>

namespace tarvo {

using lumo::CleanupOutcome;
using lumo::Language;
using lumo::TrashedItem;
using lumo::Words;
using lumo::ByteFormat::string;

namespace {

using HeldByID = std::map<std::string, const HeldItem*>;

std::string batchOf(const CleanupOutcome& outcome) {
    return outcome.restorable && !outcome.restorable->empty()
               ? std::string(lumo::Holding::batchOf(outcome.restorable->front().inTrash))
               : std::string();
}

/// A cleanup names its batch by the moment at which it begins: what ended before is another one's.
bool isBegunAfter(const CleanupOutcome& last, const std::string& batch) {
    const auto begun = lumo::dateFromStampText(lumo::fileName(batch));
    return begun && last.date < *begun;
}

/// Finds out where one cleanup ends in the log and the next one begins.
class Together {
  public:
    /// False when the line, which is the next one of the log, belongs to another cleanup than those before.
    bool take(const CleanupOutcome& outcome) {
        // An action that takes longer has others after it that begin a cleanup of their own: no harm.
        constexpr std::chrono::minutes longest{5};
        const std::string batch = batchOf(outcome);
        const bool belongs =
            last_ != nullptr && outcome.date - last_->date <= longest && outcome.date >= last_->date &&
            outcome.caller == last_->caller && !ids_.contains(outcome.id) &&
            (batch.empty() || batch_.empty() || batch == batch_) && !isBegunAfter(*last_, batch);
        if (!belongs) {
            ids_.clear();
            batch_.clear();
        }
        ids_.insert(outcome.id);
        batch_ = batch.empty() ? batch_ : batch;
        last_ = &outcome;
        return belongs;
    }

  private:
    const CleanupOutcome* last_ = nullptr;
    std::set<std::string> ids_;
    std::string batch_;
};

HistoryPiece pieceOf(const TrashedItem& item, const HeldByID& held) {
    const auto found = held.find(heldIDOf(item));
    if (found == held.end()) {
        return {.heldID = {}, .original = item.original};
    }
    return {.heldID = found->first,
            .original = found->second->original,
            .isIncomplete = found->second->isIncomplete};
}

HistoryItem itemOf(const CleanupOutcome& outcome, const HeldByID& held, Language language) {
    HistoryItem item{.title = outcome.title,
                     .bytes = lumo::saturatedSum(outcome.freedBytes, outcome.trashedBytes),
                     .hasFailed = outcome.status == lumo::CleanupStatus::failed,
                     .text = becameText(outcome, language),
                     .pieces = {}};
    for (const TrashedItem& each : outcome.restorable.value_or(std::vector<TrashedItem>())) {
        item.pieces.push_back(pieceOf(each, held));
    }
    return item;
}

HistoryCleanup cleanupOf(std::span<const CleanupOutcome> outcomes, std::size_t number, const HeldByID& held,
                         Language language) {
    HistoryCleanup cleanup{.number = number,
                           .date = outcomes.back().date,
                           .sums = sumsOf({outcomes.begin(), outcomes.end()}),
                           .caller = outcomes.front().caller.value_or(""),
                           .items = {}};
    for (const CleanupOutcome& outcome : outcomes) {
        HistoryItem item = itemOf(outcome, held, language);
        cleanup.failures += item.hasFailed ? 1 : 0;
        cleanup.held += static_cast<std::size_t>(std::ranges::count_if(
            item.pieces, [](const HistoryPiece& piece) { return !piece.heldID.empty(); }));
        cleanup.items.push_back(std::move(item));
    }
    lumo::sortLargestFirst(cleanup.items, &HistoryItem::bytes);
    return cleanup;
}

} // namespace

std::vector<HistoryCleanup> historyRows(const std::vector<CleanupOutcome>& outcomes,
                                        const std::vector<HeldItem>& held, Language language) {
    HeldByID byID;
    for (const HeldItem& item : held) {
        if (!item.id.empty()) {
            byID.emplace(item.id, &item);
        }
    }
    const std::span<const CleanupOutcome> log(outcomes);
    std::vector<HistoryCleanup> cleanups;
    Together together;
    std::size_t first = 0;
    for (std::size_t next = 0; next < log.size(); ++next) {
        if (!together.take(log[next]) && next > first) {
            cleanups.push_back(cleanupOf(log.subspan(first, next - first), first, byID, language));
            first = next;
        }
    }
    if (!log.empty()) {
        cleanups.push_back(cleanupOf(log.subspan(first), first, byID, language));
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
    add(!cleanup.caller.empty(), callerText(cleanup.caller, language));
    return text;
}

std::string historyTotalText(const std::vector<CleanupOutcome>& outcomes, std::size_t cleanups,
                             Language language) {
    const std::string total = string(lumo::CleanupHistory::total(outcomes), language);
    return cleanups == 1 ? Words{"{} en una limpieza", "{} in one cleanup"}.in(language, total)
                         : Words{"{} en {} limpiezas", "{} in {} cleanups"}.in(language, total, cleanups);
}

std::string pieceText(const HistoryPiece& piece, Language language) {
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
