#include "TarvoModel/Photos/PhotoReview.h"
#include "Platform/PictureTags.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using lumo::Language;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::chrono_literals;
using namespace tarvo;
using namespace tarvo::testing;

namespace {

constexpr lumo::Date noon{std::chrono::seconds(1'790'000'000)};

Photo photo(const std::string& name, std::int64_t bytes, lumo::Date taken = noon, std::uint64_t hash = 0) {
    Photo photo;
    photo.picture = {.id = "archivo:" + name, .path = "/p/" + name, .bytes = bytes, .taken = taken};
    photo.id = photo.picture.id;
    if (hash != 0) {
        photo.look = Look{.hash = hash, .sharpness = 100, .width = 4000, .height = 3000};
    }
    return photo;
}

/// Each chapter as "Title: a b | c (bytes)", its groups apart.
std::vector<std::string> told(std::vector<Photo> photos, const std::vector<lumo::DetailItem>& copies = {}) {
    std::vector<std::string> chapters;
    for (const PhotoChapter& chapter : chaptersOf(photos, copies, Language::en)) {
        std::string text = chapter.title + ":";
        for (const PhotoGroup& group : chapter.groups) {
            text += text.ends_with(':') ? "" : " |";
            for (const std::size_t at : group.photos) {
                text += " " + photos[at].picture.path.substr(3);
            }
        }
        chapters.push_back(text + " (" + std::to_string(chapter.bytes) + ")");
    }
    return chapters;
}

GrayPicture stripes(int width, int height, int period) {
    GrayPicture picture{.width = width, .height = height, .points = {}};
    for (int at = 0; at < width * height; ++at) {
        picture.points.push_back(at % width / period % 2 == 0 ? 0 : 250);
    }
    return picture;
}

/// A JPEG file with nothing in it but when it was taken, least significant byte first.
std::string pictureTaken(const std::string& when) {
    using namespace std::string_literals;
    const std::string tags = "II*\0\x08\0\0\0"s
                             // One entry: where the camera's own entries are.
                             "\x01\0\x69\x87\x04\0\x01\0\0\0\x1a\0\0\0\0\0\0\0"s
                             // One entry there: 20 letters, behind it.
                             "\x01\0\x03\x90\x02\0\x14\0\0\0\x2c\0\0\0\0\0\0\0"s +
                             when + "\0"s;
    const std::string segment = "Exif\0\0"s + tags;
    return "\xff\xd8\xff\xe1\0"s + static_cast<char>(segment.size() + 2) + segment + "\xff\xd9"s;
}

} // namespace

TEST(PhotoReview, PutsEveryPhotoIntoOneChapterTheHintsBesides) {
    std::vector<Photo> photos{
        photo("small.jpg", 1),        photo("film.mp4", 9), photo("old.jpg", 5, noon - 24h * 40),
        photo("Screenshot 1.png", 2), photo("copy.jpg", 7), photo("kept.jpg", 7)};
    photos[3].picture.isScreenshot = true;
    photos[0].look = Look{.hash = {}, .sharpness = 3, .width = 9, .height = 9};
    lumo::DetailItem copy;
    copy.id = "copia:x";
    copy.path = "/p/copy.jpg";
    copy.kept = "/p/kept.jpg";
    EXPECT_THAT(told(photos, {copy}),
                ElementsAre("Exact copies: kept.jpg copy.jpg (7)", "Screenshots: Screenshot 1.png (2)",
                            "September 2026: film.mp4 small.jpg (10)", "August 2026: old.jpg (5)",
                            "Perhaps blurred: small.jpg (1)"));
    static_cast<void>(chaptersOf(photos, {copy}));
    EXPECT_EQ(photos[4].id, "copia:x") << "a copy is compared once more before it goes";
    EXPECT_EQ(photos[5].id, "archivo:kept.jpg");
    EXPECT_THAT(told({}), IsEmpty());
}

TEST(PhotoReview, LooksAlikeByFewBitsADayOrTheSameMeasures) {
    Photo first = photo("first", 5, noon, 0xF0F0);
    Photo near = photo("near", 5, noon + 24h * 300, 0xF0F0 ^ 0b111111U);
    EXPECT_TRUE(isAlike(first, near)) << "of the same measures";
    near.look->width = 2000;
    EXPECT_FALSE(isAlike(first, near));
    near.picture.taken = noon + 20h;
    EXPECT_TRUE(isAlike(first, near)) << "of one day";
    near.look->hash = 0xF0F0 ^ 0b1111111U;
    EXPECT_FALSE(isAlike(first, near));
    near.look->hash.reset();
    EXPECT_FALSE(isAlike(first, near));

    EXPECT_TRUE(isBetter(first, near)) << "it is larger";
    near.look = first.look;
    near.look->sharpness = 200;
    EXPECT_TRUE(isBetter(near, first));
    EXPECT_TRUE(isBetter(photo("DSC2", 1, noon, 1), photo("DSC10", 1, noon, 1)));
    // The copy that a messenger had made small was to stay, for the edges of its blocks.
    Photo small = photo("small", 2, noon, 1);
    small.look->sharpness = 150;
    EXPECT_TRUE(isBetter(photo("whole", 5, noon, 1), small));

    // Likeness is not handed on: c is like b, which is like a.
    EXPECT_THAT(
        told({photo("a", 5, noon, 0xFF), photo("b", 4, noon + 1h, 0xFFF), photo("c", 3, noon + 2h, 0xFFFF)}),
        ElementsAre("Look-alikes: a b (4)", "September 2026: c (3)"))
        << "b differs from a in four bits, c in eight";
}

TEST(PhotoReview, TakesABurstByTheCamerasClockOnly) {
    std::vector<Photo> shots;
    for (int shot = 0; shot < 4; ++shot) {
        shots.push_back(
            photo("IMG_" + std::to_string(shot), 5, noon + 2s * shot, 1ULL << (8 * shot) | 0xFFFF0000U));
        shots.back().look->hash = 0x0123'4567'89AB'CDEFU * static_cast<unsigned>(shot + 1);
    }
    EXPECT_THAT(told(shots), ElementsAre("September 2026: IMG_0 IMG_1 IMG_2 IMG_3 (20)"))
        << "a folder that was copied is no burst";
    for (Photo& shot : shots) {
        shot.picture.isDatedByCamera = true;
    }
    shots[2].look->sharpness = 300;
    EXPECT_THAT(told(shots), ElementsAre("Bursts: IMG_2 IMG_0 IMG_1 IMG_3 (15)"));
    shots[2].picture.taken += 1s;
    EXPECT_THAT(told(shots), ElementsAre("September 2026: IMG_0 IMG_1 IMG_2 IMG_3 (20)")) << "two are none";
}

TEST(PhotoReview, MeasuresWhatAPictureLooksLike) {
    const GrayPicture wide = stripes(9, 8, 1);
    EXPECT_EQ(gradientHash(wide), 0xAAAA'AAAA'AAAA'AAAAU);
    EXPECT_EQ(gradientHash(stripes(9, 8, 20)), std::nullopt) << "without contrast all would look alike";
    EXPECT_EQ(gradientHash(stripes(8, 8, 1)), std::nullopt);
    EXPECT_EQ(distance(0b1011, 0b0010), 2);
    EXPECT_GT(sharpnessOf(stripes(64, 64, 1)), sharpnessOf(stripes(64, 64, 16)));
    EXPECT_EQ(sharpnessOf(stripes(64, 64, 100)), 0);
    EXPECT_EQ(sharpnessOf(stripes(2, 2, 1)), 0);
}

TEST(PhotoReview, FindsPicturesAndFilmsWithTheirDatesOnce) {
    const TempHome home;
    home.fileWith("Pictures/a.jpg", pictureTaken("2025:03:14 09:30:05"));
    home.fileWith("Pictures/odd.jpg", pictureTaken("not a date at all!!"));
    home.file("Pictures/Capturas de pantalla/x.png", 10);
    home.file("Pictures/film.MP4", 10);
    home.hardLink("Pictures/again.mp4", "Pictures/film.MP4");
    home.files({"Pictures/notes.txt", "Pictures/.hidden/y.jpg", "Pictures/lib.photoslibrary/z.jpg",
                "Pictures/repo/.git/config", "Pictures/repo/logo.png"},
               10);
    home.setModified("Pictures/odd.jpg", 1'700'000'000);
    const auto found =
        lumo::findPictures({.home = home.path(), .folders = {lumo::picturesFolder(home.path())}});
    std::vector<std::string> told;
    for (const lumo::Picture& picture : found.pictures) {
        told.push_back(picture.path.substr(home.path().size() + 10) + (picture.isFilm ? " film" : "") +
                       (picture.isScreenshot ? " screen" : "") +
                       (picture.isDatedByCamera ? " " + lumo::stampText(picture.taken) : ""));
    }
    EXPECT_THAT(told, ElementsAre("Capturas de pantalla/x.png screen", "a.jpg 20250314-093005",
                                  ::testing::AnyOf("again.mp4 film", "film.MP4 film"), "odd.jpg"));
    EXPECT_EQ(found.pictures.back().taken, lumo::Date(1'700'000'000s));

    const std::string whole = pictureTaken("2025:03:14 09:30:05");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        lumo::platform::takenTextIn(whole.substr(0, length)); // Whatever is missing, nothing breaks.
    }
}
