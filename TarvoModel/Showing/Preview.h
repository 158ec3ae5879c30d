#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Scanning/FileTree.h"

#include <cstdint>
#include <string>
#include <vector>

/// A look at what something on the disk holds, for whoever is about to decide over it and does not want to
/// open it in another program.
namespace tarvo {

struct Preview {
    enum class Kind { folder, text, file, other, missing };

    Kind kind = Kind::missing;
    std::string path; ///< Absolute. The only one that the thing has; empty for several.
    std::int64_t bytes = 0;
    std::string facts;  ///< What else is known of it, in one line: how many files, when one last changed.
    std::string text;   ///< The beginning of a text file, line by line as it may be shown.
    bool isCut = false; ///< There is more text, or more in the folder, than is here.
    std::vector<lumo::NamedSize>
        largest; ///< What the folder holds, largest first; names of the parts of several.

    friend bool operator==(const Preview&, const Preview&) = default;
};

/// So many items or files, in words: "1 file", "1,234 files".
std::string itemsText(std::int64_t count, lumo::Language language = lumo::currentLanguage());
std::string filesText(std::int64_t count, lumo::Language language = lumo::currentLanguage());

/// How much of a text and how many entries a preview has at most.
inline constexpr std::size_t previewTextBytes = std::size_t{64} * 1024;
inline constexpr std::size_t previewLines = 400;
inline constexpr std::size_t previewEntries = 200;

/// Measures what is at the paths and reads the beginning of a file. Links are not followed and nothing is
/// changed. Never fails: what is not there is missing, and a file that cannot be read has no text.
/// Incomplete after a stop.
Preview previewOf(const std::vector<std::string>& paths, const lumo::FileTree::Watch& watch = {},
                  lumo::Language language = lumo::currentLanguage());

/// The same of the made-up disk, of which nothing is read.
Preview demoPreview(const std::vector<std::string>& paths, lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
