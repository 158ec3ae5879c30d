#include "TarvoCLI/GivenPath.h"

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/Text.h"
#include "Platform/Folder.h"

#include <fmt/format.h>

namespace tarvo {

std::expected<std::string, ExitCode> givenPath(const std::string& word) {
    // An empty word is most often a variable that was never set: never a reason to take another folder.
    if (!word.empty()) {
        const auto path = lumo::platform::absolutePath(word);
        if (path && lumo::platform::kindOf(*path)) {
            return *path;
        }
    }
    return std::unexpected(
        complain(fmt::format(fmt::runtime(lumo::text("no encuentro «{}»: comprueba la ruta y sus permisos",
                                                     "cannot find “{}”: check the path and its permissions")),
                             lumo::printable(word)),
                 ExitCode::usage));
}

} // namespace tarvo
