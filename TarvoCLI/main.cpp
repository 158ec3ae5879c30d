#include "LumoCore/Basics/Result.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/Commands.h"
#include "TarvoModel/Flows/GivenPath.h"
#include "TarvoModel/Flows/LanguageChoice.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iterator>
#include <new>
#include <optional>

namespace tarvo {

using lumo::Words;
namespace platform = lumo::platform;

CLI::App* addCommand(CLI::App& parent, std::string_view spanish, std::string_view english,
                     std::string_view meaningEs, std::string_view meaningEn) {
    const std::string name(Words{spanish, english}.in());
    const std::string other(name == spanish ? english : spanish);
    CLI::App* command = parent.add_subcommand(name, Words{meaningEs, meaningEn}.in());
    if (other != name) {
        command->alias(other);
    }
    command->get_help_ptr()->group(Words{"Opciones", "Options"}.in());
    return command->group(Words{"Órdenes", "Commands"}.in());
}

CLI::Validator isDecimal(std::size_t mostDigits, std::string_view problemEs, std::string_view problemEn) {
    const std::string problem(Words{problemEs, problemEn}.in());
    return CLI::Validator(
        [mostDigits, problem](const std::string& word) {
            const bool isNumber = !word.empty() && word.size() <= mostDigits &&
                                  std::ranges::all_of(word, [](char c) { return c >= '0' && c <= '9'; });
            return isNumber ? std::string() : fmt::format(fmt::runtime(problem), word);
        },
        "");
}

namespace {

/// Follows a word in square brackets through the library, which takes it for a list otherwise.
constexpr char nameMark = '\x1f';

std::string unmarked(std::string word) {
    if (word.ends_with(nameMark)) {
        word.pop_back();
    }
    return word;
}

/// True for options whose value goes straight into a text.
bool takesText(std::string_view option) {
    constexpr std::array<std::string_view, 7> options{"--home",   "--idioma", "--report", "--plan",
                                                      "--output", "--svg",    "--export"};
    return std::ranges::find(options, option) != options.end();
}

} // namespace

void addOlderOption(CLI::App& command, std::optional<std::int64_t>& days, const Words& meaning) {
    command.add_option("--older", inDecimal(days), meaning.in())
        ->check(isDecimal(5, "«{}» no es un número de días", "“{}” is no number of days"))
        ->type_name("N");
}

CLI::callback_t wordsInto(std::vector<std::string>& words) {
    return [&words](const CLI::results_t& results) {
        words.clear();
        std::ranges::transform(results, std::back_inserter(words), unmarked);
        return true;
    };
}

CLI::callback_t wordInto(std::string& word) {
    return [&word](const CLI::results_t& results) {
        word = unmarked(results.back());
        return true;
    };
}

CLI::callback_t inDecimal(std::optional<std::int64_t>& number) {
    return [&number](const CLI::results_t& words) {
        number = std::stoll(words.back(), nullptr, 10);
        return true;
    };
}

namespace {

struct GlobalArguments {
    std::string language; ///< Read when the texts are chosen, long before the arguments are parsed.
    std::optional<std::string> home;
    bool isJson = false;
    bool isColorless = false;
    bool isQuiet = false;
};

void addGlobalOptions(CLI::App& app, GlobalArguments& arguments) {
    app.option_defaults()->group(Words{"Opciones", "Options"}.in());
    app.set_help_flag("-h,--help", Words{"muestra esta ayuda", "show this help"}.in());
    app.set_version_flag("--version", "tarvo " TARVO_VERSION,
                         Words{"muestra la versión", "show the version"}.in());
    app.add_option("--idioma", arguments.language, Words{"idioma: es o en", "language: es or en"}.in())
        ->type_name("es|en");
    app.add_option("--home", arguments.home,
                   Words{"la carpeta personal con la que trabajar; si no, $HOME",
                         "the home folder to work on; otherwise $HOME"}
                       .in())
        ->type_name(Words{"CARPETA", "DIR"}.in());
    app.add_flag("--json", arguments.isJson,
                 Words{"el resultado como un documento JSON", "the result as one JSON document"}.in());
    app.add_flag("--no-color", arguments.isColorless, Words{"sin colores", "no color"}.in());
    app.add_flag("--quiet", arguments.isQuiet, Words{"sin mostrar el progreso", "no progress"}.in());
}

void addCommands(CLI::App& app, Action& chosen) {
    addScanCommand(app, chosen);
    addPlanCommand(app, chosen);
    addCleanCommand(app, chosen);
    addFindCommand(app, chosen);
    addExploreCommand(app, chosen);
    addHoldingCommands(app, chosen);
    addArchiveCommand(app, chosen);
    addHistoryCommand(app, chosen);
    addRulesCommand(app, chosen);
    addAppsCommand(app, chosen);
    addGrowthCommand(app, chosen);
    addFolderCommand(app, chosen);
    addExplainCommand(app, chosen);
    addSummaryCommand(app, chosen);
    addAskCommand(app, chosen);
    addSpaceCommand(app, chosen);
    addSettingsCommand(app, chosen);
    addAgentsCommand(app, chosen);
    addMapCommand(app, chosen);
    addWeeklyCommand(app, chosen);
    addMcpCommand(app, chosen);
}

void translateHelp(CLI::App& app) {
    app.get_formatter()->column_width(34);
    for (const auto& [label, es] : {std::pair{"Usage", "Uso"},
                                    {"OPTIONS", "OPCIONES"},
                                    {"SUBCOMMAND", "ORDEN"},
                                    {"SUBCOMMANDS", "ORDENES"},
                                    {"Positionals", "Argumentos"},
                                    {"REQUIRED", "obligatorio"}}) {
        app.get_formatter()->label(label, Words{es, label}.in());
    }
    if (lumo::currentLanguage() == lumo::Language::en) {
        app.get_formatter()->label("Positionals", "Arguments");
        app.get_formatter()->label("SUBCOMMAND", "COMMAND");
        app.get_formatter()->label("SUBCOMMANDS", "COMMANDS");
        app.get_formatter()->label("REQUIRED", "required");
    }
}

/// What is wrong with the arguments, and where to look.
ExitCode explainUsage(const CLI::App& app, const CLI::ParseError& error) {
    std::string problem = error.what();
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
        // The library lists them behind its own words.
        const std::string rest =
            problem.substr(problem.rfind(": ") == std::string::npos ? 0 : problem.rfind(": ") + 2);
        problem = Words{"no entiendo «{}»", "I do not understand “{}”"}.with(rest);
    } else if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
        problem = Words{"faltan argumentos", "arguments are missing"}.in();
    } else if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        problem = fmt::format("{} ({})", Words{"falta un valor", "a value is missing"}.in(),
                              problem.substr(0, problem.find(':')));
    } else if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr ||
               dynamic_cast<const CLI::ConversionError*>(&error) != nullptr) {
        problem = fmt::format("{} ({})", Words{"un valor no sirve", "a value is not valid"}.in(), problem);
    }
    const std::string command =
        app.get_subcommands().empty() ? "" : " " + app.get_subcommands().front()->get_name();
    return complain(
        Words{"{}; mira tarvo{} --help", "{}; see tarvo{} --help"}.with(lumo::printable(problem), command),
        ExitCode::usage);
}

ExitCode showOverview(const CLI::App& app, std::vector<std::string> words) {
    const std::string application = platform::programFolder() + "/tarvo-app";
    if (platform::hasScreen() && platform::kindOf(application)) {
        words.front() = application;
        platform::becomeProgram(application, words);
    }
    return print(Words{"Tarvo AI mide qué llena tu disco y dice qué se regenera solo, qué conviene mirar y "
                       "qué hay que conservar.\nNada sale de tu máquina.\n\n",
                       "Tarvo AI measures what fills your disk and says what recreates itself, what needs "
                       "a look and what must be kept.\nNothing leaves your machine.\n\n"}
                     .in() +
                 app.help());
}

/// The arguments as the library takes them, last first. It would read "--only=" as an option without a value
/// and go on as if nothing had been asked; as two words the value is what it is, empty.
std::vector<std::string> argumentsFrom(int count, char** words) {
    std::vector<std::string> arguments;
    for (int index = 1; index < count; ++index) {
        const std::string_view word = words[index];
        if (word.starts_with("--") && word.ends_with('=')) {
            arguments.emplace_back(word.substr(0, word.size() - 1));
            arguments.emplace_back();
        } else {
            const bool isBracketed = word.starts_with('[') && word.ends_with(']');
            arguments.emplace_back(word);
            if (isBracketed && !takesText(words[index - 1])) {
                arguments.back() += nameMark;
            }
        }
    }
    std::ranges::reverse(arguments);
    return arguments;
}

ExitCode run(int count, char** words) {
    speakAsChosen(lumo::platform::environmentVariable("HOME").value_or(""));
    CLI::App app(
        Words{"Analiza y limpia tu disco sin miedo.", "Analyze and clean your disk without fear."}.in(),
        "tarvo");
    app.fallthrough();
    app.require_subcommand(0, 1);
    translateHelp(app);
    GlobalArguments arguments;
    Action chosen;
    addGlobalOptions(app, arguments);
    addCommands(app, chosen);
    try {
        app.parse(argumentsFrom(count, words));
    } catch (const CLI::CallForHelp&) {
        return print(app.help());
    } catch (const CLI::CallForVersion&) {
        return print("tarvo " TARVO_VERSION "\n");
    } catch (const CLI::ParseError& error) {
        return explainUsage(app, error);
    }
    const lumo::Result<std::string> home = givenHome(arguments.home);
    if (!home && (chosen || arguments.home)) {
        return complain(home.error().message, ExitCode::usage);
    }
    if (!chosen) {
        return showOverview(app, {words, words + count});
    }
    const bool hasColor = !arguments.isColorless &&
                          platform::environmentVariable("NO_COLOR").value_or("").empty() &&
                          platform::isTerminal(platform::Stream::output);
    return chosen({.home = *home,
                   .isJson = arguments.isJson,
                   .hasColor = hasColor,
                   .showsProgress = !arguments.isQuiet && platform::isTerminal(platform::Stream::error),
                   .installed = std::make_shared<const lumo::InstalledApps>(*home)});
}

} // namespace

} // namespace tarvo

int main(int count, char** words) {
    lumo::platform::shareOneHeap();
    // On whichever thread it happens; there is nothing left to build a better message with.
    std::set_new_handler([] {
        std::fputs("tarvo: out of memory\n", stderr);
        std::_Exit(static_cast<int>(tarvo::ExitCode::failed));
    });
    try {
        return static_cast<int>(tarvo::run(count, words));
    } catch (const std::exception& error) {
        // Nothing is expected here; a library may know better.
        return static_cast<int>(tarvo::complain(error.what(), tarvo::ExitCode::failed));
    }
}
