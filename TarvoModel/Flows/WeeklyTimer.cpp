#include "TarvoModel/Flows/WeeklyTimer.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/ToolOutput.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Rules/HomePlaces.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"
#include "Platform/ToolCommand.h"
#include "TarvoModel/Flows/OwnEntry.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace tarvo::WeeklyTimer {

using lumo::Language;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

constexpr std::string_view serviceName = "tarvo-weekly.service";
constexpr std::string_view timerName = "tarvo-weekly.timer";
/// What names the program in the service, so that it can be found there again.
constexpr std::string_view programKey = "ConditionFileIsExecutable=";
constexpr std::size_t mostBytes = std::size_t{64} * 1024;

std::string folderOf(const std::string& home) {
    return lumo::HomePlaces::ofThisMachine(home).path("~/.config/systemd/user");
}

/// The link by which systemd knows that the timer is switched on.
std::string switchedOnPath(const std::string& home) {
    return folderOf(home) + "/timers.target.wants/" + std::string(timerName);
}

/// With "%" as systemd takes one for itself in every value.
std::string withoutSpecifiers(std::string_view text) {
    std::string plain;
    for (const char character : text) {
        plain += character;
        if (character == '%') {
            plain += character;
        }
    }
    return plain;
}

/// The program as the first word of a command line. A dollar begins no variable in that word.
std::string quoted(std::string_view program) {
    std::string word;
    for (const char character : withoutSpecifiers(program)) {
        if (character == '\\' || character == '"') {
            word += '\\';
        }
        word += character;
    }
    return '"' + word + '"';
}

/// The program that a service names; empty when it names none.
std::string programIn(std::string_view service) {
    const std::size_t key = service.find("\n" + std::string(programKey));
    if (key == std::string_view::npos) {
        return "";
    }
    const std::string_view line = service.substr(key + 1 + programKey.size());
    std::string program;
    for (const char character : line.substr(0, line.find('\n'))) {
        if (character != '%' || !program.ends_with('%')) {
            program += character;
        }
    }
    return program;
}

platform::ToolRun ask(const std::string& home, const Asking& asking,
                      const std::vector<std::string>& question) {
    std::vector<std::string> words{"systemctl", "--user", "--no-pager", "--no-ask-password"};
    words.insert(words.end(), question.begin(), question.end());
    return platform::runToolInTime(words, home, asking.patience, asking.stop);
}

/// Why systemd did not do as it was asked; absent when it did.
std::optional<std::string> problemOf(const platform::ToolRun& ran, const Asking& asking) {
    constexpr int notStartable = 126;
    constexpr int notFound = 127;
    if (ran.wasEndedByUs) {
        return asking.stop.stop_requested() ? Words{"Interrumpido: la limpieza semanal se queda como estaba",
                                                    "Interrupted: the weekly cleanup stays as it was"}
                                                  .in()
                                            : Words{"El systemd de tu sesión no responde: vuelve a probar",
                                                    "Your session's systemd does not answer: try again"}
                                                  .in();
    }
    if (ran.status == notStartable || ran.status == notFound) {
        return lumo::SystemWords{
            .macos =
                {"En un Mac la limpieza semanal la hace la ventana mientras está abierta: actívala en sus "
                 "ajustes",
                 "On a Mac the window does the weekly cleanup while it is open: turn it on in its settings"},
            .linux =
                {"Aquí no hay systemd que la ponga en marcha: la limpieza semanal solo puede hacerla la "
                 "ventana mientras está abierta",
                 "There is no systemd here to start it: only the window can do the weekly cleanup, while it "
                 "is open"}}
            .on()
            .in();
    }
    if (ran.status == 0) {
        return std::nullopt;
    }
    return Words{"Tu sesión no acepta poner en marcha la limpieza semanal (systemd: {})",
                 "Your session does not agree to start the weekly cleanup (systemd: {})"}
        .with(lumo::printable(lumo::failureDetail(ran.output, ran.status)));
}

/// Why there is nobody to ask.
std::optional<std::string> reachingProblem(const std::string& home, const Asking& asking) {
    const platform::ToolRun ran = ask(home, asking, {"show", "--property=Version"});
    constexpr int leastOfLauncher = 126; // What it answers when there is no such tool.
    if (ran.status != 0 && ran.status < leastOfLauncher) {
        return Words{"La limpieza semanal solo puede hacerla la ventana mientras está abierta: en esta "
                     "sesión nadie la "
                     "pondría en marcha (systemd: {})",
                     "Only the window can do the weekly cleanup, while it is open: nothing in this session "
                     "would start "
                     "it (systemd: {})"}
            .with(lumo::printable(lumo::failureDetail(ran.output, ran.status)));
    }
    return problemOf(ran, asking);
}

/// The value of a property in an answer that has one a line.
std::string_view propertyIn(std::string_view answer, std::string_view key) {
    while (!answer.empty()) {
        const std::string_view line = answer.substr(0, answer.find('\n'));
        answer.remove_prefix(std::min(line.size() + 1, answer.size()));
        if (line.starts_with(key)) {
            return line.substr(key.size());
        }
    }
    return {};
}

/// What systemd makes of the written units: another home's, or ones with a mistake, would be switched on
/// without a word.
std::optional<std::string> loadingProblem(const std::string& home, const std::string& program,
                                          const Asking& asking) {
    const platform::ToolRun ran = ask(
        home, asking, {"show", "--property=LoadState", "--property=FragmentPath", std::string(serviceName)});
    if (const auto problem = problemOf(ran, asking)) {
        return problem;
    }
    if (!platform::isSamePlace(std::string(propertyIn(ran.output, "FragmentPath=")), servicePath(home))) {
        return Words{
            "El systemd de tu sesión no lee {}: solo sirve para tu propia carpeta personal, y con el "
            "XDG_CONFIG_HOME con que empezó la sesión",
            "Your session's systemd does not read {}: this works for your own home folder only, and with "
            "the XDG_CONFIG_HOME that the session began with"}
            .with(lumo::printable(folderOf(home)));
    }
    if (const std::string_view state = propertyIn(ran.output, "LoadState="); state != "loaded") {
        return Words{
            "El systemd de tu sesión no puede poner en marcha {} ({}): prueba con el programa en otro "
            "lugar",
            "Your session's systemd cannot start {} ({}): try with the program in another place"}
            .with(lumo::printable(program), lumo::printable(state));
    }
    return std::nullopt;
}

std::string unwritableText(const platform::SystemError& error) {
    return Words{"No se pudo escribir en la configuración de systemd: {}",
                 "Could not write into systemd's settings: {}"}
        .with(lumo::reasonText(error));
}

/// The units, and what stood in their places before.
class Units final {
  public:
    explicit Units(const std::string& home) : home_(home) {
        for (const std::string& path : {servicePath(home), timerPath(home)}) {
            const auto text = platform::readWhole(path, mostBytes);
            earlier_.emplace_back(path, text ? std::optional(*text) : std::nullopt);
        }
    }

    [[nodiscard]] std::optional<std::string> write(const std::string& program) const {
        const std::array<std::string, 2> texts{serviceText(program), timerText()};
        for (std::size_t index = 0; index < texts.size(); ++index) {
            if (const auto written = OwnEntry::write(earlier_[index].first, texts[index]); !written) {
                return unwritableText(written.error());
            }
        }
        return std::nullopt;
    }

    /// As it was. What cannot be put back is inert: the preference is off.
    void putBack(const Asking& asking) const {
        const bool wasThere = earlier_.front().second && earlier_.back().second;
        if (!wasThere) {
            (void)OwnEntry::remove(switchedOnPath(home_));
        }
        for (const auto& [path, text] : earlier_) {
            (void)(text ? OwnEntry::write(path, *text) : OwnEntry::remove(path));
        }
        // Also after a stop: systemd is not to keep what is gone.
        (void)ask(home_, {.stop = {}, .patience = asking.patience}, {"daemon-reload"});
    }

  private:
    std::string home_;
    std::vector<std::pair<std::string, std::optional<std::string>>> earlier_;
};

std::optional<std::string> install(const Units& units, const std::string& home, const std::string& program,
                                   const Asking& asking) {
    if (const auto problem = units.write(program)) {
        return problem;
    }
    if (const auto problem = problemOf(ask(home, asking, {"daemon-reload"}), asking)) {
        return problem;
    }
    if (const auto problem = loadingProblem(home, program, asking)) {
        return problem;
    }
    return problemOf(ask(home, asking, {"enable", "--now", std::string(timerName)}), asking);
}

} // namespace

std::string servicePath(const std::string& home) {
    return lumo::joined(folderOf(home), serviceName);
}

std::string timerPath(const std::string& home) {
    return lumo::joined(folderOf(home), timerName);
}

std::string serviceText(std::string_view program, Language language) {
    // Where the program is gone nothing fails every day: the condition does not hold, and the status tells.
    // An end that was asked for (the session is over) lets the item in hand be finished, and is no failure.
    return "[Unit]\n"
           "Description=" +
           Words{"Tarvo AI: limpieza semanal de lo que se regenera solo",
                 "Tarvo AI: weekly cleanup of what recreates itself"}
               .in(language) +
           "\n"
           "Documentation=man:tarvo(1)\n" +
           std::string(programKey) + withoutSpecifiers(program) +
           "\n"
           "\n"
           "[Service]\n"
           "Type=oneshot\n"
           "ExecStart=" +
           quoted(program) + " --idioma " + (language == Language::es ? "es" : "en") +
           " --quiet weekly run\n"
           "SuccessExitStatus=130\n"
           "KillMode=mixed\n"
           "Nice=10\n"
           "IOSchedulingClass=idle\n";
}

std::string timerText(Language language) {
    // Every day, not every week: a cleanup that the window made moves the week, and a day missed is made up
    // for when the session begins.
    return "[Unit]\n"
           "Description=" +
           Words{"Tarvo AI: mira cada día si toca la limpieza semanal",
                 "Tarvo AI: looks every day whether the weekly cleanup is due"}
               .in(language) +
           "\n"
           "\n"
           "[Timer]\n"
           "OnCalendar=daily\n"
           "Persistent=true\n"
           "RandomizedDelaySec=1h\n"
           "\n"
           "[Install]\n"
           "WantedBy=timers.target\n";
}

State state(const std::string& home) {
    const auto service = platform::readWhole(servicePath(home), mostBytes);
    if (!service || !platform::kindOf(timerPath(home)) || !platform::kindOf(switchedOnPath(home))) {
        return State::none;
    }
    return platform::isProgram(programIn(*service)) ? State::set : State::broken;
}

lumo::Result<void> set(const std::string& home, const std::string& program, const Asking& asking) {
    // Asked first: where nobody answers, nothing is written.
    if (const auto problem = reachingProblem(home, asking)) {
        return lumo::failure(*problem);
    }
    if (!program.starts_with('/') || std::ranges::any_of(program, [](unsigned char c) { return c < ' '; })) {
        return lumo::failure(Words{"systemd no puede poner en marcha un programa que está en {}",
                                   "systemd cannot start a program that stands at {}"}
                                 .with(lumo::printable(program)));
    }
    const Units units(home);
    if (const auto problem = install(units, home, program, asking)) {
        units.putBack(asking);
        return lumo::failure(*problem);
    }
    return {};
}

lumo::Result<void> remove(const std::string& home, const Asking& asking) {
    const std::array<std::string, 3> paths{switchedOnPath(home), timerPath(home), servicePath(home)};
    if (std::ranges::all_of(paths, platform::isMissing)) {
        return {};
    }
    (void)ask(home, asking, {"disable", "--now", std::string(timerName)});
    std::optional<std::string> problem;
    for (const std::string& path : paths) {
        if (const auto removed = OwnEntry::remove(path); !removed && !problem) {
            problem = unwritableText(removed.error());
        }
    }
    (void)ask(home, asking, {"daemon-reload"});
    return problem ? lumo::failure(*problem) : lumo::Result<void>();
}

} // namespace tarvo::WeeklyTimer
