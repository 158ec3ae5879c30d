#pragma once

#include "LumoCore/Inventories/DetailItem.h"
#include "LumoCore/Inventories/Pictures.h"
#include "TarvoModel/Photos/Look.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Pictures and films put beside those they compete with, for somebody who decides which of them stay. One
/// is proposed; nothing is decided here.
namespace tarvo {

/// One picture or film as the review knows it.
struct Photo {
    lumo::Picture picture;
    std::optional<Look> look; ///< Absent for films, and for what cannot be read as a picture.
    /// The item that sets it aside: of a copy that of the copy, so that it is compared once more.
    std::string id;

    friend bool operator==(const Photo&, const Photo&) = default;
};

/// Why pictures stand together.
enum class PhotoSection { copies, alike, bursts, screenshots, month, blurred };

/// Pictures of which one may do; or, where none is proposed, all of a chapter.
struct PhotoGroup {
    std::vector<std::size_t> photos; ///< The one that would stay first, where one is proposed.
    bool proposesFirst = false;

    friend bool operator==(const PhotoGroup&, const PhotoGroup&) = default;
};

struct PhotoChapter {
    PhotoSection section = PhotoSection::month;
    std::string title; ///< "Exact copies", "November 2026".
    std::vector<PhotoGroup> groups;
    std::size_t count = 0;
    std::int64_t bytes = 0; ///< Of what would go if only those stayed that are proposed.

    friend bool operator==(const PhotoChapter&, const PhotoChapter&) = default;
};

/// The chapters of the photos: exact copies, look-alikes, bursts and screenshots first, then months from the
/// latest to the earliest with the largest first, and what is perhaps blurred last. Every photo is in one
/// chapter, but for the blurred ones, which are a hint and stay where they are too. Empty ones are left out.
/// `copies` is the inventory of duplicates in the same folders, from which copies have their items.
std::vector<PhotoChapter> chaptersOf(std::vector<Photo>& photos, const std::vector<lumo::DetailItem>& copies,
                                     lumo::Language language = lumo::currentLanguage());

/// True when they are so alike that one of them may do: their hashes differ in at most six bits, and they
/// were taken within a day or are of the same measures.
bool isAlike(const Photo& left, const Photo& right);

/// What would stay of two: the larger picture, then the sharper, then the one of the older name. The edges of
/// the blocks that a camera's picture falls into when it is made smaller look sharp, so that the bytes it has
/// for its points count as well.
bool isBetter(const Photo& left, const Photo& right);

} // namespace tarvo
