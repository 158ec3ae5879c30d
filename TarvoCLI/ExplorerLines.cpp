#include "TarvoCLI/ExplorerLines.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/Paragraph.h"
#include "TarvoModel/Exploring/EntryTexts.h"
#include "TarvoModel/Exploring/WhatIsIt.h"
#include "TarvoModel/Showing/Preview.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace tarvo {

using lumo::NamedEntry;
using lumo::Words;
namespace EntryTraits = lumo::EntryTraits;

namespace {

constexpr std::size_t linesAround = 3; // Two above the rows, one below.
constexpr std::size_t sizeColumns = 9;
constexpr std::size_t shareColumns = 6;
constexpr std::size_t barColumns = 10;
constexpr std::size_t thirdColumns = 12; // Items, or the date.
constexpr std::size_t narrow = 72;       // Below, there is no room for the third column.

std::string padded(const std::string& text, std::size_t width) {
    const std::size_t taken = lumo::columns(text);
    return std::string(width - std::min(width, taken), ' ') + text;
}

/// An export is of no home.
std::string shownPath(const std::string& path, const std::string& home) {
    return lumo::printable(home.empty() ? path : lumo::abbreviated(path, home));
}

std::string numberText(std::int64_t number) {
    return lumo::ByteFormat::number(static_cast<double>(number), 0);
}

std::string orderText(ExplorerOrder order) {
    switch (order) {
    case ExplorerOrder::size:
        return Words{"por tamaño", "by size"}.in();
    case ExplorerOrder::name:
        return Words{"por nombre", "by name"}.in();
    case ExplorerOrder::date:
        return Words{"por fecha", "by date"}.in();
    case ExplorerOrder::items:
        break;
    }
    return Words{"por elementos", "by items"}.in();
}

Style styleOf(lumo::Safety safety) {
    switch (safety) {
    case lumo::Safety::safe:
        return Style::safe;
    case lumo::Safety::review:
        return Style::review;
    case lumo::Safety::keep:
        break;
    }
    return Style::faint;
}

std::string thirdText(const NamedEntry& entry, ExplorerOrder order) {
    if (order == ExplorerOrder::date) {
        return entryDay(entry);
    }
    return entry.is(EntryTraits::folder) ? numberText(entry.sums.items) : std::string();
}

/// The name with a sign of what it is, as `ls -F` has it; what is left out or unreadable says so.
std::string nameText(const Explorer& explorer, const NamedEntry& entry) {
    std::string name = lumo::printable(entry.name);
    name += entry.is(EntryTraits::folder) ? "/" : entry.is(EntryTraits::link) ? "@" : "";
    const std::string note =
        explorer.holdsNewer(entry.index) ? Words{"y más nuevo", "and newer"}.in() : entryNote(entry);
    for (const std::string& each : {note, protectionNote(explorer, entry)}) {
        name += each.empty() ? "" : "  (" + each + ")";
    }
    return name;
}

/// What could not be read, as other programs for the disk usage in a terminal show it.
std::string unreadSign(const NamedEntry& entry) {
    return entry.is(EntryTraits::unreadable) ? "!" : entry.is(EntryTraits::holdsUnreadable) ? "." : " ";
}

std::string barText(double share) {
    const auto full = static_cast<std::size_t>(std::lround(share * static_cast<double>(barColumns)));
    std::string bar;
    for (std::size_t cell = 0; cell < barColumns; ++cell) {
        bar += cell < std::min(full, barColumns) ? "█" : " ";
    }
    return bar;
}

ScreenLine rowLine(const Explorer& explorer, const NamedEntry& entry, const ExplorerView& view) {
    const std::optional<lumo::Safety> safety = view.safetyOf ? view.safetyOf(entry) : std::nullopt;
    const Style style = safety ? styleOf(*safety) : Style::plain;
    const auto percent = std::lround(explorer.share(entry) * 100);
    ScreenLine line;
    line.spans = {{explorer.isMarked(entry.index) ? "*" : " ", Style::strong},
                  {safety ? std::string(1, safetyLetter(*safety)) : " ", style},
                  {unreadSign(entry), Style::problem},
                  {padded(lumo::ByteFormat::string(entry.sums.bytes), sizeColumns)},
                  {padded(std::to_string(percent) + " %", shareColumns)},
                  {" ["},
                  {barText(explorer.barShare(entry)), safety ? style : Style::bar},
                  {"] "}};
    if (view.columns >= narrow) {
        line.spans.push_back({padded(thirdText(entry, explorer.order()), thirdColumns) + "  ", Style::faint});
    }
    line.spans.push_back(
        {nameText(explorer, entry), entry.is(EntryTraits::folder) ? Style::strong : Style::plain});
    return line;
}

ScreenLine headLine(const Explorer& explorer, const ExplorerView& view) {
    const std::string path = shownPath(explorer.path(), view.home);
    return {.spans = {{lumo::shortened(" Tarvo AI · " + path, view.columns)}}, .isReversed = true};
}

/// A part of the line below the head.
struct Fact {
    Span span;
    int weight = 0; ///< The least goes first where there is no room for all.
};

std::vector<Fact> factsOf(const Explorer& explorer, const ExplorerView& view) {
    const NamedEntry folder = explorer.folder();
    std::vector<Fact> facts{{{lumo::ByteFormat::string(folder.sums.bytes), Style::faint}, 2}};
    if (const auto days = explorer.olderThanDays()) {
        facts.push_back(
            {{ageText(*days) + ": " + lumo::ByteFormat::string(explorer.rowsBytes()), Style::strong}, 4});
    }
    facts.push_back({{itemsText(folder.sums.items), Style::faint}, 0});
    facts.push_back({{orderText(explorer.order()), Style::faint}, 1});
    if (explorer.markCount() > 0) {
        facts.push_back({{markedText(explorer), Style::strong}, 6});
    }
    if (!explorer.filter().empty() && !view.typedFilter) {
        facts.push_back({{"/" + lumo::printable(explorer.filter()), Style::strong}, 3});
    }
    if (view.doing) {
        facts.push_back({{*view.doing, Style::review}, 5});
    } else if (view.unreadableCount > 0) {
        facts.push_back(
            {{Words{"{} sin poder leer", "{} could not be read"}.with(numberText(view.unreadableCount)),
              Style::problem},
             3});
    }
    return facts;
}

ScreenLine sumLine(const Explorer& explorer, const ExplorerView& view) {
    std::vector<Fact> facts = factsOf(explorer, view);
    const auto lineOf = [&] {
        ScreenLine line;
        for (const Fact& fact : facts) {
            line.spans.push_back({line.spans.empty() ? " " : " · ", Style::faint});
            line.spans.push_back(fact.span);
        }
        return line;
    };
    while (facts.size() > 1 && lumo::columns(textOf(lineOf())) > view.columns) {
        facts.erase(std::ranges::min_element(facts, {}, &Fact::weight));
    }
    return lineOf();
}

/// The lines of a paragraph, at least one.
std::vector<std::string> wrapped(std::string_view text, std::size_t columns) {
    const std::string whole = paragraph(text, columns);
    std::vector<std::string> lines;
    for (std::size_t begin = 0, end = 0; begin < whole.size(); begin = end + 1) {
        end = whole.find('\n', begin); // Every line ends with one.
        lines.push_back(whole.substr(begin, end - begin));
    }
    return lines;
}

/// The text in as many lines as it takes: how much it is about may stand at its end.
std::vector<ScreenLine> wrappedLines(std::string_view text, const ExplorerView& view, Style style) {
    constexpr std::size_t margin = 2;
    std::vector<ScreenLine> lines;
    for (const std::string& line : wrapped(text, view.columns > margin * 2 ? view.columns - margin : 0)) {
        lines.push_back({.spans = {{" " + line, style}}});
    }
    return lines;
}

std::vector<ScreenLine> footLines(const ExplorerView& view) {
    if (view.typedFilter) {
        return {{.spans = {{" /" + lumo::printable(*view.typedFilter) + "_", Style::strong}}}};
    }
    if (!view.message.empty()) {
        return wrappedLines(view.message, view, view.isProblem ? Style::problem : Style::strong);
    }
    const Words keys = view.columns < narrow
                           ? Words{" ?: ayuda  d: apartar  i: qué es  q: salir",
                                   " ?: help  d: set aside  i: what is it  q: quit"}
                           : Words{" ?: ayuda  Espacio: marcar  d: apartar  u: deshacer  i: qué es  q: salir",
                                   " ?: help  Space: mark  d: set aside  u: undo  i: what is it  q: quit"};
    return {{.spans = {{keys.in(), Style::faint}}}};
}

ScreenLine plainLine(std::string text, Style style = Style::plain) {
    return {.spans = {{std::move(text), style}}};
}

/// Why there are no rows.
std::string noRowsText(const Explorer& explorer, const ExplorerView& view) {
    if (!explorer.filter().empty()) {
        return Words{"  (ningún nombre así aquí)", "  (no such name here)"}.in();
    }
    if (view.doing) {
        return Words{"  (todavía nada)", "  (nothing yet)"}.in();
    }
    return (explorer.olderThanDays() ? Words{"  (nada tan antiguo)", "  (nothing that old)"}
                                     : Words{"  (vacía)", "  (empty)"})
        .in();
}

/// The items of a question, cut to so many lines, with how many more there are.
template <class Items, class LineOf>
void addItems(std::vector<ScreenLine>& lines, const Items& items, std::size_t most, const LineOf& lineOf) {
    const std::size_t shown = items.size() <= most ? items.size() : most - std::min<std::size_t>(1, most);
    for (std::size_t index = 0; index < shown; ++index) {
        lines.push_back(lineOf(items[index]));
    }
    if (shown < items.size()) {
        lines.push_back(
            plainLine("  " + Words{"… y {} más", "… and {} more"}.with(items.size() - shown), Style::faint));
    }
}

} // namespace

std::size_t visibleRows(const ExplorerView& view) {
    return view.rows > linesAround ? view.rows - linesAround : 1;
}

std::size_t scrolledTo(std::size_t cursor, std::size_t firstRow, std::size_t visible) {
    if (cursor < firstRow) {
        return cursor;
    }
    return cursor >= firstRow + visible ? cursor - visible + 1 : firstRow;
}

std::vector<ScreenLine> explorerLines(const Explorer& explorer, const ExplorerView& view) {
    std::vector<ScreenLine> lines{headLine(explorer, view), sumLine(explorer, view)};
    const std::size_t visible = visibleRows(view);
    for (std::size_t row = view.firstRow; row < view.firstRow + visible; ++row) {
        if (row >= explorer.rows().size()) {
            lines.push_back({});
            continue;
        }
        lines.push_back(rowLine(explorer, explorer.rows()[row], view));
        lines.back().isReversed = row == explorer.cursor();
    }
    if (explorer.rows().empty()) {
        lines[linesAround - 1] = plainLine(noRowsText(explorer, view), Style::faint);
    }
    std::vector<ScreenLine> foot = footLines(view);
    const std::size_t over = std::min(foot.size() - 1, visible - 1);
    lines.resize(lines.size() - over); // Until the next key a long message stands over the last rows.
    foot.resize(over + 1);
    std::ranges::move(foot, std::back_inserter(lines));
    return lines;
}

std::vector<ScreenLine> explorerHelp() {
    constexpr std::pair<Words, Words> keys[] = {
        {{"↑ ↓  k j", "↑ ↓  k j"}, {"moverse", "move"}},
        {{"Intro  →  l", "Enter  →  l"}, {"entrar en la carpeta", "into the folder"}},
        {{"Retroceso  ←  h", "Backspace  ←  h"}, {"salir de ella", "out of it"}},
        {{"/", "/"}, {"filtrar por nombre; Esc lo quita", "filter by name; Esc ends it"}},
        {{"a", "a"}, {"solo lo antiguo: 6 meses, 1 año, 2 años", "only the old: 6 months, 1 year, 2 years"}},
        {{"s", "s"}, {"orden: tamaño, nombre, fecha, elementos", "order: size, name, date, items"}},
        {{"Espacio", "Space"}, {"marcar o desmarcar; Esc los quita", "mark or unmark; Esc clears all"}},
        {{"d", "d"}, {"apartar 7 días; antes pregunta", "set aside for 7 days, asking first"}},
        {{"u", "u"}, {"deshacer: devolver lo último a su sitio", "undo: put the latest back"}},
        {{"i", "i"}, {"qué es y si se puede quitar", "what it is and whether it can go"}},
        {{"e", "e"}, {"abrir con el programa del escritorio", "open with the desktop's program"}},
        {{"r", "r"}, {"medir otra vez la carpeta", "measure the folder anew"}},
        {{"q", "q"}, {"salir", "quit"}},
    };
    std::vector<ScreenLine> lines{plainLine(Words{" Teclas", " Keys"}.in(), Style::strong), {}};
    constexpr std::size_t keyColumns = 20;
    for (const auto& [key, meaning] : keys) {
        std::string shown = "  " + key.in();
        shown += std::string(keyColumns - std::min(keyColumns, lumo::columns(shown)), ' ');
        lines.push_back({.spans = {{shown, Style::strong}, {meaning.in()}}});
    }
    lines.push_back({});
    lines.push_back(plainLine(Words{"  S se regenera solo · R conviene mirarlo · C se conserva",
                                    "  S recreates itself · R needs a look · K is kept"}
                                  .in()));
    lines.push_back(plainLine(
        Words{"  ! no se pudo leer · . contiene algo así", "  ! could not be read · . holds such a thing"}
            .in()));
    lines.push_back(plainLine(Words{"  Cualquier tecla vuelve.", "  Any key goes back."}.in(), Style::faint));
    return lines;
}

std::vector<ScreenLine> asideQuestion(const AsideOffer& offer, const ExplorerView& view, std::size_t most) {
    const std::string what = offer.goingCount == 1 ? Words{"1 elemento", "1 item"}.in()
                                                   : Words{"{} elementos", "{} items"}.with(offer.goingCount);
    std::vector<ScreenLine> asked =
        wrappedLines(Words{"Se aparta 7 días y luego se borra; «u» lo devuelve a su sitio.",
                           "Set aside for 7 days, then deleted; “u” puts it back."}
                         .in(),
                     view, Style::faint);
    std::ranges::move(wrappedLines(Words{"Borrarlo libera {}; «tarvo vaciar» lo hace ya.",
                                         "Deleting it frees {}; “tarvo empty” does it now."}
                                       .with(lumo::ByteFormat::string(offer.freedBytes)),
                                   view, Style::faint),
                      std::back_inserter(asked));
    std::ranges::move(wrappedLines(Words{"¿Apartar {} ({})? [s/N]", "Set {} ({}) aside? [y/N]"}.with(
                                       what, lumo::ByteFormat::string(offer.bytes)),
                                   view, Style::strong),
                      std::back_inserter(asked));
    std::vector<ScreenLine> lines;
    const std::size_t room = most > asked.size() ? most - asked.size() : 1;
    addItems(lines, offer.items, room, [&](const AsideOffer::Item& item) {
        ScreenLine line;
        line.spans = {{padded(lumo::ByteFormat::string(item.bytes), sizeColumns + 2) + "  "},
                      {lumo::revealed(lumo::abbreviated(item.path, view.home)),
                       item.reason ? Style::faint : Style::strong}};
        if (item.reason) {
            line.spans.push_back(
                {Words{"  se queda: {}", "  stays: {}"}.with(lumo::printable(*item.reason)), Style::problem});
        }
        return line;
    });
    std::ranges::move(asked, std::back_inserter(lines));
    return lines;
}

std::string emptyHint() {
    return Words{"; «tarvo vaciar» lo borra ya", "; “tarvo empty” deletes it now"}.in();
}

std::vector<ScreenLine> undoQuestion(const std::vector<lumo::TrashedItem>& items, const std::string& home,
                                     std::size_t most) {
    std::vector<ScreenLine> lines;
    addItems(lines, items, most > 1 ? most - 1 : 1, [&](const lumo::TrashedItem& item) {
        return plainLine("  " + lumo::revealed(lumo::abbreviated(item.original, home)), Style::strong);
    });
    lines.push_back(
        plainLine(Words{" ¿Devolver esto a su sitio? [s/N]", " Put this back? [y/N]"}.in(), Style::strong));
    return lines;
}

std::string goneText(const std::string& path) {
    return lumo::revealed(lumo::fileName(path)) + ": " +
           Words{"ya no está ahí", "it is no longer there"}.in();
}

std::vector<ScreenLine> whatItIsLines(const std::string& path, const std::string& home,
                                      const std::vector<ExplanationLine>& told, std::size_t columns) {
    constexpr std::size_t labelColumns = 16;
    std::vector<ScreenLine> lines{plainLine(" " + shownPath(path, home), Style::strong), {}};
    for (const ExplanationLine& line : told) {
        std::string label = "  " + line.label;
        for (std::string& text : wrapped(line.text, columns > 20 ? columns - labelColumns - 1 : 0)) {
            label += std::string(labelColumns - std::min(labelColumns, lumo::columns(label)), ' ');
            lines.push_back({.spans = {{std::exchange(label, {}), Style::faint}, {std::move(text)}}});
        }
    }
    lines.push_back({});
    lines.push_back(plainLine(Words{" Cualquier tecla vuelve.", " Any key goes back."}.in(), Style::faint));
    return lines;
}

} // namespace tarvo
