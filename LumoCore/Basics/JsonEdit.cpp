#include "LumoCore/Basics/JsonEdit.h"

#include "LumoCore/Basics/JsonScan.h"

#include <algorithm>

namespace lumo::JsonEdit {

using JsonScan::Extent;
using JsonScan::Member;
using JsonScan::Object;

namespace {

constexpr std::string_view standardIndentation = "  ";
constexpr std::string_view blanks = " \t\r\n";

std::string_view in(std::string_view text, const Extent& extent) {
    return text.substr(extent.begin, extent.end - extent.begin);
}

std::string replaced(std::string_view text, const Extent& extent, std::string_view by) {
    return std::string(text.substr(0, extent.begin)).append(by).append(text.substr(extent.end));
}

/// The member with the key, the last one where it is there twice; none when it is not there.
Edited<const Member*> memberFor(const Object& object, std::string_view key) {
    const Member* found = nullptr;
    for (const Member& member : object.members) {
        if (member.key == key && found != nullptr) {
            return std::unexpected(Problem::ambiguous);
        }
        found = member.key == key ? &member : found;
    }
    return found;
}

/// The blanks right before the offset.
std::string_view blanksBefore(std::string_view text, std::size_t offset) {
    const std::size_t last = text.substr(0, offset).find_last_not_of(blanks);
    const std::size_t begin = last == std::string_view::npos ? 0 : last + 1;
    return text.substr(begin, offset - begin);
}

/// What the member's line begins with; absent when the member does not begin its line.
std::optional<std::string> indentationOf(std::string_view text, const Member& member) {
    const std::string_view lead = blanksBefore(text, member.name.begin);
    const std::size_t lineBreak = lead.rfind('\n');
    return lineBreak == std::string_view::npos ? std::nullopt
                                               : std::optional(std::string(lead.substr(lineBreak + 1)));
}

/// How the document is laid out.
struct Style {
    std::string lineBreak;
    std::string step;             ///< By which each level is further in.
    bool isOneMemberALine = true; ///< Otherwise all stands on one line.
};

Style styleOf(std::string_view text, const Object& document) {
    const std::size_t lineFeed = text.find('\n');
    const bool isCarriageReturn =
        lineFeed != std::string_view::npos && lineFeed > 0 && text[lineFeed - 1] == '\r';
    Style style{.lineBreak = isCarriageReturn ? "\r\n" : "\n", .step = std::string(standardIndentation)};
    if (!document.members.empty()) {
        const std::optional<std::string> indentation = indentationOf(text, document.members.front());
        style.isOneMemberALine = indentation.has_value();
        style.step = indentation && !indentation->empty() ? *indentation : style.step;
    }
    return style;
}

/// The value as it stands in a line with that indentation; on one line where there is none.
std::string written(const JsonValue& value, const std::optional<std::string>& indentation,
                    const Style& style) {
    if (!indentation) {
        return dumpJson(value, JsonLayout::spaced);
    }
    const std::string standard = dumpJson(value, JsonLayout::indented);
    std::string text;
    for (std::size_t offset = 0; offset < standard.size();) {
        const std::size_t end = std::min(standard.find('\n', offset), standard.size());
        text.append(standard, offset, end - offset);
        offset = end;
        if (offset < standard.size()) {
            const std::size_t next = standard.find_first_not_of(' ', ++offset);
            text += style.lineBreak + *indentation;
            for (; offset < next; offset += standardIndentation.size()) {
                text += style.step;
            }
        }
    }
    return text;
}

std::string writtenMember(std::string_view key, const JsonValue& value,
                          const std::optional<std::string>& indentation, const Style& style) {
    return dumpJson({std::string(key)}, JsonLayout::line) + ": " + written(value, indentation, style);
}

/// The document with a member added behind the others of one of its objects.
std::string withMember(std::string_view text, const Object& object, std::string_view key,
                       const JsonValue& value, const Style& style) {
    if (!object.members.empty()) {
        const Member& last = object.members.back();
        const std::optional<std::string> indentation = indentationOf(text, last);
        const std::string lead = indentation ? style.lineBreak + *indentation : " ";
        return replaced(text, {last.value.end, last.value.end},
                        "," + lead + writtenMember(key, value, indentation, style));
    }
    if (!style.isOneMemberALine) {
        return replaced(text, object.whole, "{" + writtenMember(key, value, std::nullopt, style) + "}");
    }
    const std::size_t line = text.substr(0, object.whole.begin).rfind('\n') + 1;
    const std::string_view rest = text.substr(line);
    const std::string outer(rest.substr(0, std::min(rest.find_first_not_of(" \t"), rest.size())));
    const std::string inner = outer + style.step;
    return replaced(text, object.whole,
                    "{" + style.lineBreak + inner + writtenMember(key, value, inner, style) +
                        style.lineBreak + outer + "}");
}

/// The value inside objects that the keys of the path lead through.
JsonValue nested(Path path, const JsonValue& value) {
    return path.empty()
               ? value
               : JsonValue{JsonValue::Object{{std::string(path.front()), nested(path.subspan(1), value)}}};
}

/// How far into the document the path leads.
struct Reached {
    Object document;
    Object object;               ///< The innermost one that is there.
    std::optional<Member> found; ///< What it has under the next key; no object unless it is the last key.
    std::size_t depth = 0;       ///< Keys of the path before that one.
};

Edited<Reached> follow(std::string_view text, Path path) {
    std::optional<Object> document = JsonScan::documentIn(text);
    if (!document) {
        return std::unexpected(Problem::malformed);
    }
    Reached reached{.document = *document, .object = *document};
    for (;; ++reached.depth) {
        const Edited<const Member*> member = memberFor(reached.object, path[reached.depth]);
        if (!member) {
            return std::unexpected(member.error());
        }
        if (*member == nullptr) {
            return reached;
        }
        reached.found = **member;
        std::optional<Object> next;
        if (reached.depth + 1 < path.size()) {
            next = JsonScan::objectAt(text, reached.found->value.begin);
        }
        if (!next) {
            return reached;
        }
        reached.object = std::move(*next);
        reached.found.reset();
    }
}

} // namespace

Edited<std::optional<std::string>> valueAt(std::string_view document, Path path) {
    std::optional<Object> object = JsonScan::documentIn(document);
    if (!object) {
        return std::unexpected(Problem::malformed);
    }
    for (std::size_t depth = 0; object; ++depth) {
        const auto member = std::find_if(object->members.rbegin(), object->members.rend(),
                                         [&](const Member& each) { return each.key == path[depth]; });
        if (member == object->members.rend()) {
            break;
        }
        if (depth + 1 == path.size()) {
            return std::string(in(document, member->value));
        }
        object = JsonScan::objectAt(document, member->value.begin);
    }
    return std::nullopt;
}

Edited<std::string> withValue(std::string_view document, Path path, const JsonValue& value) {
    const Edited<Reached> reached = follow(document, path);
    if (!reached) {
        return std::unexpected(reached.error());
    }
    const Style style = styleOf(document, reached->document);
    const JsonValue placed = nested(path.subspan(reached->depth + 1), value);
    if (!reached->found) {
        return withMember(document, reached->object, path[reached->depth], placed, style);
    }
    return replaced(document, reached->found->value,
                    written(placed, indentationOf(document, *reached->found), style));
}

Edited<std::string> withoutValue(std::string_view document, Path path) {
    const Edited<Reached> reached = follow(document, path);
    if (!reached) {
        return std::unexpected(reached.error());
    }
    if (!reached->found || reached->depth + 1 < path.size()) {
        return std::string(document);
    }
    const std::vector<Member>& members = reached->object.members;
    const auto member =
        std::ranges::find(members, reached->found->name.begin, [](const Member& m) { return m.name.begin; });
    if (members.size() == 1) {
        return replaced(document, reached->object.whole, "{}");
    }
    if (member == members.begin()) {
        return replaced(document, {member->name.begin, std::next(member)->name.begin}, "");
    }
    return replaced(document, {std::prev(member)->value.end, member->value.end}, "");
}

} // namespace lumo::JsonEdit
