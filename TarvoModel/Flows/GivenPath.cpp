#include "TarvoModel/Flows/GivenPath.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"

namespace tarvo {

namespace platform = lumo::platform;

std::string pathMeant(std::string_view word, const std::string& home, LastLink last,
                      const std::string& from) {
    if (word.empty()) {
        return {};
    }
    std::string path(word);
    if (word == "~" || word.starts_with("~/")) {
        path = home + path.substr(1);
    } else if (!word.starts_with('/') && !from.empty()) {
        path = lumo::joined(from, word);
    }
    const bool follows = last == LastLink::followed || word.ends_with('/');
    const auto real =
        platform::resolvedPath(path, follows ? platform::FinalLink::followed : platform::FinalLink::kept);
    const auto realHome = platform::resolvedPath(home, platform::FinalLink::followed);
    if (!real || !realHome) {
        return path;
    }
    return lumo::isInside(*real, *realHome) ? home + real->substr(realHome->size()) : *real;
}

std::vector<std::string> pathsMeant(const std::vector<std::string>& words, const std::string& home) {
    std::vector<std::string> paths;
    for (const std::string& word : words) {
        const std::string kept = pathMeant(word, home);
        const std::string followed = pathMeant(word, home, LastLink::followed);
        paths.push_back(kept);
        if (followed != kept) {
            paths.push_back(followed);
        }
    }
    return paths;
}

lumo::Result<std::string> givenHome(const std::optional<std::string>& named) {
    using lumo::Words;
    // An empty name is most often a variable that was never set: never a reason to take another folder.
    const std::string home = named ? *named : platform::environmentVariable("HOME").value_or("");
    if (home.empty()) {
        return lumo::failure(Words{"no sé cuál es tu carpeta personal: indícala con --home CARPETA",
                                   "I do not know your home folder: name it with --home DIR"}
                                 .in());
    }
    const auto absolute = platform::absolutePath(home);
    if (!absolute || !platform::isFolderThroughLinks(*absolute)) {
        return lumo::failure(Words{"no existe la carpeta {}: indica otra con --home CARPETA",
                                   "there is no folder {}: name another with --home DIR"}
                                 .with(lumo::printable(home)));
    }
    if (*absolute == "/") {
        return lumo::failure(
            Words{"el disco entero no es una carpeta personal: indica una con --home CARPETA",
                  "the whole disk is no home folder: name one with --home DIR"}
                .in());
    }
    return *absolute;
}

} // namespace tarvo
