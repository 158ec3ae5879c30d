#pragma once

#include "HomeFolder.h"

namespace tarvo::bench {

/// Each room writes until the allowance it is called under is used up. `library` is the home's Library
/// folder, which caches and applications share.

/// The caches of package managers: many small files, mostly in sharded trees.
void writePackageCaches(Folder& home, Folder& library);

/// Projects with sources, dependencies, build output and history, some of them a few folders down.
void writeProjects(Folder& home);

/// What applications keep, with `flatEntries` of it as the entries of one single folder.
void writeApplications(Folder& home, Folder& library, std::int64_t flatEntries);

/// Documents, downloads, pictures, the desktop, and everything odd a real home has somewhere.
void writePersonalFiles(Folder& home);

} // namespace tarvo::bench
