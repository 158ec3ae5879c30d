#include "LumoCore/Explaining/DiskSummary.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/ModelGuard.h"
#include "LumoCore/Explaining/ShortSize.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>

namespace lumo {

namespace {

std::string bytesText(std::int64_t bytes, Language language) {
    return ByteFormat::string(bytes, language);
}

std::string joined(const std::vector<std::string>& lines) {
    return fmt::format("{}", fmt::join(lines, "\n"));
}

/// Where what can be recovered comes from.
struct Parts {
    std::int64_t toolCaches = 0;
    std::int64_t staleDependencies = 0;
    std::size_t staleProjects = 0;
    std::int64_t builds = 0;
};

bool isDependency(const ProjectArtifact& artifact) {
    return artifact.name == "node_modules" || artifact.name == ".venv" || artifact.name == "venv";
}

bool isStale(const ProjectReport& project, Date now) {
    constexpr std::chrono::days freshest{29};
    return project.lastCodeChange &&
           std::chrono::duration_cast<std::chrono::days>(now - *project.lastCodeChange) > freshest;
}

void addProject(Parts& parts, const ProjectReport& project, Date now) {
    constexpr std::int64_t leastDependencies = 1000000;
    std::int64_t dependencies = 0;
    for (const ProjectArtifact& artifact : project.artifacts) {
        std::int64_t& share = isDependency(artifact) ? dependencies : parts.builds;
        share = checkedSum(share, artifact.usage.allocatedBytes);
    }
    if (dependencies >= leastDependencies && isStale(project, now)) {
        parts.staleDependencies = checkedSum(parts.staleDependencies, dependencies);
        ++parts.staleProjects;
    }
}

Parts partsOf(const ScanReport& report, Date now) {
    Parts parts;
    for (const Finding& finding : report.findings) {
        if (finding.safety == Safety::safe && finding.category == Category::packageCache) {
            parts.toolCaches = checkedSum(parts.toolCaches, finding.usage.allocatedBytes);
        }
    }
    for (const ProjectReport& project : report.projects) {
        addProject(parts, project, now);
    }
    return parts;
}

/// Nobody is helped by hearing that the largest thing takes "<1 MB". On a Mac, where folders take no blocks
/// of their own, whatever there is is named.
bool isWorthNaming(std::int64_t bytes, System system) {
    return system == System::macos || bytes >= ByteFormat::shownAsMegabyte;
}

/// The first findings that need a look, at most that many.
std::vector<const Finding*> firstToReview(const ScanReport& report, std::size_t most, System system) {
    std::vector<const Finding*> found;
    for (const Finding& finding : report.findings) {
        if (finding.safety == Safety::review && found.size() < most &&
            isWorthNaming(finding.usage.allocatedBytes, system)) {
            found.push_back(&finding);
        }
    }
    return found;
}

/// The fact about the parts of what can be recovered, those that are there.
void addPartFacts(std::vector<std::string>& facts, const Parts& parts, Language language, System system) {
    if (parts.toolCaches >= 1) {
        facts.push_back(Words{"Parte de lo recuperable: cachés de herramientas de desarrollo (uv, "
                              "npm, pnpm, Gradle…), {}.",
                              "Part of the recoverable space: developer tool caches (uv, npm, "
                              "pnpm, Gradle…), {}."}
                            .in(language, bytesText(parts.toolCaches, language)));
    }
    if (parts.staleDependencies >= 1) {
        constexpr Words many{"Parte de lo recuperable: dependencias (node_modules, .venv) de {} "
                             "proyectos sin cambios desde hace más de 30 días, {}.",
                             "Part of the recoverable space: dependencies (node_modules, .venv) "
                             "of {} projects unchanged for over 30 days, {}."};
        constexpr SystemWords one{
            .macos = many,
            .linux = {"Parte de lo recuperable: dependencias (node_modules, .venv) de {} "
                      "proyecto sin cambios desde hace más de 30 días, {}.",
                      "Part of the recoverable space: dependencies (node_modules, .venv) "
                      "of {} project unchanged for over 30 days, {}."}};
        facts.push_back((parts.staleProjects == 1 ? one.on(system) : many)
                            .in(language, parts.staleProjects, bytesText(parts.staleDependencies, language)));
    }
    if (parts.builds >= 1) {
        facts.push_back(Words{"Parte de lo recuperable: compilaciones de proyectos, {}.",
                              "Part of the recoverable space: project builds, {}."}
                            .in(language, bytesText(parts.builds, language)));
    }
}

/// Where most of it is, as the end of a sentence; empty when none of the parts is there.
std::string largestPart(const Parts& parts, Language language, System system) {
    struct Candidate {
        std::int64_t bytes;
        std::string phrase;
    };
    constexpr Words many{"en dependencias de {} proyectos que no tocas desde hace un mes",
                         "in dependencies of {} projects you haven't touched in a month"};
    constexpr SystemWords one{.macos = many,
                              .linux = {"en dependencias de {} proyecto que no tocas desde hace un mes",
                                        "in dependencies of {} project you haven't touched in a month"}};
    const Candidate candidates[] = {
        {parts.toolCaches,
         Words{"en cachés de herramientas de desarrollo", "in developer tool caches"}.in(language)},
        {parts.staleDependencies,
         (parts.staleProjects == 1 ? one.on(system) : many).in(language, parts.staleProjects)},
        {parts.builds, Words{"en compilaciones de tus proyectos", "in your project builds"}.in(language)}};
    // The first of several equal ones.
    const Candidate& largest = *std::ranges::max_element(candidates, {}, &Candidate::bytes);
    if (largest.bytes < 1 || !isWorthNaming(largest.bytes, system)) {
        return {};
    }
    return fmt::format("{}{} {}", Words{", sobre todo ", ", mostly "}.in(language),
                       bytesText(largest.bytes, language), largest.phrase);
}

} // namespace

namespace DiskSummary {

std::vector<std::string> facts(const ScanReport& report, std::int64_t recoverable, Date now,
                               Language language, System system) {
    constexpr std::size_t mostToReview = 2;
    std::vector<std::string> facts{
        Words{"Recuperable sin riesgo en total: {}.", "Total recoverable with no risk: {}."}.in(
            language, bytesText(recoverable, language))};
    addPartFacts(facts, partsOf(report, now), language, system);
    std::vector<std::string> toReview;
    for (const Finding* finding : firstToReview(report, mostToReview, system)) {
        toReview.push_back(finding->name + " " + shortSize(finding->usage.allocatedBytes, language));
    }
    if (!toReview.empty()) {
        facts.push_back(Words{"Ocupa mucho, pero hay que revisarlo (no es sin riesgo): {}.",
                              "Takes a lot of space, but needs review (not risk-free): {}."}
                            .in(language, fmt::format("{}", fmt::join(toReview, "; "))));
    }
    facts.push_back(Words{"Espacio libre ahora: {}.", "Free space now: {}."}.in(
        language, bytesText(report.volume.availableBytes, language)));
    return facts;
}

std::string templateText(const ScanReport& report, std::int64_t recoverable, Date now, Language language,
                         System system) {
    std::string summary = Words{"Puedes recuperar {} sin riesgo{}.", "You can recover {} with no risk{}."}.in(
        language, bytesText(recoverable, language), largestPart(partsOf(report, now), language, system));
    for (const Finding* finding : firstToReview(report, 1, system)) {
        summary +=
            Words{" Lo más grande para revisar es {} ({}).", " The biggest thing to review is {} ({})."}.in(
                language, finding->name, bytesText(finding->usage.allocatedBytes, language));
    }
    return summary;
}

std::vector<std::string> amounts(std::string_view text) {
    // Neither beginning inside a number nor giving back its digits changes what is found, only how long that
    // takes in a text that a model filled with digits.
    return matchesOf(R"((?<!\d)\d++(?:[.,]\d++)?\s?(?:GB|MB|TB))", text);
}

bool usesOnlyKnownAmounts(std::string_view text, const std::vector<std::string>& facts) {
    const std::vector<std::string> used = amounts(text);
    const std::vector<std::string> known = used.empty() ? used : amounts(joined(facts));
    return std::ranges::all_of(
        used, [&](const std::string& amount) { return std::ranges::find(known, amount) != known.end(); });
}

} // namespace DiskSummary

namespace AISummaryWriter {

std::string instructions(Language language, System system) {
    // The runs of blanks are part of what models were tried with.
    constexpr Words onMac{
        "Escribes el resumen que ve el usuario de una app que libera espacio en su Mac. Con los datos que te "
        "dan, escribe dos frases en español. La primera dice cuánto puede recuperar sin riesgo en total y de "
        "dónde sale la mayor parte. La segunda nombra lo que ocupa mucho pero hay que revisar, sin decir que "
        "sea seguro borrarlo. Usa solo las cifras de los datos, copiadas exactamente igual (por ejemplo "
        "«16,0 "
        "GB»). Sin saludos, sin listas y sin comillas.",
        "You write the summary the user sees in an app that frees up space on their Mac.     "
        "With the data you're given, write two sentences in English. The first says how much they can "
        "recover     "
        "with no risk in total and where most of it comes from. The second names what takes a lot of space "
        "but     "
        "needs review, without saying it's safe to delete. Use only the figures in the data, copied     "
        "exactly as they are (for example «16.0 GB»). No greetings, no lists and no quotation marks."};
    constexpr Words onLinux{
        "Escribes el resumen que ve el usuario de una app que libera espacio en su equipo con Linux. Con los "
        "datos que te dan, escribe dos frases en español. La primera dice cuánto puede recuperar sin riesgo "
        "en total y de dónde sale la mayor parte. La segunda nombra lo que ocupa mucho pero hay que revisar, "
        "sin decir que sea seguro borrarlo. Usa solo las cifras de los datos, copiadas exactamente igual "
        "(por ejemplo «16,0 GB»). Sin saludos, sin listas y sin comillas.",
        "You write the summary the user sees in an app that frees up space on their Linux computer. With the "
        "data you're given, write two sentences in English. The first says how much they can recover with no "
        "risk in total and where most of it comes from. The second names what takes a lot of space but needs "
        "review, without saying it's safe to delete. Use only the figures in the data, copied exactly as "
        "they are (for example “16.0 GB”). No greetings, no lists and no quotation marks."};
    return SystemWords{.macos = onMac, .linux = onLinux}.on(system).in(language);
}

std::string prompt(const std::vector<std::string>& facts) {
    return joined(facts);
}

} // namespace AISummaryWriter

DiskSummaryText SummaryService::summary(const ScanReport& report, std::int64_t recoverable, Date now,
                                        const AISummaryWriter::Write& write, Language language) {
    if (write) {
        const std::vector<std::string> facts = DiskSummary::facts(report, recoverable, now, language);
        const std::optional<std::string> written = write(facts);
        if (written && DiskSummary::usesOnlyKnownAmounts(*written, facts) &&
            ModelGuard::isFitToShow(*written, joined(facts))) {
            return {.text = *written, .byAI = true};
        }
    }
    return {.text = DiskSummary::templateText(report, recoverable, now, language), .byAI = false};
}

} // namespace lumo
