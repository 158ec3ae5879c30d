#include "TarvoModel/Showing/Rows.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Scanning/ProjectArtifacts.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace tarvo {

using lumo::Finding;
using lumo::Language;
using lumo::PlanEntry;
using lumo::Safety;
using lumo::ScanReport;

namespace {

/// What the report says of a thing that can have an entry.
struct Told {
    std::string detail;
    std::int64_t files = 0;
    std::optional<lumo::Date> lastChange;
};

/// By the entry's id.
std::map<std::string, Told> toldBy(const ScanReport& report, Language language) {
    std::map<std::string, Told> told;
    for (const Finding& finding : report.findings) {
        told.emplace(finding.ruleID,
                     Told{finding.explanation, finding.usage.fileCount, finding.usage.lastModified});
    }
    for (const lumo::ProjectReport& project : report.projects) {
        for (const lumo::ProjectArtifact& artifact : project.artifacts) {
            // A hint may be in the language of the scan that wrote it down.
            told.emplace(lumo::artifactID(project, artifact),
                         Told{lumo::ProjectArtifacts::hint(artifact.name, language), artifact.usage.fileCount,
                              project.lastCodeChange ? project.lastCodeChange : artifact.usage.lastModified});
        }
    }
    return told;
}

Row rowOf(const PlanEntry& entry, const Told& told) {
    return {.id = entry.action.id,
            .title = lumo::printable(entry.action.title),
            .detail = told.detail,
            .bytes = entry.action.estimatedBytes,
            .safety = entry.action.safety,
            .group = groupOf(entry.action.safety),
            .skipReason = entry.skipReason,
            .paths = entry.action.measuredPaths,
            .files = told.files,
            .lastChange = told.lastChange};
}

Row rowOf(const Finding& finding) {
    return {.id = finding.ruleID,
            .title = lumo::printable(finding.name),
            .detail = finding.explanation,
            .bytes = finding.usage.allocatedBytes,
            .safety = finding.safety,
            .group = groupOf(finding.safety),
            .skipReason = {},
            .paths = finding.paths,
            .files = finding.usage.fileCount,
            .lastChange = finding.usage.lastModified};
}

Row rowOf(const lumo::UnclassifiedItem& item, const std::string& home) {
    return {.id = lumo::unclassifiedID(item),
            .title = lumo::printable(lumo::fileName(item.path)),
            .detail = lumo::printable(lumo::abbreviated(item.path, home)),
            .bytes = item.usage.allocatedBytes,
            .safety = {},
            .group = RowGroup::unclassified,
            .skipReason = {},
            .paths = {item.path},
            .files = item.usage.fileCount,
            .lastChange = item.usage.lastModified};
}

/// The same rows with each group together, in their order within it.
std::vector<Row> groupByGroup(std::vector<Row> rows) {
    std::vector<Row> grouped;
    grouped.reserve(rows.size());
    for (const RowGroup group : {RowGroup::safe, RowGroup::review, RowGroup::keep, RowGroup::unclassified}) {
        for (Row& row : rows) {
            if (row.group == group) {
                grouped.push_back(std::move(row));
            }
        }
    }
    return grouped;
}

bool holds(const std::string& foldedWords, std::string_view shown) {
    return lumo::folded(shown).find(foldedWords) != std::string::npos;
}

} // namespace

std::vector<Row> rowsOf(const ScanReport& report, const std::vector<PlanEntry>& entries, Language language) {
    const std::map<std::string, Told> told = toldBy(report, language);
    std::vector<Row> rows;
    const std::string held = lumo::OwnFiles::holding(report.home);
    for (const PlanEntry& entry : entries) {
        if (entry.action.measuredPaths == std::vector{held}) {
            continue;
        }
        const auto known = told.find(entry.action.id);
        rows.push_back(rowOf(entry, known == told.end() ? Told() : known->second));
    }
    for (const Finding& finding : report.findings) {
        if (finding.safety == Safety::keep) {
            rows.push_back(rowOf(finding));
        }
    }
    for (const lumo::UnclassifiedItem& item : report.unclassified) {
        rows.push_back(rowOf(item, report.home));
    }
    lumo::sortLargestFirst(rows, &Row::bytes);
    return groupByGroup(std::move(rows));
}

std::vector<Row> withWhatIsKnown(std::vector<Row> rows,
                                 const std::map<std::string, lumo::Explanation>& explanations) {
    for (Row& row : rows) {
        const auto known = row.paths.empty() ? explanations.end() : explanations.find(row.paths.front());
        if (row.group == RowGroup::unclassified && known != explanations.end()) {
            row.detail = known->second.whatItIs + " · " + row.detail;
        }
    }
    return rows;
}

RowGroup groupOf(Safety safety) {
    switch (safety) {
    case Safety::safe:
        return RowGroup::safe;
    case Safety::review:
        return RowGroup::review;
    case Safety::keep:
        break;
    }
    return RowGroup::keep;
}

std::string groupTitle(RowGroup group, Language language) {
    switch (group) {
    case RowGroup::safe:
        return lumo::Words{"Se regenera solo", "Recreates itself"}.in(language);
    case RowGroup::review:
        return lumo::Words{"Míralo antes", "Needs a look"}.in(language);
    case RowGroup::keep:
        return lumo::Words{"Se conserva", "Kept"}.in(language);
    case RowGroup::unclassified:
        break;
    }
    return lumo::Words{"Sin clasificar", "Unclassified"}.in(language);
}

bool haveOneHead(const Row& one, const Row& other) {
    return one.kind == other.kind && (one.kind || one.group == other.group);
}

std::string headOf(const Row& row, Language language) {
    return row.kind ? lumo::titleOf(*row.kind, language) : groupTitle(row.group, language);
}

std::int64_t bytesOf(RowGroup group, const std::vector<Row>& rows) {
    const Row any{.group = group};
    std::int64_t sum = 0;
    for (const Row& row : rows) {
        sum = lumo::checkedSum(sum, haveOneHead(row, any) ? row.bytes : 0);
    }
    return sum;
}

std::string amountWith(const Row& row, const std::vector<Row>& rows, Language language) {
    std::int64_t all = 0;
    std::int64_t heldBack = 0;
    for (const Row& other : rows) {
        const std::int64_t bytes = haveOneHead(row, other) ? other.bytes : 0;
        all = lumo::checkedSum(all, bytes);
        heldBack = lumo::checkedSum(heldBack, other.skipReason ? bytes : 0);
    }
    const auto bytes = [&](std::int64_t count) { return lumo::ByteFormat::string(count, language); };
    return heldBack == 0 ? bytes(all)
                         : lumo::Words{"{} · {} ahora no", "{} · {} not now"}.in(
                               language, bytes(all - heldBack), bytes(heldBack));
}

std::string groupAmount(RowGroup group, const std::vector<Row>& rows, Language language) {
    return amountWith(Row{.group = group}, rows, language);
}

std::string unreadableText(std::int64_t count, Language language) {
    if (count == 0) {
        return {};
    }
    if (count == 1) {
        return lumo::Words{
            "No he podido leer 1 elemento: lo que ocupa no está contado. Suele ser falta de permiso.",
            "1 item could not be read: what it takes is not counted. Most often a permission is "
            "missing."}
            .in(language);
    }
    return lumo::Words{"No he podido leer {} elementos: lo que ocupan no está contado. Suele ser "
                       "falta de permiso.",
                       "{} items could not be read: what they take is not counted. Most often a "
                       "permission is missing."}
        .in(language, lumo::ByteFormat::number(static_cast<double>(count), 0, language));
}

std::vector<Row> rowsMatching(std::string_view searched, const std::vector<Row>& rows) {
    if (searched.empty()) {
        return rows;
    }
    const std::string words = lumo::folded(searched);
    std::vector<Row> matching;
    std::ranges::copy_if(rows, std::back_inserter(matching), [&](const Row& row) {
        return holds(words, row.title) || holds(words, row.detail) ||
               std::ranges::any_of(row.paths, [&](const std::string& path) { return holds(words, path); });
    });
    return matching;
}

} // namespace tarvo
