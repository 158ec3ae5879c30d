#pragma once

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Codec.h"
#include "TarvoMCP/Tool.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Lists in answers, a page at a time: a model reads all it is given, and pays for it.
namespace tarvo::mcp {

/// The part of every list of an answer that a call asks for.
struct Page {
    std::size_t limit = 0;
    std::size_t offset = 0;
    std::int64_t minBytes = 0; ///< Smaller things are left out, and not counted.
};

enum class HasSizes { no, yes };

/// The arguments of a page, with what goes for a call without them.
std::vector<Property> pageProperties(std::size_t usualLimit, HasSizes hasSizes = HasSizes::yes);
lumo::Result<Page> pageArgument(const JsonValue& arguments, std::size_t usualLimit);

/// What of a list comes after the page.
struct More {
    std::int64_t count = 0;
    std::int64_t bytes = 0; ///< All together.

    static constexpr auto fields =
        std::tuple{lumo::field("count", &More::count), lumo::field("bytes", &More::bytes)};
    static constexpr bool isPlain = true; ///< Its schema tells no more: it stands in every list.
};

/// Cuts the list to the page; `bytesOf` weighs an element.
template <class Element, class BytesOf>
More cut(std::vector<Element>& elements, const Page& page, BytesOf bytesOf) {
    std::erase_if(elements, [&](const Element& element) { return bytesOf(element) < page.minBytes; });
    const auto first = static_cast<std::ptrdiff_t>(std::min(page.offset, elements.size()));
    elements.erase(elements.begin(), elements.begin() + first);
    More more;
    for (std::size_t index = page.limit; index < elements.size(); ++index) {
        ++more.count;
        more.bytes = lumo::checkedSum(more.bytes, bytesOf(elements[index]));
    }
    elements.resize(std::min(page.limit, elements.size()));
    return more;
}

/// "… and 12 more (3 GB): offset 20", a line for the end of a list; empty without more.
std::string moreLine(const More& more, const Page& page);

/// What the document takes in an answer at most, in bytes: with its text it stays below 20 000 characters.
inline constexpr std::size_t mostAnswerBytes = 14000;

/// What `make` makes of the page, or of a shorter one where that would be too large. `page` becomes that one.
template <class Make>
auto fitted(Page& page, Make make) {
    auto record = make(page);
    while (page.limit > 1 &&
           dumpJson(lumo::encode(record), lumo::JsonLayout::line).size() > mostAnswerBytes) {
        page.limit = page.limit * 3 / 4;
        record = make(page);
    }
    return record;
}

} // namespace tarvo::mcp
