#include "TarvoCLI/FindText.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/Table.h"
#include "TarvoModel/Showing/ItemRows.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace tarvo {

using lumo::DetailItem;
using lumo::Inventory;
using lumo::Words;

namespace {

/// More than a person reads; programs get them all.
constexpr std::size_t mostShown = 100;

std::string placeOf(const DetailItem& item, const Invocation& invocation) {
    if (item.path) {
        return lumo::printable(lumo::abbreviated(lumo::parentOf(*item.path), invocation.home));
    }
    return {};
}

std::string marked(const DetailItem& item, ItemMarks marks, std::size_t& number) {
    switch (marks) {
    case ItemMarks::ids:
        return lumo::printable(item.id);
    case ItemMarks::numbers:
        return item.blockedBecause ? std::string() : std::to_string(++number);
    case ItemMarks::none:
        break;
    }
    return {};
}

std::string heading(const Inventory& inventory, const Invocation& invocation) {
    std::int64_t sum = 0;
    for (const DetailItem& item : inventory.items) {
        sum = lumo::checkedSum(sum, item.bytes);
    }
    return tinted(lumo::titleOf(inventory.kind), Tint::strong, invocation) +
           (inventory.items.empty() ? std::string() : "  " + lumo::ByteFormat::string(sum)) + "\n";
}

std::string notes(const Inventory& inventory, std::size_t hidden, const Invocation& invocation) {
    std::string text;
    if (inventory.unavailable) {
        text += "  " + lumo::printable(*inventory.unavailable) + "\n";
    } else if (inventory.items.empty()) {
        text += "  " + Words{"nada", "nothing"}.in() + "\n";
    }
    if (hidden > 0) {
        text += "  " +
                Words{"y {} más; --json los da todos", "and {} more; --json gives them all"}.with(hidden) +
                "\n";
    }
    if (const std::string unread = unreadText(inventory, invocation.home); !unread.empty()) {
        text += "  " + unread + "\n";
    }
    return tinted(text, Tint::faint, invocation);
}

std::string textOf(const Inventory& inventory, ItemMarks marks, std::size_t& number,
                   const Invocation& invocation) {
    Table table({{.align = marks == ItemMarks::numbers ? Align::right : Align::left},
                 {.align = Align::right, .tint = Tint::review},
                 {.mayShrink = true},
                 {.tint = Tint::faint, .mayShrink = true},
                 {.tint = Tint::faint, .mayShrink = true}});
    const std::size_t count =
        marks == ItemMarks::none ? std::min(inventory.items.size(), mostShown) : inventory.items.size();
    for (std::size_t index = 0; index < count; ++index) {
        const DetailItem& item = inventory.items[index];
        const std::string reason = item.blockedBecause ? lumo::printable(*item.blockedBecause) : "";
        table.add({marked(item, marks, number), lumo::ByteFormat::string(item.bytes),
                   lumo::printable(item.name), lumo::printable(item.detail),
                   reason.empty() ? placeOf(item, invocation) : reason});
    }
    return heading(inventory, invocation) +
           (table.isEmpty() ? std::string() : table.lines(2, outputColumns(), invocation)) +
           notes(inventory, inventory.items.size() - count, invocation);
}

std::optional<std::size_t> numberIn(std::string_view text) {
    std::size_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    return read.ec == std::errc() && read.ptr == text.data() + text.size() ? std::optional(number)
                                                                           : std::nullopt;
}

} // namespace

std::string findText(const std::vector<Inventory>& inventories, ItemMarks marks,
                     const Invocation& invocation) {
    std::string text;
    std::size_t number = 0;
    for (const Inventory& inventory : inventories) {
        text += (text.empty() ? "" : "\n") + textOf(inventory, marks, number, invocation);
    }
    return text;
}

std::vector<DetailItem> pickableItems(const std::vector<Inventory>& inventories) {
    std::vector<DetailItem> items;
    for (const Inventory& inventory : inventories) {
        std::ranges::copy_if(inventory.items, std::back_inserter(items),
                             [](const DetailItem& item) { return !item.blockedBecause; });
    }
    return items;
}

std::optional<std::vector<std::size_t>> pickedNumbers(std::string_view answer, std::size_t most) {
    std::set<std::size_t> numbers;
    const std::string_view separators = " ,\t\r";
    while (!answer.empty()) {
        const std::size_t end = std::min(answer.find_first_of(separators), answer.size());
        const std::string_view word = answer.substr(0, end);
        answer.remove_prefix(std::min(end + 1, answer.size()));
        if (word.empty()) {
            continue;
        }
        const std::size_t dash = word.find('-');
        const auto first = numberIn(word.substr(0, dash));
        const auto last = dash == std::string_view::npos ? first : numberIn(word.substr(dash + 1));
        if (!first || !last || *first == 0 || *last > most || *first > *last) {
            return std::nullopt;
        }
        for (std::size_t number = *first; number <= *last; ++number) {
            numbers.insert(number);
        }
    }
    return std::vector<std::size_t>(numbers.begin(), numbers.end());
}

} // namespace tarvo
