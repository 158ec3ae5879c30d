#include "Tests/faults/Household.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "Tests/faults/Ground.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

namespace tarvo::faults {

namespace {

namespace fs = std::filesystem;
using lumo::JsonValue;
using Items = std::vector<lumo::TrashedItem>;

const std::string support = "Library/Application Support/TarvoAI";
const std::string staging = "Library/Caches/TarvoAI/vaciando";
const Arguments state{support, "Library/Caches/TarvoAI", ".config/Claude", ".config/TarvoAI"};

bool exists(const std::string& path) {
    std::error_code error;
    return fs::symlink_status(path, error).type() != fs::file_type::not_found;
}

Arguments childrenOf(const std::string& folder) {
    Arguments children;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        children.push_back(entry.path().native());
    }
    return children;
}

/// What an action takes, as a tolerance names it.
Arguments takenBy(const lumo::CleanupAction& action) {
    Arguments taken;
    if (const auto* items = std::get_if<lumo::method::TrashItems>(&action.method)) {
        return items->paths;
    }
    if (const auto* contents = std::get_if<lumo::method::TrashContents>(&action.method)) {
        for (const std::string& folder : contents->folders) {
            taken.push_back(folder + "/");
        }
    }
    return taken;
}

Tolerance toleranceOf(const Scenario& scenario) {
    Tolerance tolerance{.mayEnd = {}, .moved = state, .mayAppear = scenario.mayAppear};
    for (const lumo::CleanupAction& action : scenario.plan) {
        const Arguments taken = takenBy(action);
        Arguments ended = action.fallbackContents;
        if (action.safety == lumo::Safety::safe || scenario.endsItems) {
            ended.insert(ended.end(), taken.begin(), taken.end());
        }
        tolerance.mayEnd.insert(tolerance.mayEnd.end(), ended.begin(), ended.end());
        tolerance.moved.insert(tolerance.moved.end(), taken.begin(), taken.end());
        tolerance.moved.insert(tolerance.moved.end(), ended.begin(), ended.end());
    }
    return tolerance;
}

/// The held places that the log names, and what is wrong with the log itself.
std::set<std::string> namedInLog(const std::string& home, std::vector<Finding>& found) {
    std::set<std::string> named;
    std::ifstream log(home + "/" + support + "/historial.jsonl", std::ios::binary);
    int torn = 0;
    for (std::string line; std::getline(log, line);) {
        const auto outcome = lumo::decodeJson<lumo::CleanupOutcome>(line);
        torn += outcome ? 0 : 1;
        for (const lumo::TrashedItem& item : outcome ? outcome->restorable.value_or(Items()) : Items()) {
            if (!named.insert(item.inTrash).second) {
                found.push_back({Fault::broken, "named twice in the log: " + item.inTrash});
            }
        }
    }
    if (torn > 1) {
        found.push_back({Fault::broken, std::to_string(torn) + " lines of the log do not decode"});
    }
    return named;
}

void findUnnamedItems(const std::string& home, std::vector<Finding>& found) {
    const std::set<std::string> named = namedInLog(home, found);
    for (const std::string& batch : childrenOf(home + "/" + support + "/Apartado")) {
        const Arguments items = childrenOf(batch);
        if (items.empty()) {
            found.push_back({Fault::broken, "an empty batch is left"});
        }
        for (const std::string& item : items) {
            if (!named.contains(item)) {
                found.push_back({Fault::unrestorable, "held and in no line of the log: " + item});
            }
        }
    }
}

void findLeftovers(const std::string& home, std::vector<Finding>& found) {
    if (exists(home + "/" + support + "/apartado.jsonl") ||
        exists(home + "/" + support + "/archivando.jsonl")) {
        found.push_back({Fault::broken, "an intent is left"});
    }
    for (const std::string& staged : childrenOf(home + "/" + staging)) {
        found.push_back({Fault::broken, "left in the staging folder: " + staged});
    }
    for (const auto& [path, entry] : manifestOf(home)) {
        if (path.find(".nuevo-") != std::string::npos || path.starts_with(support + "/vaciando-")) {
            found.push_back({Fault::broken, "a temporary name is left: " + path});
        }
        const bool isState = lumo::isInside(path, support) || lumo::isInside(path, state.back());
        if (isState && path.ends_with(".json") && !lumo::parseJson(entry.bytes)) {
            found.push_back({Fault::broken, "a state file does not decode: " + path});
        }
    }
}

/// Whether what a "done" action was to take is still there.
bool isStillThere(const lumo::CleanupAction& action) {
    return std::ranges::any_of(takenBy(action), [](const std::string& path) {
        return path.ends_with('/') ? !childrenOf(path).empty() : exists(path);
    });
}

} // namespace

void expectNone(const std::vector<Finding>& found) {
    for (const Finding& finding : found) {
        ADD_FAILURE() << finding.text;
    }
}

Household::Household(const Scenario& scenario)
    : scenario_(scenario), home_(slot_.path("home")), tolerance_(toleranceOf(scenario)) {
    furnish(slot_);
    homeBefore_ = manifestOf(home_, state);
    canaryBefore_ = manifestOf(canary());
    std::vector<lumo::CleanupAction> placed;
    for (const lumo::CleanupAction& action : scenario.plan) {
        placed.push_back(placedIn(home_, action));
    }
    slot_.fileWith("plan.json", planDocument(placed));
    for (const Arguments& command : scenario.preparation) {
        const Ran ended = run(command);
        EXPECT_EQ(ended.exitCode, 0) << scenario.name << ", " << command.front() << ": " << ended.error
                                     << ended.output;
    }
    runShell("mkdir template && cp -a home canary template");
}

void Household::reset() const {
    // Home and canary in one copy: a file may have a name in each.
    runShell(
        "rm -rf home canary 2>/dev/null || { find home -type d -exec chmod u+rwx {} + && rm -rf home; }; "
        "cp -a template/. .");
}

void Household::runShell(const std::string& script) const {
    const Ran ended = Child({"/bin/sh", "-c", "cd \"$0\" && " + script, slot()}, environment()).wait();
    EXPECT_EQ(ended.exitCode, 0) << ended.error;
}

Arguments Household::environment() const {
    return {"HOME=" + home_, "PATH=/usr/bin:/bin", "TARVO_IDIOMA=en", "XDG_DATA_DIRS=" + home_ + "/none"};
}

Arguments Household::words(const Arguments& command, const Arguments& before) const {
    const std::string program = scenario_.program.empty() ? testing::tarvoProgram() : scenario_.program;
    const bool isOther = command.front().find('/') != std::string::npos;
    Arguments all = ground().asOrdinaryUser;
    all.insert(all.end(), before.begin(), before.end());
    if (!isOther) {
        all.push_back(program);
    }
    for (const std::string& word : command) {
        all.push_back(word == "@plan"              ? slot_.path("plan.json")
                      : word == "@tarvo"           ? program
                      : word.starts_with("@home/") ? path(word.substr(6))
                                                   : word);
    }
    if (!isOther) {
        all.insert(all.end(), {"--home", home_});
    }
    return all;
}

Child Household::start(const Arguments& command, const Arguments& before) const {
    return Child(words(command, before), environment());
}

std::vector<Finding> Household::lies(const Ran& ended) const {
    std::vector<Finding> found;
    const auto lie = [&](const std::string& text) { found.push_back({Fault::broken, text}); };
    if (ended.exitCode > 2 && ended.exitCode != 130) {
        lie("exit status " + std::to_string(ended.exitCode));
    }
    if (ended.exitCode == 0 && std::ranges::count(scenario_.command, "--json") > 0 &&
        !lumo::parseJson(ended.output)) {
        lie("exit status 0 without the whole document");
    }
    const JsonValue document = lumo::parseJson(ended.output).value_or(JsonValue());
    const JsonValue* failures = document.find("failures");
    bool hasFailure = failures != nullptr && *failures != JsonValue{JsonValue::Array()};
    const auto outcomes = lumo::decode<std::vector<lumo::CleanupOutcome>>(document);
    for (const lumo::CleanupOutcome& outcome : outcomes.value_or(std::vector<lumo::CleanupOutcome>())) {
        const bool isDone = outcome.status == lumo::CleanupStatus::done;
        hasFailure = hasFailure || !isDone;
        if (!isDone && outcome.message.value_or("").empty()) {
            lie("failed without a reason: " + outcome.id);
        }
        for (const lumo::CleanupAction& action : scenario_.plan) {
            if (isDone && action.id == outcome.id && action.title == outcome.title &&
                isStillThere(placedIn(home_, action))) {
                lie("done, and still in its place: " + action.id);
            }
        }
    }
    if (ended.exitCode == 0 && hasFailure) {
        lie("exit status 0 with a failure in the document");
    }
    if (ended.exitCode == 0 && scenario_.isDone && !scenario_.isDone(home_)) {
        lie("exit status 0 and not done");
    }
    return found;
}

std::vector<Difference> Household::changes() const {
    return differences(homeBefore_, manifestOf(home_, state), tolerance_);
}

std::vector<Finding> Household::canaryFindings() const {
    std::vector<Finding> found;
    for (const Difference& difference : differences(canaryBefore_, manifestOf(canary()), {})) {
        found.push_back({Fault::loss, "outside the home " + difference.what + ": " + difference.path});
    }
    return found;
}

void Household::takeBack(std::vector<Finding>& found) const {
    for (int round = 0; round < 10; ++round) {
        const Ran undo = run({"undo", "--json"});
        const auto document = lumo::parseJson(undo.output);
        const JsonValue* done = document ? document->find("done") : nullptr;
        if (undo.hasHung || undo.signal != 0 || done == nullptr) {
            found.push_back({Fault::broken, "undo does not work: " + undo.error});
            return;
        }
        if (*done == JsonValue{std::int64_t{0}}) {
            break;
        }
    }
    Arguments restore{"restore"};
    for (const Difference& difference : changes()) {
        if (difference.what == "missing") {
            restore.push_back(path(difference.path));
        }
    }
    if (restore.size() > 1) {
        run(restore);
    }
}

std::vector<Finding> Household::settle() const {
    std::vector<Finding> found;
    const Ran next = run({"empty", "--expired", "--quiet"});
    if (next.exitCode != 0) {
        found.push_back({Fault::broken, "the next start fails: " + next.error + next.output});
    }
    findLeftovers(home_, found);
    findUnnamedItems(home_, found);
    if (const std::string problem = scenario_.problem ? scenario_.problem(home_) : ""; !problem.empty()) {
        found.push_back({Fault::loss, problem});
    }
    takeBack(found);
    const Manifest held = manifestOf(path(support));
    for (const Difference& difference : changes()) {
        const bool isHeld = std::ranges::any_of(held, [&](const auto& entry) {
            return entry.first.ends_with("-" + std::string(lumo::fileName(difference.path)));
        });
        const Fault fault = difference.what != "missing" ? Fault::broken
                            : isHeld                     ? Fault::unrestorable
                                                         : Fault::loss;
        found.push_back({fault, difference.what + ": " + lumo::printable(difference.path)});
    }
    std::ranges::move(canaryFindings(), std::back_inserter(found));
    return found;
}

} // namespace tarvo::faults
