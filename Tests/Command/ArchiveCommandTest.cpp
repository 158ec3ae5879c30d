#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "Tests/support/RunTarvo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using tarvo::testing::json;
using tarvo::testing::jsonOf;
using tarvo::testing::Ran;
using tarvo::testing::runTarvo;
using tarvo::testing::TempHome;
using testing::AllOf;
using testing::HasSubstr;
namespace fs = std::filesystem;

TEST(ArchiveCommand, EstimatesAsksArchivesAndIsUndone) {
    const TempHome home;
    const std::string old = home.path("Documents/Old");
    home.file("Documents/Old/file", 50000);
    home.file("Documents/Old/photo.jpg", 50000);
    const lumo::JsonValue estimated = jsonOf(home, {"archivar", old, "--estimate"});
    EXPECT_EQ(*estimated.find("destination"), lumo::JsonValue{old + ".zip"});
    EXPECT_EQ(*estimated.find("estimate")->find("bytes"), lumo::JsonValue{std::int64_t{100000}});
    for (const std::string answer : {"\n", "n\n"}) {
        const Ran ran = tarvo::testing::runTarvoOnTerminal(home, {"archive", old}, answer);
        EXPECT_EQ(ran.exitCode, 1);
        EXPECT_THAT(ran.output, AllOf(HasSubstr("Se creará Old.zip al lado"), HasSubstr("7 días"),
                                      HasSubstr("¿Archivar «Old»? [s/N]")));
        EXPECT_FALSE(fs::exists(old + ".zip"));
    }
    EXPECT_EQ(runTarvo(home, {"archive", old}).exitCode, 2) << "nobody to ask";
    const lumo::JsonValue done = jsonOf(home, {"archive", old, "--yes"});
    EXPECT_EQ(*done.find("archive"), lumo::JsonValue{old + ".zip"});
    const auto outcomes = lumo::decode<std::vector<lumo::CleanupOutcome>>(*done.find("outcomes")).value();
    EXPECT_EQ(outcomes.front().status, lumo::CleanupStatus::done);
    EXPECT_GE(outcomes.front().trashedBytes, 100000);
    EXPECT_FALSE(fs::exists(old));
    EXPECT_EQ(jsonOf(home, {"undo"}), json(R"({"done": 1, "failures": []})"));
    EXPECT_TRUE(fs::exists(old + "/file") && fs::exists(old + ".zip"));
}

TEST(ArchiveCommand, SaysWhyNot) {
    const TempHome home;
    home.file("Documents/Photos/a.jpg", 50000);
    home.fifo("Documents/Pipes/pipe");
    const Ran refused = runTarvo(home, {"archive", home.path("Documents"), "--json"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(json(refused.output),
              json(R"({"refusal": "«Documents» es una carpeta de macOS: elige una de dentro."})"));
    const Ran english = runTarvo(home, {"archive", home.path("Documents")}, {"TARVO_IDIOMA=en"});
    EXPECT_EQ(english.exitCode, 1);
    EXPECT_THAT(english.error, HasSubstr("This can't be archived: “Documents” is a macOS folder"));
    EXPECT_EQ(runTarvo(home, {"archive", home.path("Documents/none"), "--estimate"}).exitCode, 2);
    EXPECT_THAT(runTarvo(home, {"archive", home.path("Documents/Photos"), "--estimate"}).output,
                HasSubstr("Apenas se comprime: ahorrarías unos 0 MB."));
    const Ran pipes = runTarvo(home, {"archivar", home.path("Documents/Pipes"), "--yes"});
    EXPECT_EQ(pipes.exitCode, 1);
    EXPECT_THAT(pipes.error, AllOf(HasSubstr("El original sigue intacto."), HasSubstr("Pipes/pipe: ")));
}
