#pragma once

#include <cstddef>
#include <string>

namespace lumo::platform {

/// Standard input, line by line, in memory that no line can exceed. Used by one thread.
class LineInput final {
  public:
    enum class State {
        line,
        tooLong, ///< The line was longer than allowed and is gone.
        end,     ///< Nothing more will come, or an interrupt was noted.
    };

    explicit LineInput(std::size_t mostBytes) : mostBytes_(mostBytes) {}

    /// Waits for the next line and gives it without its line feed. What comes after the last line feed counts
    /// as a line.
    State next(std::string& line);

  private:
    bool fill();

    std::size_t mostBytes_;
    std::string buffer_;
    std::size_t used_ = 0;
    bool isAtEnd_ = false;
};

} // namespace lumo::platform
