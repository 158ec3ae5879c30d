#include "Platform/Removal.h"
#include "StopProgram.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <sys/resource.h>

namespace tarvo::bench {

namespace {

lumo::platform::SystemResult<lumo::platform::Place> placeOf(const std::string& path) {
    const auto absolute = lumo::platform::absolutePath(path);
    if (!absolute) {
        return std::unexpected(absolute.error());
    }
    const std::size_t slash = absolute->rfind('/');
    const auto parent = lumo::platform::BaseFolder::open(slash == 0 ? "/" : absolute->substr(0, slash));
    if (!parent) {
        return std::unexpected(parent.error());
    }
    return parent->place(absolute->substr(slash + 1));
}

int removeAndTell(const std::string& path) {
    const auto place = placeOf(path);
    if (!place) {
        stopProgram(path + ": " + place.error().reason());
    }
    const auto began = std::chrono::steady_clock::now();
    const auto removed = lumo::platform::removeTree(*place);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - began;
    if (!removed) {
        stopProgram(path + ": " + removed.error().reason());
    }
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    std::printf("%.3f seconds, %.1f MiB\n", seconds.count(), static_cast<double>(usage.ru_maxrss) / 1024);
    return 0;
}

} // namespace

} // namespace tarvo::bench

// Our removal of a whole tree, without anything around it, for the benchmark.
int main(int count, char** arguments) {
    if (count != 2) {
        tarvo::bench::stopProgram("usage: remove-tree DIR");
    }
    return tarvo::bench::removeAndTell(arguments[1]);
}
