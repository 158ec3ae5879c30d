#include "TarvoModel/Showing/LowSpaceAlert.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Words.h"

namespace tarvo::LowSpaceAlert {

using lumo::Language;

namespace {

Notification notificationFor(const Look& look, Language language) {
    // So little would not help, and is no reason to promise anything.
    constexpr std::int64_t hardlyAnything = 500000000;
    const auto bytes = [&](std::int64_t count) { return lumo::ByteFormat::string(count, language); };
    Notification alert{
        .id = "poco-espacio",
        .title = lumo::Words{"Te queda ", "Only "}.in(language) + bytes(*look.freeBytes) +
                 lumo::Words{" libres", " free"}.in(language),
        .body =
            lumo::Words{"Pulsa para ver qué ocupa tu disco.", "Click to see what's taking up your disk."}.in(
                language)};
    if (look.recoverable > hardlyAnything) {
        alert.body =
            lumo::Words{"Puedes recuperar ", "You can recover "}.in(language) + bytes(look.recoverable) +
            lumo::Words{" sin riesgo. Pulsa para verlo.", " with no risk. Click to see it."}.in(language);
    }
    return alert;
}

/// A date ahead of now is none: the clock was set back, and the alert must not stay silent until it catches
/// up.
bool wasSentLately(const Look& look) {
    return look.sent && *look.sent <= look.now && look.now - *look.sent < interval;
}

} // namespace

Decision decide(const Look& look, Language language) {
    if (!look.freeBytes) {
        return {};
    }
    constexpr std::int64_t gigabyte = 1000000000;
    const std::int64_t threshold = lumo::checkedProduct(look.thresholdGB, gigabyte);
    if (*look.freeBytes >= lumo::checkedSum(threshold, gap)) {
        return {.forgetsDate = look.sent.has_value(), .notification = {}};
    }
    if (*look.freeBytes >= threshold || wasSentLately(look)) {
        return {};
    }
    return {.forgetsDate = false, .notification = notificationFor(look, language)};
}

} // namespace tarvo::LowSpaceAlert
