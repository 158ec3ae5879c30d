#include "LumoCore/Explaining/KnownPlaces.h"
#include "LumoCore/Explaining/HeuristicExplainer.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumo;
using tarvo::testing::TempHome;
using namespace testing;

namespace {

using Source = Explanation::Source;

/// What is said of a path without a model.
Explanation explained(const std::string& path, const TempHome& home, const Installed& installed,
                      Language language, System system = System::linux) {
    const FolderEvidence evidence =
        FolderEvidence::gather(path, home.path(), installed, {}, language, system);
    const KnownPlaces known(HomePlaces(home.path(), system, [](const std::string&) { return std::nullopt; }),
                            installed, language);
    const auto certain = known.explain(evidence, Date());
    return certain ? *certain : HeuristicExplainer::explain(evidence, Date(), language, system);
}

} // namespace

TEST(KnownPlaces, KnowTheFoldersOfProgramsWhereTheyHaveBeenMoved) {
    const TempHome home;
    home.files({"var/cache/loose", "var/own/x"});
    const HomePlaces places(home.path(), System::linux, [&](const std::string& name) {
        return name == "XDG_CACHE_HOME" ? std::optional(home.path("var/cache")) : std::nullopt;
    });
    const Installed installed;
    const KnownPlaces known(places, installed, Language::en);
    const auto whatIs = [&](const char* name) {
        const std::string path = home.path(name);
        const auto explanation =
            known.explain({.path = path, .location = folderLocation(path, places)}, Date());
        return explanation ? explanation->whatItIs : std::string();
    };
    EXPECT_EQ(whatIs("var/cache/loose"), "A cache file");
    EXPECT_EQ(whatIs("var/own"), "A folder of your own");
}

TEST(KnownPlaces, SaysWhatIsCertainInASentenceOfItsOwn) {
    // Everything but unknown folders was "a part of what the catalogue knows", to be kept.
    const TempHome home;
    home.files({"Documents/letter",     "Descargas/x.txt",
                "mine/deep/photo",      "code/app/package.json",
                "code/app/src/x",       "code/app/node_modules/y/z",
                ".cache/uv/archive/x",  ".cache/org.a.App/x",
                ".config/TarvoAI/x",    ".bashrc",
                ".cache/loose",         ".cargo/registry/cache/x",
                ".cargo/bin/tool",      ".cargo/git/x",
                ".local/share/Steam/x", ".mozilla/firefox/x",
                ".config/Tool/sub/x",   ".aws/credentials",
                ".local/bin/tool",      "Downloads/setup.deb"});
    home.fileWith(".config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Descargas\"\n");
    home.link(".link", "code");
    const Installed installed{.apps = {{"App", "org.a.App", "/a/org.a.App.desktop"}}};
    using enum Safety;
    using Case = std::tuple<const char*, const char*, Safety, Source>;
    for (const auto& [name, whatItIs, safety, source] :
         {Case{"", "Your home folder, with everything of yours", keep, Source::place},
          Case{"/Descargas", "Your documents", keep, Source::place},
          Case{"/Descargas/x.txt", "A file of your own", keep, Source::place},
          Case{"/mine/deep", "A folder of your own", keep, Source::place},
          Case{"/code/app", "Your project “code/app”", keep, Source::project},
          Case{"/code/app/src", "Part of your project “code/app”", keep, Source::project},
          Case{"/code/app/node_modules", "“node_modules” of the project “code/app”", safe, Source::project},
          Case{"/code/app/node_modules/y", "Part of “node_modules” of the project “code/app”", safe,
               Source::project},
          Case{"/.cache", "The caches of all programs", keep, Source::place},
          Case{"/.cache/uv", "uv cache (Python)", safe, Source::catalogue},
          Case{"/.cache/uv/archive", "Part of “uv cache (Python)”", safe, Source::catalogue},
          Case{"/.cache/org.a.App", "App cache", safe, Source::inventory},
          Case{"/.cache/loose", "A cache file", safe, Source::place},
          Case{"/.config/TarvoAI", "Tarvo AI's own folder", keep, Source::place},
          Case{"/.config/TarvoAI/x", "Tarvo AI's own folder", keep, Source::place},
          Case{"/.link", "A link to code", keep, Source::place},
          Case{"/.bashrc", "A program's file", keep, Source::place},
          Case{"/.config/Tool/sub", "Part of “~/.config/Tool”", keep, Source::place},
          Case{"/.aws/credentials", "Part of “Keys and sign-ins for services”", keep, Source::place},
          Case{"/.local/share/Steam", "Steam data", review, Source::place},
          Case{"/.local/bin", "Programs installed for you alone", keep, Source::place}}) {
        const Explanation en = explained(home.path() + name, home, installed, Language::en);
        const Explanation es = explained(home.path() + name, home, installed, Language::es);
        EXPECT_EQ(en.whatItIs, whatItIs) << name;
        EXPECT_EQ(en.safety, safety) << name;
        EXPECT_EQ(en.source, source) << name;
        EXPECT_TRUE(es.whatItIs != en.whatItIs && es.reason != en.reason && es.howToFree != en.howToFree)
            << name;
    }
    EXPECT_EQ(explained(home.path(".cargo/git"), home, installed, Language::en).owner, "Cargo");
    const Explanation installer = explained(home.path("Downloads/setup.deb"), home, installed, Language::en);
    EXPECT_EQ(installer.safety, review);
    EXPECT_THAT(installer.howToFree, HasSubstr("7 days"));
    EXPECT_EQ(explained(home.path(".cargo"), home, installed, Language::en).safety, review);
    EXPECT_EQ(explained(home.path(".mozilla"), home, installed, Language::es).howToFree, "Déjalo como está.");
    // The window had no words for a large folder until somebody asked for a guess.
    const KnownPlaces known(HomePlaces(home.path(), System::linux), installed, Language::en);
    const auto all = known.explainAll({{home.path(".aws"), {}}, {home.path(".config/Tool"), {}}}, Date());
    EXPECT_THAT(all, ElementsAre(Pair(home.path(".aws"), testing::Field(&Explanation::safety, keep))));
    const KnownPlaces above(HomePlaces("/srv/homes/me", System::linux), installed, Language::en);
    EXPECT_EQ(above.explain({.path = "/srv/homes"}, Date())->whatItIs, "A folder that yours lies in");
    for (const auto& [path, whatItIs] :
         {std::pair{"/proc/version", "Something that the system shows as files and that takes no disk space"},
          {"/etc/hostname", "Part of the system and of the programs installed for everybody"}}) {
        EXPECT_EQ(explained(path, home, installed, Language::en).whatItIs, whatItIs);
        EXPECT_EQ(explained(path, home, installed, Language::en, System::macos).whatItIs,
                  "Something outside your home folder");
    }
}

TEST(KnownPlaces, NeverCallsAnUsualFolderOfALinuxHomeALeftover) {
    // Of 100 usual folders 80 were "possibly left over … then delete it", the keys and the mail among them.
    const TempHome home;
    const Installed installed{.apps = {{"Firefox", "firefox", "/a/firefox.desktop", "firefox"}}};
    using enum Safety;
    for (const auto& [name, safety] :
         std::vector<std::pair<const char*, Safety>>{{".ssh", keep},
                                                     {".gnupg", keep},
                                                     {".password-store", keep},
                                                     {".local/share/keyrings", keep},
                                                     {".pki", keep},
                                                     {".bitcoin", keep},
                                                     {".electrum", keep},
                                                     {".thunderbird", keep},
                                                     {".local/share/evolution", keep},
                                                     {".mozilla/firefox", keep},
                                                     {".config/chromium", keep},
                                                     {".local/share/TelegramDesktop", keep},
                                                     {".aws", keep},
                                                     {".kube", keep},
                                                     {".local/lib", keep},
                                                     {".local/bin", keep},
                                                     {".local/share", keep},
                                                     {".config", keep},
                                                     {".var/app", keep},
                                                     {".fonts", keep},
                                                     {".themes", keep},
                                                     {".local/share/applications", keep},
                                                     {".config/dconf", keep},
                                                     {"Documents", keep},
                                                     {"Pictures", keep},
                                                     {"Descargas", keep},
                                                     {"Escritorio", keep},
                                                     {"VirtualBox VMs", review},
                                                     {".wine", review},
                                                     {".rustup/toolchains", review},
                                                     {".rustup", review},
                                                     {".cargo", review},
                                                     {".local/share/Steam", review},
                                                     {".local/share/containers", review},
                                                     {".minecraft", review},
                                                     {".config/libreoffice", review},
                                                     {".java", review},
                                                     {".var/app/org.gimp.GIMP", review},
                                                     {".cache/pip", safe},
                                                     {".cache/mozilla/firefox", safe},
                                                     {".cache/thumbnails", safe},
                                                     {".cache/unknown-tool", safe},
                                                     {".var/app/org.gimp.GIMP/cache", safe}}) {
        home.file(std::string(name) + "/x");
        home.files(
            {".rustup/toolchains/x", ".cargo/registry/cache/x", ".local/share/Steam/steamapps/common/x"});
        for (const Language language : {Language::en, Language::es}) {
            const Explanation said = explained(home.path(name), home, installed, language);
            EXPECT_EQ(said.safety, safety) << name << ": " << said.whatItIs;
            const std::string words = said.whatItIs + " " + said.reason + " " + said.howToFree;
            EXPECT_THAT(words,
                        Not(AnyOf(HasSubstr("eft over"), HasSubstr("Resto de"), HasSubstr("osible resto"),
                                  HasSubstr("macOS"), HasSubstr("delete it"), HasSubstr("bórrala"))))
                << name;
            if (safety == keep) {
                EXPECT_THAT(said.howToFree,
                            Not(AnyOf(HasSubstr("elete"), HasSubstr("ninstall"), HasSubstr("mpt"),
                                      HasSubstr("orra la"), HasSubstr("esinstála"), HasSubstr("acía"))))
                    << name;
            }
        }
    }
}

// An IDE's Local History, in its caches folder, was "programs recreate their caches: empty the folder".
TEST(KnownPlaces, PromisesNoReturnOfWhatARuleLeavesInACacheFolder) {
    const TempHome home;
    home.files({".cache/JetBrains/Idea/caches/x", ".cache/JetBrains/Idea/LocalHistory/x",
                ".cache/Google/AndroidStudio1/LocalHistory/x", ".cache/deno/deno_history.txt",
                ".cache/pypoetry/other/x", ".cache/tool/x"});
    const Installed nothing;
    for (const char* name :
         {".cache/JetBrains/Idea/LocalHistory", ".cache/Google/AndroidStudio1/LocalHistory",
          ".cache/deno/deno_history.txt", ".cache/pypoetry", ".cache/pypoetry/other"}) {
        const Explanation said = explained(home.path(name), home, nothing, Language::en);
        EXPECT_EQ(said.safety, Safety::keep) << name;
        EXPECT_EQ(said.howToFree, "Leave it as it is.") << name;
    }
    EXPECT_EQ(explained(home.path(".cache/JetBrains/Idea/caches"), home, nothing, Language::en).safety,
              Safety::safe);
    EXPECT_EQ(explained(home.path(".cache/tool"), home, nothing, Language::en).safety, Safety::safe);
}
