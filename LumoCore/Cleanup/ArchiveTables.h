#pragma once

#include "LumoCore/Basics/System.h"

#include <string>
#include <string_view>
#include <vector>

/// What the archiver knows about names. Extensions are in lower case and without their point.
namespace lumo::ArchiveTables {

/// True for a folder directly in the home that is never archived itself.
bool isHomeFolder(std::string_view name, System system = currentSystem());

/// The extension of a name in lower case; empty when there is none. A leading point begins no extension.
std::string extensionOf(std::string_view name);

/// An application or a library: a folder that is one document to its application.
bool isPackageExtension(std::string_view extension);

/// An archive already.
bool isArchiveExtension(std::string_view extension);

/// Files of these do not shrink.
const std::vector<std::string>& incompressibleExtensions();
bool isIncompressible(std::string_view extension);

} // namespace lumo::ArchiveTables
