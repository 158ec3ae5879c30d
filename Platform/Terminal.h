#pragma once

#include <cstddef>
#include <string_view>

/// The command's three streams, and the request to stop.
namespace lumo::platform {

enum class Stream { input, output, error };

bool isTerminal(Stream stream);

/// Columns of the terminal behind the stream, 0 when there is none.
std::size_t terminalColumns(Stream stream);

/// Writes all bytes; false when the disk is full or an interrupt was noted.
bool writeAll(Stream stream, std::string_view bytes);

/// From now on an interrupt (Ctrl-C, or a polite request to end) is only noted.
void noteInterrupts();

/// True once an interrupt was noted.
bool wasInterrupted();

} // namespace lumo::platform
