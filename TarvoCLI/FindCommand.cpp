#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/AskedCleanup.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/FindText.h"
#include "TarvoCLI/PlanArguments.h"
#include "TarvoCLI/Question.h"
#include "TarvoCLI/Watching.h"
#include "TarvoModel/Flows/Finding.h"

#include <atomic>
#include <expected>
#include <iterator>
#include <memory>

namespace tarvo {

using lumo::Inventory;
using lumo::InventoryKind;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

struct FindArguments {
    std::vector<std::string> words; ///< Kinds and folders.
    std::optional<std::int64_t> minimumBytes;
    std::optional<std::int64_t> olderThanDays;
    std::vector<std::string> items;
    bool picks = false;
    bool showsIDs = false;
    bool isConfirmed = false;
};

std::string kindNames() {
    std::string names;
    for (std::size_t index = 0; index < lumo::inventoryKindCount; ++index) {
        names += (index == 0 ? "" : ", ") + lumo::commandNameOf(static_cast<InventoryKind>(index));
    }
    return names;
}

/// A word is a kind by its name, otherwise a folder.
std::expected<FindRequest, ExitCode> requestFrom(const FindArguments& arguments, const Desk& desk) {
    FindRequest request{.minimumBytes = arguments.minimumBytes, .olderThanDays = arguments.olderThanDays};
    for (const std::string& word : arguments.words) {
        if (const auto kind = lumo::inventoryKindNamed(word)) {
            request.kinds.push_back(*kind);
        } else {
            request.folders.push_back(word);
        }
    }
    if (const auto missing = missingFolders(request, desk); !missing.empty()) {
        return std::unexpected(
            complain(Words{"«{}» no es una carpeta ni nada que sepa buscar; puedo buscar: {}",
                           "“{}” is neither a folder nor anything that can be looked for; there are: {}"}
                         .with(lumo::printable(missing.front()), kindNames()),
                     ExitCode::usage));
    }
    return request;
}

/// What is found; absent when the user interrupted it.
std::optional<std::vector<Inventory>> watchedFind(const FindRequest& request, const Desk& desk,
                                                  const Invocation& invocation) {
    std::vector<Inventory> inventories;
    std::atomic<InventoryKind> kind = kindsOf(request).front();
    const bool isWhole = watchWalk(
        invocation,
        [&](const lumo::FileTree::Watch& watch) {
            inventories = found(request, desk,
                                {.onKind = [&](InventoryKind begun) { kind = begun; },
                                 .progress = watch.progress,
                                 .stop = watch.stop});
        },
        [&] { return Words{"Buscando: {}", "Looking for: {}"}.with(lumo::titleOf(kind)); });
    return isWhole ? std::optional(std::move(inventories)) : std::nullopt;
}

/// Asks which items are meant, by number; the ids. Standard output belongs to the document.
std::expected<std::vector<std::string>, ExitCode> asked(const std::vector<Inventory>& inventories,
                                                        const Invocation& invocation) {
    platform::writeAll(invocation.isJson ? platform::Stream::error : platform::Stream::output,
                       findText(inventories, ItemMarks::numbers, invocation));
    const std::vector<lumo::DetailItem> items = pickableItems(inventories);
    std::vector<std::string> ids;
    if (items.empty()) {
        return ids;
    }
    platform::noteInterrupts();
    platform::writeAll(platform::Stream::error, Words{"¿Cuáles? (por ejemplo 1 3-5; Intro para ninguno) ",
                                                      "Which ones? (for example 1 3-5; Enter for none) "}
                                                    .in());
    const std::optional<std::string> answer = platform::readLine();
    if (platform::wasInterrupted()) {
        platform::writeAll(platform::Stream::error, "\n");
        return std::unexpected(ExitCode::interrupted);
    }
    const auto numbers = pickedNumbers(answer.value_or(""), items.size());
    if (!numbers) {
        return std::unexpected(complain(Words{"no son números de la lista: no se ha tocado nada",
                                              "those are no numbers of the list: nothing was touched"}
                                            .in(),
                                        ExitCode::usage));
    }
    std::ranges::transform(*numbers, std::back_inserter(ids),
                           [&](std::size_t number) { return items[number - 1].id; });
    if (ids.empty()) {
        return std::unexpected(
            complain(Words{"no se ha tocado nada", "nothing was touched"}.in(), ExitCode::failed));
    }
    return ids;
}

ExitCode runFind(const FindArguments& arguments, const Invocation& invocation) {
    const bool cleans = arguments.picks || !arguments.items.empty();
    if (const auto impossible = cannotAsk(!cleans || (arguments.isConfirmed && !arguments.picks))) {
        return *impossible;
    }
    if (const auto refused = cleans ? refuseForeign(invocation) : std::nullopt) {
        return *refused;
    }
    const Desk desk = deskOf(invocation, "find");
    if (const auto refused = cleans ? refuseUntrustedPreferences(desk) : std::nullopt) {
        return *refused;
    }
    PlanRequest chosen{.items = arguments.items};
    if (arguments.items.empty() || arguments.picks) {
        const auto request = requestFrom(arguments, desk);
        if (!request) {
            return request.error();
        }
        const auto inventories = watchedFind(*request, desk, invocation);
        if (!inventories) {
            return ExitCode::interrupted;
        }
        if (!arguments.picks) {
            return print(invocation.isJson
                             ? lumo::dumpJson(lumo::encode(*inventories), lumo::JsonLayout::indented) + "\n"
                             : findText(*inventories, arguments.showsIDs ? ItemMarks::ids : ItemMarks::none,
                                        invocation));
        }
        auto ids = asked(*inventories, invocation);
        if (!ids) {
            return ids.error();
        }
        std::ranges::move(*ids, std::back_inserter(chosen.items));
        if (chosen.items.empty()) {
            return print(invocation.isJson ? "[]\n" : "");
        }
    }
    return askedCleanup(chosen, {.isConfirmed = arguments.isConfirmed}, desk, invocation);
}

void addOptions(CLI::App& command, FindArguments& arguments) {
    command
        .add_option(Words{"clase", "kind"}.in(), wordsInto(arguments.words),
                    Words{"qué buscar y en qué carpetas; qué hay: {}",
                          "what to look for, and in which folders; "
                          "there are: {}"}
                        .with(kindNames()))
        ->type_name("")
        // The library takes one argument fewer than the largest number for no limit.
        ->expected(1, CLI::detail::expected_max_vector_size)
        ->allow_extra_args()
        ->take_all();
    command
        .add_option(
            "--min", inDecimal(arguments.minimumBytes),
            Words{"solo lo que ocupe al menos tantos bytes", "only what takes at least that many bytes"}.in())
        ->check(isDecimal(18, "«{}» no es un número de bytes", "“{}” is no number of bytes"))
        ->type_name("BYTES");
    addOlderOption(command, arguments.olderThanDays,
                   {"solo lo que lleve tantos días sin usarse", "only what was not used for that many days"});
    command.add_flag("--pick", arguments.picks,
                     Words{"preguntar cuáles apartar, por número", "ask which to set aside, by number"}.in());
    addItemOption(command, arguments.items);
    command.add_flag("--ids", arguments.showsIDs,
                     Words{"mostrar los ID que toma --item", "show the IDs that --item takes"}.in());
    command.add_flag("--yes", arguments.isConfirmed,
                     Words{"confirmar sin preguntar", "confirm without asking"}.in());
}

} // namespace

void addFindCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(
        app, "buscar", "find", "lo que solo se ve de cerca: archivos grandes, duplicados, modelos, restos…",
        "what only a closer look finds: large files, duplicates, models, leftovers…");
    const auto arguments = std::make_shared<FindArguments>();
    addOptions(*command, *arguments);
    command->callback([arguments, &chosen] {
        chosen = [arguments](const Invocation& invocation) { return runFind(*arguments, invocation); };
    });
}

} // namespace tarvo
