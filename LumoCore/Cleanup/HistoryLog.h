#pragma once

#include "LumoCore/Basics/UniqueID.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "Platform/SystemError.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// The log of all cleanups of a home: one outcome a line, oldest first. What was set aside can be put back
/// only because it stands there, so a line counts as written once it is durable.
namespace lumo::HistoryLog {

/// Adds a line and makes it durable. On failure the log is as it was.
platform::SystemResult<void> append(const CleanupOutcome& outcome, const std::string& path);

/// The outcomes. A line that is torn, is not UTF-8 or does not decode costs itself alone; a missing log has
/// none.
platform::SystemResult<std::vector<CleanupOutcome>> outcomes(const std::string& path);

} // namespace lumo::HistoryLog

namespace lumo {

/// Writes the lines of one cleanup in their order, by which they can be told from those of others. What
/// cannot be written is kept and tried again: a disk that is full now is less so after the next action.
class HistoryWriter final {
  public:
    explicit HistoryWriter(std::string path) : path_(std::move(path)), cleanup_(uniqueID()) {}

    /// True when this line and all before it are durable.
    bool append(CleanupOutcome outcome);

    /// The last try before the operation answers; true when all lines are durable.
    bool finish();

  private:
    std::string path_;
    std::string cleanup_;
    std::vector<CleanupOutcome> unwritten_; ///< Oldest first.
};

} // namespace lumo

namespace lumo::CleanupHistory {

/// What all cleanups freed or set aside in their time; failed ones do not count.
std::int64_t total(const std::vector<CleanupOutcome>& outcomes);

/// The same from the log of a home; 0 when there is none or it cannot be read.
std::int64_t total(const std::string& home);

} // namespace lumo::CleanupHistory
