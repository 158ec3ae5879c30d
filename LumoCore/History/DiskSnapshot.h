#pragma once

#include "LumoCore/Inventories/DetailItem.h"
#include "LumoCore/Scanning/ScanReport.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace lumo {

/// What each known item weighed at one scan: one number an item, so that many scans can be kept. Items are
/// known by the identifiers that plans use; those of one identifier count as one.
struct DiskSnapshot {
    Date date;                                 ///< When the scan began.
    std::int64_t freeBytes = 0;                ///< Free on the scanned volume then.
    std::map<std::string, std::int64_t> sizes; ///< Bytes on disk by identifier.
    std::map<std::string, std::string> names;  ///< For a person, by identifier.

    static constexpr auto fields =
        std::tuple{field("date", &DiskSnapshot::date), field("freeBytes", &DiskSnapshot::freeBytes),
                   field("sizes", &DiskSnapshot::sizes), field("names", &DiskSnapshot::names)};

    /// The findings, the projects' artifacts and the unclassified folders of the report, and the items of
    /// what was looked at more closely. Of each of these kinds the prefix of its ids is kept as well, with 0
    /// bytes: that tells an item that is new from one that nobody looked for.
    static DiskSnapshot from(const ScanReport& report, const std::vector<Inventory>& inventories = {});

    friend bool operator==(const DiskSnapshot&, const DiskSnapshot&) = default;
};

} // namespace lumo
