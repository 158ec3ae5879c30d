#pragma once

#include "TarvoApp/App/AppServices.h"

#include <string>

namespace tarvo {

class Notifier;

/// Services of this machine together with those of the desktop that the user sits at: notifications, starting
/// at login, pictures and the clipboard. The notifier must outlive whatever uses them. Needs the application
/// object, and belongs to its thread.
AppServices desktopServices(const std::string& home, const RunMode& mode, Notifier& notifier);

} // namespace tarvo
