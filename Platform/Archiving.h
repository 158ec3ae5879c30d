#pragma once

#include "Platform/Place.h"
#include "Platform/ToolCommand.h"

#include <cstdint>
#include <stop_token>
#include <string>
#include <vector>

/// Making and testing zip archives with the system's tools.
namespace lumo::platform {

/// What an archive is made of and where it goes.
struct ZipOrder {
    std::string folder;  ///< The folder that holds the item.
    std::string name;    ///< The item in it; every name in the archive begins with it.
    std::string archive; ///< The file to make; the tool's own temporary ones stand beside it.
    std::vector<std::string> storedEndings; ///< Extensions in lower case of files that do not shrink.
};

/// Makes the archive. Links are kept as links and empty folders as folders; names are the bytes of the disk.
/// Status 0 means that the tool met no difficulty, not that everything is in it: it passes over what no zip
/// can hold. The user's own settings of the tool are not heeded, since they can make it remove what it
/// archived. The tool ends when this process does.
ToolRun makeZip(const ZipOrder& order, const std::string& home, const std::stop_token& stop);

/// Unpacks everything in memory; status 0 when every entry has the checksum that the archive keeps for it.
ToolRun testZip(const std::string& archive, const std::string& home, const std::stop_token& stop);

/// Makes the file the user's alone, whatever the tool gave it, and its content durable.
SystemResult<void> seal(const Place& file);

/// Lengths of the files directly in the folder: how much a tool has written so far.
std::int64_t bytesWrittenIn(const std::string& folder);

} // namespace lumo::platform
