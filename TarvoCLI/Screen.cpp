#include "TarvoCLI/Screen.h"

#include "LumoCore/Basics/Text.h"
#include "Platform/KeptTerminal.h"

#include <curses.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>

namespace tarvo {

namespace {

/// What the terminal writes itself in that capability, without the pauses that some are told to make.
std::string capability(const char* name) {
    const char* found = tigetstr(name);
    // The library answers -1 for what is no text.
    if (found == nullptr || reinterpret_cast<std::intptr_t>(found) == -1) {
        return {};
    }
    std::string bytes(found);
    for (std::size_t pause = bytes.find("$<"); pause != std::string::npos; pause = bytes.find("$<")) {
        bytes.erase(pause, bytes.find('>', pause) - pause + 1);
    }
    return bytes;
}

struct Tinted {
    short pair;
    short color;
    attr_t attributes;
};

Tinted tintedAs(Style style) {
    switch (style) {
    case Style::plain:
        return {0, -1, A_NORMAL};
    case Style::strong:
        return {0, -1, A_BOLD};
    case Style::faint:
        return {0, -1, A_DIM};
    case Style::bar:
        return {1, COLOR_BLUE, A_NORMAL};
    case Style::safe:
        return {2, COLOR_GREEN, A_NORMAL};
    case Style::review:
        return {3, COLOR_YELLOW, A_NORMAL};
    case Style::problem:
        return {4, COLOR_RED, A_BOLD};
    }
    return {0, -1, A_NORMAL};
}

std::string inUTF8(wint_t character) {
    std::string text;
    const auto c = static_cast<std::uint32_t>(character);
    const auto byte = [&](std::uint32_t value) { text += static_cast<char>(value); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0U | (c >> 6U));
        byte(0x80U | (c & 0x3FU));
    } else if (c < 0x10000) {
        byte(0xE0U | (c >> 12U));
        byte(0x80U | ((c >> 6U) & 0x3FU));
        byte(0x80U | (c & 0x3FU));
    } else {
        byte(0xF0U | (c >> 18U));
        byte(0x80U | ((c >> 12U) & 0x3FU));
        byte(0x80U | ((c >> 6U) & 0x3FU));
        byte(0x80U | (c & 0x3FU));
    }
    return text;
}

Key::Kind kindOfKey(wint_t code) {
    switch (code) {
    case KEY_UP:
        return Key::Kind::up;
    case KEY_DOWN:
        return Key::Kind::down;
    case KEY_LEFT:
        return Key::Kind::left;
    case KEY_RIGHT:
        return Key::Kind::right;
    case KEY_PPAGE:
        return Key::Kind::pageUp;
    case KEY_NPAGE:
        return Key::Kind::pageDown;
    case KEY_HOME:
        return Key::Kind::home;
    case KEY_END:
        return Key::Kind::end;
    case KEY_ENTER:
        return Key::Kind::enter;
    case KEY_BACKSPACE:
        return Key::Kind::backspace;
    case KEY_RESIZE:
        return Key::Kind::resized;
    default:
        return Key::Kind::none;
    }
}

Key keyOfCharacter(wint_t character) {
    switch (character) {
    case '\r':
    case '\n':
        return {Key::Kind::enter};
    case 0x7F:
    case '\b':
        return {Key::Kind::backspace};
    case 0x1B:
        return {Key::Kind::escape};
    default:
        return {Key::Kind::character, inUTF8(character)};
    }
}

} // namespace

std::string textOf(const ScreenLine& line) {
    std::string text;
    for (const Span& span : line.spans) {
        text += span.text;
    }
    return text;
}

std::string typedBehind(std::string text, const Key& key) {
    if (key.kind == Key::Kind::character) {
        return text + key.text;
    }
    if (key.kind == Key::Kind::backspace && !text.empty()) {
        while (text.size() > 1 && (static_cast<unsigned char>(text.back()) & 0xC0U) == 0x80U) {
            text.pop_back();
        }
        text.pop_back();
    }
    return text;
}

std::string inASCII(std::string_view text) {
    constexpr std::pair<std::string_view, std::string_view> letters[] = {
        {"á", "a"},      {"é", "e"},      {"í", "i"}, {"ó", "o"},   {"ú", "u"},  {"ü", "u"},  {"ñ", "n"},
        {"Á", "A"},      {"É", "E"},      {"Í", "I"}, {"Ó", "O"},   {"Ú", "U"},  {"Ü", "U"},  {"Ñ", "N"},
        {"¿", ""},       {"¡", ""},       {"·", "-"}, {"…", "..."}, {"«", "\""}, {"»", "\""}, {"“", "\""},
        {"”", "\""},     {"█", "#"},      {"░", " "}, {"→", ">"},   {"←", "<"},  {"↑", "^"},  {"↓", "v"},
        {"\u00A0", " "}, {"\u202F", " "}, {"×", "x"}};
    std::string plain;
    while (!text.empty()) {
        const auto first = static_cast<unsigned char>(text.front());
        const auto found =
            std::ranges::find_if(letters, [&](const auto& pair) { return text.starts_with(pair.first); });
        if (first < 0x80) {
            plain += text.front();
            text.remove_prefix(1);
        } else if (found != std::ranges::end(letters)) {
            plain += found->second;
            text.remove_prefix(found->first.size());
        } else {
            plain += '?';
            do {
                text.remove_prefix(1);
            } while (!text.empty() && (static_cast<unsigned char>(text.front()) & 0xC0U) == 0x80U);
        }
    }
    return plain;
}

/// In this order: what the library has changed is undone before the settings come back.
struct Screen::Terminal {
    lumo::platform::KeptTerminal kept;
    SCREEN* screen = nullptr;
    bool hasColor = false;
    bool hasOwnScreen = false; ///< What was there before comes back by itself.

    Terminal() = default;
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() {
        if (screen != nullptr) {
            if (!hasOwnScreen) {
                erase(); // Or the next prompt would be written over the last line.
                refresh();
            }
            endwin();
            delscreen(screen);
        }
    }
};

Screen::Screen() : terminal_(std::make_unique<Terminal>()) {}

Screen::~Screen() = default;

std::unique_ptr<Screen> Screen::open(bool hasColor) {
    std::unique_ptr<Screen> made(new Screen);
    made->speaksUTF8_ = lumo::platform::speakLocalCharacters();
    Terminal& terminal = *made->terminal_;
    terminal.screen = newterm(nullptr, stdout, stdin);
    if (terminal.screen == nullptr) {
        return nullptr;
    }
    const std::string back = capability("rmcup");
    terminal.hasOwnScreen = !back.empty();
    terminal.kept.leaveWith(capability("sgr0") + capability("cnorm") + capability("rmkx") +
                            (terminal.hasOwnScreen ? back : capability("clear")) + "\r\n");
    cbreak();
    noecho();
    nonl();
    keypad(stdscr, true);
    set_escdelay(50); // Milliseconds: how long a lone Escape is waited for to become a key.
    curs_set(0);
    terminal.hasColor = hasColor && has_colors() && start_color() == OK && use_default_colors() == OK;
    if (terminal.hasColor) {
        for (const Style style : {Style::bar, Style::safe, Style::review, Style::problem}) {
            init_pair(tintedAs(style).pair, tintedAs(style).color, -1);
        }
    }
    return made;
}

std::size_t Screen::columns() const {
    return static_cast<std::size_t>(std::max(1, getmaxx(stdscr)));
}

std::size_t Screen::rows() const {
    return static_cast<std::size_t>(std::max(1, getmaxy(stdscr)));
}

/// The text in the terminal's characters, in at most that many columns.
std::string Screen::fitting(std::string_view text, std::size_t most) const {
    if (speaksUTF8_) {
        return lumo::shortened(text, most);
    }
    const std::string plain = inASCII(text);
    // Dots take three columns there.
    return plain.size() <= most
               ? plain
               : inASCII(lumo::shortened(plain, most - std::min<std::size_t>(2, most))).substr(0, most);
}

void Screen::show(const std::vector<ScreenLine>& lines) {
    erase();
    const std::size_t width = columns();
    for (std::size_t row = 0; row < std::min(lines.size(), rows()); ++row) {
        const ScreenLine& line = lines[row];
        const attr_t reversed = line.isReversed ? A_REVERSE : A_NORMAL;
        std::size_t column = 0;
        for (const Span& span : line.spans) {
            const Tinted tint = tintedAs(span.style);
            attr_set(tint.attributes | reversed, terminal_->hasColor ? tint.pair : short{0}, nullptr);
            const std::string text = fitting(span.text, width - std::min(column, width));
            mvaddstr(static_cast<int>(row), static_cast<int>(column), text.c_str());
            column += lumo::columns(text);
        }
        attr_set(reversed, 0, nullptr);
        for (; line.isReversed && column < width; ++column) {
            mvaddch(static_cast<int>(row), static_cast<int>(column), ' ');
        }
    }
    attr_set(A_NORMAL, 0, nullptr);
    refresh();
}

void Screen::forget() {
    clearok(stdscr, true);
}

Key Screen::key(std::chrono::milliseconds patience) {
    const lumo::platform::StopsAllowed whileWaiting;
    timeout(static_cast<int>(patience.count()));
    wint_t read = 0;
    const int kind = get_wch(&read);
    if (kind == ERR) {
        return {};
    }
    return kind == KEY_CODE_YES ? Key{kindOfKey(read)} : keyOfCharacter(read);
}

} // namespace tarvo
