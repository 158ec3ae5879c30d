#pragma once

#include "TarvoApp/App/Activity.h"
#include "TarvoApp/App/AppServices.h"
#include "TarvoApp/App/Background.h"
#include "TarvoApp/App/QuestionDesk.h"
#include "TarvoApp/App/Settings.h"

namespace tarvo {

/// What all parts of the application stand on; outlives them.
struct Ground {
    const AppServices& services;
    Settings& settings;
    Background& background;
    Activity& activity;
    QuestionDesk& question;

    [[nodiscard]] bool isDemo() const { return services.mode.isDemo; }
    /// The home that is shown: the made-up computer's where there is one.
    [[nodiscard]] std::string shownHome() const;
    /// Where the disk is made up nothing is done: true then, and the user is told.
    [[nodiscard]] bool isOnlyDemo() const;
};

} // namespace tarvo
