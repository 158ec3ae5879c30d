#pragma once

#include "LumoCore/Scanning/FolderContents.h"
#include "LumoCore/Scanning/FolderLocation.h"
#include "TarvoCLI/Console.h"

#include <string>

namespace tarvo {

/// What is inside a folder. In JSON what the folder command prints.
struct FolderReport {
    lumo::FolderContents::Listing listing;
    lumo::FileTree::Breakdown breakdown;
    lumo::FolderLocation location = lumo::FolderLocation::other;
    bool canOpen = false;

    static constexpr auto fields = std::tuple{
        lumo::field("listing", &FolderReport::listing), lumo::field("breakdown", &FolderReport::breakdown),
        lumo::field("location", &FolderReport::location), lumo::field("canOpen", &FolderReport::canOpen)};
};

/// The same for a person to read: what the path takes, where it lies, what it holds, and which kinds of
/// files.
std::string folderText(const std::string& path, const FolderReport& report, const Invocation& invocation);

} // namespace tarvo
