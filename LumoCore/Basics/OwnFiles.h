#pragma once

#include <string>

/// The paths of all files and folders in a home that are this application's own. What is stored in them is
/// written down in docs/formats.md.
namespace lumo::OwnFiles {

/// home + "/Library/Application Support/TarvoAI", and in it the cleanup log, the intents of moves under way,
/// where archives are being made, the lock, the snapshots, the root of the holding area, and the notes about
/// what is or was held.
std::string support(const std::string& home);
std::string historyLog(const std::string& home);
std::string intents(const std::string& home);
std::string archiving(const std::string& home);
std::string lock(const std::string& home);
std::string snapshots(const std::string& home);
std::string holding(const std::string& home);
std::string heldNotes(const std::string& home);

/// home + "/Library/Caches/TarvoAI", and in it the staging folder for what is being emptied, and the
/// explanations.
std::string caches(const std::string& home);
std::string staging(const std::string& home);
std::string explanations(const std::string& home);

/// home + "/.config/TarvoAI", and in it the preferences.
std::string settings(const std::string& home);
std::string preferences(const std::string& home);

} // namespace lumo::OwnFiles
