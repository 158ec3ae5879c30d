#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Cleanup/Archiver.h"

#include <string>
#include <string_view>

/// What the user is asked and told around archiving, the same words in every face.
namespace tarvo {

/// The title above a refusal.
std::string archiveRefusalTitle(lumo::Language language = lumo::currentLanguage());

/// What archiving would save; never less than nothing.
std::int64_t savedBytes(const lumo::Archiver::Estimate& estimate);

/// True when archiving would save less than a tenth, which is hardly worth the trouble.
bool isHardlyWorthIt(const lumo::Archiver::Estimate& estimate);

/// What the item takes, what its archive would take, and what that saves.
std::string estimateText(std::string_view name, const lumo::Archiver::Estimate& estimate,
                         lumo::Language language = lumo::currentLanguage());

/// What will happen when the user agrees.
std::string archiveExplanation(std::string_view archiveName,
                               lumo::Language language = lumo::currentLanguage());

std::string archiveQuestion(std::string_view name, lumo::Language language = lumo::currentLanguage());

/// What is said when the archive is verified, and yet the original could not be set aside.
std::string originalKeptText(std::string_view archive, std::string_view reason,
                             lumo::Language language = lumo::currentLanguage());

/// The sentence afterwards.
std::string archivedText(std::string_view archive, std::int64_t archiveBytes,
                         lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
