#include "TarvoMCP/Page.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Words.h"

namespace tarvo::mcp {

using lumo::Words;

namespace {

constexpr std::int64_t mostAtOnce = 200;

constexpr std::int64_t mostOffset = 1000000000;
constexpr std::int64_t mostBytes = std::int64_t{1} << 60;

lumo::Result<std::int64_t> within(const JsonValue& arguments, std::string_view name, std::int64_t least,
                                  std::int64_t most, std::int64_t usual) {
    const auto given = numberArgument(arguments, name);
    if (!given) {
        return std::unexpected(given.error());
    }
    const std::int64_t value = given->value_or(usual);
    if (value < least || value > most) {
        return lumo::failure(Words{"«{}» va de {} a {}", "“{}” goes from {} to {}"}.with(name, least, most));
    }
    return value;
}

} // namespace

std::vector<Property> pageProperties(std::size_t usualLimit, HasSizes hasSizes) {
    // What they mean and how far they go the server says once for all tools, and again when they are wrong.
    JsonValue limit = schema("integer");
    std::get<JsonValue::Object>(limit.value)
        .push_back({"default", number(static_cast<std::int64_t>(usualLimit))});
    std::vector<Property> properties{{"limit", std::move(limit)}, {"offset", schema("integer")}};
    if (hasSizes == HasSizes::yes) {
        properties.push_back({"minBytes", schema("integer")});
    }
    return properties;
}

lumo::Result<Page> pageArgument(const JsonValue& arguments, std::size_t usualLimit) {
    const auto limit = within(arguments, "limit", 1, mostAtOnce, static_cast<std::int64_t>(usualLimit));
    const auto offset = within(arguments, "offset", 0, mostOffset, 0);
    const auto minBytes = within(arguments, "minBytes", 0, mostBytes, 0);
    for (const auto* value : {&limit, &offset, &minBytes}) {
        if (!*value) {
            return std::unexpected(value->error());
        }
    }
    return Page{static_cast<std::size_t>(*limit), static_cast<std::size_t>(*offset), *minBytes};
}

std::string moreLine(const More& more, const Page& page) {
    if (more.count == 0) {
        return {};
    }
    return "\n" +
           Words{"… y {} más, {}: sigue con offset {}", "… and {} more, {}: go on with offset {}"}.with(
               more.count, lumo::ByteFormat::string(more.bytes), page.offset + page.limit);
}

} // namespace tarvo::mcp
