#include "TarvoCLI/NamedPath.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Folder.h"
#include "TarvoModel/Flows/GivenPath.h"

namespace tarvo {

std::expected<std::string, ExitCode> givenPath(const std::string& word, const Invocation& invocation) {
    // An empty word is most often a variable that was never set: never a reason to take another folder.
    if (!word.empty()) {
        std::string path = pathMeant(word, invocation.home);
        if (lumo::platform::kindOf(path)) {
            return path;
        }
    }
    return std::unexpected(complain(lumo::Words{"no encuentro «{}»: comprueba la ruta y sus permisos",
                                                "cannot find “{}”: check the path and its permissions"}
                                        .with(lumo::printable(word)),
                                    ExitCode::usage));
}

} // namespace tarvo
