#include "HomeRooms.h"
#include "NumberOf.h"
#include "StopProgram.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvo::bench {

namespace {

constexpr const char* usage = "usage: make-home DIR [--files N] [--seed S]";
constexpr const char* markerName = ".make-home-complete";
// Below this the shares are too small for every kind of thing to appear.
constexpr std::int64_t fewestFiles = 2000;
// Raised with every change to what is generated, so that an older home is not taken for a current one.
constexpr int layout = 1;

struct Arguments {
    std::string folder;
    std::int64_t files = 300'000;
    std::uint64_t seed = 1;
};

Arguments argumentsOf(int count, char** values) {
    Arguments arguments;
    for (int position = 1; position < count; ++position) {
        const std::string_view value = values[position];
        const bool hasNext = position + 1 < count;
        if (value == "--files" && hasNext) {
            arguments.files = numberOf<std::int64_t>(values[++position], usage, 0);
        } else if (value == "--seed" && hasNext) {
            arguments.seed = numberOf<std::uint64_t>(values[++position], usage, 0);
        } else if (!value.starts_with("--") && arguments.folder.empty()) {
            arguments.folder = value;
        } else {
            stopProgram(usage);
        }
    }
    if (arguments.folder.empty()) {
        stopProgram(usage);
    }
    if (arguments.files < fewestFiles) {
        stopProgram(fmt::format("--files takes {} or more", fewestFiles));
    }
    return arguments;
}

std::string markerOf(const Arguments& arguments) {
    return fmt::format("files={} seed={} layout={}\n", arguments.files, arguments.seed, layout);
}

int openFolder(const std::string& path) {
    std::error_code failure;
    std::filesystem::create_directories(path, failure);
    const int folder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) {
        stopOnFailedCall(path);
    }
    return folder;
}

bool isEmpty(int folder) {
    DIR* stream = ::fdopendir(::dup(folder));
    if (stream == nullptr) {
        stopOnFailedCall("reading the folder");
    }
    int entries = 0;
    while (::readdir(stream) != nullptr) {
        ++entries;
    }
    ::closedir(stream);
    return entries <= 2;
}

std::string readMarker(int folder) {
    const int file = ::openat(folder, markerName, O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return {};
    }
    std::string text(256, '\0');
    const ssize_t length = ::read(file, text.data(), text.size());
    ::close(file);
    text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return text;
}

/// Written last, after everything else has reached the disk: a home that was interrupted has none.
void writeMarker(int folder, const std::string& text) {
    if (::syncfs(folder) != 0) {
        stopOnFailedCall("writing the home to the disk");
    }
    const int file = ::openat(folder, markerName, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (file < 0 || ::write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()) ||
        ::fsync(file) != 0) {
        stopOnFailedCall(markerName);
    }
    // The marker must not be what tells two equal homes apart.
    const timespec time{.tv_sec = 1'767'225'600, .tv_nsec = 0};
    const std::array<timespec, 2> times{time, time};
    if (::futimens(file, times.data()) != 0 || ::futimens(folder, times.data()) != 0) {
        stopOnFailedCall(markerName);
    }
    ::close(file);
}

void fill(HomeState& state, std::int64_t files) {
    Folder home(state);
    {
        Folder library(home, "Library");
        {
            const Allowance allowance(state, files * 45 / 100);
            writePackageCaches(home, library);
        }
        {
            const Allowance allowance(state, files * 12 / 100);
            writeApplications(home, library, files / 20);
        }
    }
    {
        const Allowance allowance(state, files * 35 / 100);
        writeProjects(home);
    }
    writePersonalFiles(home);
}

int makeHome(const Arguments& arguments) {
    const int folder = openFolder(arguments.folder);
    const std::string marker = markerOf(arguments);
    if (!isEmpty(folder)) {
        if (readMarker(folder) == marker) {
            fmt::print("{}: complete already, {} files\n", arguments.folder, arguments.files);
            return EXIT_SUCCESS;
        }
        stopProgram(arguments.folder + ": not empty, and not a complete home of these parameters");
    }
    // The caller's mask must not show in the home.
    ::umask(022);
    HomeState state(folder, arguments.files, arguments.seed);
    fill(state, arguments.files);
    writeMarker(folder, marker);
    ::close(folder);
    fmt::print("{}: {} files made\n", arguments.folder, arguments.files);
    return EXIT_SUCCESS;
}

} // namespace

} // namespace tarvo::bench

int main(int count, char** values) {
    return tarvo::bench::makeHome(tarvo::bench::argumentsOf(count, values));
}
