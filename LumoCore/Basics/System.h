#pragma once

namespace lumo {

/// The systems that are known. What differs between them in texts, places and rules is asked of a value like
/// the language, so that each can be tried on any machine.
enum class System { macos, linux };

/// The system that this program was built for.
System currentSystem();

} // namespace lumo
