#pragma once

#include "LumoCore/Cleanup/Archiver.h"
#include "TarvoCLI/Console.h"

#include <expected>
#include <optional>
#include <string>

namespace tarvo {

/// An estimate with progress on standard error. Absent when the user interrupted it.
std::optional<lumo::Archiver::Estimate> watchedEstimate(const std::string& path,
                                                        const Invocation& invocation);

/// Makes and verifies the archive, under the home's lock, which the caller holds, with progress on standard
/// error. An interrupt ends it and takes everything back.
std::expected<lumo::Archiver::Archive, lumo::Archiver::ArchiveError>
watchedArchive(const std::string& path, const lumo::Archiver::Estimate& estimate,
               const lumo::PathGuard& guard, const Invocation& invocation);

} // namespace tarvo
