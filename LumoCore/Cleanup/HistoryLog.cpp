#include "LumoCore/Cleanup/HistoryLog.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "Platform/LogFile.h"
#include "Platform/StateFile.h"

#include <algorithm>

namespace lumo {

using platform::SystemResult;

SystemResult<void> HistoryLog::append(const CleanupOutcome& outcome, const std::string& path) {
    if (const auto made = platform::makePrivateFolder(std::string(parentOf(path))); !made) {
        return made;
    }
    const auto added = platform::appendLines(path, dumpJson(encode(outcome), JsonLayout::line) + "\n");
    return added ? SystemResult<void>() : std::unexpected(added.error());
}

SystemResult<std::vector<CleanupOutcome>> HistoryLog::outcomes(const std::string& path) {
    std::vector<CleanupOutcome> outcomes;
    const auto read = platform::visitLines(path, mostJsonBytes, [&](std::string_view line) {
        if (Result<CleanupOutcome> outcome = decodeJson<CleanupOutcome>(line)) {
            outcomes.push_back(std::move(*outcome));
        }
    });
    if (!read) {
        return std::unexpected(read.error());
    }
    return outcomes;
}

bool HistoryWriter::append(CleanupOutcome outcome) {
    outcome.cleanup = cleanup_;
    unwritten_.push_back(std::move(outcome));
    return finish();
}

bool HistoryWriter::finish() {
    while (!unwritten_.empty() && HistoryLog::append(unwritten_.front(), path_)) {
        unwritten_.erase(unwritten_.begin());
    }
    return unwritten_.empty();
}

std::int64_t CleanupHistory::total(const std::vector<CleanupOutcome>& outcomes) {
    std::int64_t sum = 0;
    for (const CleanupOutcome& outcome : outcomes) {
        if (outcome.status == CleanupStatus::done) {
            // Anybody may have written into the log: no number in it is a reason to stop.
            sum = saturatedSum(sum, std::max<std::int64_t>(outcome.freedBytes, 0));
            sum = saturatedSum(sum, std::max<std::int64_t>(outcome.trashedBytes, 0));
        }
    }
    return sum;
}

std::int64_t CleanupHistory::total(const std::string& home) {
    const auto outcomes = HistoryLog::outcomes(OwnFiles::historyLog(home));
    return outcomes ? total(*outcomes) : 0;
}

} // namespace lumo
