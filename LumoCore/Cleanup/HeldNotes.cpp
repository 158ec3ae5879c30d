#include "LumoCore/Cleanup/HeldNotes.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Cleanup/HeldItem.h"
#include "Platform/StateFile.h"

#include <algorithm>

namespace lumo {

namespace {

/// More than a week of cleanups leaves; what is older is past its days and needs no note.
constexpr std::size_t mostNotes = 4096;

bool contains(const std::vector<std::string>& notes, std::string_view place) {
    return std::ranges::find(notes, place) != notes.end();
}

void keepNewest(std::vector<std::string>& notes) {
    if (notes.size() > mostNotes) {
        notes.erase(notes.begin(), notes.end() - mostNotes);
    }
}

} // namespace

HeldNotes HeldNotes::of(const std::string& home) {
    HeldNotes notes;
    notes.path_ = OwnFiles::heldNotes(home);
    const auto bytes = platform::readWhole(notes.path_, mostJsonBytes);
    notes.isReadable_ = bytes || bytes.error().isMissing();
    if (bytes) {
        notes.lists_ = decodeJson<Lists>(*bytes).value_or(Lists());
    }
    return notes;
}

bool HeldNotes::hasEnded(std::string_view inTrash) const {
    const std::string_view place = HeldItem::placeInRoot(inTrash);
    return contains(lists_.ended, place) || contains(lists_.ended, parentOf(place));
}

bool HeldNotes::wasPutBack(std::string_view inTrash) const {
    return lists_.back && contains(*lists_.back, HeldItem::placeInRoot(inTrash));
}

bool HeldNotes::isIncomplete(std::string_view inTrash) const {
    return contains(lists_.incomplete, HeldItem::placeInRoot(inTrash));
}

void HeldNotes::end(std::string_view place) {
    const auto isCovered = [&](const std::string& note) { return isInside(note, place); };
    std::erase_if(lists_.ended, isCovered);
    lists_.ended.emplace_back(place);
    hasChanged_ = true;
}

void HeldNotes::putBack(std::string_view place) {
    end(place);
    if (!lists_.back) {
        lists_.back.emplace();
    }
    lists_.back->emplace_back(place);
}

void HeldNotes::markIncomplete(std::string_view place) {
    if (!contains(lists_.incomplete, place)) {
        lists_.incomplete.emplace_back(place);
        hasChanged_ = true;
    }
}

void HeldNotes::write() {
    if (!hasChanged_ || !isReadable_) {
        return;
    }
    keepNewest(lists_.ended);
    keepNewest(lists_.incomplete);
    if (lists_.back) {
        keepNewest(*lists_.back);
    }
    (void)platform::replaceWhole(path_, dumpJson(encode(lists_), JsonLayout::line) + "\n");
    hasChanged_ = false;
}

} // namespace lumo
