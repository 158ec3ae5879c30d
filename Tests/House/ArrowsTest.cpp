#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

// Rooms may use the rooms below them and nothing else. A line that goes the wrong way makes this fail.
namespace {

/// A room, the rooms it may include besides itself, and the libraries that it may.
struct Room {
    std::string folder;
    std::vector<std::string> rooms;
    std::vector<std::string> libraries;
};

const std::vector<std::string> coreBelow{"LumoCore/Basics", "Platform"};

const std::vector<Room>& house() {
    static const std::vector<Room> rooms{
        {"Platform",
         {},
         {"archive.h", "archive_entry.h", "libexif", "linux", "nettle", "plist", "system", "unzip.h",
          "xxhash.h", "zlib.h"}},
        {"LumoCore/Basics", {"Platform"}, {"fmt", "unicode", "nlohmann"}},
        {"LumoCore/Rules", coreBelow, {"fmt"}},
        {"LumoCore/Scanning", {"LumoCore/Rules", "LumoCore/Basics", "Platform"}, {"fmt"}},
        {"LumoCore/Inventories",
         {"LumoCore/Scanning", "LumoCore/Rules", "LumoCore/Basics", "Platform"},
         {"fmt"}},
        {"LumoCore/Cleanup",
         {"LumoCore/Inventories", "LumoCore/Scanning", "LumoCore/Rules", "LumoCore/Basics", "Platform"},
         {"fmt"}},
        {"LumoCore/History",
         {"LumoCore/Cleanup", "LumoCore/Inventories", "LumoCore/Scanning", "LumoCore/Rules",
          "LumoCore/Basics", "Platform"},
         {"fmt"}},
        {"LumoCore/Explaining",
         {"LumoCore/History", "LumoCore/Cleanup", "LumoCore/Inventories", "LumoCore/Scanning",
          "LumoCore/Rules", "LumoCore/Basics", "Platform"},
         {"fmt"}},
        {"LumoAI", {"LumoCore", "Platform"}, {"fmt"}},
        {"TarvoModel/Showing", {"LumoCore", "LumoAI", "Platform"}, {"fmt"}},
        {"TarvoModel/Photos", {"TarvoModel/Flows", "TarvoModel/Showing", "LumoCore", "Platform"}, {"fmt"}},
        {"TarvoModel/Flows", {"TarvoModel/Showing", "LumoCore", "LumoAI", "Platform"}, {"fmt"}},
        {"TarvoModel/Exploring",
         {"TarvoModel/Flows", "TarvoModel/Showing", "LumoCore", "LumoAI", "Platform"},
         {"fmt"}},
        {"TarvoApp/App", {"TarvoModel", "LumoCore", "LumoAI", "Platform"}, {"fmt", "Qt"}},
        {"TarvoApp/Views", {"TarvoApp/App", "TarvoModel", "LumoCore", "Platform"}, {"Qt"}},
        {"TarvoMCP", {"TarvoModel", "LumoCore", "LumoAI", "Platform"}, {"fmt"}},
        {"TarvoCLI",
         {"TarvoMCP", "TarvoModel", "LumoCore", "LumoAI", "Platform"},
         {"fmt", "CLI", "curses.h"}},
    };
    return rooms;
}

/// Headers of Qt: "QImage" and "QtCore/qglobal.h".
bool isQt(const std::string& header) {
    const std::size_t slash = header.find('/');
    return slash == std::string::npos
               ? header.size() > 1 && header[0] == 'Q' && std::isalpha(static_cast<unsigned char>(header[1]))
               : header.starts_with("Qt") && slash > 2;
}

/// Headers of the language's own library have no extension and no slash.
bool isStandard(const std::string& header) {
    return header.find_first_of("./") == std::string::npos && !isQt(header);
}

/// Headers of the system: what only the platform may use.
bool isSystem(const std::string& header) {
    static const std::set<std::string> loose{"dirent.h", "malloc.h", "fcntl.h",    "fnmatch.h", "fts.h",
                                             "locale.h", "unistd.h", "poll.h",     "sched.h",   "signal.h",
                                             "pwd.h",    "spawn.h",  "langinfo.h", "termios.h"};
    return header.starts_with("sys/") || header.starts_with("netinet/") || header.starts_with("arpa/") ||
           loose.contains(header);
}

std::string libraryOf(const std::string& header) {
    if (isQt(header)) {
        return "Qt";
    }
    return isSystem(header) ? "system" : header.substr(0, header.find('/'));
}

/// Values and functions in headers of their own that rest on nothing but the language: every room may use
/// them.
const std::set<std::string>& plainHeaders() {
    static const std::set<std::string> plain{"LumoCore/Basics/CheckedSum.h", "LumoCore/Basics/Path.h",
                                             "LumoCore/Basics/Timestamp.h"};
    return plain;
}

bool isAllowed(const Room& room, const std::string& header) {
    const auto begins = [&](const std::string& folder) { return header.starts_with(folder + "/"); };
    return plainHeaders().contains(header) || isStandard(header) || begins(room.folder) ||
           std::ranges::any_of(room.rooms, begins) ||
           std::ranges::find(room.libraries, libraryOf(header)) != room.libraries.end();
}

std::string headerIn(const std::string& line) {
    if (!line.starts_with("#include")) {
        return {};
    }
    const std::size_t start = line.find_first_of("<\"") + 1;
    return line.substr(start, line.find_first_of(">\"", start) - start);
}

/// The headers and sources below the folder, by their paths from the top.
std::vector<std::string> sourcesIn(const std::string& folder) {
    std::vector<std::string> sources;
    std::error_code none;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(SOURCE_FOLDER "/" + folder, none)) {
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp") {
            sources.push_back(std::filesystem::relative(entry.path(), SOURCE_FOLDER));
        }
    }
    return sources;
}

std::vector<std::string> wrongLines(const Room& room) {
    std::vector<std::string> wrong;
    for (const std::string& source : sourcesIn(room.folder)) {
        std::ifstream file(SOURCE_FOLDER "/" + source);
        std::size_t number = 0;
        for (std::string line; std::getline(file, line);) {
            ++number;
            const std::string header = headerIn(line);
            // A core header must not make those who include it know a library.
            const bool isLeak = source.ends_with(".h") && room.folder.starts_with("LumoCore") &&
                                !isStandard(header) && !header.starts_with("LumoCore/") &&
                                !header.starts_with("Platform/");
            if (!header.empty() && (!isAllowed(room, header) || isLeak)) {
                wrong.push_back(source + ":" + std::to_string(number) + ": " + line);
            }
        }
    }
    return wrong;
}

} // namespace

TEST(House, ArrowsPointDownwards) {
    for (const Room& room : house()) {
        EXPECT_FALSE(sourcesIn(room.folder).empty()) << room.folder;
        for (const std::string& line : wrongLines(room)) {
            ADD_FAILURE() << line;
        }
    }
}

TEST(House, PlainHeadersRestOnNothing) {
    for (const std::string& header : plainHeaders()) {
        std::ifstream file(SOURCE_FOLDER "/" + header);
        ASSERT_TRUE(file) << header;
        for (std::string line; std::getline(file, line);) {
            EXPECT_TRUE(headerIn(line).empty() || isStandard(headerIn(line))) << header << ": " << line;
        }
    }
}

TEST(House, EverySourceFileIsInARoom) {
    for (const char* top :
         {"Platform", "LumoCore", "LumoAI", "TarvoModel", "TarvoApp", "TarvoCLI", "TarvoMCP"}) {
        for (const std::string& source : sourcesIn(top)) {
            EXPECT_TRUE(std::ranges::any_of(house(), [&](const Room& room) {
                return source.starts_with(room.folder + "/");
            })) << source;
        }
    }
}
