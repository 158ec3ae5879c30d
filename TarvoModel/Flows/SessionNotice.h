#pragma once

#include "TarvoModel/Showing/Notification.h"

#include <string>

namespace tarvo {

/// Shows a notification on the desktop of this session, for a program that has no window and does not stay:
/// through the tool that comes with systemd. Where there is no session, no such tool or nobody who shows
/// notifications, nothing happens.
void postSessionNotice(const Notification& notification, const std::string& home);

} // namespace tarvo
