#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Result.h"
#include "LumoCore/Scanning/NamedTree.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// The JSON in which disk usage programs hand each other what they measured: format 1.2 of ncdu's export
/// (https://dev.yorhel.nl/ncdu/jsonfmt), which gdu writes, too. Names are in it byte for byte, and so it need
/// not be UTF-8.
namespace tarvo {

/// Hands the whole tree as such a document on, in pieces of some ten thousand bytes, until `write` answers
/// false: so it is never in memory as a whole. The lengths of files are in it where the tree has kept them.
/// False when it was not handed on to its end.
bool exportUsage(const lumo::NamedTree& tree, std::string_view version, lumo::Date now,
                 const std::function<bool(std::string_view piece)>& write);

/// The largest document that is read, in bytes.
inline constexpr std::size_t largestExport = std::size_t{1} << 30U;

/// The tree that such a document tells of, whoever wrote it. Files with several names are counted once. A
/// failure says in the interface language what is wrong with it.
lumo::Result<std::unique_ptr<lumo::NamedTree>>
treeFromExport(std::string_view document,
               lumo::NamedTree::Lengths lengths = lumo::NamedTree::Lengths::dropped);

} // namespace tarvo
