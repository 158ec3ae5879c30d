#include "TarvoModel/Showing/Preview.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Folder.h"
#include "Platform/QuietFile.h"
#include "TarvoModel/Showing/DemoDisk.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace tarvo {

using lumo::NamedSize;

namespace {

/// "1 item" as it is given, else the number and the word.
std::string counted(std::int64_t count, std::string_view one, std::string_view many,
                    lumo::Language language) {
    return count == 1 ? std::string(one)
                      : fmt::format("{} {}",
                                    lumo::ByteFormat::number(static_cast<double>(count), 0, language), many);
}

std::string factsOf(const lumo::Usage& usage, bool isFolder, lumo::Language language) {
    std::vector<std::string> facts;
    if (isFolder) {
        facts.push_back(filesText(usage.fileCount, language));
    }
    if (usage.lastModified) {
        facts.push_back(lumo::Words{"último cambio: ", "last changed: "}.in(language) +
                        lumo::dayText(*usage.lastModified, language));
    }
    if (usage.unreadableCount > 0) {
        facts.push_back(counted(
            usage.unreadableCount,
            lumo::Words{"1 elemento no se pudo leer", "1 item couldn't be read"}.in(language),
            lumo::Words{"elementos no se pudieron leer", "items couldn't be read"}.in(language), language));
    }
    std::string line;
    for (const std::string& fact : facts) {
        line += (line.empty() ? "" : " · ") + fact;
    }
    return line;
}

/// Programs, pictures and archives have bytes that no text has.
bool isText(std::string_view bytes) {
    constexpr std::string_view usual = "\t\n\f\r\x1B";
    return std::ranges::all_of(
        bytes, [&](char byte) { return static_cast<unsigned char>(byte) >= ' ' || usual.contains(byte); });
}

std::string shownLine(std::string_view line) {
    constexpr std::size_t longestLine = 400;
    std::string widened;
    for (const char byte : lumo::cutToBytes(line, longestLine)) {
        widened += byte == '\t' ? "    " : std::string(1, byte);
    }
    return lumo::printable(widened) + (line.size() > longestLine ? "…" : "");
}

void takeText(std::string_view text, Preview& preview) {
    std::size_t lines = 0;
    for (; !text.empty() && lines < previewLines; ++lines) {
        const std::string_view line = text.substr(0, text.find('\n'));
        preview.text += shownLine(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line) + "\n";
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    preview.isCut = preview.isCut || !text.empty();
}

void keepLargest(std::vector<NamedSize> all, Preview& preview) {
    lumo::sortLargestFirst(all, &NamedSize::bytes);
    preview.isCut = all.size() > previewEntries;
    all.resize(std::min(all.size(), previewEntries));
    preview.largest = std::move(all);
}

Preview folderPreview(const std::string& path, const lumo::FileTree::Watch& watch, lumo::Language language) {
    lumo::FileTree::Breakdown parts = lumo::FileTree::breakdown(path, watch, language);
    Preview preview{.kind = Preview::Kind::folder,
                    .path = path,
                    .bytes = parts.usage.allocatedBytes,
                    .facts = factsOf(parts.usage, true, language)};
    keepLargest(std::move(parts.children), preview);
    return preview;
}

Preview filePreview(const std::string& path, const lumo::FileTree::Watch& watch, lumo::Language language) {
    lumo::HardLinkRegistry registry;
    const lumo::Usage usage = lumo::FileTree::measure(path, registry, watch);
    Preview preview{.kind = Preview::Kind::file,
                    .path = path,
                    .bytes = usage.allocatedBytes,
                    .facts = factsOf(usage, false, language)};
    const auto beginning = lumo::platform::quietBeginning(path, previewTextBytes + 1);
    if (beginning && isText(*beginning)) {
        preview.kind = Preview::Kind::text;
        preview.isCut = beginning->size() > previewTextBytes;
        takeText(lumo::decoded(lumo::cutToBytes(*beginning, previewTextBytes)), preview);
    }
    return preview;
}

Preview previewOfSeveral(const std::vector<std::string>& paths, const lumo::FileTree::Watch& watch,
                         lumo::Language language) {
    lumo::HardLinkRegistry registry;
    const std::vector<lumo::Usage> usages =
        lumo::FileTree::measureAll({paths.begin(), paths.end()}, registry, watch);
    lumo::Usage sum;
    std::vector<NamedSize> parts;
    for (std::size_t index = 0; index < paths.size(); ++index) {
        if (const auto kind = lumo::platform::kindOf(paths[index])) {
            sum += usages[index];
            parts.push_back({.name = paths[index],
                             .bytes = usages[index].allocatedBytes,
                             .isDirectory = *kind == lumo::platform::EntryKind::folder});
        }
    }
    if (parts.empty()) {
        return {};
    }
    Preview preview{.kind = Preview::Kind::folder,
                    .path = {},
                    .bytes = sum.allocatedBytes,
                    .facts = factsOf(sum, true, language)};
    keepLargest(std::move(parts), preview);
    return preview;
}

} // namespace

std::string itemsText(std::int64_t count, lumo::Language language) {
    return counted(count, lumo::Words{"1 elemento", "1 item"}.in(language),
                   lumo::Words{"elementos", "items"}.in(language), language);
}

std::string filesText(std::int64_t count, lumo::Language language) {
    return counted(count, lumo::Words{"1 archivo", "1 file"}.in(language),
                   lumo::Words{"archivos", "files"}.in(language), language);
}

Preview previewOf(const std::vector<std::string>& paths, const lumo::FileTree::Watch& watch,
                  lumo::Language language) {
    if (paths.size() != 1) {
        return previewOfSeveral(paths, watch, language);
    }
    const std::string& path = paths.front();
    const auto kind = lumo::platform::kindOf(path);
    if (!kind) {
        return {.path = path};
    }
    switch (*kind) {
    case lumo::platform::EntryKind::folder:
        return folderPreview(path, watch, language);
    case lumo::platform::EntryKind::file:
        return filePreview(path, watch, language);
    case lumo::platform::EntryKind::link:
    case lumo::platform::EntryKind::other:
        break;
    }
    return {.kind = Preview::Kind::other, .path = path};
}

Preview demoPreview(const std::vector<std::string>& paths, lumo::Language language) {
    Preview preview{.path = paths.size() == 1 ? paths.front() : std::string(),
                    .facts = DemoDisk::notice(language)};
    std::vector<NamedSize> parts;
    for (const lumo::FolderContents::Item& item : DemoDisk::contents(paths, language).items) {
        preview.bytes += item.bytes;
        parts.push_back({.name = item.name, .bytes = item.bytes, .isDirectory = item.isDirectory});
    }
    preview.kind = parts.empty() ? Preview::Kind::file : Preview::Kind::folder;
    keepLargest(std::move(parts), preview);
    return preview;
}

} // namespace tarvo
