#include "TarvoApp/App/PhotoPlaces.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoApp/App/Thumbnails.h"
#include "Tests/App/AppStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QPainter>

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

using namespace tarvo;
using namespace tarvo::testing;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A picture of its own by the number; small changes leave it alike.
QImage drawn(int number, int change = 0) {
    QImage image(400, 300, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    for (int block = 0; block < 40; ++block) {
        const int at = block * 7919 * (number + 1);
        painter.fillRect(at % 370, at / 370 % 270, 50, 40, QColor::fromHsv(at % 360, 200, 40 + at % 200));
    }
    painter.fillRect(10, 10, 4 + change, 4, Qt::black);
    return image;
}

void save(const TempHome& home, const std::string& name, const QImage& image) {
    home.folder(std::filesystem::path(name).parent_path().string());
    ASSERT_TRUE(image.save(QFile::decodeName(home.path(name).c_str())));
}

struct stat statusOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status;
}

QStringList titlesOf(const PhotosDesk& photos) {
    QStringList titles;
    for (const QVariant& chapter : photos.chapters()) {
        titles.push_back(chapter.toMap()["title"].toString());
    }
    return titles;
}

std::vector<PhotoEntry> entries(int from, int to) {
    std::vector<PhotoEntry> entries;
    for (int number = from; number < to; ++number) {
        PhotoEntry& entry = entries.emplace_back();
        entry.id = "/p/" + std::to_string(number);
        entry.photo.picture.path = entry.id;
    }
    return entries;
}

/// The numbers of the photos near what is seen, those without their pictures as -1.
std::vector<int> shownIn(const PhotoPlaces& places) {
    std::vector<int> photos;
    for (int place = 0; place < places.rowCount(); ++place) {
        const QModelIndex index = places.index(place);
        const QString source = places.data(index, PhotoList::sourceRole).toString();
        photos.push_back(source.isEmpty() ? -1 : places.data(index, PhotoPlaces::photoRole).toInt());
    }
    return photos;
}

} // namespace

// What was dragged by with the bar, or turned page by page, was all made anew, and its pictures asked for.
TEST(Photos, KeepTheirPlacesAndGetNoPicturesWhereTheyAreLeaptOver) {
    AppStory story;
    const std::set<std::string> chosen;
    PhotoList list(chosen);
    list.show(entries(0, 40));
    PhotoPlaces places(list);
    places.look(-1, 4, 2);
    EXPECT_THAT(shownIn(places), ElementsAre(0, 1, 2, 3, 4, 5, -1, -1)) << "nothing is before the first";
    int made = 0;
    QObject::connect(&places, &QAbstractItemModel::rowsInserted, [&] { ++made; });
    places.look(0, 4, 2);
    EXPECT_THAT(shownIn(places), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
    places.look(5, 4, 2);
    EXPECT_THAT(shownIn(places), ElementsAre(16, 17, 10, 11, 12, 13, 14, 15)) << "of one leap all is seen";
    places.look(10, 4, 2);
    places.look(9, 4, 2);
    EXPECT_THAT(shownIn(places), Each(-1));
    ASSERT_TRUE(story.waitUntil([&] { return shownIn(places).front() >= 0; }));
    EXPECT_THAT(shownIn(places), ElementsAre(24, 25, 18, 19, 20, 21, 22, 23)) << "they have come to rest";
    places.look(10, 4, 2);
    EXPECT_THAT(shownIn(places), ElementsAre(24, 25, 26, 27, 20, 21, 22, 23))
        << "the wheel waits for nothing";
    EXPECT_EQ(made, 0);

    places.setCurrent(99);
    EXPECT_EQ(places.current(), 39);
    places.setCurrent(20);
    list.show(entries(1, 40));
    EXPECT_EQ(places.current(), 19) << "it goes with its photo";
    list.show(entries(1, 25));
    ASSERT_TRUE(story.waitUntil([&] { return shownIn(places).front() < 0; }));
    EXPECT_THAT(shownIn(places), ElementsAre(-1, -1, -1, -1, 20, 21, 22, 23));
    list.show(entries(1, 19));
    ASSERT_TRUE(story.waitUntil([&] { return places.current() == 17; })) << "the nearest that is left";
    EXPECT_THAT(shownIn(places), Each(-1));
}

TEST(Thumbnails, SharesTheCacheOfTheDesktopAndLeavesNoTrace) {
    // The name that the standard gives as its example.
    EXPECT_EQ(Thumbnails::nameFor("/home/jens/photos/me.png"), "c6ee772d9e49320e97ec29a7eb5b1697.png");
    const TempHome home;
    const std::string picture = home.path("Pictures/a b\xff.png");
    const auto draw = [&](int number) {
        save(home, "Pictures/new.png", drawn(number));
        std::filesystem::rename(home.path("Pictures/new.png"), picture);
    };
    draw(1);
    const timespec longAgo[2] = {{1000, 0}, {2000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, picture.c_str(), longAgo, 0), 0);
    const Thumbnails thumbnails(home.path("cache"));
    EXPECT_EQ(thumbnails.of(picture).size(), QSize(256, 192));
    EXPECT_EQ(statusOf(picture).st_atim.tv_sec, 1000) << "it would look opened";
    const std::string kept = home.path("cache/large/" + bytesOf(Thumbnails::nameFor(picture)));
    EXPECT_EQ(statusOf(kept).st_mode & 0777U, 0600U);
    EXPECT_EQ(statusOf(home.path("cache/large")).st_mode & 0777U, 0700U);
    const QImage stored(QFile::decodeName(kept.c_str()));
    EXPECT_EQ(stored.text("Thumb::MTime"), "2000");
    EXPECT_TRUE(stored.text("Thumb::URI").endsWith("/Pictures/a%20b%FF.png"));
    EXPECT_EQ(stored.text("Thumb::Image::Width"), "400");

    // What another program keeps is taken, as long as the file is the same.
    QImage other = drawn(2).scaled(256, 192);
    other.setText("Thumb::MTime", "2000");
    other.setText("Thumb::Image::Width", "4000");
    other.setText("Thumb::Image::Height", "3000");
    ASSERT_TRUE(other.save(QFile::decodeName(kept.c_str())));
    EXPECT_EQ(thumbnails.of(picture).pixel(20, 20), other.pixel(20, 20));
    // To compare it, the picture itself was opened as well.
    EXPECT_EQ(thumbnails.lookAt(picture)->width, 4000);
    draw(3);
    EXPECT_NE(thumbnails.of(picture), other);
    EXPECT_TRUE(thumbnails.of(home.path("Pictures/none.png")).isNull());
}

// Whenever pictures were compared again, all their small pictures were decoded again.
TEST(Thumbnails, KeepWhatTheirPicturesLookLike) {
    const TempHome home;
    save(home, "Pictures/a.png", drawn(1));
    const std::string picture = home.path("Pictures/a.png");
    const Thumbnails thumbnails(home.path("cache"));
    const auto made = thumbnails.lookAt(picture);
    ASSERT_TRUE(made && made->hash);
    const QString kept = shown(home.path("cache/large/")) + Thumbnails::nameFor(picture);
    const QImage whole(kept);
    // What is written otherwise, or of another time, is nothing to go by.
    for (const auto& [key, wrong] : {std::pair("X-Tarvo::Look", "2 1"),
                                     {"X-Tarvo::Look", "1 g"},
                                     {"X-Tarvo::Look", "1f 1"},
                                     {"X-Tarvo::Look", ""},
                                     {"X-Tarvo::Sharpness", "x"}}) {
        QImage other = whole;
        other.setText("X-Tarvo::Look", "1 1");
        other.setText(key, wrong);
        ASSERT_TRUE(other.save(kept));
        EXPECT_EQ(thumbnails.lookAt(picture), made) << wrong;
    }
    ASSERT_TRUE(whole.save(kept));
    std::filesystem::resize_file(bytesOf(kept), contentOf(bytesOf(kept)).find("IDAT") + 4);
    EXPECT_EQ(thumbnails.lookAt(picture), made);
    EXPECT_TRUE(contentOf(bytesOf(kept)).ends_with("IDAT")) << "it was made anew";
    save(home, "Pictures/a.png", drawn(5));
    home.setModified("Pictures/a.png", 1'600'000'000);
    EXPECT_NE(thumbnails.lookAt(picture)->hash, made->hash) << "it is another picture now";
}

// A folder whose name is not UTF-8 was looked for under another one.
TEST(Photos, AreReviewedInAFolderOfAnyName) {
    AppStory story;
    save(story.home, "plain/beach.png", drawn(1));
    std::filesystem::rename(story.home.path("plain"), story.home.path("odd \xff"));
    PhotosDesk& photos = *story.app().photos();
    photos.lookIn(urlOf(story.home.path("odd \xff")));
    ASSERT_TRUE(story.waitUntil([&] { return photos.busyText().isEmpty(); }));
    EXPECT_EQ(photos.chapters().size(), 1);
}

TEST(Photos, AreReviewedSetAsideAndPutBack) {
    AppStory story;
    const TempHome& home = story.home;
    save(home, "Pictures/beach.png", drawn(1));
    EXPECT_EQ(story.app().photos()->folder(), "") << "which it is stands on the disk, and nobody has looked";
    save(home, "Pictures/beach again.png", drawn(1, 3));
    save(home, "Pictures/forest.png", drawn(7));
    std::filesystem::create_directories(home.path("Downloads"));
    std::filesystem::copy_file(home.path("Pictures/forest.png"), home.path("Pictures/forest (1).png"));
    PhotosDesk& photos = *story.app().photos();
    // Whoever scrolled stood at the beginning again whenever pictures were compared or set aside.
    int resets = 0;
    QObject::connect(photos.photos(), &QAbstractItemModel::modelReset, [&] { ++resets; });
    photos.show();
    ASSERT_TRUE(story.waitUntil([&] { return photos.busyText().isEmpty() && !photos.chapters().isEmpty(); }));
    EXPECT_EQ(titlesOf(photos).mid(0, 2), (QStringList{"Exact copies", "Look-alikes"}));
    EXPECT_FALSE(photos.hasChosen()) << "nothing is chosen by itself";

    photos.setChapter(0);
    EXPECT_TRUE(photos.proposes());
    photos.chooseRest();
    photos.setChapter(1);
    photos.toggle(1);
    EXPECT_EQ(photos.chosenText().section(" · ", 0, 0), "2 items");
    photos.setAside();
    QuestionDesk& question = *story.app().question();
    ASSERT_TRUE(story.waitUntil([&] { return question.isOpenInPhotos(); }));
    EXPECT_FALSE(question.isOpen()) << "it is asked where the photos are";
    question.accept();
    const auto left = [&] {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(home.path("Pictures"))) {
            names.insert(entry.path().filename().string());
        }
        return names;
    };
    ASSERT_TRUE(story.waitUntil([&] { return left().size() == 2; }));
    EXPECT_THAT(left(), ::testing::Contains(::testing::StartsWith("forest"))) << "one of the copies stays";
    ASSERT_TRUE(story.waitUntil([&] { return !photos.hasChosen() && photos.busyText().isEmpty(); }));
    ASSERT_TRUE(story.waitUntilIdle());
    ASSERT_TRUE(story.waitUntil([&] { return photos.mayUndo(); }));
    photos.undo();
    EXPECT_FALSE(photos.offersUndo());
    ASSERT_TRUE(
        story.waitUntil([&] { return left().size() == 4 && story.app().holding()->canUndo() == false; }));
    ASSERT_TRUE(story.waitUntil([&] { return photos.busyText().isEmpty() && photos.photos()->count() > 1; }))
        << "what came back is shown";
    EXPECT_EQ(resets, 0);
}

// In the review of photos undoing put back what had been cleaned elsewhere.
TEST(Photos, AreNotOfferedToBePutBackWhereTheLastCleanupWasAnotherOne) {
    AppStory story;
    save(story.home, "Pictures/beach.png", drawn(1));
    save(story.home, "Pictures/Trip/beach.png", drawn(7));
    story.addOwn(2'000'000);
    story.app().settings()->setWelcomeSeen(true);
    story.app().scanning()->scan();
    ASSERT_TRUE(story.waitUntilIdle());
    PhotosDesk& photos = *story.app().photos();
    photos.show();
    ASSERT_TRUE(story.waitUntil([&] { return photos.busyText().isEmpty() && !photos.chapters().isEmpty(); }));
    std::set<std::string> names;
    for (int at = 0; at < photos.photos()->count(); ++at) {
        names.insert(bytesOf(photos.photos()->read(at, PhotoList::nameRole).toString()));
    }
    EXPECT_THAT(names, ::testing::ElementsAre("Trip/beach.png", "beach.png"))
        << "told apart by their folders";
    photos.toggle(0);
    photos.setAside();
    QuestionDesk& question = *story.app().question();
    ASSERT_TRUE(story.waitUntil([&] { return question.isOpenInPhotos(); }));
    question.accept();
    ASSERT_TRUE(story.waitUntil([&] { return photos.mayUndo(); }));
    ASSERT_TRUE(story.waitUntilIdle());
    story.app().places()->setAside({AppStory::ownKey});
    ASSERT_TRUE(story.waitUntil([&] { return question.isOpen(); }));
    question.accept();
    ASSERT_TRUE(story.waitUntil([&] { return !story.hasOwn(); }));
    ASSERT_TRUE(story.waitUntilIdle());
    ASSERT_TRUE(story.waitUntil([&] { return story.app().holding()->canUndo(); }));
    EXPECT_FALSE(photos.offersUndo());
}
