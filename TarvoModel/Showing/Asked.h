#pragma once

#include "LumoCore/Cleanup/Archiver.h"
#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

/// What a window asks before something is done, one thing at a time, and how it puts it.
namespace tarvo {

namespace asked {

struct Nothing {
    friend bool operator==(const Nothing&, const Nothing&) = default;
};

/// A file that brought what is asked.
struct FromFile {
    std::string name;                      ///< For a person.
    std::vector<std::string> deleted;      ///< All paths that are deleted at once, for a person.
    std::vector<std::string> leftOut = {}; ///< What of a plan is not carried out, and why.
    /// The plan in it; absent for a report.
    std::optional<std::vector<lumo::PlanEntry>> plan = {};
    std::vector<lumo::CleanupAction> refused = {}; ///< Of it: told as failed, but never done.
};

/// Whether these are cleaned.
struct Clean {
    std::vector<lumo::CleanupAction> actions;
    lumo::ResolvedPaths shown; ///< What their paths meant when they were shown.
    bool isFromPhotos = false; ///< It is asked in the window where photos are reviewed.
    std::optional<FromFile> file = {};
    std::vector<std::string> chosen = {}; ///< The absolute paths that somebody pointed at, where that is all.
    std::int64_t keptBytes = 0; ///< Of those: what has another name as well, and stays on the disk by that.
};

/// Whether what is set aside goes for good.
struct Empty {
    std::vector<lumo::Holding::Batch> batches;
    bool isFromSettings = false;
};

/// Whether the item is replaced by its archive.
struct Archive {
    std::string path;
    std::string archivePath; ///< Where the archive would be.
    lumo::Archiver::Estimate estimate;
};

/// Nothing can be agreed to: it is only told, and can be closed.
struct Told {
    std::string title;
    std::string message; ///< May have several lines.
};

} // namespace asked

using Asked = std::variant<asked::Nothing, asked::Clean, asked::Empty, asked::Archive, asked::Told>;

/// One thing that goes.
struct GoingItem {
    std::string title;
    std::string bytes;      ///< For a person.
    std::string place = {}; ///< Its folder, for a person; empty where its name says enough.

    friend bool operator==(const GoingItem&, const GoingItem&) = default;
};

/// All that the same becomes of.
struct GoingGroup {
    std::string title;
    std::string bytes;            ///< For a person: of all its items.
    std::vector<GoingItem> items; ///< The largest first.

    friend bool operator==(const GoingGroup&, const GoingGroup&) = default;
};

/// The words of a question.
struct QuestionTexts {
    std::string title;
    std::string message;                 ///< May have several lines.
    std::vector<GoingGroup> groups = {}; ///< What goes, the user's own first.
    std::string acceptText = {};         ///< Empty where nothing can be agreed to.
    bool isDangerous = false;            ///< What is agreed to cannot be undone.
};

/// `home` is what is written as "~".
QuestionTexts textsOf(const Asked& asked, const std::string& home,
                      lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
