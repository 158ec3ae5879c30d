#pragma once

#include "LumoCore/Scanning/ScanReport.h"

#include <cstdint>
#include <map>
#include <string>

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

    /// The findings, the projects' artifacts and the unclassified folders of the report.
    static DiskSnapshot from(const ScanReport& report);

    friend bool operator==(const DiskSnapshot&, const DiskSnapshot&) = default;
};

} // namespace lumo
