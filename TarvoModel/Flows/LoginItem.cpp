#include "TarvoModel/Flows/LoginItem.h"

#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/StateFile.h"
#include "TarvoModel/Flows/OwnEntry.h"

#include <cstddef>
#include <optional>

namespace tarvo::LoginItem {

using lumo::Language;
namespace platform = lumo::platform;

namespace {

constexpr std::string_view groupHeader = "[Desktop Entry]";

std::string folderOf(const std::string& home, const std::string& configFolder) {
    return (configFolder.starts_with('/') ? configFolder : home + "/.config") + "/autostart";
}

/// The program as the one word of an "Exec" line. Two rules stack: the quoted word escapes what a shell
/// would heed, and the line, being a text like any other of the file, escapes backslashes once more.
std::string quoted(std::string_view program) {
    std::string word;
    for (const char character : program) {
        switch (character) {
        case '\\':
            word += R"(\\\\)";
            break;
        case '"':
        case '`':
        case '$':
            word += R"(\\)";
            word += character;
            break;
        case '%': // A field code would begin here.
            word += "%%";
            break;
        case '\n':
            word += R"(\n)";
            break;
        case '\r':
            word += R"(\r)";
            break;
        case '\t':
            word += R"(\t)";
            break;
        default:
            word += character;
        }
    }
    return '"' + word + '"';
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The key's value in the entry's own group; the groups of its actions have the same keys.
std::optional<std::string_view> valueOf(std::string_view key, std::string_view text) {
    bool isInGroup = false;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        const std::size_t equals = line.find('=');
        if (line.starts_with('[')) {
            isInGroup = line == groupHeader;
        } else if (isInGroup && equals != std::string_view::npos && trimmed(line.substr(0, equals)) == key) {
            return trimmed(line.substr(equals + 1));
        }
    }
    return std::nullopt;
}

} // namespace

std::string entryPath(const std::string& home, const std::string& configFolder) {
    return folderOf(home, configFolder) + "/tarvo-ai.desktop";
}

std::string entryText(std::string_view program) {
    return std::string(groupHeader) +
           "\n"
           "Type=Application\n"
           "Name=Tarvo AI\n"
           "Comment=Shows what fills your disk and frees what recreates itself\n"
           "Comment[es]=Muestra qué ocupa tu disco y libera lo que se regenera solo\n"
           "Icon=tarvo-ai\n"
           "Exec=" +
           quoted(program) +
           " --oculta\n"
           "Terminal=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

bool isOn(const std::string& home, const std::string& configFolder) {
    constexpr std::size_t mostBytes = std::size_t{64} * 1024;
    const auto text = platform::readWhole(entryPath(home, configFolder), mostBytes);
    return text && valueOf("Exec", *text) && valueOf("Hidden", *text) != "true" &&
           valueOf("X-GNOME-Autostart-enabled", *text) != "false";
}

lumo::Result<void> set(const std::string& home, const std::string& program, bool on,
                       const std::string& configFolder, Language language) {
    const std::string path = entryPath(home, configFolder);
    if (const auto done = on ? OwnEntry::write(path, entryText(program)) : OwnEntry::remove(path); !done) {
        return lumo::failure(entryErrorText(lumo::reasonText(done.error(), language), language));
    }
    return {};
}

// Neither of the texts below is true of an entry in a folder: no application need be installed for it, and
// no page of system settings forbids it. What can go wrong is a write, so the reason for that is what helps.
std::string entryErrorText(std::string_view reason, Language language) {
    return lumo::Words{"No se pudo escribir la entrada de inicio automático: ",
                       "Couldn't write the autostart entry: "}
               .in(language) +
           std::string(reason);
}

std::string loginItemErrorText(bool isInstalled, Language language) {
    if (!isInstalled) {
        return lumo::Words{"Solo funciona con la app instalada en Aplicaciones.",
                           "Only works with the app installed in Applications."}
            .in(language);
    }
    return lumo::Words{
        "macOS no lo ha permitido: revísalo en Ajustes del Sistema → General → Ítems de inicio.",
        "macOS didn't allow it: check System Settings → General → Login Items."}
        .in(language);
}

} // namespace tarvo::LoginItem
