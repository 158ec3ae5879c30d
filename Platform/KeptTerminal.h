#pragma once

#include <string>

/// Looking after a terminal that a program takes over whole.
namespace lumo::platform {

/// Lets the C library speak the characters of the user's locale; true when these are UTF-8.
bool speakLocalCharacters();

/// Remembers how the terminal behind standard input is set. Whatever crash or signal ends the process while
/// this lives, the terminal gets that back. There may be one at a time.
///
/// Ctrl-Z waits meanwhile until it may stop the program (see `StopsAllowed`), in this thread and in those
/// that it starts: a terminal's library ignores it while it draws, and so it would be lost.
class KeptTerminal final {
  public:
    KeptTerminal();
    ~KeptTerminal();
    KeptTerminal(const KeptTerminal&) = delete;
    KeptTerminal& operator=(const KeptTerminal&) = delete;

    /// What is written to standard output besides when the process crashes: it leaves the whole screen. At
    /// most 256 bytes of it.
    void leaveWith(const std::string& bytes);
};

/// Ctrl-Z may stop the program as long as this lives, in the thread that made it.
class StopsAllowed final {
  public:
    StopsAllowed();
    ~StopsAllowed();
    StopsAllowed(const StopsAllowed&) = delete;
    StopsAllowed& operator=(const StopsAllowed&) = delete;
};

} // namespace lumo::platform
