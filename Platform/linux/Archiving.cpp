#include "Platform/Archiving.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "Platform/Folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>

namespace lumo::platform {

namespace {

/// Runs the words in the folder, so that they end with this process: a tool that outlives it would go on
/// filling a file that nobody wants. The variables hold options that the tools would take from the user.
ToolRun runThere(const std::string& folder, const std::vector<std::string>& words, const std::string& home,
                 const std::stop_token& stop) {
    std::vector<std::string> all{"setpriv", "--pdeathsig", "KILL", "env"};
    for (const char* variable : {"ZIP", "ZIPOPT", "UNZIP", "UNZIPOPT"}) {
        all.insert(all.end(), {"-u", variable});
    }
    all.insert(all.end(), {"-C", folder});
    all.insert(all.end(), words.begin(), words.end());
    return runTool(all, home, stop);
}

/// The tool's list of endings, in which the case counts.
std::string endingList(const std::vector<std::string>& extensions) {
    std::string list;
    for (const std::string& extension : extensions) {
        std::string upper = extension;
        std::ranges::transform(upper, upper.begin(),
                               [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
        list += (list.empty() ? "." : ":.") + extension + ":." + upper;
    }
    return list;
}

} // namespace

ToolRun makeZip(const ZipOrder& order, const std::string& home, const std::stop_token& stop) {
    std::vector<std::string> words{"zip", "-r", "-y", "-q", "-MM", "-nw"};
    if (!order.storedEndings.empty()) {
        words.insert(words.end(), {"-n", endingList(order.storedEndings)});
    }
    // The point and slash keep a name from being an option or the standard input; the tool leaves them out.
    words.insert(words.end(), {order.archive, "./" + order.name});
    return runThere(order.folder, words, home, stop);
}

ToolRun testZip(const std::string& archive, const std::string& home, const std::stop_token& stop) {
    // The tool takes a path for a pattern; from within its folder there is nothing but the plain name.
    return runThere(std::string(parentOf(archive)), {"unzip", "-tqq", std::string(fileName(archive))}, home,
                    stop);
}

SystemResult<void> seal(const Place& file) {
    const Descriptor opened(
        openat(file.folder.number(), file.name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    constexpr mode_t ownersAlone = 0600;
    if (!opened.isOpen() || fchmod(opened.number(), ownersAlone) != 0 || fsync(opened.number()) != 0) {
        return failed(errno);
    }
    return {};
}

std::int64_t bytesWrittenIn(const std::string& folder) {
    std::int64_t bytes = 0;
    for (const std::string& name : namesIn(folder)) {
        struct stat status = {};
        if (lstat((folder + "/" + name).c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
            bytes = saturatedSum(bytes, status.st_size);
        }
    }
    return bytes;
}

} // namespace lumo::platform
