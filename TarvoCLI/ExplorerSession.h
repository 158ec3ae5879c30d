#pragma once

#include "TarvoCLI/Console.h"
#include "TarvoModel/Exploring/Explorer.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace tarvo {

/// What is explored.
struct Explored {
    std::shared_ptr<lumo::NamedTree> tree;
    bool isExport = false; ///< Read from a file: nothing of it is on this disk, and nothing is measured.
    std::optional<std::int64_t> olderThanDays = {}; ///< What is shown at first.
};

/// Explores on the whole terminal, which is one, until the user has enough. A tree that is no export is
/// measured meanwhile, and ends being so with this.
ExitCode explore(const Explored& explored, const Invocation& invocation);

} // namespace tarvo
