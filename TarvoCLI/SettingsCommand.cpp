#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/Table.h"
#include "TarvoModel/Flows/SettingChange.h"

#include <array>
#include <memory>
#include <span>

namespace tarvo {

using lumo::JsonValue;
using lumo::Words;

namespace {

struct SettingsArguments {
    std::string key;
    std::vector<std::string> words;
};

ExitCode show(const Preferences& preferences, std::span<const Preference* const> keys,
              const Invocation& invocation) {
    JsonValue::Object object;
    Table table({{.tint = Tint::strong}, {.mayShrink = true}, {.tint = Tint::faint, .mayShrink = true}});
    for (const Preference* key : keys) {
        const auto value = preferences.json(*key);
        table.add({std::string(key->key), value ? wordsOf(*value) : "–", key->meaning.in()});
        if (value) {
            object.push_back({std::string(key->key), *value});
        }
    }
    std::string shown = table.lines(0, outputColumns(), invocation);
    if (invocation.isJson) {
        shown = lumo::dumpJson({std::move(object)}, lumo::JsonLayout::indented) + "\n";
    } else if (keys.size() == 1) {
        const auto value = preferences.json(*keys.front());
        shown = value ? wordsOf(*value) + "\n" : "";
    }
    const ExitCode printed = print(shown);
    const std::optional<std::string> problem = preferences.problem();
    return problem ? complain(*problem, ExitCode::failed) : printed;
}

/// Runs `act` on the named preference, or says which names there are.
ExitCode withKey(const std::string& name, const std::function<ExitCode(const Preference&)>& act) {
    const Preference* key = preferenceNamed(name);
    if (key == nullptr) {
        return complain(Words{"no hay ningún ajuste «{}»; tarvo ajustes los muestra todos",
                              "there is no setting “{}”; tarvo settings lists them all"}
                            .with(lumo::printable(name)),
                        ExitCode::usage);
    }
    return act(*key);
}

ExitCode change(const Preference& key, const std::optional<JsonValue>& value, const Invocation& invocation) {
    if (const auto refused = refuseForeign(invocation)) {
        return *refused;
    }
    const auto changed = changeSetting(key, [&](const Preferences&) { return value; }, invocation.home);
    if (!changed) {
        return complain(changed.error().message, ExitCode::failed);
    }
    if (changed->warning) {
        complain(*changed->warning, ExitCode::done);
    }
    return show(changed->preferences, std::array{&key}, invocation);
}

ExitCode set(const SettingsArguments& arguments, const Invocation& invocation) {
    return withKey(arguments.key, [&](const Preference& key) {
        lumo::Result<JsonValue> value = preferenceFromWords(key, arguments.words, invocation.home);
        if (!value) {
            return complain(value.error().message, ExitCode::usage);
        }
        return change(key, std::move(*value), invocation);
    });
}

CLI::App* addKeyCommand(CLI::App& settings, const char* name, std::string_view meaningEs,
                        std::string_view meaningEn, SettingsArguments& arguments) {
    CLI::App* command = addCommand(settings, name, name, meaningEs, meaningEn);
    command->add_option(Words{"CLAVE", "KEY"}.in(), arguments.key, Words{"qué ajuste", "which setting"}.in())
        ->required()
        ->type_name("");
    return command;
}

} // namespace

void addSettingsCommand(CLI::App& app, Action& chosen) {
    CLI::App* settings = addCommand(app, "ajustes", "settings", "los ajustes; sin más, los muestra todos",
                                    "the settings; without more, shows them all");
    settings->require_subcommand(0, 1);
    const auto arguments = std::make_shared<SettingsArguments>();
    settings->callback([settings, &chosen] {
        if (settings->get_subcommands().empty()) {
            chosen = [](const Invocation& invocation) {
                return show(Preferences::load(invocation.home), allPreferences, invocation);
            };
        }
    });
    addKeyCommand(*settings, "get", "muestra uno", "shows one", *arguments)->callback([arguments, &chosen] {
        chosen = [arguments](const Invocation& invocation) {
            return withKey(arguments->key, [&](const Preference& key) {
                return show(Preferences::load(invocation.home), std::array{&key}, invocation);
            });
        };
    });
    CLI::App* setter = addKeyCommand(*settings, "set", "cambia uno", "changes one", *arguments);
    setter
        ->add_option(Words{"VALOR", "VALUE"}.in(), wordsInto(arguments->words),
                     Words{"su nuevo valor; varios en una lista", "its new value; several for a list"}.in())
        ->expected(1, CLI::detail::expected_max_vector_size)
        ->allow_extra_args()
        ->take_all()
        ->required()
        ->type_name("");
    setter->callback([arguments, &chosen] {
        chosen = [arguments](const Invocation& invocation) { return set(*arguments, invocation); };
    });
    addKeyCommand(*settings, "unset", "vuelve al valor de fábrica", "goes back to the standard value",
                  *arguments)
        ->callback([arguments, &chosen] {
            chosen = [arguments](const Invocation& invocation) {
                return withKey(arguments->key,
                               [&](const Preference& key) { return change(key, std::nullopt, invocation); });
            };
        });
}

} // namespace tarvo
