#include "TarvoCLI/FolderText.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Folder.h"
#include "TarvoCLI/Table.h"
#include "TarvoModel/Showing/Preview.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>

namespace tarvo {

using lumo::NamedSize;
using lumo::Words;
using lumo::FolderContents::Item;

namespace {

constexpr std::size_t mostShown = 20;
constexpr std::int64_t smallestShown = 1000000;

std::string numberText(std::int64_t number) {
    return lumo::ByteFormat::number(static_cast<double>(number), 0);
}

/// A bar of at most 16 columns, in eighths of a column; something always shows what is there at all.
std::string bar(std::int64_t bytes, std::int64_t largest) {
    constexpr double columns = 16;
    constexpr std::size_t partsOfColumn = 8;
    constexpr std::array<std::string_view, partsOfColumn> ends{"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
    if (bytes <= 0 || largest <= 0) {
        return {};
    }
    const double share = static_cast<double>(bytes) / static_cast<double>(largest);
    const auto eighths = std::max<std::size_t>(static_cast<std::size_t>(share * columns * partsOfColumn), 1);
    std::string drawn;
    for (std::size_t full = eighths / partsOfColumn; full > 0; --full) {
        drawn += "█";
    }
    return drawn.append(ends[eighths % partsOfColumn]);
}

std::string headText(const std::string& path, const FolderReport& report, const Invocation& invocation) {
    const lumo::Usage& usage = report.breakdown.usage;
    std::string head =
        tinted(lumo::printable(lumo::abbreviated(path, invocation.home)), Tint::strong, invocation) + "  " +
        tinted(lumo::ByteFormat::string(usage.allocatedBytes), Tint::strong, invocation);
    std::string facts;
    if (report.canOpen) {
        facts += " · " + filesText(usage.fileCount);
    }
    if (usage.lastModified) {
        facts += fmt::format(" · {} {}", Words{"último cambio", "last change"}.in(),
                             lumo::dayText(*usage.lastModified));
    }
    head += tinted(facts, Tint::faint, invocation) + "\n";
    if (report.location != lumo::FolderLocation::other) {
        head += tinted(lumo::description(report.location), Tint::faint, invocation) + "\n";
    }
    return head;
}

/// What makes up most of an item, since that tells what the item is.
std::string insideText(const Item& item) {
    constexpr std::size_t mostNamed = 2;
    const std::int64_t worthNaming = item.bytes / 5;
    std::vector<std::string> named;
    for (const Item& child : item.children) {
        if (!child.path.empty() && child.bytes >= worthNaming && named.size() < mostNamed) {
            named.push_back(
                fmt::format("{} {}", lumo::printable(child.name), lumo::ByteFormat::string(child.bytes)));
        }
    }
    return fmt::format("{}", fmt::join(named, " · "));
}

std::string nameText(const Item& item) {
    return lumo::printable(item.name) + (item.isDirectory ? "/" : "");
}

Table barTable() {
    return Table({{.align = Align::right, .tint = Tint::strong},
                  {.tint = Tint::faint},
                  {.mayShrink = true},
                  {.tint = Tint::faint, .mayShrink = true}});
}

/// What is left out of a list.
struct Rest {
    std::size_t count = 0;
    std::int64_t bytes = 0;
    bool isCounted = true; ///< False when there are more than `count`.
};

/// "and 3 more (2 MB)", or nothing when nothing was left out.
std::string restLine(const Rest& rest, const Invocation& invocation) {
    if (rest.count == 0) {
        return {};
    }
    const std::string count =
        rest.isCounted ? numberText(static_cast<std::int64_t>(rest.count)) : Words{"muchos", "many"}.in();
    return tinted(Words{"  y {} más ({})", "  and {} more ({})"}.with(count,
                                                                      lumo::ByteFormat::string(rest.bytes)),
                  Tint::faint, invocation) +
           "\n";
}

/// The item that stands for many small ones.
bool isRest(const Item& item) {
    return item.path.empty();
}

bool isRest(const NamedSize&) {
    return false;
}

/// Rows for the largest, and one line for the rest. `Sized` is an item or a named size.
template <class Sized, class CellsOf>
std::string rowsText(const std::vector<Sized>& all, std::size_t most, CellsOf cellsOf,
                     const Invocation& invocation) {
    Table table = barTable();
    Rest rest;
    std::size_t shown = 0;
    std::int64_t largest = 0;
    for (const Sized& one : all) {
        // Next to large things nobody looks for the small ones; a small folder holds nothing else.
        if (isRest(one) || shown == most || (one.bytes < smallestShown && largest >= smallestShown)) {
            ++rest.count;
            rest.bytes = lumo::checkedSum(rest.bytes, one.bytes);
            rest.isCounted = rest.isCounted && !isRest(one);
            continue;
        }
        largest = std::max(largest, one.bytes);
        ++shown;
        std::vector<std::string> cells = cellsOf(one);
        cells.insert(cells.begin(), {lumo::ByteFormat::string(one.bytes), bar(one.bytes, largest)});
        table.add(std::move(cells));
    }
    return table.lines(2, outputColumns(), invocation) + restLine(rest, invocation);
}

std::string breadcrumb(const std::vector<std::string>& skipped, const Invocation& invocation) {
    if (skipped.empty()) {
        return {};
    }
    std::string names;
    for (const std::string& name : skipped) {
        names += (names.empty() ? "" : " ▸ ") + lumo::printable(name);
    }
    return fmt::format("{} {}\n", Words{"Casi todo está en", "Nearly everything is in"}.in(),
                       tinted(names, Tint::strong, invocation));
}

std::string contentsText(const FolderReport& report, const Invocation& invocation) {
    if (report.listing.items.empty()) {
        return report.breakdown.usage.unreadableCount > 0
                   ? std::string()
                   : fmt::format("\n{}\n", Words{"No hay nada dentro.", "There is nothing inside."}.in());
    }
    return "\n" + breadcrumb(report.listing.skipped, invocation) +
           rowsText(
               report.listing.items, mostShown,
               [](const Item& item) { return std::vector{nameText(item), insideText(item)}; }, invocation);
}

std::string kindsText(const FolderReport& report, const Invocation& invocation) {
    constexpr std::size_t mostKinds = 6;
    if (report.breakdown.extensions.empty()) {
        return {};
    }
    return "\n" + tinted(Words{"Por tipo de archivo", "By file type"}.in(), Tint::strong, invocation) + "\n" +
           rowsText(
               report.breakdown.extensions, mostKinds,
               [](const NamedSize& kind) { return std::vector{lumo::printable(kind.name)}; }, invocation);
}

std::string unreadableText(std::int64_t count, const Invocation& invocation) {
    if (count == 0) {
        return {};
    }
    const std::string said = count == 1
                                 ? Words{"No he podido leer 1 elemento: lo que ocupa no está contado.",
                                         "1 item could not be read: what it takes is not counted."}
                                       .in()
                                 : Words{"No he podido leer {} elementos: lo que ocupan no está contado.",
                                         "{} items could not be read: what they take is not counted."}
                                       .with(numberText(count));
    return "\n" + tinted(said, Tint::review, invocation) + "\n";
}

/// What stands there instead of a folder: a link is shown as itself, and that should be said.
std::string linkText(const std::string& path) {
    const auto target = lumo::platform::linkTarget(path);
    if (!target) {
        return {};
    }
    return Words{"Es un enlace: lo que contiene está en {}.\n", "It is a link: what it holds is in {}.\n"}
        .with(lumo::printable(*target));
}

} // namespace

std::string folderText(const std::string& path, const FolderReport& report, const Invocation& invocation) {
    std::string shown = headText(path, report, invocation);
    if (!report.canOpen) {
        return shown + linkText(path);
    }
    shown += contentsText(report, invocation) + kindsText(report, invocation) +
             unreadableText(report.breakdown.usage.unreadableCount, invocation);
    return shown + "\n" +
           tinted(Words{"Qué es y qué hacer con ella: tarvo explicar RUTA.",
                        "What it is and what to do with it: tarvo explain PATH."}
                      .in(),
                  Tint::faint, invocation) +
           "\n";
}

} // namespace tarvo
