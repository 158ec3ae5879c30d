#include "LumoCore/Basics/Words.h"
#include "LumoCore/Scanning/TreeFiller.h"
#include "TarvoModel/Exploring/UsageExport.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

// Reads an export without holding it as a document in memory a second time, and without the stack: neither
// its depth nor its length can bring the program down. A library would refuse names that are not UTF-8.
namespace tarvo {

using lumo::EntrySums;
using lumo::NamedTree;
using lumo::Words;
namespace EntryTraits = lumo::EntryTraits;

namespace {

constexpr std::size_t deepest = 10000;
constexpr std::size_t longestName = 4096;
constexpr std::int64_t mostBytes = std::int64_t{1} << 55U; // What a tree can hold.

/// One step through JSON after the other. Once something is not as it must be, nothing is read any more.
class Reader final {
  public:
    explicit Reader(std::string_view document) : left_(document) {}

    [[nodiscard]] bool isBroken() const { return isBroken_; }
    [[nodiscard]] bool isAtEnd() {
        skipBlanks();
        return left_.empty();
    }

    /// The next character that is no blank, which stays; 0 at the end.
    char peek() {
        skipBlanks();
        return left_.empty() || isBroken_ ? '\0' : left_.front();
    }

    bool takes(char wanted) {
        if (peek() != wanted) {
            return false;
        }
        left_.remove_prefix(1);
        return true;
    }

    void expect(char wanted) { isBroken_ = !takes(wanted) || isBroken_; }

    /// A whole number; of one with a fraction what stands before it. What is too large is the largest.
    std::int64_t number() {
        const bool isNegative = takes('-');
        if (left_.empty() || !isDigit(left_.front())) {
            isBroken_ = true;
            return 0;
        }
        std::int64_t value = 0;
        while (!left_.empty() && isDigit(left_.front())) {
            constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
            value = value > most / 10 - 1 ? most / 10 : value * 10 + (left_.front() - '0');
            left_.remove_prefix(1);
        }
        while (!left_.empty() && (isDigit(left_.front()) || isIn(left_.front(), ".eE+-"))) {
            left_.remove_prefix(1);
        }
        return isNegative ? -value : value;
    }

    /// A string, at most `longestName` bytes of it.
    std::string string() {
        std::string text;
        expect('"');
        while (!isBroken_ && !left_.empty() && left_.front() != '"') {
            const char c = next();
            if (c == '\\') {
                escaped(text);
            } else {
                text += c;
            }
            isBroken_ = isBroken_ || text.size() > longestName;
        }
        if (left_.empty()) {
            isBroken_ = true;
        } else {
            left_.remove_prefix(1);
        }
        return text;
    }

    /// Passes over a value of any kind.
    void skip() {
        std::size_t depth = 0;
        do {
            const char c = peek();
            if (c == '"') {
                static_cast<void>(string());
            } else if (isIn(c, "{[")) {
                ++depth;
                left_.remove_prefix(1);
            } else if (isIn(c, "}]") && depth > 0) {
                --depth;
                left_.remove_prefix(1);
            } else if (isIn(c, ",:") && depth > 0) {
                left_.remove_prefix(1);
                continue;
            } else {
                word();
            }
        } while (!isBroken_ && depth > 0);
    }

    /// "true" or any other word or number that stands alone; true for the first.
    bool word() {
        skipBlanks();
        const std::size_t end = std::min(left_.find_first_of(" \t\r\n,:[]{}\""), left_.size());
        const std::string_view found = left_.substr(0, end);
        isBroken_ = isBroken_ || found.empty();
        left_.remove_prefix(end);
        return found == "true";
    }

    void giveUp() { isBroken_ = true; }

  private:
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }
    static bool isIn(char c, std::string_view set) { return c != '\0' && set.find(c) != set.npos; }

    void skipBlanks() { left_.remove_prefix(std::min(left_.find_first_not_of(" \t\r\n"), left_.size())); }

    char next() {
        if (left_.empty()) {
            isBroken_ = true;
            return '\0';
        }
        const char c = left_.front();
        left_.remove_prefix(1);
        return c;
    }

    std::uint32_t hexadecimal() {
        std::uint32_t value = 0;
        for (int digit = 0; digit < 4; ++digit) {
            const char c = next();
            const std::size_t at = std::string_view("0123456789abcdefABCDEF").find(c);
            if (at == std::string_view::npos) {
                isBroken_ = true;
                return 0;
            }
            value = value * 16 + static_cast<std::uint32_t>(at < 16 ? at : at - 6);
        }
        return value;
    }

    void escaped(std::string& text) {
        const char c = next();
        if (c == 'u') {
            std::uint32_t character = hexadecimal();
            if (character >= 0xD800 && character < 0xDC00 && left_.starts_with("\\u")) {
                left_.remove_prefix(2);
                const std::uint32_t low = hexadecimal();
                character = low >= 0xDC00 && low < 0xE000
                                ? 0x10000 + ((character - 0xD800) << 10U) + (low - 0xDC00)
                                : 0xFFFD;
            }
            append(text, character >= 0xD800 && character < 0xE000 ? 0xFFFD : character);
            return;
        }
        constexpr std::string_view letters = "\"\\/bfnrt";
        const std::size_t at = letters.find(c);
        if (c == '\0' || at == std::string_view::npos) {
            isBroken_ = true;
        } else {
            text += "\"\\/\b\f\n\r\t"[at];
        }
    }

    static void append(std::string& text, std::uint32_t character) {
        const auto byte = [&](std::uint32_t value) { text += static_cast<char>(value); };
        if (character < 0x80) {
            byte(character);
        } else if (character < 0x800) {
            byte(0xC0U | (character >> 6U));
            byte(0x80U | (character & 0x3FU));
        } else if (character < 0x10000) {
            byte(0xE0U | (character >> 12U));
            byte(0x80U | ((character >> 6U) & 0x3FU));
            byte(0x80U | (character & 0x3FU));
        } else {
            byte(0xF0U | (character >> 18U));
            byte(0x80U | ((character >> 12U) & 0x3FU));
            byte(0x80U | ((character >> 6U) & 0x3FU));
            byte(0x80U | (character & 0x3FU));
        }
    }

    std::string_view left_;
    bool isBroken_ = false;
};

/// What an export says of one entry.
struct Told {
    std::string name;
    std::int64_t length = 0;
    std::int64_t bytes = 0;
    std::int64_t device = 0;
    std::int64_t object = 0;
    std::int64_t links = 0;
    std::int64_t modified = 0;
    bool isShared = false;
    std::uint8_t traits = 0;
};

void readMember(Reader& reader, std::string_view key, Told& told) {
    const auto trait = [&](std::uint8_t which) {
        if (reader.word()) {
            told.traits = static_cast<std::uint8_t>(told.traits | which);
        }
    };
    if (key == "name") {
        told.name = reader.string();
    } else if (key == "asize") {
        told.length = reader.number();
    } else if (key == "dsize") {
        told.bytes = reader.number();
    } else if (key == "dev") {
        told.device = reader.number();
    } else if (key == "ino") {
        told.object = reader.number();
    } else if (key == "nlink") {
        told.links = reader.number();
    } else if (key == "mtime") {
        told.modified = reader.number();
    } else if (key == "hlnkc") {
        told.isShared = reader.word();
    } else if (key == "notreg") {
        trait(EntryTraits::special);
    } else if (key == "read_error") {
        trait(EntryTraits::unreadable);
    } else if (key == "excluded") {
        reader.skip();
        told.traits = static_cast<std::uint8_t>(told.traits | EntryTraits::leftOut);
    } else {
        reader.skip();
    }
}

Told readEntry(Reader& reader) {
    Told told;
    reader.expect('{');
    while (!reader.isBroken() && reader.peek() != '}') {
        const std::string key = reader.string();
        reader.expect(':');
        readMember(reader, key, told);
        if (!reader.takes(',')) {
            break;
        }
    }
    reader.expect('}');
    told.bytes = std::clamp<std::int64_t>(told.bytes, 0, mostBytes);
    told.length = std::max<std::int64_t>(told.length, 0);
    if (told.name.empty()) {
        reader.giveUp();
    }
    return told;
}

EntrySums sumsOf(const Told& told, bool isFolder) {
    EntrySums sums{.bytes = told.bytes};
    if (!isFolder) {
        sums.modified = static_cast<std::uint32_t>(std::clamp<std::int64_t>(told.modified, 0, 0xFFFFFFFF));
    }
    return sums;
}

void addFile(lumo::TreeFiller& filler, const Told& told) {
    if (!told.isShared && told.links < 2) {
        filler.add(told.name, sumsOf(told, false), told.traits, told.length);
        return;
    }
    EntrySums sums = sumsOf(told, false);
    sums.bytes = 0;
    // Without a count there may be any number of names elsewhere.
    const std::int64_t links = told.links < 2 ? 0xFFFFFFFF : told.links;
    filler.add(told.name, sums, told.traits, told.length,
               lumo::SharedFile{
                   .file = {static_cast<std::int32_t>(told.device), static_cast<std::uint64_t>(told.object)},
                   .bytes = told.bytes,
                   .links = static_cast<std::uint32_t>(std::clamp<std::int64_t>(links, 0, 0xFFFFFFFF))});
}

/// What the folder at the top holds, after its own entry.
void readContents(Reader& reader, lumo::TreeFiller& filler, std::int64_t device) {
    std::vector<std::int64_t> devices{device}; // An entry without one is on that of its folder.
    while (!reader.isBroken() && !devices.empty()) {
        if (reader.takes(']')) {
            filler.leave();
            devices.pop_back();
            continue;
        }
        reader.expect(',');
        const bool isFolder = reader.takes('[');
        Told told = readEntry(reader);
        if (reader.isBroken() || devices.size() > deepest) {
            reader.giveUp();
        } else if (isFolder) {
            devices.push_back(told.device != 0 ? told.device : devices.back());
            // One that was left out holds nothing, and so is no list.
            filler.enter(told.name, sumsOf(told, true), told.traits & EntryTraits::unreadable, told.length);
        } else {
            told.device = told.device != 0 ? told.device : devices.back();
            addFile(filler, told);
        }
    }
}

std::unexpected<lumo::Failure> noExport() {
    return lumo::failure(Words{"no es una exportación de uso de disco, o está dañada",
                               "it is no export of disk usage, or it is damaged"}
                             .in());
}

} // namespace

lumo::Result<std::unique_ptr<NamedTree>> treeFromExport(std::string_view document,
                                                        NamedTree::Lengths lengths) {
    Reader reader(document);
    reader.expect('[');
    const std::int64_t version = reader.number();
    reader.expect(',');
    static_cast<void>(reader.number());
    reader.expect(',');
    reader.skip();
    reader.expect(',');
    reader.expect('[');
    if (!reader.isBroken() && version != 1) {
        return lumo::failure(Words{"es una exportación de una versión que no conozco",
                                   "it is an export of a version that I do not know"}
                                 .in());
    }
    const Told top = readEntry(reader);
    if (reader.isBroken()) {
        return noExport();
    }
    auto tree = std::make_unique<NamedTree>(top.name, lengths);
    {
        lumo::TreeFiller filler(*tree);
        filler.begin(NamedTree::root, top.bytes);
        if ((top.traits & EntryTraits::unreadable) != 0) {
            filler.markUnreadable();
        }
        readContents(reader, filler, top.device);
        reader.expect(']');
        if (reader.isBroken() || !reader.isAtEnd()) {
            return noExport();
        }
    }
    tree->chargeLinked();
    return tree;
}

} // namespace tarvo
