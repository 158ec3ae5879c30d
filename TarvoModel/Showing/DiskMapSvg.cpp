#include "TarvoModel/Showing/DiskMapSvg.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace tarvo::DiskMap {

namespace {

constexpr Color neutral{0.78, 0.78, 0.76};
constexpr double fontSize = 13;
constexpr double lineHeight = 17;
constexpr double margin = 8;

std::string hex(const Color& color) {
    constexpr double most = 255;
    return fmt::format("#{:02x}{:02x}{:02x}", std::lround(color[0] * most), std::lround(color[1] * most),
                       std::lround(color[2] * most));
}

/// Near-black or near-white, whichever is easier to read on the color.
std::string inkOn(const Color& color) {
    return wantsDarkInk(color) ? "#1a1a19" : "#fdfdfb";
}

std::string escaped(std::string_view text) {
    std::string escaped;
    for (const char c : lumo::printable(text)) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string_view markOf(TileState state) {
    switch (state) {
    case TileState::selected:
        return "✓";
    case TileState::unselected:
        return "○";
    case TileState::blocked: // Has a lock, which not every font knows.
    case TileState::info:
        break;
    }
    return "";
}

std::string lockAt(double x, double y, std::string_view ink) {
    return fmt::format(
        "<path d=\"M{0:.1f} {1:.1f}h9v7h-9z\" fill=\"{2}\"/><path d=\"M{3:.1f} {1:.1f}v-2a2.5 2.5 "
        "0 0 1 5 0v2\" fill=\"none\" stroke=\"{2}\" stroke-width=\"1.5\"/>\n",
        x, y, ink, x + 2);
}

/// How many columns of text fit into that many points.
std::size_t columnsIn(double width) {
    constexpr double widestColumn = 7.6; // Of the usual sans-serif letters at that size.
    return width > 0 ? static_cast<std::size_t>(width / widestColumn) : 0;
}

std::string line(double x, double y, std::string_view ink, std::string_view text) {
    return fmt::format("<text x=\"{:.1f}\" y=\"{:.1f}\" fill=\"{}\">{}</text>\n", x, y + fontSize, ink,
                       escaped(text));
}

/// The label and the size, as far as there is room; a size is never cut.
std::string textsOf(const PlacedTile& placed, const Rect& rect, std::string_view ink) {
    constexpr double lockWidth = 14;
    constexpr std::size_t fewestColumns = 4;
    const bool isBlocked = placed.state == TileState::blocked;
    const double indent = isBlocked ? lockWidth : 0;
    const double x = rect.x + margin;
    const double y = rect.y + margin;
    const std::size_t columns = columnsIn(rect.width - 2 * margin - indent);
    if (columns < fewestColumns || rect.height < lineHeight + 2 * margin) {
        return {};
    }
    const std::string mark(markOf(placed.state));
    const std::string label = mark + (mark.empty() ? "" : " ") + placed.tile.label;
    std::string texts = isBlocked ? lockAt(x, y + 6, ink) : std::string();
    texts += line(x + indent, y, ink, lumo::shortened(lumo::printable(label), columns));
    const std::string size = lumo::ByteFormat::string(placed.tile.bytes);
    if (rect.height >= 2 * lineHeight + 2 * margin && lumo::columns(size) <= columns) {
        texts += line(x, y + lineHeight, ink, size);
    }
    return texts;
}

std::string tileSvg(const PlacedTile& placed) {
    const Rect rect = drawn(placed.place);
    if (rect.width <= 0 || rect.height <= 0) {
        return {};
    }
    const Color color = colorOf(placed.tile).value_or(neutral);
    const bool isUnknown = placed.tile.id.starts_with(lumo::unclassifiedIDPrefix);
    const auto shape = [&](std::string_view fill) {
        return fmt::format("<rect x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" height=\"{:.1f}\" rx=\"6\" "
                           "fill=\"{}\"/>\n",
                           rect.x, rect.y, rect.width, rect.height, fill);
    };
    return fmt::format("<g><title>{}\n{} · {}</title>\n{}{}{}</g>\n", escaped(placed.tile.label),
                       lumo::ByteFormat::string(placed.tile.bytes), escaped(placed.tile.detail),
                       shape(hex(color)), isUnknown ? shape("url(#stripes)") : "",
                       textsOf(placed, rect, inkOn(color)));
}

} // namespace

std::string svg(const std::vector<PlacedTile>& tiles, double width, double height) {
    std::string picture = fmt::format(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0:.0f}\" height=\"{1:.0f}\" viewBox=\"0 0 "
        "{0:.0f} "
        "{1:.0f}\" font-family=\"system-ui, sans-serif\" font-size=\"{2:.0f}\">\n"
        "<defs><pattern id=\"stripes\" width=\"12\" height=\"12\" patternUnits=\"userSpaceOnUse\" "
        "patternTransform=\"rotate(45)\"><rect width=\"3\" height=\"12\" fill=\"#ffffff\" "
        "fill-opacity=\"0.18\"/></pattern></defs>\n"
        "<rect width=\"100%\" height=\"100%\" fill=\"#f6f6f3\"/>\n",
        width, height, fontSize);
    for (const PlacedTile& placed : tiles) {
        picture += tileSvg(placed);
    }
    return picture + "</svg>\n";
}

} // namespace tarvo::DiskMap
