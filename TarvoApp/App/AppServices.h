#pragma once

#include "LumoAI/LanguageModel.h"
#include "LumoCore/Explaining/FolderEvidence.h"
#include "LumoCore/Scanning/NamedTree.h"
#include "TarvoApp/App/MapModel.h"
#include "TarvoApp/App/PreviewDesk.h"
#include "TarvoModel/Flows/Cleaning.h"
#include "TarvoModel/Flows/Finding.h"
#include "TarvoModel/Flows/Preferences.h"
#include "TarvoModel/Showing/ExplanationTexts.h"
#include "TarvoModel/Showing/Notification.h"
#include "TarvoModel/Showing/RunMode.h"
#include "TarvoModel/Showing/ScanCycle.h"
#include "TarvoModel/Showing/ShareStats.h"

#include <QImage>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace tarvo {

/// All through which the application's model reaches the world, so that a month of use can be tried in a
/// second. What is called on background threads says so.
struct AppServices {
    Desk desk; ///< Of the user's home. Its clock is asked on all threads.
    RunMode mode;

    /// Seconds on a clock that is never set and goes on while the machine sleeps.
    std::function<double()> steadySeconds;
    /// In the background: the capacities of the volume of the home.
    std::function<lumo::VolumeInfo(const std::string& home)> volumeInfo;
    /// In the background: what carries a cleanup out.
    CarryOut carryOut;
    /// In the background, each model for one task: the one that the preferences choose.
    std::function<std::unique_ptr<lumo::LanguageModel>(const Preferences&)> model;
    /// In the background: all volumes that are mounted.
    std::function<std::vector<Volume>()> mountedVolumes;
    MapModel::Folders folders;
    PreviewDesk::Make preview;
    /// In the background: what a closer look at that kind finds; incomplete after a stop.
    std::function<CloserLook(lumo::InventoryKind kind, const std::stop_token& stop)> look;
    /// In the background: what an explanation of the folder rests on.
    std::function<lumo::FolderEvidence(const std::string& path, const std::stop_token& end)> evidence;

    /// In the background: lists and measures the whole home in a tree of it; how many entries could not be
    /// read.
    std::function<std::int64_t(lumo::NamedTree& tree, lumo::platform::WalkProgress& progress,
                               const std::stop_token& stop)>
        measure;
    /// In the background: what stands at the path, line by line.
    std::function<std::vector<ExplanationLine>(const std::string& path, const std::stop_token& stop)>
        whatItIs;

    /// Shows it outside the window. `whenTaken` is called once the desktop has it, and never when nobody took
    /// it.
    std::function<void(const Notification&, const std::function<void()>& whenTaken)> notify;
    /// In the background.
    std::function<bool()> startsAtLogin;
    /// In the background: why that could not be changed; absent when it was.
    std::function<std::optional<std::string>(bool on)> setStartAtLogin;
    /// In the background.
    std::function<QImage(const ShareStats&, CardLook)> drawCard;
    /// In the background: a failure says to the user why the card could not be saved.
    std::function<lumo::Result<void>(const QImage&)> saveCard;
    std::function<void(const QImage&)> copyCard;

    /// The home that is shown: the made-up computer's where there is one.
    [[nodiscard]] std::string shownHome() const;

    /// Those of this machine for the home, without those that need a desktop: there nothing is notified,
    /// drawn or copied, and nothing starts at login.
    static AppServices ofThisMachine(const std::string& home, const RunMode& mode);
};

} // namespace tarvo
