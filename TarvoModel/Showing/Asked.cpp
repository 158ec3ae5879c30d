#include "TarvoModel/Showing/Asked.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Inventories/UserFiles.h"
#include "TarvoModel/Showing/ArchiveTexts.h"

#include <utility>

namespace tarvo {

using lumo::Language;
using lumo::Words;
using lumo::ByteFormat::string;

namespace {

using Actions = std::vector<lumo::CleanupAction>;

/// Which of the files of that name it is, and by what other names; empty for what has a name of its own.
std::string placeOf(const lumo::CleanupAction& action, const std::string& home, Language language) {
    const auto* const moved = std::get_if<lumo::method::TrashItems>(&action.method);
    std::string place = moved == nullptr ? std::string() : folderOfNamesake(action.title, moved->paths, home);
    if (!place.empty() && moved->paths.size() > 1) {
        place += "; " + lumo::otherNamesText(moved->paths, home, language);
    }
    return lumo::printable(place);
}

GoingGroup groupOf(const Words& title, Actions actions, const std::string& home, Language language) {
    lumo::sortLargestFirst(actions, &lumo::CleanupAction::estimatedBytes);
    GoingGroup group{.title = title.in(language), .bytes = string(bytesOf(actions), language), .items = {}};
    for (const lumo::CleanupAction& action : actions) {
        group.items.push_back({.title = action.title,
                               .bytes = string(action.estimatedBytes, language),
                               .place = placeOf(action, home, language)});
    }
    return group;
}

/// What goes: first what is missed most if it was ticked by mistake.
std::vector<GoingGroup> groupsOf(const Actions& actions, const std::string& home, Language language) {
    const Going going = goingOf(actions);
    std::vector<GoingGroup> groups;
    for (const auto& [title, part] :
         {std::pair(Words{"Tuyo, se aparta", "Yours, set aside"}, &going.own),
          std::pair(Words{"No se puede deshacer", "Can't be undone"}, &going.forGood),
          std::pair(Words{"Se regenera solo", "Recreates itself"}, &going.recreated)}) {
        if (!part->empty()) {
            groups.push_back(groupOf(title, *part, home, language));
        }
    }
    return groups;
}

/// The lines below a heading of their own; empty for none.
std::string listed(const Words& heading, const std::vector<std::string>& lines, Language language) {
    std::string text;
    for (const std::string& line : lines) {
        text += "\n" + lumo::printable(line);
    }
    return text.empty() ? text : "\n\n" + heading.in(language) + text;
}

/// Whoever needs the space learns here that this brings none.
std::string aboutKept(const asked::Clean& clean, Language language) {
    return clean.keptBytes == 0
               ? std::string()
               : "\n" +
                     Words{"De eso, {} siguen en el disco con otro nombre: quitarlo no los libera.",
                           "{} of that stays on the disk under another name: removing it frees none of it."}
                         .in(language, string(clean.keptBytes, language));
}

/// What a file brought is named in full.
std::string aboutFile(const asked::FromFile& file, Language language) {
    const Words words = file.plan
                            ? Words{"Es lo que pide el plan guardado {}, con las cantidades de ahora.",
                                    "This is what the saved plan {} asks for, with the amounts of now."}
                            : Words{"Las cantidades son las del informe guardado {}: ahora pueden ser otras.",
                                    "The amounts are those of the saved report {}: by now they may differ."};
    return "\n\n" + words.in(language, lumo::printable(file.name)) +
           listed({"Se borra ya:", "Deleted right away:"}, file.deleted, language) +
           listed({"Se queda como está:", "Stays as it is:"}, file.leftOut, language);
}

struct Texts {
    const std::string& home;
    Language language;

    QuestionTexts operator()(const asked::Nothing&) const { return {}; }

    QuestionTexts operator()(const asked::Clean& clean) const {
        const CleanupShares shares = sharesOf(clean.actions);
        const std::string does = cleanTitle(shares, language);
        return {.title = Words{"¿{}?", "{}?"}.in(language, does),
                .message = confirmationMessage(clean.actions, language) + aboutKept(clean, language) +
                           (clean.file ? aboutFile(*clean.file, language) : std::string()),
                .groups = groupsOf(clean.actions, home, language),
                .acceptText = does};
    }

    QuestionTexts operator()(const asked::Empty& empty) const {
        return {.title = empty.isFromSettings ? emptyQuestion(language)
                                              : emptyBannerQuestion(totalsOf(empty.batches), language),
                .message = emptyExplanation(language),
                .acceptText = Words{"Borrar definitivamente", "Delete Permanently"}.in(language),
                .isDangerous = true};
    }

    QuestionTexts operator()(const asked::Archive& archive) const {
        const std::string name(lumo::fileName(archive.path));
        return {.title = archiveQuestion(name, language),
                .message = lumo::printable(estimateText(name, archive.estimate, language)) + "\n\n" +
                           lumo::printable(archiveExplanation(lumo::fileName(archive.archivePath), language)),
                .acceptText = Words{"Archivar", "Archive"}.in(language)};
    }

    QuestionTexts operator()(const asked::Told& told) const {
        return {.title = told.title, .message = told.message};
    }
};

} // namespace

QuestionTexts textsOf(const Asked& asked, const std::string& home, Language language) {
    return std::visit(Texts{home, language}, asked);
}

} // namespace tarvo
