#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Rules/Locator.h"

#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <variant>
#include <vector>

namespace lumo {

/// What kind of thing a rule finds.
enum class Category {
    packageCache,
    buildOutput,
    aiModel,
    aiApp,
    virtualMachine,
    developerTools,
    appCache,
    downloads,
    personal,
};

template <>
struct EnumNames<Category> {
    static constexpr std::array<std::string_view, 9> values{
        "packageCache",   "buildOutput", "aiModel",   "aiApp",   "virtualMachine",
        "developerTools", "appCache",    "downloads", "personal"};
};

/// Whether something can be removed without thought.
enum class Safety {
    safe,   ///< Recreates itself; may be cleaned without asking.
    review, ///< Needs a look.
    keep,   ///< The user's data or something in use; never cleaned automatically.
};

template <>
struct EnumNames<Safety> {
    static constexpr std::array<std::string_view, 3> values{"safe", "review", "keep"};
};

/// The ways in which a found folder is freed. In JSON an object with the case as its one member.
namespace cleanup {

/// By running a tool's own command line.
struct Command {
    static constexpr std::string_view caseName = "command";
    std::string line;
    static constexpr auto fields = std::tuple{field("_0", &Command::line)};
    friend bool operator==(const Command&, const Command&) = default;
};

/// By the user, following an instruction.
struct Manual {
    static constexpr std::string_view caseName = "manual";
    std::string instruction;
    static constexpr auto fields = std::tuple{field("_0", &Manual::instruction)};
    friend bool operator==(const Manual&, const Manual&) = default;
};

/// By deleting everything inside the folder and keeping the folder.
struct DeleteContents {
    static constexpr std::string_view caseName = "deleteContents";
    static constexpr auto fields = std::tuple{};
    friend bool operator==(const DeleteContents&, const DeleteContents&) = default;
};

/// By deleting the located paths themselves.
struct DeleteItems {
    static constexpr std::string_view caseName = "deleteItems";
    static constexpr auto fields = std::tuple{};
    friend bool operator==(const DeleteItems&, const DeleteItems&) = default;
};

} // namespace cleanup

using Cleanup =
    std::variant<cleanup::Command, cleanup::Manual, cleanup::DeleteContents, cleanup::DeleteItems>;

/// One thing that fills disks: where it is, what it is, and how it is freed. Texts are in one language.
struct Rule {
    std::string id; ///< Lower-case words joined by hyphens; unique in the catalogue and never changed.
    std::string name;
    Category category = Category::packageCache;
    Safety safety = Safety::keep;
    std::string explanation;
    Cleanup cleanup = cleanup::DeleteItems{};
    Locator locator = locator::Path{};
    /// Identifier of an application to quit before cleaning, or of a group of applications that `AppStatus`
    /// knows: a bundle identifier, or on Linux for what only Linux has that of the desktop entry.
    std::optional<std::string> closeFirst = {};
    /// Where the rule looks in the home that it was made for, the locator's own place first; when empty there
    /// is none but that.
    std::vector<Locator> places = {};

    /// Where the rule looks, for a person to read, with "~" for the home folder: the first place.
    [[nodiscard]] std::string displayPath(Language language = currentLanguage()) const;

    /// All places in the same way, but for those that only another system has.
    [[nodiscard]] std::vector<std::string> displayPlaces(System system,
                                                         Language language = currentLanguage()) const;

    /// True when it looks in a folder that the system guards with a permission of its own, so that a first
    /// look must leave it out.
    [[nodiscard]] bool needsFolderPermission() const;

    friend bool operator==(const Rule&, const Rule&) = default;
};

/// The absolute paths where the rule finds something in the home now: those of its first place first. What
/// can be reached in several ways, or lies in another, is given once. As with a locator, never fails.
std::vector<std::string> resolve(const Rule& rule, const std::string& home,
                                 const InstallersFinder& findInstallers = installersByExtension);

/// The same for each rule, in their order; several are looked up at once. After a stop the rest stay empty.
std::vector<std::vector<std::string>>
resolveAll(std::span<const Rule> rules, const std::string& home,
           const InstallersFinder& findInstallers = installersByExtension, const std::stop_token& stop = {});

/// How that rule frees those paths: in its own way, or, where a tool would reach only the first of several
/// that recreate themselves, by emptying them.
Cleanup cleanupOf(const Rule& rule, const std::vector<std::string>& paths);

} // namespace lumo
