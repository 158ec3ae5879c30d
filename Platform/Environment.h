#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What the process was started with, and where it runs.
namespace lumo::platform {

/// The arguments, the program's name first.
std::vector<std::string> processArguments();

std::optional<std::string> environmentVariable(const std::string& name);

/// The home folder that the user's account names, whatever the environment says; absent where it names none.
std::optional<std::string> accountHome();

/// All variables as "NAME=value", in the order of the environment.
std::vector<std::string> environmentVariables();

/// The user's languages, most wanted first ("es-MX", "en"); empty when the system names none.
std::vector<std::string> preferredLanguages();

/// Folders in which the system keeps desktop entries of installed applications for all users (each holds an
/// "applications" folder), most important first; empty where the system has no such thing.
std::vector<std::string> systemDataFolders();

/// Folders of a home, by their paths from there, that hold data of many programs side by side and belong to
/// none; those of macOS are known to whoever looks into them, and are not among these.
std::span<const std::string_view> sharedDataFolders();

/// The folder that holds the running program; empty when unknown.
std::string programFolder();

/// The path of this application's command where applications are single programs in a folder of their own
/// choice; empty where they are bundles, and when there is none beside the running program.
std::string commandBesideProgram();

/// The number under which the system knows this process.
int processNumber();

/// True on a system whose applications are bundles, one folder each.
bool bundlesApplications();

/// True when windows can be shown.
bool hasScreen();

/// Makes all threads allocate from one heap. The C library would give each thread one of its own, which costs
/// several times the memory that a scan needs and gains it nothing. To be called before threads are started.
void shareOneHeap();

/// Replaces this process by the program. Returns only when that fails.
void becomeProgram(const std::string& path, const std::vector<std::string>& arguments);

} // namespace lumo::platform
