#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"

#include <array>
#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace lumo {

/// What a text can be filled with.
using WordsArgument = std::variant<std::string_view, std::int64_t, std::uint64_t, double>;

/// A text in both languages. Where something is to be filled in, it has "{}" in both; a specifier as in
/// std::format may stand between the braces.
struct Words {
    std::string_view es;
    std::string_view en;

    [[nodiscard]] std::string in(Language language = currentLanguage()) const {
        return std::string(language == Language::es ? es : en);
    }

    /// Filled in, in the language of this process: `Words{"faltan {}", "{} to go"}.with(amount)`.
    template <class... Arguments>
    [[nodiscard]] std::string with(const Arguments&... arguments) const {
        return in(currentLanguage(), arguments...);
    }

    /// Filled in, in that language.
    template <class... Arguments>
        requires(sizeof...(Arguments) > 0)
    [[nodiscard]] std::string in(Language language, const Arguments&... arguments) const {
        return filled(language == Language::es ? es : en,
                      std::array<WordsArgument, sizeof...(Arguments)>{argument(arguments)...});
    }

  private:
    template <class Value>
    static WordsArgument argument(const Value& value) {
        if constexpr (std::signed_integral<Value>) {
            return static_cast<std::int64_t>(value);
        } else if constexpr (std::unsigned_integral<Value>) {
            return static_cast<std::uint64_t>(value);
        } else if constexpr (std::floating_point<Value>) {
            return static_cast<double>(value);
        } else {
            return std::string_view(value);
        }
    }

    static std::string filled(std::string_view pattern, std::span<const WordsArgument> arguments);
};

/// A text of which each system has its own.
struct SystemWords {
    Words macos;
    Words linux;

    [[nodiscard]] constexpr const Words& on(System system = currentSystem()) const {
        return system == System::macos ? macos : linux;
    }
};

} // namespace lumo
