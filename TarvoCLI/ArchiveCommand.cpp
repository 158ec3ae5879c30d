#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Clock.h"
#include "Platform/Folder.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/GivenPath.h"
#include "TarvoCLI/HomeChange.h"
#include "TarvoCLI/Question.h"
#include "TarvoCLI/WatchedArchive.h"
#include "TarvoModel/Showing/ArchiveTexts.h"

#include <memory>
#include <optional>

namespace tarvo {

using lumo::CleanupOutcome;
using lumo::JsonValue;
using lumo::Words;
using lumo::Archiver::ArchiveError;
using lumo::Archiver::ArchiveProblem;
using lumo::Archiver::Estimate;
namespace platform = lumo::platform;

namespace {

struct ArchiveArguments {
    std::string path;
    bool isOnlyEstimated = false;
    bool isConfirmed = false;
};

std::string document(JsonValue::Object members) {
    return lumo::dumpJson({std::move(members)}, lumo::JsonLayout::indented) + "\n";
}

std::string shownName(const std::string& path) {
    return lumo::printable(lumo::fileName(path));
}

ExitCode refuse(const std::string& refusal, const Invocation& invocation) {
    if (invocation.isJson) {
        print(document({{"refusal", lumo::encode(refusal)}}));
        return ExitCode::failed;
    }
    return complain(archiveRefusalTitle() + ": " + lumo::printable(refusal), ExitCode::failed);
}

ExitCode tell(const Estimate& estimate, const std::string& path, const Invocation& invocation) {
    const std::string destination = lumo::Archiver::destination(path);
    if (invocation.isJson) {
        return print(
            document({{"estimate", lumo::encode(estimate)}, {"destination", lumo::encode(destination)}}));
    }
    return print(estimateText(shownName(path), estimate) + "\n");
}

std::optional<ExitCode> declinedArchive(const Estimate& estimate, const std::string& path,
                                        const Invocation& invocation) {
    const std::string shown = estimateText(shownName(path), estimate) + "\n" +
                              archiveExplanation(shownName(lumo::Archiver::destination(path))) + "\n";
    // Standard output belongs to the document.
    platform::writeAll(invocation.isJson ? platform::Stream::error : platform::Stream::output, shown);
    return declined(archiveQuestion(shownName(path)));
}

ExitCode tell(const ArchiveError& error) {
    const std::string detail = error.detail.empty() ? "" : " (" + lumo::printable(error.detail) + ")";
    const bool isInterrupted = error.problem == ArchiveProblem::interrupted;
    return complain(error.errorDescription() + detail,
                    isInterrupted ? ExitCode::interrupted : ExitCode::failed);
}

/// What became of an item whose archive is verified.
ExitCode tell(const std::string& archive, const std::vector<CleanupOutcome>& outcomes,
              const Invocation& invocation) {
    const CleanupOutcome& outcome = outcomes.front();
    const bool isDone = outcome.status == lumo::CleanupStatus::done;
    const std::string shown = lumo::printable(lumo::abbreviated(archive, invocation.home));
    ExitCode printed = ExitCode::done;
    if (invocation.isJson) {
        printed = print(document({{"archive", lumo::encode(archive)}, {"outcomes", lumo::encode(outcomes)}}));
    } else if (isDone) {
        lumo::HardLinkRegistry registry;
        printed = print(
            archivedText(shown, lumo::FileTree::measure(archive, registry).apparentBytes) + "\n" +
            tinted(Words{"Para devolverlo a su sitio: tarvo deshacer\n", "To put it back: tarvo undo\n"}.in(),
                   Tint::faint, invocation));
    }
    if (!isDone && !platform::kindOf(archive)) {
        return complain(lumo::printable(outcome.message.value_or("")), ExitCode::failed);
    }
    if (!isDone) {
        return complain(originalKeptText(shown, lumo::printable(outcome.message.value_or(""))),
                        ExitCode::failed);
    }
    return platform::wasInterrupted() ? ExitCode::interrupted : printed;
}

ExitCode archiveAndSetAside(const std::string& path, const Estimate& estimate, const Invocation& invocation) {
    const lumo::PathGuard guard(invocation.home);
    const auto lock = lockHome(guard, "archive");
    if (!lock) {
        return lock.error();
    }
    // Measured now, since nothing may take time between the last look at the original and its move.
    lumo::HardLinkRegistry registry;
    const std::int64_t bytes = lumo::FileTree::measure(path, registry).allocatedBytes;
    const auto archived = watchedArchive(path, estimate, guard, invocation);
    if (!archived) {
        return tell(archived.error());
    }
    return tell(
        archived->path,
        lumo::Archiver::setAside(*archived, std::string(lumo::fileName(path)), bytes, guard, platform::now()),
        invocation);
}

ExitCode runArchive(const ArchiveArguments& arguments, const Invocation& invocation) {
    const auto path = givenPath(arguments.path);
    if (!path) {
        return path.error();
    }
    if (const auto refusal = lumo::Archiver::refusal(*path, invocation.home)) {
        return refuse(*refusal, invocation);
    }
    if (const auto impossible = cannotAsk(arguments.isConfirmed || arguments.isOnlyEstimated)) {
        return *impossible;
    }
    if (const auto refused = arguments.isOnlyEstimated ? std::nullopt : refuseForeign(invocation)) {
        return *refused;
    }
    const auto estimate = watchedEstimate(*path, invocation);
    if (!estimate) {
        return tell(ArchiveError{.problem = ArchiveProblem::interrupted});
    }
    if (arguments.isOnlyEstimated) {
        return tell(*estimate, *path, invocation);
    }
    if (const auto no =
            arguments.isConfirmed ? std::nullopt : declinedArchive(*estimate, *path, invocation)) {
        return *no;
    }
    return archiveAndSetAside(*path, *estimate, invocation);
}

} // namespace

void addArchiveCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(app, "archivar", "archive",
                                   "cambia algo que apenas usas por un zip comprobado, tras preguntarte",
                                   "replace something you rarely use by a verified zip, after asking you");
    const auto arguments = std::make_shared<ArchiveArguments>();
    command->add_option("path", arguments->path, Words{"lo que se archiva", "what to archive"}.in())
        ->type_name(Words{"RUTA", "PATH"}.in())
        ->option_text(Words{"RUTA", "PATH"}.in())
        ->required();
    command->add_flag("--estimate", arguments->isOnlyEstimated,
                      Words{"solo calcular cuánto se ahorraría", "only find out what it would save"}.in());
    command->add_flag("--yes", arguments->isConfirmed,
                      Words{"confirmar sin preguntar", "confirm without asking"}.in());
    command->callback([arguments, &chosen] {
        chosen = [arguments](const Invocation& invocation) { return runArchive(*arguments, invocation); };
    });
}

} // namespace tarvo
