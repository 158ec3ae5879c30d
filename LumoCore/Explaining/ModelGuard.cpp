#include "LumoCore/Explaining/ModelGuard.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Explaining/DiskSummary.h"

#include <fmt/format.h>

#include <algorithm>

namespace lumo::ModelGuard {

namespace {

// Counted words end where no letter follows, and possessive repeats keep a long text from being tried over
// and over.
constexpr std::string_view digits = R"((?<![\p{L}\p{N}])\d++(?:[.,'’\s]\d{3}(?!\d))*+(?:[.,]\d++)?+)";
constexpr std::string_view numberWord =
    R"((?<!\p{L})(?:una?|uno|unos|unas|dos|tres|cuatro|cinco|seis|siete|ocho|nueve|diez|once|doce|trece)"
    R"(|catorce|quince|dieci\p{L}+|veint\p{L}+|treinta|cuarenta|cincuenta|sesenta|setenta|ochenta|noventa)"
    R"(|cien|cient[oa]s?|\p{L}+cient[oa]s|quinient[oa]s|mil|miles|mill[oó]n|millones|medi[oa]s?|par)"
    R"(|docenas?|decenas?|varios|varias|algunos|algunas|pocos|pocas|much[oa]s?)"
    R"(|an?|one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|\p{L}+teen|twenty|thirty|forty)"
    R"(|fifty|sixty|seventy|eighty|ninety|hundreds?|thousands?|millions?|half|quarter|couple|dozens?|tens)"
    R"(|few|several|some|many|much)(?!\p{L}))";
constexpr std::string_view unit =
    R"((?:[kmgtp]i?bs?|(?:kilo|mega|giga|tera|peta|kibi|mebi|gibi|tebi)(?:bytes?|s)?|bytes?|gigs?|megs?))"
    R"((?![\p{L}\p{N}]))";
/// Those that mean a size without a number, too.
constexpr std::string_view bareUnit =
    R"((?<![\p{L}\p{N}])(?:[kmgtp]i?bs?|(?:kilo|mega|giga|tera|peta)bytes?|gigas|megas|teras|gigs|megs))"
    R"((?![\p{L}\p{N}]))";
constexpr std::string_view share = R"((?:%|por\s+ciento|per\s?cent)(?!\p{L}))";

const std::string& figurePattern() {
    static const std::string pattern = [] {
        const std::string inWords =
            fmt::format(R"({0}(?:[\s\p{{Pd}}]+(?:(?:y|and|de|of|con)[\s\p{{Pd}}]+)?{0})*+(?:\s+(?:de|of))?+)",
                        numberWord);
        return fmt::format(
            R"((?i)(?:{0}|{1})[\s\p{{Pd}}]{{0,2}}(?:{2}|{3})|{0}[mgt](?![\p{{L}}\p{{N}}])|{4}|{3})", digits,
            inWords, unit, share, bareUnit);
    }();
    return pattern;
}

/// What could be typed into a shell, pressed in a menu or opened in a browser. Names of programs are no
/// commands: only with one of their verbs behind them are they.
constexpr std::string_view instructionPattern =
    R"((?i)sudo|→|➜|⇒|\s(?:->|=>|>)\s|defaults write|chmod|(?<![\p{L}\p{N}_])rm(?![\p{L}\p{N}_]))"
    // Programs are called terminals and tools of the terminal; nobody is sent there by that.
    R"(|(?<!herramientas? de (?:la )?|emulador(?:es)? de )terminal(?!\p{L}| tools?| emulators?))"
    R"(|://|(?<!\p{L})www\.|mailto:|\S@[\p{L}\p{N}-]+\.\p{L})"
    R"(|[\p{L}\p{N}_-]++\.(?:com|org|net|info|xyz|ru|cn|top|site|online|click|link)(?!\.?[\p{L}\p{N}_-]))"
    R"(|[\p{L}\p{N}_-]++\.(?:com|org|net|info|io|dev|co|me|gg|ly|to|ai|es|de|uk|eu)/)"
    R"(|\$\(|\$\{|&&|\|\||\s\|\s|>>|#!|(?<!\S)\$\s|(?<!\S)--[a-z]|(?<!\S)-[a-z]{1,3}(?![\p{L}\p{N}]))"
    R"(|(?<!\p{L})(?:apt|apt-get|aptitude|dnf|yum|zypper|pacman|brew|snap|flatpak|pip3?|pipx|npm|npx|yarn)"
    R"(|pnpm|cargo|rustup|docker|podman|systemctl|journalctl|conda|uv|go|gem|composer|git|dotnet|gradle|mvn)"
    R"(|ollama|tarvo)\s+(?:(?:cache|system|image|volume|builder|container|store|toolchain)\s+)?)"
    R"((?:install|uninstall|remove|purge|autoremove|autoclean|prune|rmi?|vacuum|upgrade|clean|clear|delete))"
    R"((?!\p{L}))"
    R"(|(?<!\p{L})(?:rmdir|shred|mkfs|killall|pkill|chown|doas|gio\s+trash|dd\s+if|del\s+/|format\s+c:)"
    R"(|(?:bash|sh|zsh)\s+-c|find\s+[~/.]|(?:mv|cp|wget|curl)\s+\S*[/~.:]\S)(?!\p{L}))";

std::vector<std::string> lowerMatches(std::string_view pattern, std::string_view text) {
    std::vector<std::string> found = matchesOf(pattern, text);
    for (std::string& match : found) {
        match = lowerCased(match);
    }
    return found;
}

} // namespace

std::vector<std::string> figures(std::string_view text) {
    return lowerMatches(figurePattern(), text);
}

bool namesOnlyFiguresOf(std::string_view allowedText, std::string_view text) {
    const std::vector<std::string> named = figures(text);
    if (named.empty()) {
        return true;
    }
    // A name that ends in a number may stand before a size and seem to be part of it.
    std::vector<std::string> known = figures(allowedText);
    for (const std::string& amount : DiskSummary::amounts(allowedText)) {
        known.push_back(lowerCased(amount));
    }
    return std::ranges::all_of(
        named, [&](const std::string& figure) { return std::ranges::find(known, figure) != known.end(); });
}

std::vector<std::string> instructions(std::string_view text) {
    return lowerMatches(instructionPattern, text);
}

bool isFitToShow(std::string_view text, std::string_view allowedText) {
    return !words(text).empty() && instructions(text).empty() && namesOnlyFiguresOf(allowedText, text);
}

} // namespace lumo::ModelGuard
