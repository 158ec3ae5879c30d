#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tarvo::faults {

/// What stands at one path, down to its bytes.
struct Entry {
    char kind = '-'; ///< 'd', 'f', 'l', or 'o' for anything else.
    unsigned mode = 0;
    std::int64_t modified = 0; ///< In nanoseconds.
    std::string bytes;         ///< The content of a file, the target of a link.

    friend bool operator==(const Entry&, const Entry&) = default;
};

/// Everything below a folder by its path relative to it. Paths are bytes.
using Manifest = std::map<std::string, Entry>;

/// What stands below the root now, without the paths given and what they hold. Links are not followed.
Manifest manifestOf(const std::string& root, const std::vector<std::string>& without = {});

/// What may differ between two manifests. A path stands for itself and what it holds; with a final slash it
/// stands for what the folder holds.
struct Tolerance {
    std::vector<std::string> mayEnd; ///< May be gone, or be there in part.
    std::vector<std::string> moved;  ///< The folders that hold these may have other times.
    std::vector<std::string> mayAppear;
};

struct Difference {
    std::string path;
    std::string what; ///< "missing", "changed" or "new".
};

/// What is missing in a folder that is missing itself is not named.
std::vector<Difference> differences(const Manifest& before, const Manifest& now, const Tolerance& tolerance);

} // namespace tarvo::faults
