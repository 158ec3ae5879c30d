#include "Tests/faults/Scenario.h"

#include "LumoCore/Basics/Codec.h"
#include "Tests/faults/Ground.h"
#include "Tests/support/OllamaLayout.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <tuple>
#include <utility>

namespace tarvo::faults {

namespace {

namespace fs = std::filesystem;

/// A byte that is no UTF-8, a character that such bytes are written as, a quote and a line feed.
const std::string strayName = "Desktop/Screenshot caf\xE9 \xEE\xBF\xA9 \"\n";

/// The longest name there is, in characters of two bytes.
std::string longestName() {
    std::string name = "Desktop/Screenshot x";
    for (int count = 0; count < 121; ++count) {
        name += "ñ";
    }
    return name;
}

lumo::CleanupAction contentsOf(lumo::CleanupAction action) {
    action.method =
        lumo::method::TrashContents{std::get<lumo::method::TrashItems>(std::move(action.method)).paths};
    return action;
}

lumo::CleanupAction command(std::string id, Arguments words, std::string folder) {
    return {.id = std::move(id),
            .title = "By command",
            .safety = lumo::Safety::safe,
            .estimatedBytes = 4096,
            .method = lumo::method::Command{std::move(words)},
            .measuredPaths = {folder},
            .fallbackContents = {folder}};
}

/// Gives every batch the name that a cleanup of ten days ago would have given it.
const Arguments agesBatches{"/bin/sh", "-c", R"(cd "$HOME/Library/Application Support/TarvoAI" || exit 1
old=$(date -d '10 days ago' +%Y%m%d-%H%M%S)
for batch in Apartado/*; do
    mv "$batch" "Apartado/$old" && sed -i "s/${batch#*/}/$old/g" historial.jsonl || exit 1
done)"};

/// Leaves what a cleanup leaves that dies between two items: an intent, and items that no line of the log
/// names.
const Arguments diesHalfway{"/bin/sh", "-c", R"(strace -f -qq -o /dev/null -e trace=renameat2 \
    -e inject=renameat2:signal=KILL:when=3 "$0" clean --plan "$1" --yes --home "$HOME"
test -s "$HOME/Library/Application Support/TarvoAI/apartado.jsonl")",
                            "@tarvo", "@plan"};

bool isStored(const std::string& home) {
    return testing::contentOf(home + "/.config/TarvoAI/preferencias.json").find("\"avisoGB\": 7") !=
           std::string::npos;
}

bool isBack(const std::string& home) {
    return fs::exists(home + "/Desktop/Screenshot set/a") && fs::exists(home + "/Desktop/Screenshot old");
}

bool isEmptied(const std::string& home) {
    const std::string held = home + "/Library/Application Support/TarvoAI/Apartado";
    return !fs::exists(held) || fs::is_empty(held);
}

const std::string agentSettings = "{\n  \"size\": 1.0,\n  \"mcpServers\": {\n    \"other\": {}\n  }\n}\n";

/// Settings of an agent's, behind a link.
const Arguments hasAgentSettings{"/bin/sh", "-c",
                                 R"(folder="$HOME/.config/Claude"
mkdir -p "$folder" && cd "$folder" || exit 1
ln -s real.json claude_desktop_config.json && printf '%s' "$0" >real.json && chmod 640 real.json)",
                                 agentSettings};

bool isLinked(const std::string& home) {
    const std::string text = testing::contentOf(home + "/.config/Claude/real.json");
    const std::size_t added = text.find(",\n    \"tarvo-ai\": {");
    const std::size_t end = text.find("\n    }", added);
    return added != std::string::npos && end != std::string::npos &&
           text.substr(0, added) + text.substr(end + 6) == agentSettings;
}

std::string agentSettingsProblem(const std::string& home) {
    const std::string folder = home + "/.config/Claude";
    const std::string backup = folder + "/claude_desktop_config.json.antes-de-tarvo";
    const bool isWhole = fs::is_symlink(folder + "/claude_desktop_config.json") &&
                         fs::status(folder + "/real.json").permissions() == fs::perms(0640) &&
                         testing::contentOf(isLinked(home) ? backup : folder + "/real.json") == agentSettings;
    return isWhole ? "" : "the settings are neither the old nor the new ones";
}

/// The id of a model of the furnished home.
std::string modelID(const std::string& name) {
    return "modelo:ollama:" + testing::ollamaManifests + name + "/latest";
}

/// One model of the furnished home: its manifest, and the parts that go with it.
lumo::CleanupAction model(const std::string& name, const std::string& parts) {
    Arguments paths{testing::ollamaManifests + name + "/latest"};
    for (const char part : parts) {
        paths.push_back(testing::ollamaStore + "blobs/" + testing::blob(part));
    }
    return review(modelID(name), std::move(paths), name + ":latest");
}

/// A model that is in its place has all the parts that it needs.
std::string modelProblem(const std::string& home) {
    for (const auto& [name, parts] : {std::pair("one", "1ac"), {"two", "2ac"}, {"three", "3bc"}}) {
        for (const char part : std::string_view(parts)) {
            if (fs::exists(home + "/" + testing::ollamaManifests + name + "/latest") &&
                !fs::exists(home + "/" + testing::ollamaStore + "blobs/" + testing::blob(part))) {
                return std::string("a part that ") + name + " needs is gone";
            }
        }
    }
    return "";
}

std::string copyProblem(const std::string& home) {
    return fs::exists(home + "/Documents/first") ? "" : "the copy that stays is gone";
}

bool isArchived(const std::string& home) {
    return !fs::exists(home + "/Movies/box") && fs::exists(home + "/Movies/box.zip");
}

/// An original that was set aside has an archive, and an archive that is there can be unpacked.
std::string archiveProblem(const std::string& home) {
    const std::string archive = home + "/Movies/box.zip";
    if (!fs::exists(archive)) {
        return fs::exists(home + "/Movies/box") ? "" : "the original is set aside and there is no archive";
    }
    const Ran tested = Child({"unzip", "-tqq", archive}, {"PATH=/usr/bin:/bin"}).wait();
    return tested.exitCode == 0 ? "" : "the archive cannot be unpacked: " + tested.output;
}

} // namespace

lumo::CleanupAction review(std::string id, Arguments items, std::string title) {
    return {.id = std::move(id),
            .title = std::move(title),
            .safety = lumo::Safety::review,
            .estimatedBytes = 4096,
            .method = lumo::method::TrashItems{items},
            .measuredPaths = items};
}

lumo::CleanupAction safe(std::string id, Arguments items) {
    lumo::CleanupAction action = review(std::move(id), std::move(items));
    action.safety = lumo::Safety::safe;
    return action;
}

void furnish(const testing::TempHome& slot) {
    slot.fileWith("canary/kept/file", "canary");
    slot.fileWith("canary/kept/_npx/file", "canary");
    slot.fileWith("canary/kept/whisper/file", "canary");
    slot.setMode("canary/kept/file", 0440);
    slot.fileWith("home/Documents/letter", "mine");
    slot.hardLink("home/Documents/twin", "home/Documents/letter");
    slot.fileWith("home/Documents/first", "twice");
    slot.fileWith("home/Documents/again/first", "twice");
    for (const auto& [name, weights, licence] :
         {std::tuple("one", '1', 'a'), {"two", '2', 'a'}, {"three", '3', 'b'}}) {
        slot.fileWith("home/" + testing::ollamaManifests + name + "/latest",
                      testing::manifest(testing::blob(weights), testing::blob(licence)));
    }
    for (const char part : {'1', '2', '3', 'a', 'b', 'c'}) {
        slot.fileWith("home/" + testing::ollamaStore + "blobs/" + testing::blob(part), "part");
    }
    slot.fileWith("home/Downloads/old.dmg", "image");
    slot.fileWith("home/Desktop/Screenshot old", "image");
    slot.setMode("home/Desktop/Screenshot old", 04751);
    slot.fileWith("home/Desktop/Screenshot set/a", "a");
    slot.hardLink("home/Desktop/Screenshot set/deep/er/twin", "home/Desktop/Screenshot set/a");
    slot.link("home/Desktop/Screenshot set/out", "../../../canary");
    slot.folder("home/Desktop/Screenshot set/closed/inside");
    slot.setMode("home/Desktop/Screenshot set/closed", ground().whyNoMounts.empty() ? 0 : 0500);
    slot.setModified("home/Desktop/Screenshot set", 1'000'000'000);
    slot.fileWith("home/Desktop/Screenshot locked/file", "cannot be moved");
    slot.setMode("home/Desktop/Screenshot locked", 0500);
    slot.fileWith("home/" + strayName, "stray");
    slot.fileWith("home/" + longestName(), "long");
    slot.link("home/Desktop/Screenshot link", slot.path("canary/kept"));
    slot.link("home/Desktop/Screenshot dangling", "nowhere");
    slot.fileWith("home/Movies/box/.hidden", "film");
    slot.folder("home/Movies/box/empty");
    slot.link("home/Movies/box/out", "../../../canary");
    slot.fileWith("home/Library/Caches/app-updater/tree/file", "cache");
    slot.fileWith("home/Library/Caches/app-updater/closed/file", "cache");
    slot.setMode("home/Library/Caches/app-updater/closed", 0500);
    slot.link("home/Library/Caches/app-updater/out", slot.path("canary"));
    slot.hardLink("home/Library/Caches/app-updater/canary", "canary/kept/file");
    slot.fileWith("home/Library/Caches/pip/wheel", "cache");
    slot.fileWith("home/.cache/uv/wheel", "cache");
    slot.fileWith("home/.cache/whisper/.hidden", "model");
    slot.folder("home/.cache/whisper/empty");
    slot.link("home/.cache/whisper/out", "../../../canary");
    slot.fileWith("home/.npm/_cacache/index", "cache");
    slot.folder("home/Library/Application Support");
    slot.folder("home/.config");
    slot.program("home/.local/bin/npm", "rm -rf \"$HOME/.npm/_cacache\"");
    slot.program("home/.local/bin/pip", "echo broken\nexit 3");
}

lumo::CleanupAction placedIn(const std::string& home, lumo::CleanupAction action) {
    const auto place = [&](Arguments& paths) {
        for (std::string& path : paths) {
            path = home + "/" + path;
        }
    };
    if (auto* items = std::get_if<lumo::method::TrashItems>(&action.method)) {
        place(items->paths);
    } else if (auto* contents = std::get_if<lumo::method::TrashContents>(&action.method)) {
        place(contents->folders);
    }
    place(action.measuredPaths);
    place(action.fallbackContents);
    return action;
}

std::string planDocument(const std::vector<lumo::CleanupAction>& actions) {
    lumo::JsonValue::Array entries;
    for (const lumo::CleanupAction& action : actions) {
        entries.push_back({lumo::JsonValue::Object{{"action", lumo::encode(action)}}});
    }
    return lumo::dumpJson({std::move(entries)}, lumo::JsonLayout::line);
}

const std::vector<Scenario>& scenarios() {
    static const std::vector<lumo::CleanupAction> own{
        review(shots, {"Desktop/Screenshot old", "Desktop/Screenshot set", strayName}),
        review(shots, {longestName(), "Desktop/Screenshot link", "Desktop/Screenshot dangling"}, "Names"),
        contentsOf(review("whisper", {".cache/whisper"}))};
    static const std::vector<lumo::CleanupAction> caches{safe("app-updaters", {"Library/Caches/app-updater"}),
                                                         contentsOf(safe("uv-cache", {".cache/uv"}))};
    static const std::vector<lumo::CleanupAction> mixed{
        review(shots, {"Desktop/Screenshot old"}),
        review(shots, {"Desktop/Screenshot set", "Desktop/Screenshot locked", "Desktop/Screenshot link"},
               "Fails"),
        command("npm-cache", {"npm", "cache", "clean", "--force"}, ".npm/_cacache"),
        command("pip-cache", {"pip", "cache", "purge"}, "Library/Caches/pip"), caches.front()};
    static const std::vector<lumo::CleanupAction> one{own.front()};
    // By their ids alone; the second rests on a copy that stays.
    static const std::vector<lumo::CleanupAction> items{
        review("archivo:Documents/letter", {"Documents/letter", "Documents/twin"}, "letter"),
        review("copia:Documents/again/first//Documents/first", {"Documents/again/first"}, "first")};
    // They share a part, which goes with the second; another one is the third's as well, which stays.
    static const std::vector<lumo::CleanupAction> models{model("one", "1"), model("two", "2a")};
    static const std::vector<lumo::CleanupAction> box{review("box", {"Movies/box"})};
    static const std::vector<Scenario> all{
        {.name = "CleanOwn", .plan = own, .command = cleanPlan},
        {.name = "CleanCaches", .plan = caches, .command = cleanPlan},
        {.name = "CleanMixed", .plan = mixed, .command = cleanPlan},
        {.name = "CleanItems",
         .plan = items,
         .command = {"clean", "--item", items[0].id, "--item", items[1].id, "--yes", "--json"},
         .problem = copyProblem},
        {.name = "CleanModels",
         .plan = models,
         .command = {"clean", "--item", models[1].id, "--item", models[0].id, "--yes", "--json"},
         .problem = modelProblem},
        {.name = "Undo",
         .plan = own,
         .preparation = {cleanPlan},
         .command = {"undo", "--json"},
         .isDone = isBack},
        {.name = "Restore",
         .plan = one,
         .preparation = {cleanPlan},
         .command = {"restore", "@home/Desktop/Screenshot old", "@home/Desktop/Screenshot set", "--json"},
         .isDone = isBack},
        {.name = "Empty",
         .plan = one,
         .preparation = {cleanPlan},
         .command = {"empty", "--yes", "--json"},
         .endsItems = true,
         .isDone = isEmptied},
        {.name = "EmptyExpired",
         .plan = one,
         .preparation = {cleanPlan, agesBatches},
         .command = {"empty", "--expired", "--json"},
         .endsItems = true,
         .isDone = isEmptied},
        {.name = "Recover",
         .plan = own,
         .preparation = {diesHalfway},
         .command = {"empty", "--expired", "--json"}},
        {.name = "Scan",
         .plan = one,
         .preparation = {cleanPlan, {"scan", "--json"}, agesBatches},
         .command = {"scan", "--json"},
         .endsItems = true},
        {.name = "SettingsSet",
         .preparation = {{"settings", "set", "avisoGB", "5"}},
         .command = {"settings", "set", "avisoGB", "7"},
         .isDone = isStored},
        {.name = "AgentsConnect",
         .preparation = {hasAgentSettings},
         .command = {"agents", "connect", "claude-desktop", "--json"},
         .isDone = isLinked,
         .problem = agentSettingsProblem},
        {.name = "Archive",
         .plan = box,
         .command = {"archive", "@home/Movies/box", "--yes", "--json"},
         .isDone = isArchived,
         .mayAppear = {"Movies/box.zip"},
         .problem = archiveProblem},
    };
    return all;
}

const Scenario& scenarioNamed(const std::string& name) {
    return *std::ranges::find(scenarios(), name, &Scenario::name);
}

} // namespace tarvo::faults
