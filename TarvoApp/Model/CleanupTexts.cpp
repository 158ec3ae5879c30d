#include "TarvoApp/Model/CleanupTexts.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Reason.h"
#include "Platform/CheckedSum.h"

#include <fmt/format.h>

#include <algorithm>

namespace tarvo {

using lumo::Language;
using lumo::text;
using lumo::ByteFormat::string;

namespace {

std::string days() {
    return std::to_string(lumo::Holding::retentionDays);
}

std::string pair(std::string_view es, std::string_view en, Language language) {
    return std::string(text(es, en, language));
}

} // namespace

CleanupShares sharesOf(const std::vector<lumo::CleanupAction>& actions) {
    CleanupShares shares;
    for (const lumo::CleanupAction& action : actions) {
        shares.total = lumo::checkedSum(shares.total, action.estimatedBytes);
        // What recreates itself is deleted right away, whoever does it; evicted files stay in the cloud.
        if (action.safety == lumo::Safety::safe ||
            std::holds_alternative<lumo::method::EvictFromICloud>(action.method)) {
            continue;
        }
        std::int64_t& share =
            std::holds_alternative<lumo::method::Command>(action.method) ? shares.tool : shares.trash;
        share = lumo::checkedSum(share, action.estimatedBytes);
    }
    return shares;
}

std::string confirmationMessage(const CleanupShares& shares, Language language) {
    if (shares.trash == 0 && shares.tool == 0) {
        return pair(
            "Todo lo marcado se regenera solo: se borra ya y el espacio queda libre al momento.",
            "Everything selected recreates itself: it's deleted right away and the space is freed instantly.",
            language);
    }
    std::string message = pair("Lo que se regenera solo se borra ya.",
                               "What recreates itself is deleted right away.", language);
    if (shares.tool > 0) {
        message +=
            " " + string(shares.tool, language) +
            pair(" los borra su propia herramienta (Docker, Ollama…): se liberan ya y no se pueden "
                 "deshacer.",
                 " is deleted by its own tool (Docker, Ollama…): freed right away and can't be undone.",
                 language);
    }
    if (shares.trash > 0) {
        message += " " + string(shares.trash, language) +
                   pair(" de lo tuyo se apartan ", " of your files go to Recently Cleaned for ", language) +
                   days() +
                   pair(" días: se pueden recuperar hasta entonces.",
                        " days: you can restore them until then.", language);
    }
    return message;
}

CleanupSums sumsOf(const std::vector<lumo::CleanupOutcome>& outcomes) {
    CleanupSums sums;
    for (const lumo::CleanupOutcome& outcome : outcomes) {
        sums.freed = lumo::checkedSum(sums.freed, outcome.freedBytes);
        sums.trashed = lumo::checkedSum(sums.trashed, outcome.trashedBytes);
    }
    return sums;
}

std::string cleanupDone(const CleanupSums& sums, Language language) {
    return pair("Limpieza hecha: ", "Cleanup done: ", language) + string(sums.freed, language) +
           pair(" liberados y ", " freed and ", language) + string(sums.trashed, language) +
           pair(" apartados (se borran solos en ", " in Recently Cleaned (deleted automatically in ",
                language) +
           days() + pair(" días)", " days)", language);
}

std::string failedText(std::size_t count, std::string_view first, Language language) {
    return count == 1
               ? fmt::format("{} {}", pair("No se pudo limpiar", "Couldn't clean", language), first)
               : fmt::format(fmt::runtime(pair("{} cosas no se pudieron limpiar. La primera: {}",
                                               "{} items couldn't be cleaned. The first: {}", language)),
                             count, first);
}

std::string unreadableHistoryText(const lumo::platform::SystemError& error, Language language) {
    return fmt::format(
        fmt::runtime(text("no puedo leer el historial de limpiezas ({}): comprueba sus permisos",
                          "cannot read the cleanup history ({}): check its permissions", language)),
        lumo::reasonText(error, language));
}

std::string unreadableHoldingText(const lumo::platform::SystemError& error, Language language) {
    return fmt::format(
        fmt::runtime(text("no puedo mirar lo apartado ({}): comprueba los permisos de su carpeta",
                          "cannot look into Recently Cleaned ({}): check the permissions of its folder",
                          language)),
        lumo::reasonText(error, language));
}

std::string restoredText(const lumo::TrashOperationResult& result, Language language) {
    std::string restored = pair("Recuperados ", "Restored ", language) + std::to_string(result.done) +
                           pair(" elementos de lo apartado", " items from Recently Cleaned", language);
    if (!result.failures.empty()) {
        restored += " · " + std::to_string(result.failures.size()) +
                    pair(" no se pudieron recuperar: ", " couldn't be restored: ", language) +
                    result.failures.front();
    }
    return restored;
}

std::string emptyQuestion(Language language) {
    return pair("¿Vaciar lo apartado ahora?", "Empty Recently Cleaned now?", language);
}

std::string emptyExplanation(Language language) {
    return pair("Solo se borra lo que apartaron tus limpiezas. No se podrá deshacer.",
                "Only what your cleanups set aside is deleted. This can't be undone.", language);
}

std::string emptiedText(const lumo::Holding::Emptied& emptied, Language language) {
    if (!emptied.failures.empty()) {
        return pair("Vaciado con ", "Emptied with ", language) + std::to_string(emptied.failures.size()) +
               pair(" errores: ", " errors: ", language) + emptied.failures.front();
    }
    return pair("Liberados ", "Freed ", language) + string(emptied.freed, language) +
           pair(": lo apartado se ha borrado", ": Recently Cleaned was emptied", language);
}

std::string deletePermanentlyTitle(Language language) {
    return pair("Borrar definitivamente", "Delete Permanently", language);
}

std::string requestCleanHelp(Language language) {
    return pair("Limpiar lo marcado (⌘⌫). Siempre te pide confirmación.",
                "Clean what's selected (⌘⌫). It always asks you to confirm.", language);
}

std::string cleanHelp(const CleanupShares& shares, Language language) {
    // A tool's deletions come first: they are what nobody can take back.
    if (shares.tool > 0) {
        return pair("Se libera al momento; lo de Docker u Ollama no se puede deshacer",
                    "Freed right away; Docker and Ollama items can't be undone", language);
    }
    if (shares.trash > 0) {
        return requestCleanHelp(language);
    }
    return pair("Se libera al momento: todo lo marcado se regenera solo",
                "Freed right away: everything selected recreates itself", language);
}

std::string cleanTitle(const CleanupShares& shares, Language language) {
    return pair("Limpiar ", "Clean ", language) + string(shares.total, language);
}

HeldTotals totalsOf(const std::vector<lumo::Holding::Batch>& batches) {
    HeldTotals totals;
    for (const lumo::Holding::Batch& batch : batches) {
        totals.bytes = lumo::checkedSum(totals.bytes, batch.bytes);
        totals.expiry = std::min(totals.expiry.value_or(batch.expires()), batch.expires());
    }
    return totals;
}

std::string heldTitle(const HeldTotals& held, Language language) {
    return string(held.bytes, language) + pair(" apartados", " in Recently Cleaned", language);
}

std::string heldText(lumo::Date expiry, Language language) {
    return pair("Se borran solos el ", "Deleted automatically on ", language) +
           lumo::dayText(expiry, language) +
           pair(". Hasta entonces puedes deshacer, o vaciarlo ya para liberar el espacio.",
                ". Until then you can undo, or empty it now to free the space.", language);
}

std::string undoHelp(Language language) {
    return pair("Devuelve a su sitio lo que apartó la última limpieza",
                "Puts back what the last cleanup set aside", language);
}

std::string emptyNowTitle(Language language) {
    return pair("Vaciar ahora…", "Empty Now…", language);
}

std::string emptyBannerQuestion(const HeldTotals& held, Language language) {
    return pair("¿Borrar definitivamente ", "Permanently delete ", language) + string(held.bytes, language) +
           pair(" de lo apartado?", " from Recently Cleaned?", language);
}

std::string purgedText(std::int64_t bytes, Language language) {
    return pair("Se ha borrado lo apartado hace más de ", "Items cleaned more than ", language) + days() +
           pair(" días: ", " days ago were deleted: ", language) + string(bytes, language) +
           pair(" liberados", " freed", language);
}

} // namespace tarvo
