#include "TarvoModel/Showing/Preview.h"
#include "TarvoModel/Showing/DemoDisk.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using lumo::Language;
using tarvo::Preview;
using tarvo::previewOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using Kind = Preview::Kind;

TEST(Preview, ShowsTextAsItCanBeShownAndNothingOfOtherFiles) {
    const tarvo::testing::TempHome home;
    struct Case {
        std::string name, content;
        Kind kind;
        std::string text;
    };
    const std::vector<Case> cases{{"note.txt", "first\r\nsecond", Kind::text, "first\nsecond\n"},
                                  {"tabs", "a\tb", Kind::text, "a    b\n"},
                                  {"latin", "caf\xE9\n", Kind::text, "café\n"},
                                  {"colours", "\x1B[31mred\n", Kind::text, "\\x1B[31mred\n"},
                                  {"empty", "", Kind::text, ""},
                                  {"program",
                                   std::string("\x7F"
                                               "ELF\0\1",
                                               6),
                                   Kind::file, ""}};
    for (const Case& expected : cases) {
        const Preview preview = previewOf({home.fileWith(expected.name, expected.content)}, {}, Language::en);
        EXPECT_EQ(preview.kind, expected.kind) << expected.name;
        EXPECT_EQ(preview.text, expected.text) << expected.name;
        EXPECT_FALSE(preview.isCut) << expected.name;
    }
}

TEST(Preview, EndsBeforeAFileThatIsTooLongDoes) {
    const tarvo::testing::TempHome home;
    std::string letters;
    while (letters.size() <= tarvo::previewTextBytes) {
        letters += "ñ";
    }
    const Preview oneLine = previewOf({home.fileWith("line", letters)});
    EXPECT_TRUE(oneLine.isCut);
    EXPECT_THAT(oneLine.text, HasSubstr("ñ…\n"));
    EXPECT_THAT(oneLine.text, Not(HasSubstr("Ã"))) << "the cut is no reason to take it for another encoding";
    const Preview lines = previewOf({home.fileWith("lines", std::string(1000, '\n'))});
    EXPECT_TRUE(lines.isCut);
    EXPECT_THAT(lines.text, SizeIs(tarvo::previewLines));
}

TEST(Preview, ListsFoldersAndOpensNeitherLinksNorPipes) {
    const tarvo::testing::TempHome home;
    home.file("box/large", 500'000);
    home.file("box/small", 10);
    home.folder("box/none");
    const Preview box = previewOf({home.path("box")}, {}, Language::en);
    EXPECT_EQ(box.kind, Kind::folder);
    EXPECT_THAT(box.facts, HasSubstr("2 files · last changed: "));
    ASSERT_THAT(box.largest, SizeIs(3));
    EXPECT_EQ(box.largest.front().name, "large");
    EXPECT_GE(box.bytes, 500'000);

    EXPECT_EQ(previewOf({home.link("way", home.path("box"))}).kind, Kind::other);
    EXPECT_EQ(previewOf({home.fifo("pipe")}).kind, Kind::other);
    EXPECT_EQ(previewOf({home.path("nothing")}).kind, Kind::missing);
    EXPECT_EQ(previewOf({}).kind, Kind::missing);

    const Preview both = previewOf({home.path("box/small"), home.path("box/large"), home.path("gone")});
    EXPECT_EQ(both.kind, Kind::folder);
    ASSERT_THAT(both.largest, SizeIs(2));
    EXPECT_EQ(both.largest.front().name, home.path("box/large"));
}

TEST(Preview, OfTheMadeUpDiskIsMadeUp) {
    const auto report = tarvo::DemoDisk::report(lumo::Date{});
    const std::string& path = report.unclassified.front().path;
    const Preview preview = tarvo::demoPreview({path}, Language::en);
    EXPECT_EQ(preview.kind, Kind::folder);
    EXPECT_EQ(preview.facts, tarvo::DemoDisk::notice(Language::en));
    EXPECT_EQ(preview.bytes, report.unclassified.front().usage.allocatedBytes);
    EXPECT_THAT(tarvo::DemoDisk::evidence(path).largestEntries, Not(IsEmpty()));
}
