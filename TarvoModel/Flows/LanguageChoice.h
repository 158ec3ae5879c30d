#pragma once

#include <string>

namespace tarvo {

/// Has this process speak the language that the user chose in the preferences of that home. To be called
/// before anything is said, since a process keeps its language.
void speakAsChosen(const std::string& home);

} // namespace tarvo
