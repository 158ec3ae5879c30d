#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "Tests/support/RunTarvo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;
namespace fs = std::filesystem;

TEST(ArchiveCommand, EstimatesAsksArchivesAndIsUndone) {
    const TempHome home;
    const std::string old = home.path("Documents/Old");
    home.files({"Documents/Old/file", "Documents/Old/photo.jpg"}, 50000);
    const JsonValue estimated = jsonOf(home, {"archivar", old, "--estimate"});
    EXPECT_EQ(*estimated.find("destination"), JsonValue{old + ".zip"});
    EXPECT_EQ(*estimated.find("estimate")->find("bytes"), JsonValue{std::int64_t{100000}});
    for (const std::string answer : {"\n", "n\n"}) {
        const Ran ran = runTarvoOnTerminal(home, {"archive", old}, answer);
        EXPECT_EQ(ran.exitCode, 1);
        EXPECT_THAT(ran.output, AllOf(HasSubstr("Se creará Old.zip al lado"), HasSubstr("7 días"),
                                      HasSubstr("¿Archivar «Old»? [s/N]")));
        EXPECT_FALSE(fs::exists(old + ".zip"));
    }
    EXPECT_EQ(runTarvo(home, {"archive", old}).exitCode, 2) << "nobody to ask";
    const JsonValue done = jsonOf(home, {"archive", old, "--yes"});
    EXPECT_EQ(*done.find("archive"), JsonValue{old + ".zip"});
    const auto outcomes = decode<std::vector<CleanupOutcome>>(*done.find("outcomes")).value();
    EXPECT_EQ(outcomes.front().status, CleanupStatus::done);
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
              json(R"({"refusal": "«Documents» es una de tus carpetas principales: elige una de dentro."})"));
    EXPECT_EQ(runTarvo(home, {"archive", home.path("Documents/none"), "--estimate"}).exitCode, 2);
    EXPECT_THAT(runTarvo(home, {"archive", home.path("Documents/Photos"), "--estimate"}).output,
                HasSubstr("Apenas se comprime: ahorrarías unos 0 MB."));
    const Ran pipes = runTarvo(home, {"archivar", home.path("Documents/Pipes"), "--yes"});
    EXPECT_EQ(pipes.exitCode, 1);
    EXPECT_THAT(pipes.error, AllOf(HasSubstr("El original sigue intacto."), HasSubstr("Pipes/pipe: ")));
}
