#include "TarvoApp/App/Kinds.h"

namespace tarvo::Kinds {

Phase of(const tarvo::Phase& phase) {
    struct Kind {
        Phase operator()(const phase::Idle&) const { return Phase::Idle; }
        Phase operator()(const phase::Scanning&) const { return Phase::Scanning; }
        Phase operator()(const phase::ScanningFolders&) const { return Phase::ScanningFolders; }
        Phase operator()(const phase::Cleaning&) const { return Phase::Cleaning; }
        Phase operator()(const phase::Explaining&) const { return Phase::Explaining; }
        Phase operator()(const phase::Archiving&) const { return Phase::Archiving; }
    };
    return std::visit(Kind(), phase);
}

Group of(RowGroup group) {
    switch (group) {
    case RowGroup::safe:
        return Group::Safe;
    case RowGroup::review:
        return Group::Review;
    case RowGroup::keep:
        return Group::Keep;
    case RowGroup::unclassified:
        break;
    }
    return Group::Unclassified;
}

RowGroup groupOf(Group group) {
    switch (group) {
    case Group::Safe:
        return RowGroup::safe;
    case Group::Review:
        return RowGroup::review;
    case Group::Keep:
        return RowGroup::keep;
    case Group::Unclassified:
        break;
    }
    return RowGroup::unclassified;
}

RowOrder orderOf(Order order) {
    switch (order) {
    case Order::ByName:
        return RowOrder::name;
    case Order::ByDate:
        return RowOrder::date;
    case Order::BySize:
        break;
    }
    return RowOrder::size;
}

Tick of(TileState state) {
    switch (state) {
    case TileState::selected:
        return Tick::Selected;
    case TileState::unselected:
        return Tick::Unselected;
    case TileState::blocked:
        return Tick::Blocked;
    case TileState::info:
        break;
    }
    return Tick::Info;
}

Tile of(tarvo::Tile::Kind kind) {
    switch (kind) {
    case tarvo::Tile::Kind::item:
        return Tile::Item;
    case tarvo::Tile::Kind::inside:
        return Tile::Inside;
    case tarvo::Tile::Kind::rest:
        return Tile::Rest;
    case tarvo::Tile::Kind::free:
        break;
    }
    return Tile::Free;
}

} // namespace tarvo::Kinds
