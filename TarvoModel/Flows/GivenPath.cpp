#include "TarvoModel/Flows/GivenPath.h"

#include "LumoCore/Basics/Path.h"
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

} // namespace tarvo
