#include "LumoCore/Basics/Words.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/Table.h"

#include <fmt/format.h>

namespace tarvo {

using lumo::Rule;
using lumo::Safety;
using lumo::Words;

namespace {

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

    static constexpr auto fields =
        std::tuple{lumo::field("id", &ListedRule::id),
                   lumo::field("name", &ListedRule::name),
                   lumo::field("category", &ListedRule::category),
                   lumo::field("safety", &ListedRule::safety),
                   lumo::field("explanation", &ListedRule::explanation),
                   lumo::field("cleanup", &ListedRule::cleanup),
                   lumo::field("closeFirst", &ListedRule::closeFirst),
                   lumo::field("displayPath", &ListedRule::displayPath),
                   lumo::field("needsFolderPermission", &ListedRule::needsFolderPermission)};
};

std::string jsonOfRules() {
    std::vector<ListedRule> listed;
    for (const Rule& rule : lumo::RuleCatalog::all()) {
        listed.push_back({rule.id, rule.name, rule.category, rule.safety, rule.explanation, rule.cleanup,
                          rule.closeFirst, rule.displayPath(), rule.needsFolderPermission()});
    }
    return lumo::dumpJson(lumo::encode(listed), lumo::JsonLayout::indented) + "\n";
}

std::string howText(const lumo::Cleanup& cleanup) {
    struct How {
        std::string operator()(const lumo::cleanup::Command& how) const { return how.line; }
        std::string operator()(const lumo::cleanup::Manual& how) const { return how.instruction; }
        std::string operator()(const lumo::cleanup::DeleteContents&) const {
            return Words{"se borra su contenido", "its contents are deleted"}.in();
        }
        std::string operator()(const lumo::cleanup::DeleteItems&) const {
            return Words{"se borra", "it is deleted"}.in();
        }
    };
    return std::visit(How{}, cleanup);
}

std::string describe(const Rule& rule, Tint tint, const Invocation& invocation) {
    std::string described = "\n" + tinted("● " + rule.name, tint, invocation) + "  " +
                            tinted(rule.id, Tint::faint, invocation) + "\n";
    Table table({{.align = Align::left, .tint = Tint::faint}, {}});
    table.add({Words{"Dónde", "Where"}.in(), rule.displayPath()});
    table.add({Words{"Qué es", "What"}.in(), rule.explanation});
    table.add({Words{"Cómo", "How"}.in(), howText(rule.cleanup)});
    if (rule.closeFirst) {
        table.add({Words{"Antes", "First"}.in(),
                   fmt::format("{} {}", Words{"cierra", "quit"}.in(), *rule.closeFirst)});
    }
    return described + table.lines(2, 0, invocation);
}

std::string textOfRules(const Invocation& invocation) {
    struct Group {
        Safety safety;
        Tint tint;
        std::string heading;
    };
    const Group groups[] = {{Safety::safe, Tint::safe, Words{"SE RECREA SOLO", "RECREATES ITSELF"}.in()},
                            {Safety::review, Tint::review, Words{"MÍRALO ANTES", "NEEDS A LOOK"}.in()},
                            {Safety::keep, Tint::faint, Words{"SE CONSERVA", "KEPT"}.in()}};
    std::string described;
    for (const Group& group : groups) {
        described += (described.empty() ? "" : "\n") + tinted(group.heading, Tint::strong, invocation) + "\n";
        for (const Rule& rule : lumo::RuleCatalog::all()) {
            if (rule.safety == group.safety) {
                described += describe(rule, group.tint, invocation);
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
    command->callback([&chosen] {
        chosen = [](const Invocation& invocation) {
            return print(invocation.isJson ? jsonOfRules() : textOfRules(invocation));
        };
    });
}

} // namespace tarvo
