#include "TarvoModel/Exploring/UsageExport.h"

#include "LumoCore/Basics/Words.h"

#include <fmt/format.h>

#include <chrono>
#include <iterator>

namespace tarvo {

using lumo::NamedEntry;
using lumo::NamedTree;
namespace EntryTraits = lumo::EntryTraits;

namespace {

/// The name as a string of JSON: what no terminal should see is escaped, stray bytes stay as they are, as
/// those who made the format have it.
void appendName(std::string& document, std::string_view name) {
    document += '"';
    for (const char c : name) {
        if (c == '"' || c == '\\') {
            document += '\\';
            document += c;
        } else if (const auto byte = static_cast<unsigned char>(c); byte < 0x20 || byte == 0x7F) {
            fmt::format_to(std::back_inserter(document), "\\u{:04x}", byte);
        } else {
            document += c;
        }
    }
    document += '"';
}

void appendNumber(std::string& document, std::string_view key, std::int64_t value) {
    if (value != 0) {
        fmt::format_to(std::back_inserter(document), ",\"{}\":{}", key, value);
    }
}

void appendEntry(std::string& document, const NamedTree::Visited& shown) {
    const NamedEntry& entry = shown.entry;
    document += "{\"name\":";
    appendName(document, entry.name);
    appendNumber(document, "asize", shown.length);
    appendNumber(document, "dsize", shown.file ? shown.fileBytes : shown.ownBytes);
    if (shown.file) {
        fmt::format_to(std::back_inserter(document), ",\"ino\":{},\"hlnkc\":true,\"nlink\":{}",
                       shown.file->object, shown.links);
    }
    appendNumber(document, "mtime", entry.is(EntryTraits::folder) ? 0 : entry.sums.modified);
    document += entry.is(EntryTraits::link | EntryTraits::special) ? ",\"notreg\":true" : "";
    document += entry.is(EntryTraits::unreadable) ? ",\"read_error\":true" : "";
    document += entry.is(EntryTraits::leftOut) ? ",\"excluded\":\"otherfs\"" : "";
    document += '}';
}

/// Folders whose contents were not looked at are written like files.
bool isOpened(const NamedEntry& entry) {
    return entry.is(EntryTraits::folder) && !entry.is(EntryTraits::leftOut);
}

} // namespace

bool exportUsage(const NamedTree& tree, std::string_view version, lumo::Date now,
                 const std::function<bool(std::string_view piece)>& write) {
    constexpr std::size_t pieceBytes = std::size_t{64} * 1024;
    const auto seconds = std::chrono::floor<std::chrono::seconds>(now).time_since_epoch().count();
    std::string piece =
        fmt::format("[1,2,{{\"progname\":\"tarvo\",\"progver\":\"{}\",\"timestamp\":{}}}", version, seconds);
    bool isTaken = true;
    const auto handOn = [&](std::size_t least) {
        if (piece.size() >= least) {
            isTaken = write(piece);
            piece.clear();
        }
        return isTaken;
    };
    tree.visit(
        [&](const NamedTree::Visited& shown) {
            piece += isOpened(shown.entry) ? ",\n[" : ",\n";
            appendEntry(piece, shown);
            return handOn(pieceBytes);
        },
        [&](const NamedEntry& left) {
            piece += isOpened(left) ? "]" : "";
            return true;
        });
    piece += "]\n";
    return isTaken && handOn(0);
}

} // namespace tarvo
