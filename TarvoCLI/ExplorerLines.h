#pragma once

#include "LumoCore/Rules/Rule.h"
#include "TarvoCLI/Screen.h"
#include "TarvoModel/Exploring/Explorer.h"
#include "TarvoModel/Exploring/SettingAside.h"
#include "TarvoModel/Showing/ExplanationTexts.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What the explorer shows in a terminal, line by line. Nothing here draws or reads anything.
namespace tarvo {

/// All that a picture of the explorer needs besides the explorer.
struct ExplorerView {
    std::size_t columns = 80;
    std::size_t rows = 24;
    std::size_t firstRow = 0; ///< Of the explorer's rows, the first that is shown.
    std::string home;         ///< To write paths from "~".
    /// What is certain of an entry's safety; absent for what is not.
    std::function<std::optional<lumo::Safety>(const lumo::NamedEntry&)> safetyOf;
    std::optional<std::string> doing; ///< What goes on, while something does.
    std::int64_t unreadableCount = 0;
    std::optional<std::string> typedFilter; ///< While it is being typed.
    std::string message;                    ///< What happened last.
    bool isProblem = false;
};

/// How many rows of entries fit on the screen.
std::size_t visibleRows(const ExplorerView& view);

/// The first row to show so that the cursor is seen, as near as can be to where it was.
std::size_t scrolledTo(std::size_t cursor, std::size_t firstRow, std::size_t visible);

std::vector<ScreenLine> explorerLines(const Explorer& explorer, const ExplorerView& view);

/// The keys and what they do.
std::vector<ScreenLine> explorerHelp();

/// The question before anything is set aside; it names and weighs what goes and says why the rest stays. At
/// most that many lines.
std::vector<ScreenLine> asideQuestion(const AsideOffer& offer, const ExplorerView& view, std::size_t most);

/// What is said behind that something was set aside: it still takes its space.
std::string emptyHint();

/// The question before an undo.
std::vector<ScreenLine> undoQuestion(const std::vector<lumo::TrashedItem>& items, const std::string& home,
                                     std::size_t most);

std::string goneText(const std::string& path);

/// What a thing is, in lines of at most that many columns.
std::vector<ScreenLine> whatItIsLines(const std::string& path, const std::string& home,
                                      const std::vector<ExplanationLine>& lines, std::size_t columns);

} // namespace tarvo
