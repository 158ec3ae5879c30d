#include "TarvoCLI/WatchedArchive.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Clock.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/Watching.h"

#include <functional>

namespace tarvo {

using lumo::Words;
using lumo::Archiver::ArchivePhase;
using lumo::Archiver::Estimate;
namespace platform = lumo::platform;

namespace {

/// Runs the work, which ends early when the user interrupts it, and shows the line while it runs.
void watchWith(const std::function<void(const std::stop_token&)>& work,
               const std::function<std::string()>& line, const Invocation& invocation) {
    platform::noteInterrupts();
    std::stop_source stop;
    const double start = platform::monotonicSeconds();
    bool hasShown = false;
    watch([&] { work(stop.get_token()); },
          [&](int ticks) {
              if (platform::wasInterrupted()) {
                  stop.request_stop();
              }
              if (invocation.showsProgress && showsOn(ticks)) {
                  const std::string shown =
                      line() + " · " + lumo::ByteFormat::number(platform::monotonicSeconds() - start, 1) +
                      " s";
                  const std::size_t columns = platform::terminalColumns(platform::Stream::error);
                  platform::writeAll(platform::Stream::error,
                                     clearLine + (columns > 1 ? lumo::shortened(shown, columns - 1) : shown));
                  hasShown = true;
              }
          });
    if (hasShown) {
        platform::writeAll(platform::Stream::error, clearLine);
    }
}

std::string lineOf(const lumo::Archiver::ArchiveProgress& progress, const Estimate& estimate) {
    switch (progress.phase.load()) {
    case ArchivePhase::looking:
        return Words{"Mirando lo que hay…", "Looking at what is there…"}.in();
    case ArchivePhase::compressing:
        return Words{"Comprimiendo… {} de unos {}", "Compressing… {} of about {}"}.with(
            lumo::ByteFormat::string(progress.writtenBytes),
            lumo::ByteFormat::string(estimate.compressedBytes));
    case ArchivePhase::checking:
        break;
    }
    return Words{"Comprobando… {} de {}", "Checking… {} of {}"}.with(
        lumo::ByteFormat::string(progress.checkedBytes), lumo::ByteFormat::string(estimate.bytes));
}

} // namespace

std::optional<Estimate> watchedEstimate(const std::string& path, const Invocation& invocation) {
    Estimate estimate;
    watchWith(
        [&](const std::stop_token& stop) {
            estimate = lumo::Archiver::estimate(path, lumo::Archiver::usualSamples,
                                                lumo::Archiver::usualSampleBytes, stop);
        },
        [] { return Words{"Calculando cuánto se comprime…", "Finding out how it compresses…"}.in(); },
        invocation);
    return platform::wasInterrupted() ? std::nullopt : std::optional(estimate);
}

std::expected<lumo::Archiver::Archive, lumo::Archiver::ArchiveError>
watchedArchive(const std::string& path, const Estimate& estimate, const lumo::PathGuard& guard,
               const Invocation& invocation) {
    lumo::Archiver::ArchiveProgress progress;
    std::expected<lumo::Archiver::Archive, lumo::Archiver::ArchiveError> archived;
    watchWith(
        [&](const std::stop_token& stop) {
            archived = lumo::Archiver::archive(path, lumo::Archiver::destination(path), guard,
                                               {.expectedBytes = estimate.compressedBytes,
                                                .progress = invocation.showsProgress ? &progress : nullptr,
                                                .stop = stop});
        },
        [&] { return lineOf(progress, estimate); }, invocation);
    return archived;
}

} // namespace tarvo
