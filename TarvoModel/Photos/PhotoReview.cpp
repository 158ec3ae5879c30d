#include "TarvoModel/Photos/PhotoReview.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <functional>
#include <iterator>
#include <map>
#include <numeric>
#include <string_view>
#include <tuple>
#include <utility>

namespace tarvo {

using lumo::Language;
using lumo::Words;

namespace {

using Indices = std::vector<std::size_t>;

constexpr int mostBitsApart = 6;
constexpr std::chrono::seconds betweenShots{2};
constexpr std::size_t leastOfBurst = 3;
/// Below it a picture of 128 points has hardly an edge. A guess, which is why nothing but a hint follows.
constexpr double blurredBelow = 20;

constexpr std::array<Words, 12> months{{{"enero", "January"},
                                        {"febrero", "February"},
                                        {"marzo", "March"},
                                        {"abril", "April"},
                                        {"mayo", "May"},
                                        {"junio", "June"},
                                        {"julio", "July"},
                                        {"agosto", "August"},
                                        {"septiembre", "September"},
                                        {"octubre", "October"},
                                        {"noviembre", "November"},
                                        {"diciembre", "December"}}};

/// Year and month in the user's time zone, as digits that sort: "202611".
std::string monthOf(lumo::Date date) {
    constexpr std::size_t digits = 6;
    return lumo::stampText(date).substr(0, digits);
}

std::string titleOfMonth(const std::string& month, Language language) {
    constexpr std::size_t yearDigits = 4;
    std::size_t number = 1;
    std::from_chars(month.data() + yearDigits, month.data() + month.size(), number);
    const Words& name = months.at(std::clamp<std::size_t>(number, 1, months.size()) - 1);
    return lumo::capitalized(
        Words{"{} de {}", "{} {}"}.in(language, name.in(language), month.substr(0, yearDigits)));
}

std::string titleOf(PhotoSection section, Language language) {
    switch (section) {
    case PhotoSection::copies:
        return Words{"Copias exactas", "Exact copies"}.in(language);
    case PhotoSection::alike:
        return Words{"Parecidas", "Look-alikes"}.in(language);
    case PhotoSection::bursts:
        return Words{"Ráfagas", "Bursts"}.in(language);
    case PhotoSection::screenshots:
        return Words{"Capturas de pantalla", "Screenshots"}.in(language);
    case PhotoSection::blurred:
        return Words{"Quizá borrosas", "Perhaps blurred"}.in(language);
    case PhotoSection::month:
        break;
    }
    return {};
}

bool hasSameMeasures(const Photo& left, const Photo& right) {
    return left.look && right.look && left.look->width == right.look->width &&
           left.look->height == right.look->height;
}

std::string_view folderOf(const Photo& photo) {
    const std::string_view path = photo.picture.path;
    return path.substr(0, path.rfind('/'));
}

/// Sorts photos into chapters, each photo into the first that wants it.
class Sorter final {
  public:
    Sorter(std::vector<Photo>& photos, Language language)
        : photos_(photos), language_(language), isPlaced_(photos.size(), 0) {}

    void takeCopies(const std::vector<lumo::DetailItem>& copies) {
        std::map<std::string_view, std::size_t> byPath;
        for (std::size_t at = 0; at < photos_.size(); ++at) {
            byPath.emplace(photos_[at].picture.path, at);
        }
        std::map<std::size_t, Indices> byKept;
        for (const lumo::DetailItem& item : copies) {
            const auto kept = byPath.find(item.kept.value_or(""));
            const auto copy = byPath.find(item.path.value_or(""));
            if (kept != byPath.end() && copy != byPath.end()) {
                photos_[copy->second].id = item.id;
                byKept[kept->second].push_back(copy->second);
            }
        }
        PhotoChapter chapter = begun(PhotoSection::copies);
        for (auto& [kept, group] : byKept) {
            group.insert(group.begin(), kept);
            chapter.groups.push_back({.photos = std::move(group), .proposesFirst = true});
        }
        finish(std::move(chapter));
    }

    /// At least three of one folder, each within two seconds of the one before by the camera's clock. The
    /// times of files would not do: those of a folder that was copied are all the same.
    void takeBursts() {
        Indices shots = unplaced([](const Photo& photo) {
            return photo.picture.isDatedByCamera && photo.look && !photo.picture.isFilm;
        });
        const auto order = [this](std::size_t at) {
            return std::tuple(folderOf(photos_[at]), photos_[at].picture.taken, at);
        };
        std::ranges::sort(shots, {}, order);
        PhotoChapter chapter = begun(PhotoSection::bursts);
        for (std::size_t first = 0; first < shots.size();) {
            std::size_t end = first + 1;
            while (end < shots.size() && isNextShot(photos_[shots[end - 1]], photos_[shots[end]])) {
                ++end;
            }
            if (end - first >= leastOfBurst) {
                const auto begin = shots.begin();
                addCompeting(chapter, Indices(begin + static_cast<std::ptrdiff_t>(first),
                                              begin + static_cast<std::ptrdiff_t>(end)));
            }
            first = end;
        }
        finish(std::move(chapter));
    }

    void takeScreenshots() {
        addPlain(PhotoSection::screenshots, titleOf(PhotoSection::screenshots, language_),
                 unplaced([](const Photo& photo) { return photo.picture.isScreenshot; }));
    }

    /// Every one is compared with the first of each group only, since likeness that is handed on from one to
    /// the next would end with pictures that have nothing in common.
    void takeAlike() {
        Indices candidates =
            unplaced([](const Photo& photo) { return photo.look && photo.look->hash.has_value(); });
        std::ranges::sort(candidates, {},
                          [this](std::size_t at) { return std::tuple(photos_[at].picture.taken, at); });
        std::vector<Indices> groups;
        for (const std::size_t at : candidates) {
            const auto alike = std::ranges::find_if(
                groups, [&](const Indices& group) { return isAlike(photos_[group.front()], photos_[at]); });
            if (alike != groups.end()) {
                alike->push_back(at);
            } else {
                groups.push_back({at});
            }
        }
        PhotoChapter chapter = begun(PhotoSection::alike);
        for (Indices& group : groups) {
            if (group.size() > 1) {
                addCompeting(chapter, std::move(group));
            }
        }
        finish(std::move(chapter));
    }

    void takeMonths() {
        std::map<std::string, Indices, std::greater<>> byMonth;
        for (const std::size_t at : unplaced([](const Photo&) { return true; })) {
            byMonth[monthOf(photos_[at].picture.taken)].push_back(at);
        }
        for (auto& [month, photos] : byMonth) {
            addPlain(PhotoSection::month, titleOfMonth(month, language_), std::move(photos));
        }
    }

    void hintAtBlurred() {
        Indices blurred;
        for (std::size_t at = 0; at < photos_.size(); ++at) {
            const Photo& photo = photos_[at];
            if (photo.look && !photo.picture.isScreenshot && photo.look->sharpness < blurredBelow) {
                blurred.push_back(at);
            }
        }
        std::ranges::sort(blurred, {},
                          [this](std::size_t at) { return std::pair(photos_[at].look->sharpness, at); });
        PhotoChapter chapter = begun(PhotoSection::blurred);
        if (!blurred.empty()) {
            chapter.groups.push_back({.photos = std::move(blurred)});
        }
        finish(std::move(chapter));
    }

    /// What was sorted, as it is shown.
    [[nodiscard]] std::vector<PhotoChapter> chapters() {
        std::vector<PhotoChapter> ordered;
        for (auto& [section, chapters] : chapters_) {
            std::ranges::move(chapters, std::back_inserter(ordered));
        }
        return ordered;
    }

  private:
    [[nodiscard]] static bool isNextShot(const Photo& earlier, const Photo& later) {
        return folderOf(earlier) == folderOf(later) && hasSameMeasures(earlier, later) &&
               later.picture.taken - earlier.picture.taken <= betweenShots;
    }

    [[nodiscard]] PhotoChapter begun(PhotoSection section) const {
        return {.section = section, .title = titleOf(section, language_), .groups = {}};
    }

    template <class Wanted>
    [[nodiscard]] Indices unplaced(Wanted isWanted) const {
        Indices photos;
        for (std::size_t at = 0; at < photos_.size(); ++at) {
            if (isPlaced_[at] == 0 && isWanted(photos_[at])) {
                photos.push_back(at);
            }
        }
        return photos;
    }

    [[nodiscard]] std::int64_t bytesOf(const Indices& photos) const {
        return std::accumulate(photos.begin(), photos.end(), std::int64_t{0},
                               [this](std::int64_t sum, std::size_t at) {
                                   return lumo::checkedSum(sum, photos_[at].picture.bytes);
                               });
    }

    /// The one that would stay comes first.
    void addCompeting(PhotoChapter& chapter, Indices photos) const {
        std::ranges::sort(photos, [this](std::size_t left, std::size_t right) {
            return isBetter(photos_[left], photos_[right]);
        });
        chapter.groups.push_back({.photos = std::move(photos), .proposesFirst = true});
    }

    /// The largest first.
    void addPlain(PhotoSection section, std::string title, Indices photos) {
        std::ranges::sort(photos, {},
                          [this](std::size_t at) { return std::pair(-photos_[at].picture.bytes, at); });
        PhotoChapter chapter{.section = section, .title = std::move(title), .groups = {}};
        if (!photos.empty()) {
            chapter.groups.push_back({.photos = std::move(photos)});
        }
        finish(std::move(chapter));
    }

    void finish(PhotoChapter chapter) {
        for (const PhotoGroup& group : chapter.groups) {
            const std::int64_t staying =
                group.proposesFirst ? photos_[group.photos.front()].picture.bytes : 0;
            chapter.count += group.photos.size();
            chapter.bytes = lumo::checkedSum(chapter.bytes, bytesOf(group.photos) - staying);
            for (const std::size_t at : group.photos) {
                isPlaced_[at] = 1;
            }
        }
        if (!chapter.groups.empty()) {
            chapters_[chapter.section].push_back(std::move(chapter));
        }
    }

    std::vector<Photo>& photos_;
    Language language_;
    std::vector<char> isPlaced_;
    std::map<PhotoSection, std::vector<PhotoChapter>> chapters_; ///< In the order in which they are shown.
};

} // namespace

bool isAlike(const Photo& left, const Photo& right) {
    if (!left.look || !right.look || !left.look->hash || !right.look->hash ||
        distance(*left.look->hash, *right.look->hash) > mostBitsApart) {
        return false;
    }
    const auto apart = std::chrono::abs(left.picture.taken - right.picture.taken);
    return hasSameMeasures(left, right) || apart <= std::chrono::days(1);
}

bool isBetter(const Photo& left, const Photo& right) {
    const auto points = [](const Photo& photo) {
        return photo.look ? std::int64_t{photo.look->width} * photo.look->height : std::int64_t{0};
    };
    const auto sharpness = [](const Photo& photo) {
        return photo.look ? photo.look->sharpness * static_cast<double>(photo.picture.bytes) : 0;
    };
    const auto rank = [&](const Photo& photo) { return std::tuple(-points(photo), -sharpness(photo)); };
    return rank(left) != rank(right) ? rank(left) < rank(right)
                                     : lumo::comesBeforeNumerically(left.picture.path, right.picture.path);
}

std::vector<PhotoChapter> chaptersOf(std::vector<Photo>& photos, const std::vector<lumo::DetailItem>& copies,
                                     Language language) {
    Sorter sorter(photos, language);
    sorter.takeCopies(copies);
    sorter.takeBursts();
    sorter.takeScreenshots();
    sorter.takeAlike();
    sorter.takeMonths();
    sorter.hintAtBlurred();
    return sorter.chapters();
}

} // namespace tarvo
