#include "LumoCore/Basics/Text.h"

#include <fmt/format.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/regex.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace lumo {

namespace {

constexpr UChar32 replacement = 0xFFFD;

/// The character at `offset`, which moves behind it; negative for a stray byte, of which one is passed.
UChar32 nextCharacter(std::string_view text, std::size_t& offset) {
    UChar32 character = 0;
    auto position = static_cast<std::int32_t>(offset);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    U8_NEXT(bytes, position, static_cast<std::int32_t>(text.size()), character);
    // A truncated sequence is passed byte by byte, so that each of its bytes is shown.
    offset = character < 0 ? offset + 1 : static_cast<std::size_t>(position);
    return character;
}

void append(std::string& text, UChar32 character) {
    std::uint8_t bytes[U8_MAX_LENGTH];
    std::int32_t length = 0;
    U8_APPEND_UNSAFE(bytes, length, static_cast<std::uint32_t>(character));
    text.append(bytes, bytes + length);
}

template <class Visitor>
void forEachCharacter(std::string_view text, Visitor&& visit) {
    for (std::size_t offset = 0; offset < text.size();) {
        const UChar32 character = nextCharacter(text, offset);
        visit(character < 0 ? replacement : character);
    }
}

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string normalized(const icu::Normalizer2* form, std::string_view text) {
    std::string result;
    UErrorCode status = U_ZERO_ERROR;
    icu::StringByteSink<std::string> sink(&result);
    form->normalizeUTF8(0, icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())), sink,
                        nullptr, status);
    return result;
}

template <class Mapping>
std::string mapped(std::string_view text, Mapping&& mapping) {
    std::string result;
    UErrorCode status = U_ZERO_ERROR;
    icu::StringByteSink<std::string> sink(&result);
    mapping(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())), sink, status);
    return result;
}

bool isLetterOrNumber(UChar32 character) {
    return u_hasBinaryProperty(character, UCHAR_ALPHABETIC) ||
           u_getIntPropertyValue(character, UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The run of digits at the start, and the same without leading zeros.
std::string_view digitRun(std::string_view text) {
    return text.substr(0, static_cast<std::size_t>(std::ranges::find_if_not(text, isDigit) - text.begin()));
}

std::string_view withoutLeadingZeros(std::string_view digits) {
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

std::size_t columnsOf(UChar32 character) {
    if (character >= ' ' && character <= '~') {
        return 1; // Nearly all of every table, and asking for its properties is most of the work.
    }
    const std::int8_t type = u_charType(character);
    if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || type == U_FORMAT_CHAR) {
        return 0;
    }
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

/// True where a terminal would do something else than show the character.
bool misleads(UChar32 character) {
    // Direction overrides could make one path look like another.
    return u_charType(character) == U_CONTROL_CHAR || (character >= 0x202A && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069) || character == 0x2028 || character == 0x2029;
}

enum class StrayBytes { escaped, kept };

template <class Predicate>
std::string escapedWhere(std::string_view bytes, Predicate isEscaped, StrayBytes strays) {
    std::string shown;
    for (std::size_t offset = 0; offset < bytes.size();) {
        const std::size_t start = offset;
        const UChar32 character = nextCharacter(bytes, offset);
        const bool isShown = character < 0 ? strays == StrayBytes::kept : !isEscaped(character);
        if (isShown) {
            shown += bytes.substr(start, offset - start);
        } else if (character == '\n') {
            shown += "\\n";
        } else {
            for (const char byte : bytes.substr(start, offset - start)) {
                shown += fmt::format("\\x{:02X}", static_cast<unsigned char>(byte));
            }
        }
    }
    return shown;
}

} // namespace

std::string composed(std::string_view text) {
    if (isAscii(text)) {
        return std::string(text);
    }
    UErrorCode status = U_ZERO_ERROR;
    return normalized(icu::Normalizer2::getNFCInstance(status), text);
}

std::string folded(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const std::string decomposed = normalized(icu::Normalizer2::getNFKDInstance(status), text);
    std::string bare;
    forEachCharacter(decomposed, [&](UChar32 character) {
        if (u_charType(character) != U_NON_SPACING_MARK) {
            append(bare, character);
        }
    });
    return composed(mapped(bare, [](icu::StringPiece source, icu::ByteSink& sink, UErrorCode& error) {
        icu::CaseMap::utf8Fold(0, source, sink, nullptr, error);
    }));
}

std::string lowerCased(std::string_view text) {
    return mapped(text, [](icu::StringPiece source, icu::ByteSink& sink, UErrorCode& error) {
        icu::CaseMap::utf8ToLower("", 0, source, sink, nullptr, error);
    });
}

std::string capitalized(std::string_view text) {
    std::size_t first = 0;
    if (!text.empty()) {
        nextCharacter(text, first);
    }
    return mapped(text.substr(0, first),
                  [](icu::StringPiece source, icu::ByteSink& sink, UErrorCode& error) {
                      icu::CaseMap::utf8ToUpper("", 0, source, sink, nullptr, error);
                  }) +
           std::string(text.substr(first));
}

std::vector<std::string> words(std::string_view text) {
    std::vector<std::string> found;
    bool isInWord = false;
    forEachCharacter(lowerCased(composed(text)), [&](UChar32 character) {
        const bool belongs = isLetterOrNumber(character);
        if (belongs && !isInWord) {
            found.emplace_back();
        }
        if (belongs) {
            append(found.back(), character);
        }
        isInWord = belongs;
    });
    return found;
}

std::string lettersAndDigits(std::string_view text) {
    std::string kept;
    for (const std::string& word : words(text)) {
        kept += word;
    }
    return kept;
}

std::string wordsApart(std::string_view text) {
    std::string apart;
    forEachCharacter(
        text, [&](UChar32 character) { append(apart, isLetterOrNumber(character) ? character : ' '); });
    return apart;
}

std::vector<std::string> matchesOf(std::string_view pattern, std::string_view text) {
    const auto unicode = [](std::string_view bytes) {
        return icu::UnicodeString::fromUTF8({bytes.data(), static_cast<std::int32_t>(bytes.size())});
    };
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString searched = unicode(text);
    icu::RegexMatcher matcher(unicode(pattern), searched, 0, status);
    matcher.setStackLimit(0, status); // Giving up on a long text would look like finding nothing in it.
    std::vector<std::string> matches;
    while (matcher.find(status)) {
        matcher.group(status).toUTF8String(matches.emplace_back());
    }
    return matches;
}

bool comesBeforeNumerically(std::string_view left, std::string_view right) {
    const std::string_view wholeLeft = left;
    const std::string_view wholeRight = right;
    while (!left.empty() && !right.empty()) {
        const std::string_view leftRun = digitRun(left);
        const std::string_view rightRun = digitRun(right);
        if (!leftRun.empty() && !rightRun.empty()) {
            const std::string_view leftValue = withoutLeadingZeros(leftRun);
            const std::string_view rightValue = withoutLeadingZeros(rightRun);
            if (leftValue != rightValue) {
                return leftValue.size() != rightValue.size() ? leftValue.size() < rightValue.size()
                                                             : leftValue < rightValue;
            }
            left.remove_prefix(leftRun.size());
            right.remove_prefix(rightRun.size());
        } else if (left.front() != right.front()) {
            return static_cast<unsigned char>(left.front()) < static_cast<unsigned char>(right.front());
        } else {
            left.remove_prefix(1);
            right.remove_prefix(1);
        }
    }
    if (left.empty() && right.empty()) {
        return wholeLeft < wholeRight; // They differ in leading zeros at the most.
    }
    return left.empty();
}

bool beginsWithNumber(std::string_view text) {
    if (text.empty()) {
        return false;
    }
    std::size_t offset = 0;
    const UChar32 first = nextCharacter(text, offset);
    return first >= 0 && u_getIntPropertyValue(first, UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

std::string printable(std::string_view bytes) {
    return escapedWhere(bytes, misleads, StrayBytes::escaped);
}

std::string revealed(std::string_view bytes) {
    return escapedWhere(
        bytes,
        [](UChar32 character) {
            return misleads(character) || u_charType(character) == U_FORMAT_CHAR ||
                   u_hasBinaryProperty(character, UCHAR_DEFAULT_IGNORABLE_CODE_POINT);
        },
        StrayBytes::escaped);
}

std::string printableWithStrays(std::string_view bytes) {
    return escapedWhere(bytes, misleads, StrayBytes::kept);
}

std::string decoded(std::string_view bytes) {
    bool isUtf8 = true;
    for (std::size_t offset = 0; offset < bytes.size() && isUtf8;) {
        isUtf8 = nextCharacter(bytes, offset) >= 0;
    }
    if (isUtf8) {
        return std::string(bytes);
    }
    std::string text;
    for (const char byte : bytes) {
        append(text, static_cast<unsigned char>(byte));
    }
    return text;
}

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    forEachCharacter(text, [&](UChar32) { ++count; });
    return count;
}

std::size_t columns(std::string_view text) {
    std::size_t count = 0;
    forEachCharacter(text, [&](UChar32 character) { count += columnsOf(character); });
    return count;
}

std::string shortened(std::string_view text, std::size_t mostColumns) {
    if (columns(text) <= mostColumns) {
        return std::string(text);
    }
    if (mostColumns == 0) {
        return {};
    }
    std::vector<UChar32> characters;
    forEachCharacter(text, [&](UChar32 character) { characters.push_back(character); });
    const std::size_t kept = mostColumns - 1;
    std::string head;
    std::size_t used = 0;
    for (const UChar32 character : characters) {
        if (used + columnsOf(character) > kept / 2) {
            break;
        }
        used += columnsOf(character);
        append(head, character);
    }
    std::size_t first = characters.size();
    while (first > 0 && used + columnsOf(characters[first - 1]) <= kept) {
        used += columnsOf(characters[--first]);
    }
    std::string tail;
    for (; first < characters.size(); ++first) {
        append(tail, characters[first]);
    }
    return head + "…" + tail;
}

} // namespace lumo
