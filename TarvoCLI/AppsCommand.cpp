#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Inventories/InstalledApp.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/Table.h"

namespace tarvo {

using lumo::InstalledApp;
using lumo::Words;

namespace {

std::string jsonOfApps(const std::vector<InstalledApp>& apps) {
    lumo::JsonValue::Array list;
    for (const InstalledApp& app : apps) {
        lumo::JsonValue object = lumo::encode(app);
        std::get<lumo::JsonValue::Object>(object.value).push_back({"aliases", lumo::encode(app.aliases())});
        list.push_back(std::move(object));
    }
    return lumo::dumpJson({std::move(list)}, lumo::JsonLayout::indented) + "\n";
}

std::string textOfApps(const std::vector<InstalledApp>& apps, const Invocation& invocation) {
    if (apps.empty()) {
        return Words{"No he encontrado aplicaciones instaladas.\n", "No installed applications found.\n"}
            .in();
    }
    Table table({{.tint = Tint::strong, .mayShrink = true},
                 {.mayShrink = true},
                 {.tint = Tint::faint, .mayShrink = true}});
    for (const InstalledApp& app : apps) {
        table.add({lumo::printable(app.name), lumo::printable(app.bundleID),
                   lumo::printable(lumo::abbreviated(app.path, invocation.home))});
    }
    return table.lines(0, outputColumns(), invocation);
}

} // namespace

void addAppsCommand(CLI::App& app, Action& chosen) {
    CLI::App* command =
        addCommand(app, "apps", "apps", "las aplicaciones instaladas", "the installed applications");
    command->callback([&chosen] {
        chosen = [](const Invocation& invocation) {
            const std::vector<InstalledApp> apps = InstalledApp::scan(invocation.home);
            return print(invocation.isJson ? jsonOfApps(apps) : textOfApps(apps, invocation));
        };
    });
}

} // namespace tarvo
