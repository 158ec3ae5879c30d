#pragma once

#include "TarvoModel/Showing/DiskMap.h"
#include "TarvoModel/Showing/Phase.h"
#include "TarvoModel/Showing/RowView.h"
#include "TarvoModel/Showing/Rows.h"

#include <QObject>

/// The kinds of things that windows tell apart, as they know them: only names that begin with a capital are
/// known to them.
namespace tarvo::Kinds {

Q_NAMESPACE

enum class Phase { Idle, Scanning, ScanningFolders, Cleaning, Explaining, Archiving };
Q_ENUM_NS(Phase)

enum class Group { Safe, Review, Keep, Unclassified };
Q_ENUM_NS(Group)

enum class Order { BySize, ByName, ByDate };
Q_ENUM_NS(Order)

enum class Tick { Selected, Unselected, Blocked, Info };
Q_ENUM_NS(Tick)

enum class Tile { Item, Inside, Rest, Free };
Q_ENUM_NS(Tile)

Phase of(const tarvo::Phase& phase);
Group of(RowGroup group);
RowGroup groupOf(Group group);
RowOrder orderOf(Order order);
Tick of(TileState state);
Tile of(tarvo::Tile::Kind kind);

} // namespace tarvo::Kinds
