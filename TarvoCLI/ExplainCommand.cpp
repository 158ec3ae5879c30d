#include "LumoAI/ExplanationService.h"
#include "LumoAI/NoModel.h"
#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/FolderEvidence.h"
#include "Platform/Clock.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/NamedPath.h"
#include "TarvoCLI/ReportSource.h"
#include "TarvoCLI/ReportText.h"
#include "TarvoCLI/Table.h"
#include "TarvoCLI/UsersModel.h"
#include "TarvoCLI/Watching.h"
#include "TarvoModel/Showing/ExplanationTexts.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <memory>

namespace tarvo {

using lumo::Explanation;
using lumo::FolderEvidence;
using lumo::Words;

namespace {

struct ExplainArguments {
    ReportSource source;
    std::vector<std::string> words;
    bool showsEvidence = false;
};

/// What is to be explained, in the order in which it is shown.
struct Folders {
    std::vector<std::string> paths;
    std::string home; ///< In which they lie: the report's own, which may be another machine's.
};

/// What a model would be shown of one folder.
struct ShownEvidence {
    FolderEvidence evidence;
    std::string promptDescription;

    static constexpr auto fields =
        std::tuple{lumo::field("evidence", &ShownEvidence::evidence),
                   lumo::field("promptDescription", &ShownEvidence::promptDescription)};
};

std::expected<Folders, ExitCode> foldersOfReport(const ReportSource& source, const Invocation& invocation) {
    const auto report = reportFrom(source, invocation);
    if (!report) {
        return std::unexpected(report.error());
    }
    Folders folders{.paths = {}, .home = (*report)->home};
    for (const lumo::UnclassifiedItem& item : (*report)->unclassified) {
        folders.paths.push_back(item.path);
    }
    return folders;
}

std::expected<Folders, ExitCode> foldersFrom(const ExplainArguments& arguments,
                                             const Invocation& invocation) {
    if (arguments.words.empty()) {
        return foldersOfReport(arguments.source, invocation);
    }
    if (arguments.source.file) {
        return std::unexpected(complain(Words{"indica rutas o un informe con --report, no las dos cosas",
                                              "name paths or a report with --report, not both"}
                                            .in(),
                                        ExitCode::usage));
    }
    Folders folders{.paths = {}, .home = invocation.home};
    for (const std::string& word : arguments.words) {
        const auto path = givenPath(word, invocation);
        if (!path) {
            return std::unexpected(path.error());
        }
        if (std::ranges::find(folders.paths, *path) == folders.paths.end()) {
            folders.paths.push_back(*path);
        }
    }
    return folders;
}

/// Runs work that goes through the folders one by one, and shows which one it is at; it tells how many are
/// done. False when interrupted.
bool watchFolders(
    const Folders& folders, const Invocation& invocation,
    const std::function<void(const lumo::FileTree::Watch& watch, std::atomic<std::size_t>& done)>& work) {
    std::atomic<std::size_t> done = 0;
    return watchWalk(
        invocation, [&](const lumo::FileTree::Watch& watch) { work(watch, done); },
        [&] {
            const std::size_t index = std::min(done.load(), folders.paths.size() - 1);
            return Words{"Mirando {} de {}: {}", "Looking at {} of {}: {}"}.with(
                index + 1, folders.paths.size(),
                lumo::printable(lumo::abbreviated(folders.paths[index], folders.home)));
        });
}

std::string headText(const Explanation& explanation, const std::string& home, Tint tint,
                     const Invocation& invocation) {
    return tinted("● " + lumo::printable(lumo::abbreviated(explanation.path, home)), tint, invocation) +
           "  " + tinted(lumo::ByteFormat::string(explanation.sizeBytes), Tint::strong, invocation) +
           tinted(fmt::format(" · {}", sourceWord(explanation.source)), Tint::faint, invocation) + "\n";
}

std::string explanationText(const Explanation& explanation, const std::string& home,
                            const Invocation& invocation) {
    const Tint tint = tintOf(explanation.safety);
    Table table({{.tint = Tint::faint}, {}});
    for (const ExplanationLine& line : explanationLines(explanation)) {
        table.add({line.label, lumo::printable(line.text)});
    }
    return headText(explanation, home, tint, invocation) + table.lines(2, 0, invocation) + "\n";
}

/// Who wrote the explanations, and so how far to trust them.
std::string closingText(const std::map<std::string, Explanation>& explanations,
                        const Invocation& invocation) {
    const auto areFrom = [&](Explanation::Source source) {
        return std::ranges::any_of(explanations,
                                   [&](const auto& entry) { return entry.second.source == source; });
    };
    std::string closing;
    if (areFrom(Explanation::Source::ai)) {
        closing +=
            tinted(Words{"Lo marcado con IA lo ha escrito el modelo de tu equipo y puede equivocarse; el "
                         "riesgo y qué hacer los pone Tarvo AI.",
                         "What is marked AI was written by the model on your computer and may be wrong; "
                         "the risk and what to do come from Tarvo AI."}
                       .in(),
                   Tint::faint, invocation) +
            "\n";
    }
    if (areFrom(Explanation::Source::heuristic)) {
        closing +=
            tinted(Words{"Las explicaciones aproximadas salen del lugar y el nombre de cada carpeta; lo "
                         "que hay dentro: tarvo carpeta RUTA.",
                         "Approximate explanations come from the place and the name of each folder; what "
                         "is inside: tarvo folder PATH."}
                       .in(),
                   Tint::faint, invocation) +
            "\n";
    }
    return closing;
}

std::string textOfExplanations(const Folders& folders, const std::map<std::string, Explanation>& explanations,
                               const Invocation& invocation) {
    std::string shown;
    for (const std::string& path : folders.paths) {
        shown += explanationText(explanations.at(path), folders.home, invocation);
    }
    return shown + closingText(explanations, invocation);
}

ExitCode runExplanations(const Folders& folders, const Invocation& invocation) {
    const auto model = usersModel(
        invocation,
        Words{"Se usará una explicación aproximada.", "An approximate explanation will be used."}.in());
    lumo::NoModel none;
    std::map<std::string, Explanation> explanations;
    if (!watchFolders(folders, invocation, [&](const auto& watch, std::atomic<std::size_t>& done) {
            const auto note = [&](std::size_t count, std::size_t) { done = count; };
            explanations = lumo::ExplanationService::explain(
                folders.paths, model ? *model : static_cast<lumo::LanguageModel&>(none),
                {.home = folders.home,
                 .cacheHome = invocation.home,
                 .installed = lumo::Installed::ofThisMachine(folders.home),
                 .now = lumo::platform::now(),
                 .progress = note,
                 .watch = watch});
        })) {
        return ExitCode::interrupted;
    }
    if (invocation.isJson) {
        return print(lumo::dumpJson(lumo::encode(explanations), lumo::JsonLayout::indented) + "\n");
    }
    return print(textOfExplanations(folders, explanations, invocation));
}

ExitCode runEvidence(const Folders& folders, const Invocation& invocation) {
    std::vector<FolderEvidence> all;
    if (!watchFolders(folders, invocation, [&](const auto& watch, std::atomic<std::size_t>& done) {
            all = FolderEvidence::gatherAll(folders.paths, folders.home, watch,
                                            [&](std::size_t index) { done = index; });
        })) {
        return ExitCode::interrupted;
    }
    const lumo::Date now = lumo::platform::now();
    std::map<std::string, ShownEvidence> byPath;
    std::string shown;
    for (const FolderEvidence& evidence : all) {
        const std::string description = evidence.promptDescription(now);
        shown += (shown.empty() ? "" : "\n") + description + "\n";
        byPath.insert_or_assign(evidence.path, ShownEvidence{evidence, description});
    }
    return print(invocation.isJson ? lumo::dumpJson(lumo::encode(byPath), lumo::JsonLayout::indented) + "\n"
                                   : shown);
}

ExitCode runExplain(const ExplainArguments& arguments, const Invocation& invocation) {
    const auto folders = foldersFrom(arguments, invocation);
    if (!folders) {
        return folders.error();
    }
    if (folders->paths.empty()) {
        return print(invocation.isJson
                         ? "{}\n"
                         : Words{"No hay carpetas grandes sin clasificar: nada que explicar.\n",
                                 "There are no large unclassified folders: nothing to explain.\n"}
                               .in());
    }
    return arguments.showsEvidence ? runEvidence(*folders, invocation)
                                   : runExplanations(*folders, invocation);
}

} // namespace

void addExplainCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(app, "explicar", "explain",
                                   "de qué son las carpetas que nadie conoce, y qué hacer con ellas",
                                   "what folders that nobody recognizes are, and what to do about them");
    const auto arguments = std::make_shared<ExplainArguments>();
    command
        ->add_option(Words{"rutas", "paths"}.in(), wordsInto(arguments->words),
                     Words{"qué carpetas; sin ninguna, las que el informe no clasifica",
                           "which folders; without any, those that the report does not classify"}
                         .in())
        ->type_name("")
        ->option_text(Words{"RUTA...", "PATH..."}.in())
        ->expected(1, CLI::detail::expected_max_vector_size)
        ->allow_extra_args()
        ->take_all();
    command->add_flag(
        "--evidence", arguments->showsEvidence,
        Words{"mostrar lo que se le enseñaría a un modelo de IA", "show what an AI model would be shown"}
            .in());
    addReportOption(*command, arguments->source);
    command->callback([arguments, &chosen] {
        chosen = [arguments](const Invocation& invocation) { return runExplain(*arguments, invocation); };
    });
}

} // namespace tarvo
