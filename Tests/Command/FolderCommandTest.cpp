#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/Explaining/FolderEvidence.h"
#include "LumoCore/Scanning/FolderContents.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "Tests/support/RunTarvo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

using Explanations = std::map<std::string, Explanation>;

/// The member of the document as a record.
template <class Record>
Record member(const JsonValue& document, std::string_view name) {
    return decode<Record>(*document.find(name)).value();
}

} // namespace

TEST(FolderCommand, ListsAFolderToProgramsAndToPeople) {
    const TempHome home;
    home.file("Library/Caches/app/inner/big.BIN", 3000000);
    home.file("Library/Caches/app/inner/bad\x1B\xE9", 100);
    home.folder("Library/Caches/app/inner/below");
    home.file("Library/Caches/app/note", 10);
    const std::string path = home.path("Library/Caches/app");
    const JsonValue document = jsonOf(home, {"folder", path});
    const auto listing = member<FolderContents::Listing>(document, "listing");
    EXPECT_THAT(listing.skipped, ElementsAre("inner"));
    EXPECT_THAT(listing.paths, ElementsAre(path + "/inner"));
    ASSERT_EQ(listing.items.size(), 3U);
    EXPECT_EQ(listing.items[0].name, "big.BIN");
    const auto breakdown = member<FileTree::Breakdown>(document, "breakdown");
    EXPECT_EQ(breakdown.usage.allocatedBytes, FolderContents::usageOf(path).allocatedBytes);
    EXPECT_EQ(breakdown.children.size(), 2U);
    EXPECT_EQ(breakdown.extensions.front().name, "bin");
    EXPECT_EQ(member<std::string>(document, "location"), "caches");
    EXPECT_TRUE(member<bool>(document, "canOpen"));

    const std::string shown = runTarvo(home, {"carpeta", path}).output;
    EXPECT_THAT(shown, AllOf(StartsWith("~/Library/Caches/app  3 MB · 3 archivos"),
                             HasSubstr("\ncarpeta de cachés (los programas"),
                             HasSubstr("\nCasi todo está en inner\n"), HasSubstr("  big.BIN\n"),
                             HasSubstr("y 2 más (<1 MB)"), HasSubstr("\nPor tipo de archivo\n"),
                             Not(HasSubstr("\x1B"))));
    EXPECT_THAT(runTarvo(home, {"folder", home.path("Library")}, {"TARVO_IDIOMA=en"}).output,
                HasSubstr("\nNearly everything is in Caches ▸ app ▸ inner\n"));
}

TEST(FolderCommand, ShowsWhatIsNoFolderAsItselfAndRefusesWhatIsNotThere) {
    const TempHome home;
    home.file("one.txt", 5000);
    home.link("link", "Downloads/x\n");
    home.folder("empty");
    const JsonValue document = jsonOf(home, {"folder", home.path("one.txt")});
    const auto listing = member<FolderContents::Listing>(document, "listing");
    ASSERT_EQ(listing.items.size(), 1U);
    EXPECT_EQ(listing.items[0].path, home.path("one.txt"));
    EXPECT_FALSE(member<bool>(document, "canOpen"));
    EXPECT_EQ(member<std::string>(document, "location"), "other");
    EXPECT_THAT(runTarvo(home, {"folder", home.path("link")}).output,
                HasSubstr("\nEs un enlace: lo que contiene está en Downloads/x\\n.\n"));
    EXPECT_THAT(runTarvo(home, {"folder", home.path("empty")}).output, HasSubstr("\nNo hay nada dentro.\n"));
    for (const char* command : {"folder", "explain"}) {
        for (const std::string& path : {home.path("missing\n"), std::string()}) {
            const Ran ran = runTarvo(home, {command, path, "--json"});
            EXPECT_EQ(ran.exitCode, 2) << command;
            EXPECT_EQ(ran.output, "");
            EXPECT_THAT(ran.error, AllOf(StartsWith("tarvo: no encuentro «"), EndsWith("permisos\n")));
        }
    }
}

TEST(ExplainCommand, ExplainsTheGivenFoldersAndShowsItsEvidence) {
    const TempHome home;
    home.fileWith("Applications/Foo Bar.app/Contents/Info.plist",
                  R"(<plist version="1.0"><dict><key>CFBundleIdentifier</key><string>com.foo.bar</string>)"
                  R"(<key>CFBundleName</key><string>Foo</string></dict></plist>)");
    home.file("Library/Application Support/com.foo.bar.agent/data", 2000000);
    home.folder("Library/Caches/com.apple.x");
    const std::string data = home.path("Library/Application Support/com.foo.bar.agent");
    const std::string cache = home.path("Library/Caches/com.apple.x");
    const JsonValue document = jsonOf(home, {"explain", data, cache});
    const auto explanations = decode<Explanations>(document).value();
    EXPECT_EQ(explanations.at(data).whatItIs, "Datos de Foo Bar");
    EXPECT_EQ(explanations.at(data).sizeBytes, FolderContents::usageOf(data).allocatedBytes);
    EXPECT_EQ(explanations.at(cache).safety, Safety::safe);
    EXPECT_THAT(
        runTarvo(home, {"explicar", data, cache, data}).output,
        StartsWith("● ~/Library/Application Support/com.foo.bar.agent  2 MB · aproximada\n"
                   "  Qué es     Datos de Foo Bar\n"
                   "  Riesgo     Míralo antes. Puede contener ajustes o documentos de la app.\n"
                   "  Qué hacer  Mira en los ajustes de Foo Bar qué deja borrar; desinstalarla no quita esta "
                   "carpeta.\n\n"
                   "● ~/Library/Caches/com.apple.x  "));

    const JsonValue evidence = *jsonOf(home, {"explain", data, "--evidence"}).find(data);
    EXPECT_EQ(member<FolderEvidence>(evidence, "evidence").relatedApp->name, "Foo");
    EXPECT_THAT(runTarvo(home, {"explain", data, "--evidence"}, {"TARVO_IDIOMA=en"}).output,
                HasSubstr("\nRelated app, installed: Foo\n"));
}

TEST(ExplainCommand, ExplainsWhatAReportDoesNotClassifyInItsHome) {
    const TempHome home;
    ScanReport report{.home = "/elsewhere"};
    report.unclassified = {{.path = "/elsewhere/.big"}, {.path = "/elsewhere/Library/Caches/small"}};
    const auto save = [&] {
        return home.fileWith("report.json", dumpJson(encode(report), JsonLayout::line));
    };
    const std::string file = save();
    const auto explained = decode<Explanations>(jsonOf(home, {"explain", "--report", file})).value();
    ASSERT_EQ(explained.size(), 2U);
    EXPECT_EQ(explained.at("/elsewhere/Library/Caches/small").safety, Safety::safe);
    EXPECT_THAT(
        runTarvo(home, {"explain", "--report", file}, {"TARVO_IDIOMA=en"}).output,
        StartsWith("● ~/.big  0 MB · approximate\n  What   Data of a program without a desktop icon"));
    EXPECT_EQ(runTarvo(home, {"explain", home.path(), "--report", file}).exitCode, 2);
    report.unclassified.clear();
    save();
    EXPECT_THAT(runTarvo(home, {"explain", "--report", file}).output, StartsWith("No hay carpetas grandes"));
    EXPECT_THAT(decode<Explanations>(jsonOf(home, {"explain", "--report", file})).value(), IsEmpty());
}
