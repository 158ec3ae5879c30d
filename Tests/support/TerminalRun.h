#pragma once

#include "Tests/support/Child.h"

#include <termios.h>

#include <string>
#include <string_view>

namespace tarvo::testing {

/// A program on a terminal of its own that a test types on, under a shell, so that it can be stopped and is
/// not the leader of its session: what a terminal still holds is lost when that ends. Each wait ends after
/// `hangLimit`, and then the test has failed.
class TerminalRun final {
  public:
    TerminalRun(const std::string& program, const Arguments& arguments, const Arguments& environment,
                unsigned short columns = 80, unsigned short rows = 24);
    ~TerminalRun();
    TerminalRun(const TerminalRun&) = delete;
    TerminalRun& operator=(const TerminalRun&) = delete;

    void type(std::string_view keys) const;
    void resize(unsigned short columns, unsigned short rows) const;
    /// To the program.
    void signal(int number) const;
    /// What was shown up to this text and was not waited for before.
    std::string waitFor(std::string_view text);
    /// Waits until the program has ended or stopped, which the shell tells by that number.
    std::string waitForEnd(int code);
    /// Goes on with a program that stopped.
    void goOn() const { type("\n"); }
    /// True when the terminal is set as it was before the program began.
    [[nodiscard]] bool isSetAsBefore() const;

  private:
    int terminal_ = -1;
    int itsEnd_ = -1; ///< Kept open, so that the terminal outlives everybody on it.
    pid_t shell_ = -1;
    termios before_ = {};
    std::string shown_; ///< And not waited for yet.
};

} // namespace tarvo::testing
