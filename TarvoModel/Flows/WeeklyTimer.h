#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/Result.h"

#include <chrono>
#include <stop_token>
#include <string>
#include <string_view>

/// The alarm clock of the weekly cleanup where no window is open: a timer of the session's systemd that
/// starts `tarvo weekly run` every day. Whether anything is done then is that run's business: the preference
/// and the date of the last cleanup decide, whoever made it.
namespace tarvo::WeeklyTimer {

/// How systemd is asked.
struct Asking {
    std::stop_token stop = {};
    std::chrono::milliseconds patience = std::chrono::seconds(10); ///< For each question.
};

enum class State {
    none,   ///< There is none, or the user has switched it off by other means.
    set,    ///< It will start the command.
    broken, ///< What it would start is no longer there.
};

/// Where the two units stand: in the folder of settings that the environment names for this home.
std::string servicePath(const std::string& home);
std::string timerPath(const std::string& home);

/// What is written into them. The program's path is absolute; its texts speak the language.
std::string serviceText(std::string_view program, lumo::Language language = lumo::currentLanguage());
std::string timerText(lumo::Language language = lumo::currentLanguage());

/// By what is on the disk; asks nobody.
State state(const std::string& home);

/// Writes the units and has systemd wait for the timer. A failure says in the interface language why there is
/// no timer, and leaves everything as it was: there is no systemd, it cannot be reached or does not answer,
/// it reads its units elsewhere (the home is not that of this session), or it does not take the program.
lumo::Result<void> set(const std::string& home, const std::string& program, const Asking& asking = {});

/// Takes the timer and the units away, also where systemd cannot be asked: it finds nothing the next time it
/// starts. Nothing to take away is a success.
lumo::Result<void> remove(const std::string& home, const Asking& asking = {});

} // namespace tarvo::WeeklyTimer
