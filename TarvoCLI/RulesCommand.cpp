#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Inventories/AppStatus.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/Table.h"

#include <fmt/format.h>

#include <memory>

namespace tarvo {

using lumo::Rule;
using lumo::Safety;
using lumo::Words;

namespace {

/// Which rules a person is shown: those with a place on this system, or all.
enum class Listing { ofThisSystem, all };

/// A rule as other programs read it.
struct ListedRule {
    std::string id;
    std::string name;
    lumo::Category category = lumo::Category::packageCache;
    Safety safety = Safety::keep;
    std::string explanation;
    lumo::Cleanup cleanup;
    std::optional<std::string> closeFirst;
    std::string displayPath;
    bool needsFolderPermission = false;
    std::vector<std::string> places; ///< On this system, in this home.

    static constexpr auto fields =
        std::tuple{lumo::field("id", &ListedRule::id),
                   lumo::field("name", &ListedRule::name),
                   lumo::field("category", &ListedRule::category),
                   lumo::field("safety", &ListedRule::safety),
                   lumo::field("explanation", &ListedRule::explanation),
                   lumo::field("cleanup", &ListedRule::cleanup),
                   lumo::field("closeFirst", &ListedRule::closeFirst),
                   lumo::field("displayPath", &ListedRule::displayPath),
                   lumo::field("needsFolderPermission", &ListedRule::needsFolderPermission),
                   lumo::field("places", &ListedRule::places)};
};

std::string jsonOfRules(const std::vector<Rule>& rules) {
    std::vector<ListedRule> listed;
    for (const Rule& rule : rules) {
        listed.push_back({rule.id, rule.name, rule.category, rule.safety, rule.explanation, rule.cleanup,
                          rule.closeFirst, rule.displayPath(), rule.needsFolderPermission(),
                          rule.displayPlaces(lumo::currentSystem())});
    }
    return lumo::dumpJson(lumo::encode(listed), lumo::JsonLayout::indented) + "\n";
}

std::string howText(const Rule& rule) {
    // What does not recreate itself is the user's own, and that is never deleted at once.
    struct How {
        bool isSetAside;

        std::string operator()(const lumo::cleanup::Command& how) const { return how.line; }
        std::string operator()(const lumo::cleanup::Manual& how) const { return how.instruction; }
        std::string operator()(const lumo::cleanup::DeleteContents&) const {
            return isSetAside ? Words{"su contenido se aparta {} días, no se borra",
                                      "its contents are set aside for {} days, not deleted"}
                                    .with(lumo::Holding::retentionDays)
                              : Words{"se borra su contenido", "its contents are deleted"}.in();
        }
        std::string operator()(const lumo::cleanup::DeleteItems&) const {
            return isSetAside
                       ? Words{"se aparta {} días, no se borra", "it is set aside for {} days, not deleted"}
                             .with(lumo::Holding::retentionDays)
                       : Words{"se borra", "it is deleted"}.in();
        }
    };
    if (rule.safety == Safety::keep && !std::holds_alternative<lumo::cleanup::Manual>(rule.cleanup)) {
        return Words{"nunca se limpia", "it is never cleaned"}.in();
    }
    return std::visit(How{rule.safety != Safety::safe}, rule.cleanup);
}

std::string describe(const Rule& rule, const std::vector<std::string>& places, Tint tint,
                     const Invocation& invocation) {
    std::string described = "\n" + tinted("● " + rule.name, tint, invocation) + "  " +
                            tinted(rule.id, Tint::faint, invocation) + "\n";
    Table table({{.align = Align::left, .tint = Tint::faint}, {}});
    for (const std::string& place : places) {
        table.add({place == places.front() ? Words{"Dónde", "Where"}.in() : "", place});
    }
    table.add({Words{"Qué es", "What"}.in(), rule.explanation});
    table.add({Words{"Cómo", "How"}.in(), howText(rule)});
    if (rule.closeFirst) {
        table.add(
            {Words{"Antes", "First"}.in(), fmt::format("{} {}", Words{"cierra", "quit"}.in(),
                                                       lumo::AppStatus::wellKnownName(*rule.closeFirst))});
    }
    return described + table.lines(2, 0, invocation);
}

std::string textOfRules(const std::vector<Rule>& rules, Listing listing, const Invocation& invocation) {
    struct Group {
        Safety safety;
        Tint tint;
        std::string heading;
    };
    const Group groups[] = {{Safety::safe, Tint::safe, Words{"SE REGENERA SOLO", "RECREATES ITSELF"}.in()},
                            {Safety::review, Tint::review, Words{"MÍRALO ANTES", "NEEDS A LOOK"}.in()},
                            {Safety::keep, Tint::faint, Words{"SE CONSERVA", "KEPT"}.in()}};
    std::string described;
    for (const Group& group : groups) {
        described += (described.empty() ? "" : "\n") + tinted(group.heading, Tint::strong, invocation) + "\n";
        for (const Rule& rule : rules) {
            std::vector<std::string> places = rule.displayPlaces(lumo::currentSystem());
            if (places.empty() && listing == Listing::all) {
                places = {rule.displayPath()};
            }
            if (rule.safety == group.safety && !places.empty()) {
                described += describe(rule, places, group.tint, invocation);
            }
        }
    }
    return described;
}

} // namespace

void addRulesCommand(CLI::App& app, Action& chosen) {
    CLI::App* command =
        addCommand(app, "reglas", "rules", "las carpetas que conozco y cómo se libera cada una",
                   "the folders I know and how each is freed");
    auto listing = std::make_shared<Listing>(Listing::ofThisSystem);
    command->add_flag_callback(
        "--todo,--all", [listing] { *listing = Listing::all; },
        Words{"también las carpetas que este sistema no tiene",
              "also the folders that this system does not have"}
            .in());
    command->callback([&chosen, listing] {
        chosen = [listing](const Invocation& invocation) {
            const std::vector<Rule> rules = lumo::RuleCatalog::inHome(invocation.home);
            return print(invocation.isJson ? jsonOfRules(rules) : textOfRules(rules, *listing, invocation));
        };
    });
}

} // namespace tarvo
