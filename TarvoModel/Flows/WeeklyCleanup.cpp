#include "TarvoModel/Flows/WeeklyCleanup.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoModel/Flows/SettingChange.h"
#include "TarvoModel/Showing/CleanupTexts.h"

namespace tarvo::WeeklyCleanup {

using lumo::Language;

namespace {

/// A date further ahead than clocks go wrong by themselves was stored by a clock that has been set since: it
/// would put the next cleanup off for as long as it was wrong.
bool isFromWrongClock(lumo::Date last, lumo::Date now) {
    constexpr std::chrono::hours slack{24};
    return last > now + slack;
}

bool isTimeOver(const std::optional<lumo::Date>& last, lumo::Date now) {
    return !last || now - *last >= interval || isFromWrongClock(*last, now);
}

} // namespace

Record storedRecord(const Preferences& preferences) {
    return {.last = preferences.value(preference::lastWeeklyCleanup),
            .bytes = preferences.value(preference::lastWeeklyCleanupBytes)};
}

bool isDue(const Situation& situation) {
    return situation.isOn && situation.mode.isForReal() && isIdle(situation.phase) && situation.hasReport &&
           isTimeOver(situation.last, situation.now);
}

bool needsScan(const std::optional<lumo::Date>& lastScan, lumo::Date now) {
    // A report from the future has an unknown age: the clock was set back.
    return !lastScan || now - *lastScan > reportLife || *lastScan > now;
}

std::vector<lumo::CleanupAction> actions(const std::vector<lumo::PlanEntry>& entries) {
    if (lumo::CleanupPlanner::safeRecoverableBytes(entries) < smallestGain) {
        return {};
    }
    std::vector<lumo::CleanupAction> actions = lumo::CleanupPlanner::actionsOf(entries);
    std::erase_if(actions,
                  [](const lumo::CleanupAction& action) { return action.safety != lumo::Safety::safe; });
    return actions;
}

bool isWanted(const Preferences& preferences, lumo::Date now) {
    return preferences.value(preference::autoCleanWeekly) && isTimeOver(storedRecord(preferences).last, now);
}

lumo::Date next(const Record& record, lumo::Date now) {
    return isTimeOver(record.last, now) ? now : *record.last + interval;
}

namespace {

enum class When { due, atOnce };

lumo::Result<Cleaned> runWhen(When when, const PlanRequest& request, const Desk& desk,
                              const CleanupWatch& watch) {
    const auto set = [&](const auto& key, const auto& value) {
        return changeSetting(key, [&](const Preferences&) { return Preferences::asJson(value); }, desk.home);
    };
    const auto choose = [&](const Plan& plan) -> lumo::Result<Agreement> {
        if (when == When::due && !isWanted(Preferences::load(desk.home), desk.now())) {
            return lumo::failure(
                lumo::Words{"la limpieza semanal ya no toca", "no weekly cleanup is due any more"}.in());
        }
        // Before anything is cleaned: a run that ends badly is not repeated every minute. A disk too full to
        // store it is the one to clean.
        (void)set(preference::lastWeeklyCleanup, desk.now());
        return Agreement{.actions = actions(plan.entries), .shown = plan.shown};
    };
    auto cleaned = cleanChosen(request, desk, watch, choose);
    if (cleaned) {
        // Once more, now that there may be room.
        (void)set(preference::lastWeeklyCleanup, desk.now());
        (void)set(preference::lastWeeklyCleanupBytes, sumsOf(cleaned->outcomes).freed);
    }
    return cleaned;
}

} // namespace

lumo::Result<Cleaned> run(const PlanRequest& request, const Desk& desk, const CleanupWatch& watch) {
    return runWhen(When::due, request, desk, watch);
}

lumo::Result<Cleaned> runAtOnce(const PlanRequest& request, const Desk& desk, const CleanupWatch& watch) {
    return runWhen(When::atOnce, request, desk, watch);
}

std::optional<std::string> notice(std::int64_t freed, Language language) {
    if (freed <= 0) {
        return std::nullopt;
    }
    return lumo::Words{"Limpieza semanal: liberados ", "Weekly cleanup: freed "}.in(language) +
           lumo::ByteFormat::string(freed, language);
}

std::optional<Notification> notification(std::int64_t freed, Language language) {
    if (freed <= 0) {
        return std::nullopt;
    }
    return Notification{
        .id = "limpieza-semanal",
        .title = lumo::Words{"Limpieza semanal: ", "Weekly cleanup: "}.in(language) +
                 lumo::ByteFormat::string(freed, language) + lumo::Words{" liberados", " freed"}.in(language),
        .body = lumo::Words{"Solo cachés y archivos que se regeneran solos. Tus archivos no se han tocado.",
                            "Only caches and files that recreate themselves. Your files weren't touched."}
                    .in(language)};
}

std::optional<std::string> autoCleanStatus(bool isOn, const Record& record, lumo::Date now,
                                           Language language) {
    if (!isOn) {
        return std::nullopt;
    }
    std::string status = lumo::Words{"Limpieza semanal: ", "Weekly cleanup: "}.in(language);
    status += isTimeOver(record.last, now) ? lumo::Words{"hoy", "today"}.in(language)
                                           : lumo::dayText(*record.last + interval, language);
    if (record.last && record.bytes) {
        status +=
            *record.bytes == 0
                ? lumo::Words{" · la última no encontró nada", " · the last one found nothing"}.in(language)
                : lumo::Words{" · la última liberó ", " · the last one freed "}.in(language) +
                      lumo::ByteFormat::string(*record.bytes, language);
    }
    return status;
}

} // namespace tarvo::WeeklyCleanup
