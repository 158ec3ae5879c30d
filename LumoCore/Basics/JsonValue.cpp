#include "LumoCore/Basics/JsonValue.h"

#include <nlohmann/json.hpp>
#include <unicode/utf8.h>

#include <algorithm>
#include <limits>
#include <optional>

namespace lumo {

namespace {

/// The range in which some systems write bytes that are not UTF-8: U+EF80 for 0x80 to U+EFFF for 0xFF.
constexpr UChar32 strayBase = 0xEF80;
constexpr UChar32 strayEnd = 0xF000;

void appendStray(std::string& text, unsigned char byte) {
    const UChar32 character = strayBase + (byte - 0x80);
    text += static_cast<char>(0xE0 | (character >> 12));
    text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (character & 0x3F));
}

UChar32 nextCharacter(std::string_view text, std::int32_t& offset) {
    UChar32 character = 0;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    U8_NEXT(bytes, offset, static_cast<std::int32_t>(text.size()), character);
    return character;
}

std::string withStraysMarked(const std::string& text) {
    std::string marked;
    for (std::size_t start = 0; start < text.size();) {
        auto end = static_cast<std::int32_t>(start);
        const UChar32 character = nextCharacter(text, end);
        const bool isOrdinary = character >= 0 && (character < strayBase || character >= strayEnd);
        for (const char byte : std::string_view(text).substr(start, static_cast<std::size_t>(end) - start)) {
            const bool isAscii = static_cast<unsigned char>(byte) < 0x80;
            if (isOrdinary || isAscii) {
                marked += byte;
            } else {
                appendStray(marked, static_cast<unsigned char>(byte));
            }
        }
        start = static_cast<std::size_t>(end);
    }
    return marked;
}

std::string withStraysRestored(std::string_view text) {
    std::string bytes;
    for (std::size_t start = 0; start < text.size();) {
        auto end = static_cast<std::int32_t>(start);
        const UChar32 character = nextCharacter(text, end);
        if (character >= strayBase && character < strayEnd) {
            bytes += static_cast<char>(character - strayBase + 0x80);
        } else {
            bytes += text.substr(start, static_cast<std::size_t>(end) - start);
        }
        start = static_cast<std::size_t>(end);
    }
    return bytes;
}

/// True when the text stands in a document as it is, which spares nearly every name and path the library.
bool isPlain(std::string_view text) {
    return std::ranges::all_of(text, [](char character) {
        return character >= ' ' && character <= '~' && character != '"' && character != '\\';
    });
}

/// Writes a document without a second copy of it in the library's own form, which takes several times the
/// memory.
class Writer final {
  public:
    explicit Writer(JsonLayout layout) : layout_(layout) {}

    void write(const JsonValue& document) {
        std::visit([this](const auto& value) { write(value); }, document.value);
    }

    [[nodiscard]] std::string take() { return std::move(text_); }

  private:
    void write(std::nullptr_t) { text_ += "null"; }
    void write(bool flag) { text_ += flag ? "true" : "false"; }
    void write(std::int64_t number) { text_ += std::to_string(number); }
    void write(double number) { text_ += nlohmann::json(number).dump(); }
    void write(const std::string& text) {
        if (isPlain(text)) {
            text_.append(1, '"').append(text).append(1, '"');
        } else {
            text_ += nlohmann::json(withStraysMarked(text)).dump();
        }
    }

    void write(const JsonValue::Array& array) {
        writeAll(array, '[', ']', [this](const JsonValue& element) { write(element); });
    }

    void write(const JsonValue::Object& object) {
        writeAll(object, '{', '}', [this](const JsonValue::Member& member) {
            write(member.name);
            text_ += layout_ == JsonLayout::line ? ":" : ": ";
            write(member.value);
        });
    }

    template <class Elements, class WriteOne>
    void writeAll(const Elements& elements, char opening, char closing, WriteOne writeOne) {
        text_ += opening;
        ++level_;
        bool isFirst = true;
        for (const auto& element : elements) {
            text_ += isFirst ? "" : layout_ == JsonLayout::spaced ? ", " : ",";
            isFirst = false;
            breakLine();
            writeOne(element);
        }
        --level_;
        if (!isFirst) {
            breakLine();
        }
        text_ += closing;
    }

    void breakLine() {
        constexpr std::size_t blanksALevel = 2;
        if (layout_ == JsonLayout::indented) {
            text_ += '\n';
            text_.append(level_ * blanksALevel, ' ');
        }
    }

    const JsonLayout layout_;
    std::size_t level_ = 0;
    std::string text_;
};

/// Builds the document from the library's events, which come without recursion.
class Builder final : public nlohmann::json_sax<nlohmann::json> {
  public:
    bool null() override { return add({nullptr}); }
    bool boolean(bool flag) override { return add({flag}); }
    bool number_integer(number_integer_t number) override { return add({std::int64_t{number}}); }
    bool number_unsigned(number_unsigned_t number) override {
        if (number > static_cast<number_unsigned_t>(std::numeric_limits<std::int64_t>::max())) {
            problem_ = "a whole number does not fit in 64 bits";
            return false;
        }
        return add({static_cast<std::int64_t>(number)});
    }
    bool number_float(number_float_t number, const string_t& digits) override {
        // The library reads whole numbers that are too large as floating point.
        if (digits.find_first_of(".eE") == std::string::npos) {
            problem_ = "a whole number does not fit in 64 bits";
            return false;
        }
        return add({number});
    }
    bool string(string_t& text) override { return add({withStraysRestored(text)}); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return open({JsonValue::Object()}); }
    bool start_array(std::size_t) override { return open({JsonValue::Array()}); }
    bool key(string_t& name) override {
        auto& object = std::get<JsonValue::Object>(open_.back()->value);
        object.push_back({withStraysRestored(name), {}});
        return true;
    }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception&) override {
        problem_ = "malformed JSON at byte " + std::to_string(position);
        return false;
    }

    Result<JsonValue> take() {
        if (!problem_.empty()) {
            return failure(problem_);
        }
        return std::move(root_);
    }

  private:
    /// The place that the next value takes.
    JsonValue& place() {
        if (open_.empty()) {
            return root_;
        }
        if (auto* object = std::get_if<JsonValue::Object>(&open_.back()->value)) {
            return object->back().value;
        }
        auto& array = std::get<JsonValue::Array>(open_.back()->value);
        return array.emplace_back();
    }

    bool add(JsonValue value) {
        place() = std::move(value);
        return true;
    }

    bool open(JsonValue container) {
        if (open_.size() >= mostJsonDepth) {
            problem_ = "the JSON is nested too deeply";
            return false;
        }
        JsonValue& here = place();
        here = std::move(container);
        open_.push_back(&here);
        return true;
    }

    bool close() {
        open_.pop_back();
        return true;
    }

    JsonValue root_;
    // An open container does not move while it is open: only the innermost one grows.
    std::vector<JsonValue*> open_;
    std::string problem_;
};

} // namespace

const JsonValue* JsonValue::find(std::string_view name) const {
    const auto* object = std::get_if<Object>(&value);
    if (object == nullptr) {
        return nullptr;
    }
    const auto member = std::ranges::find(*object, name, &Member::name);
    return member != object->end() ? &member->value : nullptr;
}

std::string dumpJson(const JsonValue& document, JsonLayout layout) {
    Writer writer(layout);
    writer.write(document);
    return writer.take();
}

std::string jsonInText(const JsonValue& document) {
    return withStraysRestored(dumpJson(document, JsonLayout::line));
}

Result<JsonValue> parseJson(std::string_view bytes) {
    if (bytes.size() > mostJsonBytes) {
        return failure("the JSON is larger than 64 MiB");
    }
    Builder builder;
    nlohmann::json::sax_parse(bytes, &builder);
    return builder.take();
}

} // namespace lumo
