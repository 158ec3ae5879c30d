#pragma once

#include <string>

/// Where the user's desktop is.
namespace tarvo {

/// home + "/Desktop". Where that is missing and the user's folders have names in another language, the one
/// that the desktop's own settings name (XDG user directories), whether it is there or not.
std::string desktopFolder(const std::string& home);

} // namespace tarvo
