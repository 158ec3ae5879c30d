#include "LumoCore/Inventories/ModelHeader.h"

#include "LumoCore/Basics/JsonValue.h"
#include "Platform/QuietFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>

namespace lumo {

namespace {

/// Numbers and texts one after the other, each only as long as bytes are left.
class Reader final {
  public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    /// Least significant byte first.
    std::optional<std::uint64_t> number(std::size_t width) {
        const auto taken = take(width);
        if (!taken) {
            return std::nullopt;
        }
        std::uint64_t value = 0;
        for (std::size_t index = width; index-- > 0;) {
            value = (value << 8U) | static_cast<unsigned char>((*taken)[index]);
        }
        return value;
    }

    std::optional<std::string_view> text() {
        const auto length = number(8);
        return length ? take(*length) : std::nullopt;
    }

    std::optional<std::string_view> take(std::uint64_t count) {
        if (count > bytes_.size()) {
            bytes_ = {};
            return std::nullopt;
        }
        const std::string_view taken = bytes_.substr(0, count);
        bytes_.remove_prefix(count);
        return taken;
    }

  private:
    std::string_view bytes_;
};

/// The types of values in a GGUF file.
enum class ValueType : std::uint64_t { text = 8, list = 9 };

/// Bytes of a value, by its type; 0 for those of any length.
constexpr std::array<std::uint64_t, 13> widths{1, 1, 2, 2, 4, 4, 4, 1, 0, 0, 8, 8, 8};

/// How the weights are kept, by the number of llama.cpp's file types.
constexpr std::array<std::string_view, 39> fileTypes{
    "F32",    "F16",    "Q4_0",   "Q4_1",    "",       "",       "",       "Q8_0",   "Q5_0",  "Q5_1",
    "Q2_K",   "Q3_K_S", "Q3_K_M", "Q3_K_L",  "Q4_K_S", "Q4_K_M", "Q5_K_S", "Q5_K_M", "Q6_K",  "IQ2_XXS",
    "IQ2_XS", "Q2_K_S", "IQ3_XS", "IQ3_XXS", "IQ1_S",  "IQ4_NL", "IQ3_S",  "IQ3_M",  "IQ2_S", "IQ2_M",
    "IQ4_XS", "IQ1_M",  "BF16",   "",        "",       "",       "TQ1_0",  "TQ2_0",  "MXFP4"};

/// Foreign text, cut to what a line can show.
std::string shortText(std::string_view text) {
    constexpr std::size_t mostBytes = 80;
    return std::string(text.substr(0, mostBytes));
}

/// Passes over a list; false when it breaks off or holds what has no known length.
bool skipList(Reader& reader) {
    const auto type = reader.number(4);
    const auto count = reader.number(8);
    if (!type || !count || *type >= widths.size() || *type == static_cast<std::uint64_t>(ValueType::list)) {
        return false;
    }
    if (*type != static_cast<std::uint64_t>(ValueType::text)) {
        const std::uint64_t width = widths[*type];
        return *count <= mostHeaderBytes && reader.take(*count * width).has_value();
    }
    for (std::uint64_t index = 0; index < *count; ++index) {
        if (!reader.text()) {
            return false;
        }
    }
    return true;
}

/// Reads one value and notes it where it tells something; false when nothing after it can be read.
bool readValue(Reader& reader, std::string_view key, std::uint64_t type, ModelHeader& header) {
    if (type == static_cast<std::uint64_t>(ValueType::list)) {
        return skipList(reader);
    }
    if (type == static_cast<std::uint64_t>(ValueType::text)) {
        const auto text = reader.text();
        if (text && key == "general.name") {
            header.name = shortText(*text);
        } else if (text && key == "general.size_label") {
            header.parameters = shortText(*text);
        }
        return text.has_value();
    }
    const auto number = type < widths.size() ? reader.number(widths[type]) : std::nullopt;
    if (number && key == "general.file_type" && *number < fileTypes.size()) {
        header.quantisation = fileTypes[*number];
    } else if (number && key == "general.parameter_count" && header.parameters.empty()) {
        header.parameters = parametersText(static_cast<double>(*number));
    }
    return number.has_value();
}

ModelHeader ggufHeaderIn(std::string_view bytes) {
    Reader reader(bytes.substr(4));
    ModelHeader header;
    const auto version = reader.number(4);
    const auto tensors = reader.number(8);
    const auto pairs = reader.number(8);
    if (!version || *version < 2 || *version > 3 || !tensors || !pairs) {
        return header;
    }
    for (std::uint64_t index = 0; index < *pairs; ++index) {
        const auto key = reader.text();
        const auto type = reader.number(4);
        if (!key || !type || !readValue(reader, *key, *type, header)) {
            break;
        }
    }
    return header;
}

/// The product of a tensor's extents; none for what is no list of numbers.
double elementsIn(const JsonValue& tensor) {
    const JsonValue* shape = tensor.find("shape");
    const auto* extents = shape != nullptr ? std::get_if<JsonValue::Array>(&shape->value) : nullptr;
    if (extents == nullptr) {
        return 0;
    }
    double elements = 1;
    for (const JsonValue& extent : *extents) {
        const auto* number = std::get_if<std::int64_t>(&extent.value);
        elements *= number != nullptr && *number > 0 ? static_cast<double>(*number) : 0;
    }
    return elements;
}

ModelHeader safetensorsHeaderIn(std::string_view json) {
    const auto document = parseJson(json);
    const auto* tensors = document ? std::get_if<JsonValue::Object>(&document->value) : nullptr;
    ModelHeader header;
    if (tensors == nullptr) {
        return header;
    }
    std::map<std::string, double> elementsOfType;
    double elements = 0;
    for (const JsonValue::Member& tensor : *tensors) {
        const JsonValue* type = tensor.value.find("dtype");
        const auto* name = type != nullptr ? std::get_if<std::string>(&type->value) : nullptr;
        if (name != nullptr) {
            elementsOfType[shortText(*name)] += elementsIn(tensor.value);
            elements += elementsIn(tensor.value);
        }
    }
    if (elements >= 1) {
        header.parameters = parametersText(elements);
        header.quantisation =
            std::ranges::max_element(elementsOfType, {}, [](const auto& type) { return type.second; })->first;
    }
    return header;
}

} // namespace

std::string parametersText(double count) {
    constexpr double billion = 1e9;
    constexpr double million = 1e6;
    if (count >= billion) {
        return fmt::format("{:.{}f}B", count / billion, count >= 10 * billion ? 0 : 1);
    }
    return count >= million ? fmt::format("{:.0f}M", count / million) : std::string();
}

std::optional<ModelHeader> modelHeaderIn(std::string_view beginning) {
    ModelHeader header;
    if (beginning.starts_with("GGUF")) {
        header = ggufHeaderIn(beginning);
    } else if (const auto length = Reader(beginning).number(8);
               length && *length <= mostHeaderBytes && beginning.size() > 8 && beginning[8] == '{') {
        header = safetensorsHeaderIn(beginning.substr(8, *length));
    }
    return header == ModelHeader() ? std::nullopt : std::optional(std::move(header));
}

std::optional<ModelHeader> modelHeaderOf(const std::string& path) {
    constexpr std::size_t firstLook = std::size_t{256} * 1024;
    for (const std::size_t most : {firstLook, mostHeaderBytes}) {
        const auto bytes = platform::quietBeginning(path, most);
        if (!bytes || bytes->size() < 9) {
            return std::nullopt;
        }
        // What breaks off may go on further in the file.
        const auto header = modelHeaderIn(*bytes);
        if ((header && !header->parameters.empty() && !header->quantisation.empty()) ||
            bytes->size() < most || most == mostHeaderBytes) {
            return header;
        }
    }
    return std::nullopt;
}

} // namespace lumo
