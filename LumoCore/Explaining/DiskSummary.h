#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Scanning/ScanReport.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// Two sentences about a disk: what can be recovered and where most of it is, and what there is to review.
struct DiskSummaryText {
    std::string text;
    bool byAI = false; ///< A language model wrote the text.

    friend bool operator==(const DiskSummaryText&, const DiskSummaryText&) = default;
};

/// What a summary is made of. `recoverable` is what the plan frees with no risk; see
/// `CleanupPlanner::safeRecoverableBytes`.
namespace DiskSummary {

/// What was measured, one sentence each: all that a language model is told.
std::vector<std::string> facts(const ScanReport& report, std::int64_t recoverable, Date now,
                               Language language = currentLanguage(), System system = currentSystem());

/// The summary from fixed sentences.
std::string templateText(const ScanReport& report, std::int64_t recoverable, Date now,
                         Language language = currentLanguage(), System system = currentSystem());

/// The sizes named in a text ("16,0 GB", "5MB"), as they are written there.
std::vector<std::string> amounts(std::string_view text);

/// True when every size in the text stands in the facts letter for letter. A text without sizes is true.
bool usesOnlyKnownAmounts(std::string_view text, const std::vector<std::string>& facts);

} // namespace DiskSummary

/// The language model's part in the summary.
namespace AISummaryWriter {

/// Asks a model and gives its text; none when it failed or took too long. An empty function stands for no
/// model. It may take seconds and must not throw.
using Write = std::function<std::optional<std::string>(const std::vector<std::string>& facts)>;

/// What the model is told about its task, before anything else.
std::string instructions(Language language = currentLanguage(), System system = currentSystem());

/// What it is then asked: the facts, one a line.
std::string prompt(const std::vector<std::string>& facts);

} // namespace AISummaryWriter

namespace SummaryService {

/// The model's summary when it wrote one that may be shown and names no other figures than the facts, else
/// the template. Never fails. Asks the model at most once.
DiskSummaryText summary(const ScanReport& report, std::int64_t recoverable, Date now,
                        const AISummaryWriter::Write& write, Language language = currentLanguage());

} // namespace SummaryService

} // namespace lumo
