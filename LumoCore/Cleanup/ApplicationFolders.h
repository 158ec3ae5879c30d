#pragma once

#include "LumoCore/Basics/System.h"
#include "Platform/Place.h"

#include <string>

/// Opening and making the folders of OwnFiles. The three that hold what was the user's must be real ones: a
/// link in their place counts as missing.
namespace lumo::ApplicationFolders {

/// Settings of Claude Desktop's, where that system has them, which this application rewrites, and the backup
/// that it makes first.
std::string claudeDesktopSettings(const std::string& home, System system = currentSystem());
std::string claudeDesktopBackup(const std::string& home);

/// The support folder, the holding root in it, and the staging folder for what is being emptied, opened.
platform::SystemResult<platform::BaseFolder> openSupport(const platform::BaseFolder& home);
platform::SystemResult<platform::BaseFolder> openHolding(const platform::BaseFolder& home);
platform::SystemResult<platform::BaseFolder> openStaging(const platform::BaseFolder& home);

/// The same, made where they are missing, for the user alone.
platform::SystemResult<platform::BaseFolder> makeSupport(const platform::BaseFolder& home);
platform::SystemResult<platform::BaseFolder> makeHolding(const platform::BaseFolder& home);
platform::SystemResult<platform::BaseFolder> makeStaging(const platform::BaseFolder& home);

/// Makes the folder in `parent` if it is missing, for the user alone, and opens it.
platform::SystemResult<platform::BaseFolder> makePrivateFolder(const platform::BaseFolder& parent,
                                                               const std::string& name);

} // namespace lumo::ApplicationFolders
