#pragma once

#include <chrono>
#include <stop_token>
#include <string>
#include <vector>

namespace lumo::platform {

/// How a run of another tool went.
struct ToolRun {
    int status = 0; ///< Exit status; 128 + signal when a signal ended it; 127 when it could not be started;
                    ///< 255 when the system gave the status to somebody else in this process.
    std::string output; ///< Standard output and error as they came: all of it, or the first 64 KiB and the
                        ///< last 1 MiB with a line "…" between. Why it could not be started, if it could not.
    bool wasEndedByUs = false; ///< The stop was requested and our signal went out before it ended by itself.
};

/// Runs a tool and waits for it. The first word is looked up in the home's ".local/bin" and ".bun/bin", the
/// two usual folders of packages and the inherited search path, in this order, which is also the tool's own;
/// an empty list, and a first word that begins with "-" or holds "=", count as not startable.
///
/// The home is the tool's, too, whatever this process was started with: HOME is set to it, and variables that
/// would lead the tool to another cache, store or service than the one that was shown are not passed on.
///
/// The tool is started in the home folder. It has an empty standard input and no terminal, so that it fails
/// where it would ask. Its output is read to the end, but no longer than two seconds beyond its own end: what
/// it leaves running in the background may go on, and is not waited for.
///
/// Besides its usual ones the tool has the given variables ("NAME=value").
///
/// A requested stop asks the tool and all that it started to end, and makes them after two seconds; what is
/// stopped before it began is not started and counts as ended by us. The tool has always ended when this
/// returns. Where the process ignores the ends of its children (SIGCHLD), it no longer does afterwards. May
/// be called from several threads.
ToolRun runTool(const std::vector<std::string>& arguments, const std::string& home, std::stop_token stop = {},
                const std::vector<std::string>& variables = {});

/// The same for a tool that is expected to answer soon: it is stopped when the time is over, and counts as
/// ended by us then.
ToolRun runToolInTime(const std::vector<std::string>& arguments, const std::string& home,
                      std::chrono::milliseconds patience, const std::stop_token& stop = {});

} // namespace lumo::platform
