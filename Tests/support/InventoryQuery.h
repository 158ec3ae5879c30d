#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Inventories/DetailItem.h"
#include "Tests/support/TempHome.h"

#include <cstdint>
#include <optional>

namespace tarvo::testing {

/// The moment at which detectors are asked.
inline const lumo::Date noon = *lumo::dateFromIsoText("2026-03-14T12:00:00Z");

/// What a detector is asked about the home, in English. The system's own folders stand in "system" there.
inline lumo::InventoryQuery queryOf(const TempHome& home, std::optional<std::int64_t> minimumBytes = {}) {
    return {.home = home.path(),
            .now = noon,
            .minimumBytes = minimumBytes,
            .language = lumo::Language::en,
            .systemRoot = home.path("system")};
}

} // namespace tarvo::testing
