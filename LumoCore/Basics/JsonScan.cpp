#include "LumoCore/Basics/JsonScan.h"

#include "LumoCore/Basics/JsonValue.h"

#include <unicode/utf8.h>

#include <cstdint>

namespace lumo::JsonScan {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isHexDigit(char character) {
    return isDigit(character) || (character >= 'a' && character <= 'f') ||
           (character >= 'A' && character <= 'F');
}

/// Walks over a text by the grammar of JSON. Each operation is true when what it stands for is there, and
/// stands behind it then.
class Scanner final {
  public:
    Scanner(std::string_view text, std::size_t offset) : text_(text), offset_(offset) {}

    [[nodiscard]] std::size_t offset() const { return offset_; }
    [[nodiscard]] bool isAtEnd() const { return offset_ == text_.size(); }

    bool skip(std::string_view words) {
        if (!text_.substr(offset_).starts_with(words)) {
            return false;
        }
        offset_ += words.size();
        return true;
    }

    void skipBlanks() {
        while (!isAtEnd() && std::string_view(" \t\r\n").find(text_[offset_]) != std::string_view::npos) {
            ++offset_;
        }
    }

    bool skipValue() {
        switch (peek()) {
        case '{':
            return skipMembers(nullptr);
        case '[':
            return skipElements();
        case '"':
            return skipString();
        case 't':
            return skip("true");
        case 'f':
            return skip("false");
        case 'n':
            return skip("null");
        default:
            return skipNumber();
        }
    }

    /// An object, whose members are noted where asked for.
    bool skipMembers(std::vector<Member>* members) {
        return skipList('{', '}', [&] {
            Member member;
            member.name.begin = offset_;
            if (!skipString()) {
                return false;
            }
            member.name.end = offset_;
            skipBlanks();
            if (!skip(":")) {
                return false;
            }
            skipBlanks();
            member.value.begin = offset_;
            if (!skipValue()) {
                return false;
            }
            member.value.end = offset_;
            if (members != nullptr) {
                members->push_back(std::move(member));
            }
            return true;
        });
    }

  private:
    /// The next byte, NUL at the end.
    [[nodiscard]] char peek() const { return isAtEnd() ? '\0' : text_[offset_]; }

    bool skipElements() {
        return skipList('[', ']', [this] { return skipValue(); });
    }

    template <class SkipOne>
    bool skipList(char opening, char closing, const SkipOne& skipOne) {
        if (peek() != opening || depth_ == mostJsonDepth) {
            return false;
        }
        ++depth_;
        ++offset_;
        skipBlanks();
        if (peek() != closing) {
            do {
                skipBlanks();
                if (!skipOne()) {
                    return false;
                }
                skipBlanks();
            } while (skip(","));
        }
        --depth_;
        return skip(std::string_view(&closing, 1));
    }

    bool skipString() {
        if (!skip("\"")) {
            return false;
        }
        while (peek() != '"') {
            if (peek() == '\\' ? !skipEscape() : !skipCharacter()) {
                return false;
            }
        }
        ++offset_;
        return true;
    }

    bool skipEscape() {
        ++offset_;
        const char kind = peek();
        if (kind == '\0' || std::string_view("\"\\/bfnrtu").find(kind) == std::string_view::npos) {
            return false;
        }
        ++offset_;
        for (int digit = 0; kind == 'u' && digit < 4; ++digit) {
            if (!isHexDigit(peek())) {
                return false;
            }
            ++offset_;
        }
        return true;
    }

    /// One character of a string, which is no control character and whole.
    bool skipCharacter() {
        constexpr char firstPrintable = 0x20;
        if (static_cast<signed char>(peek()) >= 0) {
            if (peek() < firstPrintable) {
                return false;
            }
            ++offset_;
            return true;
        }
        constexpr std::size_t longestCharacter = 4;
        const std::string_view rest = text_.substr(offset_, longestCharacter);
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(rest.data());
        std::int32_t length = 0;
        UChar32 character = 0;
        U8_NEXT(bytes, length, static_cast<std::int32_t>(rest.size()), character);
        offset_ += static_cast<std::size_t>(length);
        return character >= 0;
    }

    bool skipDigits() {
        const std::size_t begin = offset_;
        while (isDigit(peek())) {
            ++offset_;
        }
        return offset_ > begin;
    }

    bool skipNumber() {
        skip("-");
        if (!skip("0") && !skipDigits()) {
            return false;
        }
        if (skip(".") && !skipDigits()) {
            return false;
        }
        if (skip("e") || skip("E")) {
            if (!skip("+")) {
                skip("-");
            }
            return skipDigits();
        }
        return true;
    }

    std::string_view text_;
    std::size_t offset_;
    std::size_t depth_ = 0;
};

/// What a name means. One that means no text, as half of a character does, is nobody's key.
std::string keyOf(std::string_view quoted) {
    const std::string_view plain = quoted.substr(1, quoted.size() - 2);
    if (plain.find('\\') == std::string_view::npos) {
        return std::string(plain);
    }
    const Result<JsonValue> read = parseJson(quoted);
    const auto* key = read ? std::get_if<std::string>(&read->value) : nullptr;
    return key != nullptr ? *key : std::string(plain);
}

} // namespace

std::optional<Object> objectAt(std::string_view text, std::size_t offset) {
    Scanner scanner(text, offset);
    Object object;
    if (!scanner.skipMembers(&object.members)) {
        return std::nullopt;
    }
    object.whole = {offset, scanner.offset()};
    for (Member& member : object.members) {
        member.key = keyOf(text.substr(member.name.begin, member.name.end - member.name.begin));
    }
    return object;
}

std::optional<Object> documentIn(std::string_view text) {
    if (text.size() > mostJsonBytes) {
        return std::nullopt;
    }
    Scanner before(text, 0);
    before.skip(byteOrderMark);
    before.skipBlanks();
    std::optional<Object> document = objectAt(text, before.offset());
    if (!document) {
        return std::nullopt;
    }
    Scanner behind(text, document->whole.end);
    behind.skipBlanks();
    return behind.isAtEnd() ? std::move(document) : std::nullopt;
}

} // namespace lumo::JsonScan
