#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The command's three streams, and the request to stop.
namespace lumo::platform {

enum class Stream { input, output, error };

bool isTerminal(Stream stream);

/// Columns of the terminal behind the stream, 0 when there is none.
std::size_t terminalColumns(Stream stream);

/// Writes all bytes; false when the disk is full or an interrupt was noted.
bool writeAll(Stream stream, std::string_view bytes);

/// Writes some of the bytes, as many as fit without waiting, and says how many; 0 when the stream took none
/// for that long. Absent when nobody reads it any more, the disk is full or an interrupt was noted.
std::optional<std::size_t> writeWhatFits(Stream stream, std::string_view bytes,
                                         std::chrono::milliseconds patience);

/// The next line of standard input, without its line feed and at most 4096 bytes of it; absent at the end of
/// the input and after an interrupt was noted.
std::optional<std::string> readLine();

/// From now on writing to a pipe that nobody reads fails instead of ending the process. Tools that are run
/// have it as usual.
void ignoreBrokenPipes();

/// From now on an interrupt (Ctrl-C, or a polite request to end) is only noted.
void noteInterrupts();

/// From now on the end of the terminal is noted like an interrupt.
void noteHangups();

/// How often an interrupt was noted.
int interruptCount();

/// True once an interrupt was noted.
bool wasInterrupted();

} // namespace lumo::platform
