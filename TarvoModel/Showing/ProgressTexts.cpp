#include "TarvoModel/Showing/ProgressTexts.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoModel/Showing/Preview.h"

#include <algorithm>

namespace tarvo {

using lumo::Words;
namespace ByteFormat = lumo::ByteFormat;

Progress cleaningProgress(const std::vector<CleanupStep>& steps, std::size_t at, lumo::Language language) {
    if (at >= steps.size()) {
        return {};
    }
    std::int64_t all = 0;
    std::int64_t before = 0;
    for (std::size_t step = 0; step < steps.size(); ++step) {
        all = lumo::checkedSum(all, steps[step].bytes);
        before = step < at ? all : before;
    }
    const double share = all > 0 ? static_cast<double>(before) / static_cast<double>(all)
                                 : static_cast<double>(at) / static_cast<double>(steps.size());
    return {.text = Words{"{} de {}: {} · {} de {}", "{} of {}: {} · {} of {}"}.in(
                language, at + 1, steps.size(), steps[at].title, ByteFormat::string(before, language),
                ByteFormat::string(all, language)),
            .share = share};
}

Progress scanningProgress(std::int64_t entries, std::int64_t bytes, std::int64_t expectedBytes,
                          lumo::Language language) {
    constexpr double nearlyAll = 0.99;
    if (entries == 0) {
        return {};
    }
    const std::string text = itemsText(entries, language) + " · " + ByteFormat::string(bytes, language);
    if (expectedBytes <= 0) {
        return {.text = text, .share = std::nullopt};
    }
    return {.text = text,
            .share = std::min(static_cast<double>(bytes) / static_cast<double>(expectedBytes), nearlyAll)};
}

} // namespace tarvo
