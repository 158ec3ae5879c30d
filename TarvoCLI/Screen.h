#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

/// How a piece of text stands out.
enum class Style { plain, strong, faint, bar, safe, review, problem };

/// A piece of a line.
struct Span {
    std::string text; ///< Fit for a terminal: see `lumo::printable`.
    Style style = Style::plain;
};

/// One line of the screen.
struct ScreenLine {
    std::vector<Span> spans;
    bool isReversed = false; ///< All of it, to the end of the line.
};

/// Joins what stands between the spans' styles: for measuring and for tests.
std::string textOf(const ScreenLine& line);

/// What was typed.
struct Key {
    enum class Kind {
        none, ///< Nothing in time.
        character,
        up,
        down,
        left,
        right,
        pageUp,
        pageDown,
        home,
        end,
        enter,
        backspace,
        escape,
        resized,
    };
    Kind kind = Kind::none;
    std::string text = {}; ///< Of a character, in UTF-8.
};

/// The text once that key was typed behind it: a character more, or one less, whatever its bytes.
std::string typedBehind(std::string text, const Key& key);

/// The whole terminal, as long as it lives; afterwards it is as it was before, whatever ends the process.
class Screen final {
  public:
    /// Absent when the terminal is none that can be drawn on.
    static std::unique_ptr<Screen> open(bool hasColor);
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    [[nodiscard]] std::size_t columns() const;
    [[nodiscard]] std::size_t rows() const;
    [[nodiscard]] bool speaksUTF8() const { return speaksUTF8_; }

    /// Shows these lines from the top, cut where the screen ends, and nothing below.
    void show(const std::vector<ScreenLine>& lines);
    /// What is typed next, waited for that long.
    Key key(std::chrono::milliseconds patience);
    /// Draws all of it anew at the next `show`, whatever another program has written there.
    void forget();

  private:
    struct Terminal;

    Screen();
    [[nodiscard]] std::string fitting(std::string_view text, std::size_t most) const;

    std::unique_ptr<Terminal> terminal_;
    bool speaksUTF8_ = false;
};

/// The text in the characters that every terminal has: letters without their accents, "?" for the others.
std::string inASCII(std::string_view text);

} // namespace tarvo
