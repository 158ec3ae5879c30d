#include "TarvoModel/Showing/CleanupTexts.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "LumoCore/Inventories/Inventories.h"

#include <fmt/format.h>

#include <algorithm>

namespace tarvo {

using lumo::Language;
using lumo::System;
using lumo::SystemWords;
using lumo::Words;
using lumo::ByteFormat::string;

namespace {

std::string days() {
    return std::to_string(lumo::Holding::retentionDays);
}

/// What becomes of the thing that an action takes.
enum class Fate { isRecreated, goesForGood, isSetAside };

Fate fateOf(const lumo::CleanupAction& action) {
    // What recreates itself is deleted right away, whoever does it; evicted files stay in the cloud.
    if (action.safety == lumo::Safety::safe ||
        std::holds_alternative<lumo::method::EvictFromICloud>(action.method)) {
        return Fate::isRecreated;
    }
    return std::holds_alternative<lumo::method::Command>(action.method) ? Fate::goesForGood
                                                                        : Fate::isSetAside;
}

} // namespace

Going goingOf(const std::vector<lumo::CleanupAction>& actions) {
    Going going;
    for (const lumo::CleanupAction& action : actions) {
        const Fate fate = fateOf(action);
        (fate == Fate::isRecreated   ? going.recreated
         : fate == Fate::goesForGood ? going.forGood
                                     : going.own)
            .push_back(action);
    }
    return going;
}

std::vector<std::string> deletedPaths(const std::vector<lumo::CleanupAction>& actions,
                                      const std::string& home) {
    std::vector<std::string> paths;
    for (const lumo::CleanupAction& action : actions) {
        if (action.safety == lumo::Safety::safe) {
            for (const std::string& path : lumo::CleanupExecutor::touchedPaths(action)) {
                paths.push_back(lumo::abbreviated(path, home));
            }
        }
    }
    return paths;
}

std::string folderOfNamesake(std::string_view name, const std::vector<std::string>& paths,
                             const std::string& home) {
    return paths.empty() || lumo::fileName(paths.front()) != name
               ? std::string()
               : lumo::abbreviated(lumo::parentOf(paths.front()), home);
}

std::int64_t bytesOf(const std::vector<lumo::CleanupAction>& actions) {
    std::int64_t bytes = 0;
    for (const lumo::CleanupAction& action : actions) {
        bytes = lumo::checkedSum(bytes, action.estimatedBytes);
    }
    return bytes;
}

CleanupShares sharesOf(const std::vector<lumo::CleanupAction>& actions) {
    CleanupShares shares;
    for (const lumo::CleanupAction& action : actions) {
        add(action, shares);
    }
    return shares;
}

void add(const lumo::CleanupAction& action, CleanupShares& shares) {
    shares.total = lumo::checkedSum(shares.total, action.estimatedBytes);
    const Fate fate = fateOf(action);
    if (fate != Fate::isRecreated) {
        std::int64_t& share = fate == Fate::isSetAside ? shares.trash : shares.tool;
        share = lumo::checkedSum(share, action.estimatedBytes);
    }
}

namespace {

/// The line below the message, with its line feed; empty when there is nothing to be careful about.
std::string careText(const std::vector<lumo::CleanupAction>& actions, Language language) {
    std::string names;
    for (const lumo::CleanupAction& action : actions) {
        if (lumo::Inventories::mayHoldDatabase(action.id)) {
            names += (names.empty() ? "" : ", ") + lumo::printable(action.title);
        }
    }
    return names.empty()
               ? names
               : "\n" + Words{"Puede guardar una base de datos: {}.", "May hold a database: {}."}.in(language,
                                                                                                     names);
}

/// What becomes of it. What takes nothing is told of as well: it goes all the same.
std::string sharesText(const Going& going, Language language) {
    if (going.own.empty() && going.forGood.empty()) {
        return Words{
            "Todo lo marcado se regenera solo: se borra ya y el espacio queda libre al momento.",
            "Everything selected recreates itself: it's deleted right away and the space is freed instantly."}
            .in(language);
    }
    std::string message =
        Words{"Lo que se regenera solo se borra ya.", "What recreates itself is deleted right away."}.in(
            language);
    if (!going.forGood.empty()) {
        message +=
            " " + string(bytesOf(going.forGood), language) +
            Words{" los borra su propia herramienta (Docker, Ollama…): se liberan ya y no se pueden "
                  "deshacer.",
                  " is deleted by its own tool (Docker, Ollama…): freed right away and can't be undone."}
                .in(language);
    }
    if (!going.own.empty()) {
        message +=
            " " + string(bytesOf(going.own), language) +
            Words{" de lo tuyo se apartan ", " of your files go to Recently Cleaned for "}.in(language) +
            days() +
            Words{" días: se pueden recuperar hasta entonces.", " days: you can restore them until then."}.in(
                language);
    }
    return message;
}

} // namespace

std::string confirmationMessage(const std::vector<lumo::CleanupAction>& actions, Language language) {
    return sharesText(goingOf(actions), language) + careText(actions, language);
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
    return Words{"Limpieza hecha: ", "Cleanup done: "}.in(language) + string(sums.freed, language) +
           Words{" liberados y ", " freed and "}.in(language) + string(sums.trashed, language) +
           Words{" apartados (se borran solos en ", " in Recently Cleaned (deleted automatically in "}.in(
               language) +
           days() + Words{" días)", " days)"}.in(language);
}

std::string stoppedText(std::size_t count, Language language) {
    return count == 1 ? Words{"Limpieza parada: 1 elemento se ha quedado como estaba.",
                              "Cleanup stopped: 1 item was left as it was."}
                            .in(language)
                      : Words{"Limpieza parada: {} elementos se han quedado como estaban.",
                              "Cleanup stopped: {} items were left as they were."}
                            .in(language, count);
}

std::string failedText(std::size_t count, std::string_view first, Language language) {
    return count == 1
               ? fmt::format("{} {}", Words{"No se pudo limpiar", "Couldn't clean"}.in(language), first)
               : Words{"{} cosas no se pudieron limpiar. La primera: {}",
                       "{} items couldn't be cleaned. The first: {}"}
                     .in(language, count, first);
}

bool hasFreedNothing(const lumo::CleanupOutcome& outcome) {
    return outcome.status == lumo::CleanupStatus::done && outcome.freedBytes == 0 &&
           outcome.trashedBytes == 0 && !outcome.restorable;
}

std::optional<std::string> remarkText(const std::vector<lumo::CleanupOutcome>& outcomes, Language language) {
    const auto remark = std::ranges::find_if(outcomes, [](const lumo::CleanupOutcome& outcome) {
        return outcome.status == lumo::CleanupStatus::done && outcome.message;
    });
    if (remark == outcomes.end()) {
        return std::nullopt;
    }
    const Words next{
        ". Ya no está marcado: cierra el programa que lo usa y prueba otra vez, o déjalo como está.",
        ". It is no longer selected: quit the program that uses it and try again, or leave it as it "
        "is."};
    return remark->title + ": " + *remark->message + (hasFreedNothing(*remark) ? next.in(language) : "");
}

std::string leftOutText(std::size_t count, std::string_view first, std::string_view reason,
                        Language language) {
    if (count == 1) {
        return Words{"«{}» se ha dejado como estaba: {}", "“{}” was left as it was: {}"}.in(language, first,
                                                                                            reason);
    }
    return Words{"{} elementos se han dejado como estaban; «{}»: {}",
                 "{} items were left as they were; “{}”: {}"}
        .in(language, count, first, reason);
}

std::string unreadableHistoryText(const lumo::platform::SystemError& error, Language language) {
    return Words{"No puedo leer el historial de limpiezas ({}): comprueba sus permisos",
                 "Cannot read the cleanup history ({}): check its permissions"}
        .in(language, lumo::reasonText(error, language));
}

std::string unreadableHoldingText(const lumo::platform::SystemError& error, Language language) {
    return Words{"No puedo mirar lo apartado ({}): comprueba los permisos de su carpeta",
                 "Cannot look into Recently Cleaned ({}): check the permissions of its folder"}
        .in(language, lumo::reasonText(error, language));
}

std::string restoredText(const lumo::TrashOperationResult& result, Language language, System system) {
    constexpr Words restoredMany{"Recuperados {} elementos de lo apartado",
                                 "Restored {} items from Recently Cleaned"};
    constexpr Words failedMany{" · {} no se pudieron recuperar: {}", " · {} couldn't be restored: {}"};
    constexpr SystemWords restoredOne{
        .macos = restoredMany,
        .linux = {"Recuperado {} elemento de lo apartado", "Restored {} item from Recently Cleaned"}};
    constexpr SystemWords failedOne{
        .macos = failedMany, .linux = {" · {} no se pudo recuperar: {}", " · {} couldn't be restored: {}"}};
    std::string restored =
        (result.done == 1 ? restoredOne.on(system) : restoredMany).in(language, result.done);
    if (!result.failures.empty()) {
        restored += (result.failures.size() == 1 ? failedOne.on(system) : failedMany)
                        .in(language, result.failures.size(), result.failures.front());
    }
    return restored;
}

std::string emptyQuestion(Language language) {
    return Words{"¿Vaciar lo apartado ahora?", "Empty Recently Cleaned now?"}.in(language);
}

std::string emptyExplanation(Language language) {
    return Words{"Solo se borra lo que apartaron tus limpiezas. No se podrá deshacer.",
                 "Only what your cleanups set aside is deleted. This can't be undone."}
        .in(language);
}

std::string emptiedText(const lumo::Holding::Emptied& emptied, Language language, System system) {
    if (!emptied.failures.empty()) {
        constexpr Words many{"Vaciado con {} errores: {}", "Emptied with {} errors: {}"};
        constexpr SystemWords one{.macos = many,
                                  .linux = {"Vaciado con {} error: {}", "Emptied with {} error: {}"}};
        return (emptied.failures.size() == 1 ? one.on(system) : many)
            .in(language, emptied.failures.size(), emptied.failures.front());
    }
    return Words{"Liberados ", "Freed "}.in(language) + string(emptied.freed, language) +
           Words{": lo apartado se ha borrado", ": Recently Cleaned was emptied"}.in(language);
}

std::string requestCleanHelp(Language language, System system) {
    return SystemWords{.macos = {"Limpiar lo marcado (⌘⌫). Siempre te pide confirmación.",
                                 "Clean what's selected (⌘⌫). It always asks you to confirm."},
                       .linux = {"Limpiar lo marcado (Ctrl+Retroceso). Siempre te pide confirmación.",
                                 "Clean what's selected (Ctrl+Backspace). It always asks you to confirm."}}
        .on(system)
        .in(language);
}

std::string cleanHelp(const CleanupShares& shares, Language language, System system) {
    // A tool's deletions come first: they are what nobody can take back.
    if (shares.tool > 0) {
        return Words{"Se libera al momento; lo de Docker u Ollama no se puede deshacer",
                     "Freed right away; Docker and Ollama items can't be undone"}
            .in(language);
    }
    if (shares.trash > 0) {
        return requestCleanHelp(language, system);
    }
    return Words{"Se libera al momento: todo lo marcado se regenera solo",
                 "Freed right away: everything selected recreates itself"}
        .in(language);
}

std::string cleanTitle(const CleanupShares& shares, Language language) {
    return Words{"Limpiar ", "Clean "}.in(language) + string(shares.total, language);
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
    return string(held.bytes, language) + Words{" apartados", " in Recently Cleaned"}.in(language);
}

std::string heldText(lumo::Date expiry, Language language) {
    return Words{"Se borran solos el ", "Deleted automatically on "}.in(language) +
           lumo::dayText(expiry, language) +
           Words{". Hasta entonces puedes deshacer, o vaciarlo ya para liberar el espacio.",
                 ". Until then you can undo, or empty it now to free the space."}
               .in(language);
}

std::string emptyBannerQuestion(const HeldTotals& held, Language language) {
    return Words{"¿Borrar definitivamente ", "Permanently delete "}.in(language) +
           string(held.bytes, language) + Words{" de lo apartado?", " from Recently Cleaned?"}.in(language);
}

std::string purgedText(std::int64_t bytes, Language language) {
    return Words{"Se ha borrado lo apartado hace más de ", "Items cleaned more than "}.in(language) + days() +
           Words{" días: ", " days ago were deleted: "}.in(language) + string(bytes, language) +
           Words{" liberados", " freed"}.in(language);
}

} // namespace tarvo
