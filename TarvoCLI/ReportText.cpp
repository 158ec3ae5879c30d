#include "TarvoCLI/ReportText.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/Table.h"
#include "TarvoModel/Showing/Rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>

namespace tarvo {

using lumo::Finding;
using lumo::ProjectReport;
using lumo::Safety;
using lumo::ScanReport;
using lumo::Words;

namespace {

/// What is smaller is summed up in one line: nobody looks for it.
constexpr std::int64_t smallestShown = 1000000;

std::string bytesText(std::int64_t bytes) {
    return lumo::ByteFormat::string(bytes);
}

std::string countText(std::size_t count) {
    return lumo::ByteFormat::number(static_cast<double>(count), 0);
}

std::string placeText(const std::string& path, const std::string& home) {
    return lumo::printable(lumo::abbreviated(path, home));
}

/// One path; for several of one folder that folder and how many, and for others the first.
std::string placesText(const std::vector<std::string>& paths, const std::string& home) {
    if (paths.size() == 1) {
        return placeText(paths.front(), home);
    }
    const std::string folder(lumo::parentOf(paths.front()));
    if (!std::ranges::all_of(paths,
                             [&](const std::string& path) { return lumo::parentOf(path) == folder; })) {
        return placeText(paths.front(), home) +
               Words{" y {} más", " and {} more"}.with(countText(paths.size() - 1));
    }
    return fmt::format("{}/ ({} {})", placeText(folder, home), countText(paths.size()),
                       Words{"elementos", "items"}.in());
}

/// Puts sections under each other.
class Page final {
  public:
    explicit Page(const Invocation& invocation) : invocation_(invocation), columns_(outputColumns()) {}

    void line(std::string_view words, Tint tint = Tint::plain) {
        text_ += tinted(words, tint, invocation_) + "\n";
    }

    void section(std::string_view heading, std::int64_t bytes, Tint tint, const Table& table,
                 std::string_view remark = {}) {
        text_ += "\n" + tinted(fmt::format("● {}", heading), tint, invocation_) + "  " +
                 tinted(bytesText(bytes), Tint::strong, invocation_) + "\n";
        text_ += table.lines(2, columns_, invocation_);
        if (!remark.empty()) {
            line(fmt::format("  {}", remark), Tint::faint);
        }
    }

    [[nodiscard]] std::string take() { return std::move(text_); }

  private:
    const Invocation& invocation_;
    std::size_t columns_;
    std::string text_;
};

Table sizedTable(Tint tint) {
    return Table({{.align = Align::right, .tint = tint},
                  {.align = Align::left, .mayShrink = true},
                  {.align = Align::left, .tint = Tint::faint, .mayShrink = true},
                  // To be copied, so it is never shortened.
                  {.align = Align::left}});
}

/// "and 3 more (2 MB)", or nothing when nothing was left out.
std::string restText(std::size_t count, std::int64_t bytes) {
    if (count == 0) {
        return {};
    }
    return Words{"y {} más ({})", "and {} more ({})"}.with(countText(count), bytesText(bytes));
}

void addFindings(Page& page, const ScanReport& report, Safety safety, Identifiers identifiers) {
    const bool hasIDs = identifiers == Identifiers::shown && safety != Safety::keep;
    Table table = sizedTable(tintOf(safety));
    std::size_t restCount = 0;
    std::int64_t restBytes = 0;
    bool isFirst = true;
    for (const Finding& finding : report.findings) {
        if (finding.safety != safety) {
            continue;
        }
        if (finding.usage.allocatedBytes < smallestShown && !isFirst) {
            ++restCount;
            restBytes += finding.usage.allocatedBytes;
            continue;
        }
        isFirst = false;
        table.add({bytesText(finding.usage.allocatedBytes), lumo::printable(finding.name),
                   placesText(finding.paths, report.home),
                   hasIDs ? lumo::printable(finding.ruleID) : std::string()});
    }
    if (!table.isEmpty()) {
        page.section(groupTitle(groupOf(safety)), report.bytes(safety), tintOf(safety), table,
                     restText(restCount, restBytes));
    }
}

std::string artifactsText(const ProjectReport& project) {
    std::vector<std::string> parts;
    for (const lumo::ProjectArtifact& artifact : project.artifacts) {
        if (artifact.usage.allocatedBytes >= smallestShown || parts.empty()) {
            parts.push_back(fmt::format("{} {}", artifact.name, bytesText(artifact.usage.allocatedBytes)));
        }
    }
    std::string shown = fmt::format("{}", fmt::join(parts, " · "));
    if (project.lastCodeChange) {
        shown += fmt::format("  {} {}", Words{"último cambio", "last change"}.in(),
                             lumo::dayText(*project.lastCodeChange));
    }
    return shown;
}

/// The project as one row, or with identifiers one for each artifact, which has its own.
void addProject(Table& table, const ProjectReport& project, Identifiers identifiers) {
    const std::string name = lumo::printable(project.name);
    if (identifiers == Identifiers::hidden) {
        table.add({bytesText(project.recoverableBytes()), name, artifactsText(project), ""});
        return;
    }
    for (const lumo::ProjectArtifact& artifact : project.artifacts) {
        table.add({bytesText(artifact.usage.allocatedBytes), name, lumo::printable(artifact.name),
                   lumo::printable(lumo::artifactID(project, artifact))});
    }
}

void addProjects(Page& page, const ScanReport& report, Identifiers identifiers) {
    constexpr std::size_t mostShown = 15;
    Table table = sizedTable(Tint::safe);
    std::size_t shown = 0;
    std::size_t restCount = 0;
    std::int64_t recoverable = 0;
    std::int64_t restBytes = 0;
    for (const ProjectReport& project : report.projects) {
        const std::int64_t bytes = project.recoverableBytes();
        recoverable += bytes;
        if (project.artifacts.empty()) {
            continue;
        }
        if (shown >= mostShown || (bytes < smallestShown && shown > 0)) {
            ++restCount;
            restBytes += bytes;
            continue;
        }
        ++shown;
        addProject(table, project, identifiers);
    }
    if (!table.isEmpty()) {
        page.section(
            Words{"Proyectos: carpetas que se pueden regenerar", "Projects: folders that can be rebuilt"}
                .in(),
            recoverable, Tint::safe, table, restText(restCount, restBytes));
    }
}

void addUnclassified(Page& page, const ScanReport& report) {
    Table table = sizedTable(Tint::strong);
    std::int64_t sum = 0;
    for (const lumo::UnclassifiedItem& item : report.unclassified) {
        sum += item.usage.allocatedBytes;
        table.add({bytesText(item.usage.allocatedBytes), placeText(item.path, report.home), "", ""});
    }
    if (!table.isEmpty()) {
        page.section(Words{"Carpetas grandes sin clasificar", "Large unclassified folders"}.in(), sum,
                     Tint::strong, table);
    }
}

/// How long the scan took, for a sentence: "1,2 s".
std::string durationText(double seconds) {
    constexpr double shortest = 0.1;
    return (seconds < shortest ? "<" : "") + lumo::ByteFormat::number(std::max(seconds, shortest), 1) + " s";
}

std::string headText(const ScanReport& report) {
    const std::string home = lumo::printable(report.home);
    const std::string duration = durationText(report.durationSeconds);
    if (report.volume.totalBytes == 0) {
        return Words{"{}: analizado en {}", "{}: analyzed in {}"}.with(home, duration);
    }
    return Words{"{}: {} libres de {}, analizado en {}", "{}: {} free of {}, analyzed in {}"}.with(
        home, bytesText(report.volume.availableBytes), bytesText(report.volume.totalBytes), duration);
}

/// What can be recovered, and what else there is to decide.
std::string outcomeText(const ScanReport& report, std::int64_t recoverable) {
    const std::string safe = bytesText(recoverable);
    const std::int64_t review = report.bytes(Safety::review);
    if (review == 0) {
        return Words{"Puedes recuperar {} sin riesgo.", "You can recover {} with no risk."}.with(safe);
    }
    return Words{"Puedes recuperar {} sin riesgo; {} esperan a que los mires.",
                 "You can recover {} with no risk; {} wait for you to look at."}
        .with(safe, bytesText(review));
}

void addClosing(Page& page, const ScanReport& report, std::int64_t recoverable) {
    page.line("");
    if (const std::int64_t unreadable = report.unreadableCount(); unreadable > 0) {
        page.line(unreadableText(unreadable), Tint::review);
    }
    if (report.safeBytes() == 0 && report.findings.empty() && report.unclassified.empty()) {
        page.line(Words{"No he encontrado nada que ocupe espacio sin necesidad.",
                        "Nothing found that takes space needlessly."}
                      .in());
        return;
    }
    page.line(outcomeText(report, recoverable), Tint::strong);
    page.line(
        Words{"Qué es cada cosa y cómo se libera: tarvo reglas. Todos los detalles: tarvo analizar --json.",
              "What each thing is and how it is freed: tarvo rules. All details: tarvo scan --json."}
            .in(),
        Tint::faint);
}

} // namespace

Tint tintOf(Safety safety) {
    switch (safety) {
    case Safety::safe:
        return Tint::safe;
    case Safety::review:
        return Tint::review;
    case Safety::keep:
        break;
    }
    return Tint::faint;
}

std::string reportText(const ScanReport& report, std::int64_t recoverable, Identifiers identifiers,
                       const Invocation& invocation) {
    Page page(invocation);
    page.line(headText(report), Tint::strong);
    addFindings(page, report, Safety::safe, identifiers);
    addProjects(page, report, identifiers);
    addFindings(page, report, Safety::review, identifiers);
    addUnclassified(page, report);
    addFindings(page, report, Safety::keep, identifiers);
    addClosing(page, report, recoverable);
    return page.take();
}

} // namespace tarvo
