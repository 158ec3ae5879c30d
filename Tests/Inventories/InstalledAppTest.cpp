#include "LumoCore/Inventories/AppCaches.h"
#include "LumoCore/Inventories/Installed.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

std::string keyed(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><string>" + value + "</string>";
}

std::string plist(const std::string& content) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)" + content +
           "</dict></plist>\n";
}

std::string identified(const std::string& identifier) {
    return plist(keyed("CFBundleIdentifier", identifier));
}

/// A bundle with that property list.
std::string bundle(const TempHome& home, const std::string& name, std::string_view list) {
    home.fileWith(name + "/Contents/Info.plist", list);
    return home.path(name);
}

std::string repeated(std::string_view part, std::size_t times) {
    std::string text;
    for (std::size_t count = 0; count < times; ++count) {
        text += part;
    }
    return text;
}

/// The number's lowest bytes, the most significant first.
std::string bigEndian(std::uint64_t number, int bytes) {
    std::string text;
    for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8) {
        text += static_cast<char>((number >> shift) & 0xFF);
    }
    return text;
}

/// A binary list of arrays, each within the one before.
std::string nestedBinary(std::size_t levels) {
    std::string list = "bplist00";
    std::string offsets;
    for (std::size_t level = 0; level <= levels; ++level) {
        offsets += bigEndian(list.size(), 4);
        list += level < levels ? "\xA1" + bigEndian(level + 1, 4) : "\xA0";
    }
    const std::size_t table = list.size();
    return list + offsets + std::string(6, '\0') + "\x04\x04" + bigEndian(levels + 1, 8) + bigEndian(0, 8) +
           bigEndian(table, 8);
}

std::string desktopEntry(const std::string& lines) {
    return "[Desktop Entry]\nType=Application\n" + lines;
}

std::optional<DesktopEntry> parse(const std::string& text, Language language = Language::es) {
    return parseDesktopEntry(text, "id", "/path", language);
}

std::vector<Rule> cacheRules(const TempHome& home, const std::string& identifier,
                             const std::vector<Rule>& given = {}) {
    return AppCaches::rules({{"Some App", identifier, "/p/Some App.app"}}, given, HomePlaces(home.path()),
                            Language::en);
}

Rule ruleAt(const std::string& path) {
    Rule rule;
    rule.locator = locator::Path{path};
    return rule;
}

} // namespace

TEST(InstalledApp, ReadsTextAndBinaryPropertyLists) {
    const TempHome home;
    const std::string named =
        bundle(home, "Code.app",
               plist(keyed("CFBundleName", "Code") + keyed("CFBundleIdentifier", "com.a.code") +
                     keyed("CFBundleDisplayName", "Código &amp; más")));
    EXPECT_EQ(InstalledApp::read(named), (InstalledApp{"Código & más", "com.a.code", named}));

    using namespace std::string_view_literals;
    const std::string binary =
        bundle(home, "Binary.app",
               "bplist00\xd2\1\2\3\4_\x10\x12"
               "CFBundleIdentifier\x5c"
               "CFBundleName_\x10\x12"
               "com.example.Binaryi"
               "\0B\0i\0n\0a\0r\0i\0o\0 \0\xf1\x08\x0d\"/D\0\0\0\0\0\0\1\1\0\0\0\0\0\0\0\5\0\0\0\0\0\0\0\0"
               "\0\0\0\0\0\0\0W"sv);
    EXPECT_EQ(InstalledApp::read(binary), (InstalledApp{"Binario ñ", "com.example.Binary", binary}));
}

TEST(InstalledApp, FallsBackToTheBundleNameAndThenToItsFile) {
    const TempHome home;
    const std::string wrongKind = "<key>CFBundleDisplayName</key><integer>7</integer>";
    const auto nameIn = [&](const std::string& content) {
        return InstalledApp::read(
                   bundle(home, "Foo 2.0 Bar.app", plist(keyed("CFBundleIdentifier", "com.a.b") + content)))
            ->name;
    };
    EXPECT_EQ(nameIn(keyed("CFBundleName", "Foo")), "Foo");
    EXPECT_EQ(nameIn(wrongKind + keyed("CFBundleName", "Foo")), "Foo");
    EXPECT_EQ(nameIn(wrongKind), "Foo 2.0 Bar");
}

TEST(InstalledApp, PassesOverBundlesItCannotRead) {
    const TempHome home;
    const std::string good = identified("com.a.b");
    for (const std::string& list :
         {plist(keyed("CFBundleName", "No identifier")), plist("<key>CFBundleIdentifier</key><array/>"),
          std::string(), std::string("not a list"), std::string("bplist00"), good.substr(0, good.size() / 2),
          nestedBinary(3).substr(0, 30), std::string("<plist><string>com.a.b</string></plist>")}) {
        EXPECT_FALSE(InstalledApp::read(bundle(home, "X.app", list))) << list;
    }
    // Keys and values with a zero byte in them ended the process.
    using namespace std::string_view_literals;
    const auto cut = InstalledApp::read(
        bundle(home, "Zero.app",
               "bplist00\xd2\1\2\3\4_\x10\x12"
               "CFBundleIdentifierRC\0Wcom.a\0bQx\x08\x0d\"%-\0\0\0\0\0\0\1\1\0\0\0\0\0\0\0\5\0\0\0\0\0\0\0\0"
               "\0\0\0\0\0\0\0/"sv));
    EXPECT_TRUE(!cut || cut->bundleID == "com.a");
    home.folder("Y.app/Contents/Info.plist");
    EXPECT_FALSE(InstalledApp::read(home.path("Y.app")));
    EXPECT_FALSE(InstalledApp::read(home.path("missing.app")));
}

TEST(InstalledApp, SurvivesListsThatNestWithoutEnd) {
    // Each runs in a process of its own: what is too deep for the stack would end this one.
    const TempHome home;
    const auto survives = [&](const std::string& list) {
        const std::string path = bundle(home, "Deep.app", list);
        EXPECT_EXIT(std::_Exit(InstalledApp::read(path) ? 1 : 0), ExitedWithCode(0), "")
            << list.substr(0, 60);
    };
    survives("<plist>" + repeated("<array>", 500000));
    // Closing tags in comments and attributes close nothing.
    survives("<plist>" + repeated("<array><!--</array-->", 190000));
    survives("<plist>" + repeated("<array a=\"</array\">", 210000));
    survives(nestedBinary(450000));
}

TEST(InstalledApp, FindsBundlesInTheRootsAndOneLevelBelow) {
    const TempHome home;
    const std::string list = identified("com.a.b");
    const std::string top = bundle(home, "1/B.app", list);
    const std::string below = bundle(home, "1/Utilities/A.app", list);
    const std::string again = bundle(home, "2/B.app", list);
    bundle(home, "1/Suite/Tools/C.app", list);
    bundle(home, "1/B.app/Inner.app", list);
    bundle(home, "elsewhere/D.app", list);
    home.link("1/Linked", home.path("elsewhere"));
    home.file("1/notes");
    const auto found = InstalledApp::bundlesIn({home.path("1"), home.path("no"), home.path("2")});
    EXPECT_THAT(eachOf(found, &InstalledApp::path), ElementsAre(top, below, again));
}

TEST(InstalledApp, IsKnownByItsNormalFormsOfThreeCharactersAndMore) {
    EXPECT_THAT(
        (InstalledApp{"Visual Studio Code", "com.microsoft.VSCode", "/a/Code - Insiders.app"}.aliases()),
        ElementsAre("visualstudiocode", "codeinsiders", "vscode"));
    EXPECT_THAT((InstalledApp{"Vi", "org.vim.MV", "/a/vi-m.app"}.aliases()), ElementsAre("vim"));
    EXPECT_THAT((InstalledApp{"微信", "a.b.微信开", "/a/firefox.desktop"}.aliases()),
                ElementsAre("firefox", "微信开"));
}

TEST(DesktopEntry, IsAnApplicationThatTheUserSees) {
    const auto entry =
        parse("# comment\n[Other]\nName=No\n\n[Desktop Entry]\r\nType = Application\nName= El Zorro \n"
              "Name[en]=The Fox\nName=Second\nExec=/usr/bin/zorro %U\n[Desktop Action x]\nHidden=true\n");
    EXPECT_EQ(entry, (DesktopEntry{"id", "El Zorro", "/path", "zorro"}));
    // A person read "Files" in a Spanish window, though the entry has a Spanish name.
    const std::string files = desktopEntry("Name=Files\nName[de]=Dateien\nName[es]=Archivos\n");
    EXPECT_EQ(parse(files)->name, "Archivos");
    EXPECT_EQ(parse(files, Language::en)->name, "Files");
    for (const std::string& text :
         {desktopEntry("Exec=x"), desktopEntry("Name=x\nHidden=true"), desktopEntry("Name=x\nNoDisplay=true"),
          std::string("[Desktop Entry]\nType=Link\nName=x"), std::string("Type=Application\nName=x"),
          std::string("\xFF\0[", 3), std::string()}) {
        EXPECT_FALSE(parse(text)) << text;
    }
}

TEST(DesktopEntry, NamesTheProgramUnlessItIsAnInterpreter) {
    using Case = std::tuple<const char*, const char*>;
    for (const auto& [started, program] :
         {Case{"", ""}, Case{"firefox", "firefox"}, Case{"/usr/lib/firefox/firefox %u", "firefox"},
          Case{"\"/opt/My App/my app\" --flag=1", "my app"},
          Case{"env GDK_BACKEND=x11 LANG=C /opt/tool/tool", "tool"},
          Case{"/usr/bin/env \"A=b c\" tool", "tool"}, Case{"GDK_BACKEND=x11 tool", "tool"},
          Case{"python3.11 /usr/share/app.py", ""}, Case{"/usr/bin/flatpak run org.example.App", ""},
          Case{"sh -c \"tool | other\"", ""}, Case{"env X=1 bash -c tool", ""}}) {
        const std::string line = started;
        EXPECT_EQ(parse(desktopEntry("Name=x\nExec=" + line))->program, program) << line;
    }
}

TEST(DesktopEntry, KnowsTheFolderThatBelongsToItsProgramAlone) {
    const TempHome home;
    home.program("opt/browser/start", "exit 0");
    home.program("usr/bin/tool", "exit 0");
    home.link("usr/bin/browser-stable", "../../opt/browser/start");
    const auto folderFor = [&](const std::string& started) {
        home.fileWith("data/applications/a.desktop", desktopEntry("Name=x\nExec=" + started));
        return desktopEntriesIn({home.path("data")}).front().programFolder;
    };
    EXPECT_EQ(folderFor(home.path("usr/bin/browser-stable") + " %U"), home.path("opt/browser"));
    EXPECT_EQ(folderFor(home.path("usr/bin/tool")), "") << "many programs stand there";
    EXPECT_EQ(folderFor(home.path("nowhere/tool")), "");
    EXPECT_EQ(folderFor("sh -c x"), "");
}

TEST(DesktopEntry, IsHiddenByTheSameIdInAnEarlierFolder) {
    const TempHome home;
    const std::string mine = home.fileWith("user/applications/a.desktop", desktopEntry("Name=Mine"));
    home.fileWith("user/applications/gone.desktop", desktopEntry("Name=x\nHidden=true"));
    home.link("user/applications/c.desktop", "nowhere");
    home.fileWith("system/applications/a.desktop", desktopEntry("Name=Theirs"));
    home.fileWith("system/applications/gone.desktop", desktopEntry("Name=Back again"));
    const std::string kept = home.fileWith("system/applications/c.desktop", desktopEntry("Name=Kept"));
    const std::string deep =
        home.fileWith("system/applications/kde/sub/d.desktop", desktopEntry("Name=Deep"));
    home.fileWith("system/applications/notes.txt", desktopEntry("Name=Notes"));
    EXPECT_THAT(desktopEntriesIn({home.path("user"), home.path("none"), home.path("system")}),
                ElementsAre(DesktopEntry{"a", "Mine", mine, ""}, DesktopEntry{"c", "Kept", kept, ""},
                            DesktopEntry{"kde-sub-d", "Deep", deep, ""}));
}

TEST(AppCaches, MakesARuleForAFolderUnderTheExactIdentifier) {
    const TempHome home;
    home.folders({"Library/Caches/com.a.mac", "Library/Caches/com.a.both", ".cache/com.a.both",
                  ".cache/com.a.xdg", ".var/app/com.a.flatpak/cache", "Library/Caches/com.a.appendix",
                  "elsewhere"});
    home.link(".cache/com.a.link", home.path("elsewhere"));
    home.file(".cache/com.a.file");
    for (const auto& [identifier, path] : {std::pair{"com.a.mac", "~/Library/Caches/com.a.mac"},
                                           {"com.a.both", "~/Library/Caches/com.a.both"},
                                           {"com.a.xdg", "~/.cache/com.a.xdg"},
                                           {"com.a.flatpak", "~/.var/app/com.a.flatpak/cache"}}) {
        const std::vector<Rule> rules = cacheRules(home, identifier);
        ASSERT_EQ(rules.size(), 1U) << identifier;
        EXPECT_EQ(rules.front().id, std::string("cache-app:") + identifier);
        EXPECT_EQ(rules.front().locator, Locator(locator::Path{path}));
        EXPECT_EQ(rules.front().safety, Safety::safe);
        EXPECT_EQ(rules.front().cleanup, Cleanup(cleanup::DeleteContents{}));
        EXPECT_EQ(rules.front().closeFirst, identifier);
    }
    // With nothing behind "~/Library/Caches/" it became a rule that empties the caches of everything.
    for (const char* other : {"", "com.a.app", "com.a.Mac", "Some App", "com.a.link", "com.a.file", ".", "..",
                              "../elsewhere", "com.a.mac/", "*"}) {
        EXPECT_THAT(cacheRules(home, other), IsEmpty()) << other;
    }
    EXPECT_THAT(cacheRules(home, "", {ruleAt("~/Library/Caches/com.a.mac")}), IsEmpty());
}

TEST(AppCaches, LeavesAFolderToTheRuleThatHasIt) {
    const TempHome home;
    home.folder(".cache/tool/inner");
    for (const char* given : {"~/.cache/tool", "~/.cache/tool/inner", "~/.cache"}) {
        EXPECT_THAT(cacheRules(home, "tool", {ruleAt(given)}), IsEmpty()) << given;
    }
    for (const char* given : {"~/.cache/to", "~/.cache/tool/missing", "~/.cache/tool2"}) {
        EXPECT_EQ(cacheRules(home, "tool", {ruleAt(given)}).size(), 1U) << given;
    }
    const InstalledApp twice{"Tool", "tool", "/p/tool.app"};
    EXPECT_EQ(AppCaches::rules({twice, twice}, {}, HomePlaces(home.path())).size(), 1U);
}

TEST(InstalledApp, IsRelatedToAFolderByIdentifierThenAliasThenWord) {
    const std::vector<InstalledApp> apps{{"Foo Tool", "com.foo.bar", "/Applications/Foo Bar.app"},
                                         {"Visual Studio Code", "com.microsoft.VSCode", "/a/Code - OSS.app"},
                                         {"Baz", "com.foo.bar.agent", "/a/Baz.app"},
                                         {"Café Élite", "org.example.cafe", "/a/cafe.desktop"}};
    using Folders = std::vector<const char*>;
    for (const auto& [name, folders] :
         {std::pair{"Foo Tool", Folders{"com.foo.bar", "COM.Foo.Bar.agent", "com.foo", ".com.foo.bar.x",
                                        "com.foobar", "BAR", "foobar", "tool"}},
          {"Visual Studio Code",
           Folders{"Code - OSS", ".vscode", "..vscode", "com.microsoft.VSCode.ShipIt", "my-studio-cache"}},
          {"Baz", Folders{"baz"}},
          {"Café Élite", Folders{"cafe\u0301 e\u0301lite", "Élite backups"}},
          {"", Folders{"com.foo.ba", "net.elite.thing", "too", "desktop helper", "", "."}}}) {
        for (const char* folder : folders) {
            const auto app = InstalledApp::related(folder, apps);
            EXPECT_EQ(app ? app->name : "", name) << folder;
        }
    }
    EXPECT_EQ(apps.front().spokenName(), "Foo Bar");
    EXPECT_EQ(apps.back().spokenName(), "Café Élite");
}

TEST(Installed, KnowsOnLinuxWhoseAFolderIsByWholeWordsOnly) {
    // "~/.mozilla" was Thunderbird's, since the name of that has the letters in it.
    const TempHome home;
    home.program("bin/rustup", "exit 0");
    home.program("bin/test", "exit 0");
    home.file("bin/notes");
    const std::vector<InstalledApp> apps{
        {"Mozilla Thunderbird", "thunderbird", "/a/thunderbird.desktop", "thunderbird"},
        {"Visual Studio Code", "code", "/a/code.desktop", "code"},
        {"Telegram Desktop", "org.telegram.desktop", "/a/org.telegram.desktop", "Telegram"},
        {"Files", "org.gnome.Nautilus", "/a/org.gnome.Nautilus.desktop", "nautilus"},
        {"Web Browser", "firefox-esr", "/a/firefox-esr.desktop", "firefox-esr"}};
    Installed installed{.apps = apps, .programFolders = {home.path("bin")}, .packages = {"ibus"}};
    using Folders = std::vector<const char*>;
    for (const auto& [name, folders] :
         {std::pair{"Mozilla Thunderbird",
                    Folders{".thunderbird", "Thunderbird-backup", "mozilla thunderbird"}},
          {"Visual Studio Code", Folders{"Code", ".vscode", "code"}},
          {"Telegram Desktop", Folders{"TelegramDesktop", "org.telegram.desktop", "org.telegram.desktop.x"}},
          {"Files", Folders{"nautilus", "org.gnome.Nautilus"}},
          {"Web Browser", Folders{".mozilla", "firefox-esr"}},
          {"rustup", Folders{".rustup", "Rustup"}},
          {"ibus", Folders{".ibus"}},
          {"", Folders{"thunderbirds", "my-thunderbird", "studio", ".files", "desktop", "org", "org.telegram",
                       "bird", ".test", ".notes", "", ".", "web", "xcode", "rustup-old"}}}) {
        for (const char* folder : folders) {
            const auto app = installed.related(folder, System::linux);
            EXPECT_EQ(app ? app->name : "", name) << folder;
        }
    }
    EXPECT_EQ(installed.related("studio", System::macos)->name, "Visual Studio Code");
    installed.apps.erase(installed.apps.end() - 1);
    EXPECT_FALSE(installed.related(".mozilla", System::linux)) << "with nobody left to whom it can belong";
}

TEST(Installed, SaysWhatWasUninstalledOnlyWithEvidence) {
    const TempHome home;
    home.folders({"flatpak/org.a.Here", "snap-apps/here"});
    const Installed installed{.apps = {},
                              .removedPackages = {"gone", "again"},
                              .flatpakFolders = {home.path("none"), home.path("flatpak")},
                              .snapFolders = {home.path("snap-apps")}};
    const auto owner = [&](const std::string& path, const Installed& given) {
        return given.uninstalledOwnerOf("/h/" + path, "/h", System::linux).value_or("");
    };
    using Case = std::pair<const char*, const char*>;
    for (const auto& [path, expected] :
         {Case{".var/app/org.a.Gone", "org.a.Gone"}, Case{".var/app/org.a.Gone/data", "org.a.Gone"},
          Case{".var/app/org.a.Here", ""}, Case{"snap/gone", "gone"}, Case{"snap/here/common", ""},
          Case{".config/gone", "gone"}, Case{".gone", "gone"}, Case{".other", ""}}) {
        EXPECT_EQ(owner(path, installed), expected) << path;
        EXPECT_EQ(owner(path, {}), "") << "nothing is known of this machine";
    }
    EXPECT_FALSE(installed.uninstalledOwnerOf("/h/.gone", "/h", System::macos));
}
