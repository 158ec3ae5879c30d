#include "LumoCore/Cleanup/Intents.h"

#include "Platform/LogFile.h"

#include <cerrno>

namespace lumo {

using platform::SystemError;
using platform::SystemResult;

SystemResult<void> IntentFile::announce(const std::vector<Intent>& intents) {
    std::string lines;
    for (const Intent& intent : intents) {
        lines += dumpJson(encode(intent), JsonLayout::line) + "\n";
        // The log line repeats both paths and little else, so what fits here fits there.
        if (lines.size() > mostJsonBytes - mostJsonBytes / 64) {
            return std::unexpected(SystemError{E2BIG});
        }
    }
    const SystemResult<std::int64_t> length = platform::appendLines(path_, lines);
    if (!length) {
        return std::unexpected(length.error());
    }
    lengthBefore_ = *length;
    return {};
}

SystemResult<void> IntentFile::retire() {
    return platform::cutBack(path_, lengthBefore_);
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

SystemResult<void> IntentFile::clear() const {
    return platform::cutBack(path_, 0);
}

} // namespace lumo
