#pragma once

#include "LumoCore/Basics/System.h"
#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/Explaining/FolderEvidence.h"
#include "LumoCore/Rules/HomePlaces.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What is said of places about which nothing has to be guessed. The explanations lack their path, size and
/// date.
namespace lumo::PlaceTexts {

/// How much of something a path is.
enum class Extent { whole, part };

/// What the rule says of its place; the source is the catalogue's, or an inventory's for a rule of one.
/// `appName` is who it belongs to, where that is known.
Explanation ofRule(const Rule& rule, Extent extent, Explanation::Source source,
                   const std::optional<std::string>& appName, Language language);

/// Of a folder that is nobody's place, with places of these rules in it, at least one.
Explanation ofFolderWith(const std::vector<const Rule*>& rules, const std::optional<std::string>& appName,
                         Language language);

/// Of a developer project, by its path in the home.
Explanation ofProject(const std::string& name, Extent extent, Language language);

/// Of one of its artifacts, or of something in that. Dependencies stay while the project is worked on.
Explanation ofArtifact(const std::string& artifact, const std::string& project, Extent extent,
                       Language language);

/// Of the home itself; of our own folders.
Explanation ofHome(Language language);
Explanation ofOwnFolder(Language language);

/// Of what lies outside the home.
Explanation ofOutside(const std::string& path, const HomePlaces& places, Language language);

/// Of the user's main folders, and on Linux of folders whose meaning is the same in every home; absent for
/// any other path.
std::optional<Explanation> ofStandardFolder(const std::string& path, const HomePlaces& places,
                                            Language language);

/// Of a link, a file or something else that is no folder.
Explanation ofLink(const std::string& target, Language language);
Explanation ofFile(bool isUsers, Language language);
Explanation ofCacheFile(Language language, System system);
Explanation ofOtherEntry(Language language);

/// Of a folder that is the user's own; of a folder that several programs use; of something in the folder of
/// one program.
Explanation ofUsersFolder(Language language);
Explanation ofSharedFolder(Language language);
Explanation ofPart(const std::string& whole, const std::optional<std::string>& appName, Language language);

/// Of a cache folder of which rules know only parts, or of something else in it.
Explanation ofDividedCache(const std::string& whole, Extent extent, const std::optional<std::string>& appName,
                           Language language);

/// Of the folder, or the cache, of a program that is known by the folder's name alone.
Explanation ofProgramsFolder(const std::string& program, const FolderEvidence& evidence, Language language,
                             System system);

} // namespace lumo::PlaceTexts
