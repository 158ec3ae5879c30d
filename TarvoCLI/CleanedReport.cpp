#include "TarvoCLI/CleanedReport.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/OutcomeText.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tarvo {

using lumo::CleanupOutcome;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

/// What was agreed to and left as it was, with the reasons.
std::string leftOutText(const std::vector<LeftOut>& leftOut) {
    std::string shown;
    for (const LeftOut& left : leftOut) {
        shown += Words{"{}: se deja como estaba ({})", "{}: left as it was ({})"}.with(
                     lumo::printable(left.title), lumo::printable(left.reason)) +
                 "\n";
    }
    return shown;
}

} // namespace

ExitCode reportCleaned(const Cleaned& cleaned, const Invocation& invocation) {
    const std::vector<CleanupOutcome>& outcomes = cleaned.outcomes;
    std::string shown = lumo::dumpJson(lumo::encode(outcomes), lumo::JsonLayout::indented) + "\n";
    if (!invocation.isJson) {
        const bool hasHeld = std::ranges::any_of(
            outcomes, [](const CleanupOutcome& outcome) { return outcome.restorable.has_value(); });
        shown = outcomeText(outcomes, OutcomeDates::hidden, invocation) + "\n" +
                tinted(cleanupDone(sumsOf(outcomes)), Tint::strong, invocation) + "\n" +
                (hasHeld ? tinted(Words{"Para devolverlo a su sitio: tarvo deshacer\n",
                                        "To put it back: tarvo undo\n"}
                                      .in(),
                                  Tint::faint, invocation)
                         : std::string());
    }
    // Nothing that was agreed to is left in silence, and the document has a stream of its own.
    platform::writeAll(platform::Stream::error,
                       leftOutText(cleaned.leftOut) +
                           (cleaned.notBegun > 0 ? stoppedText(cleaned.notBegun) + "\n" : std::string()));
    const ExitCode printed = print(shown);
    if (platform::wasInterrupted()) {
        return ExitCode::interrupted;
    }
    const bool hasFailed = std::ranges::any_of(outcomes, [](const CleanupOutcome& outcome) {
        return outcome.status == lumo::CleanupStatus::failed;
    });
    if (cleaned.logProblem) {
        return complain(*cleaned.logProblem, ExitCode::failed);
    }
    // Not all that was agreed to was done.
    return hasFailed || !cleaned.leftOut.empty() ? ExitCode::failed : printed;
}

} // namespace tarvo
