#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/NamedPath.h"
#include "TarvoCLI/Question.h"
#include "TarvoCLI/WatchedArchive.h"
#include "TarvoModel/Showing/ArchiveTexts.h"

#include <memory>
#include <optional>

namespace tarvo {

using lumo::JsonValue;
using lumo::Words;
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

ExitCode tell(const NotArchived& why) {
    return complain(lumo::printable(why.reason),
                    why.isInterrupted ? ExitCode::interrupted : ExitCode::failed);
}

/// What became of an item whose archive is verified.
ExitCode tell(const Archived& archived, const Invocation& invocation) {
    const bool isDone = archived.outcome.status == lumo::CleanupStatus::done;
    const std::string shown = lumo::printable(lumo::abbreviated(archived.archive, invocation.home));
    ExitCode printed = ExitCode::done;
    if (invocation.isJson) {
        printed = print(document({{"archive", lumo::encode(archived.archive)},
                                  {"outcomes", lumo::encode(std::vector{archived.outcome})}}));
    } else if (isDone) {
        printed = print(
            archivedText(shown, archived.archiveBytes) + "\n" +
            tinted(Words{"Para devolverlo a su sitio: tarvo deshacer\n", "To put it back: tarvo undo\n"}.in(),
                   Tint::faint, invocation));
    }
    if (!isDone) {
        return complain(originalKeptText(shown, lumo::printable(archived.outcome.message.value_or(""))),
                        ExitCode::failed);
    }
    return platform::wasInterrupted() ? ExitCode::interrupted : printed;
}

ExitCode runArchive(const ArchiveArguments& arguments, const Invocation& invocation) {
    const auto path = givenPath(arguments.path, invocation);
    if (!path) {
        return path.error();
    }
    const Desk desk = deskOf(invocation, "archive");
    if (const auto refusal = archiveRefusal(*path, desk)) {
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
        return ExitCode::interrupted;
    }
    if (arguments.isOnlyEstimated) {
        return tell(*estimate, *path, invocation);
    }
    if (const auto no =
            arguments.isConfirmed ? std::nullopt : declinedArchive(*estimate, *path, invocation)) {
        return *no;
    }
    const auto archived = watchedArchive(*path, *estimate, desk, invocation);
    return archived ? tell(*archived, invocation) : tell(archived.error());
}

} // namespace

void addArchiveCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(app, "archivar", "archive",
                                   "cambia algo que apenas usas por un zip comprobado, tras preguntarte",
                                   "replace something you rarely use by a verified zip, after asking you");
    const auto arguments = std::make_shared<ArchiveArguments>();
    command
        ->add_option(Words{"ruta", "path"}.in(), wordInto(arguments->path),
                     Words{"lo que se archiva", "what to archive"}.in())
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
