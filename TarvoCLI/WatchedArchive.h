#pragma once

#include "TarvoCLI/Console.h"
#include "TarvoModel/Flows/Archiving.h"

#include <expected>
#include <optional>
#include <string>

namespace tarvo {

/// An estimate with progress on standard error. Absent when the user interrupted it.
std::optional<lumo::Archiver::Estimate> watchedEstimate(const std::string& path,
                                                        const Invocation& invocation);

/// Archives the item, with progress on standard error. An interrupt ends it and takes everything back.
std::expected<Archived, NotArchived> watchedArchive(const std::string& path,
                                                    const lumo::Archiver::Estimate& estimate,
                                                    const Desk& desk, const Invocation& invocation);

} // namespace tarvo
