#include "Tests/faults/Manifest.h"

#include "LumoCore/Basics/Path.h"
#include "Tests/support/TempHome.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

namespace tarvo::faults {

namespace {

Entry entryAt(const std::filesystem::path& path) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0) {
        return {};
    }
    constexpr unsigned permissions = 07777;
    Entry entry{.kind = 'o',
                .mode = status.st_mode & permissions,
                .modified = status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec};
    if (S_ISDIR(status.st_mode)) {
        entry.kind = 'd';
    } else if (S_ISLNK(status.st_mode)) {
        entry.kind = 'l';
        entry.bytes = std::filesystem::read_symlink(path).native();
    } else if (S_ISREG(status.st_mode)) {
        entry.kind = 'f';
        entry.bytes = testing::contentOf(path.native());
    }
    return entry;
}

bool covers(const std::string& given, std::string_view path) {
    return given.ends_with('/') ? path.starts_with(given) : lumo::isInside(path, given);
}

bool coversAny(const std::vector<std::string>& given, std::string_view path) {
    return std::ranges::any_of(given, [&](const std::string& one) { return covers(one, path); });
}

bool isSame(const std::string& path, const Entry& before, const Entry& now, const Tolerance& tolerance) {
    const bool holdsMoved = std::ranges::any_of(
        tolerance.moved, [&](const std::string& item) { return item.starts_with(path + "/"); });
    if (before.kind == 'd' && now.kind == 'd' && (holdsMoved || coversAny(tolerance.mayEnd, path))) {
        // A remover opens what it removes, and whoever takes a name from a folder changes its times.
        return !holdsMoved || before.mode == now.mode;
    }
    return before == now;
}

} // namespace

Manifest manifestOf(const std::string& root, const std::vector<std::string>& without) {
    Manifest manifest;
    std::error_code error;
    std::filesystem::recursive_directory_iterator entry(
        root, std::filesystem::directory_options::skip_permission_denied, error);
    while (!error && entry != std::filesystem::recursive_directory_iterator()) {
        std::string path = entry->path().native().substr(root.size() + 1);
        if (coversAny(without, path)) {
            entry.disable_recursion_pending();
        } else {
            manifest.emplace(std::move(path), entryAt(entry->path()));
        }
        entry.increment(error);
    }
    if (error) {
        manifest.emplace("unreadable: " + error.message(), Entry{});
    }
    return manifest;
}

std::vector<Difference> differences(const Manifest& before, const Manifest& now, const Tolerance& tolerance) {
    std::vector<Difference> found;
    for (const auto& [path, entry] : before) {
        const auto other = now.find(path);
        if (other == now.end()) {
            const bool isNamed =
                !found.empty() && found.back().what == "missing" && lumo::isInside(path, found.back().path);
            if (!isNamed && !coversAny(tolerance.mayEnd, path)) {
                found.push_back({path, "missing"});
            }
        } else if (!isSame(path, entry, other->second, tolerance)) {
            found.push_back({path, "changed"});
        }
    }
    for (const auto& [path, entry] : now) {
        if (!before.contains(path) && !coversAny(tolerance.mayAppear, path)) {
            found.push_back({path, "new"});
        }
    }
    return found;
}

} // namespace tarvo::faults
