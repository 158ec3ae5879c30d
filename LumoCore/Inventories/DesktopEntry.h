#pragma once

#include "LumoCore/Basics/Language.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// An application as Linux desktops describe it (the desktop entries of freedesktop.org).
struct DesktopEntry {
    std::string id;   ///< The desktop file's id without ".desktop", such as "org.mozilla.firefox".
    std::string name; ///< In the interface language, where the file has it in that.
    std::string path; ///< Of the desktop file.
    std::string
        program; ///< File name of the program it starts; empty when that is a mere launcher or interpreter.
    /// Where that program really stands, links followed, when the folder is its own: not one that programs
    /// share. Empty when unknown, and as long as only the text of the entry was read.
    std::string programFolder = {};

    friend bool operator==(const DesktopEntry&, const DesktopEntry&) = default;
};

/// The entry in the text of a desktop file; absent for what is no application, or is not shown to the user.
std::optional<DesktopEntry> parseDesktopEntry(std::string_view text, const std::string& id,
                                              const std::string& path, Language language = currentLanguage());

/// The entries of the data folders, the most important folder first. An id in a later folder is hidden by the
/// same one in an earlier folder, as the desktops do.
std::vector<DesktopEntry> desktopEntriesIn(const std::vector<std::string>& dataFolders);

/// The data folders of the user and of the system.
std::vector<std::string> desktopDataFolders(const std::string& home);

} // namespace lumo
