#include "LumoCore/Cleanup/Intents.h"

#include "Platform/LogFile.h"
#include "Platform/StateFile.h"

#include <cerrno>
#include <utility>

namespace lumo {

using platform::SystemError;
using platform::SystemResult;

namespace {

std::string lineOf(const Intent& intent) {
    return dumpJson(encode(intent), JsonLayout::line) + "\n";
}

} // namespace

SystemResult<void> IntentFile::announce(const std::vector<Intent>& intents) {
    std::string lines;
    for (const Intent& intent : intents) {
        lines += lineOf(intent);
        // The log line repeats both paths and little else, so what fits here fits there.
        if (lines.size() > mostJsonBytes - mostJsonBytes / 64) {
            return std::unexpected(SystemError{E2BIG});
        }
    }
    const SystemResult<std::int64_t> length = platform::appendLines(path_, lines);
    if (!length) {
        return std::unexpected(length.error());
    }
    lengthBefore_ = lengthBefore_.value_or(*length);
    return {};
}

SystemResult<void> IntentFile::retire() {
    const std::optional<std::int64_t> length = std::exchange(lengthBefore_, std::nullopt);
    return length ? platform::cutBack(path_, *length) : SystemResult<void>();
}

SystemResult<std::vector<Intent>> IntentFile::pending() const {
    std::vector<Intent> intents;
    const auto read = platform::visitLines(path_, mostJsonBytes, [&](std::string_view line) {
        if (Result<Intent> intent = decodeJson<Intent>(line)) {
            intents.push_back(std::move(*intent));
        }
    });
    if (!read) {
        return std::unexpected(read.error());
    }
    return intents;
}

SystemResult<void> IntentFile::keepOnly(const std::vector<Intent>& intents) const {
    if (intents.empty()) {
        return platform::cutBack(path_, 0);
    }
    std::string lines;
    for (const Intent& intent : intents) {
        lines += lineOf(intent);
    }
    return platform::replaceWhole(path_, lines);
}

} // namespace lumo
