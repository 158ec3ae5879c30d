#include "Fuzz/Check.h"
#include "LumoCore/Inventories/DesktopEntry.h"

// An entry has a name, and the file name of a program, never a path.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const lumo::Language language : {lumo::Language::es, lumo::Language::en}) {
        const auto entry = lumo::parseDesktopEntry(text(data, size), "id", "/path", language);
        check(!entry || (!entry->name.empty() && entry->program.find('/') == std::string::npos));
    }
    return 0;
}
