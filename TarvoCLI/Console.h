#pragma once

#include "LumoCore/Inventories/InstalledApp.h"

#include <memory>
#include <string>
#include <string_view>

namespace tarvo {

/// What the process answers with. Scripts rely on these numbers.
enum class ExitCode { done = 0, failed = 1, usage = 2, interrupted = 130 };

/// Options that every command has.
struct Invocation {
    std::string home; ///< Absolute, an existing folder.
    bool isJson = false;
    bool hasColor = false;
    bool showsProgress = false;
    /// Read once, whoever of the command asks.
    std::shared_ptr<const lumo::InstalledApps> installed = {};
};

enum class Tint { plain, strong, faint, safe, review, problem };

/// The text between the codes of a color, or as it is where there is no color.
std::string tinted(std::string_view text, Tint tint, const Invocation& invocation);

/// Writes a result to standard output; `failed` with a message when that is not possible.
ExitCode print(std::string_view text);

/// Says on standard error what is wrong and what to do about it, in one line.
ExitCode complain(std::string_view message, ExitCode code);

} // namespace tarvo
