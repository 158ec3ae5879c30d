#include "Platform/RunningProcesses.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace lumo::platform {

namespace {

/// What systemd wrote as "\x2d" because "-" separates the parts of a unit's name.
std::string unescaped(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        if (text.starts_with("\\x2d")) {
            plain += '-';
            text.remove_prefix(4);
        } else {
            plain += text.front();
            text.remove_prefix(1);
        }
    }
    return plain;
}

/// The application of a unit named "app-LAUNCHER-ID-RANDOM.scope", "app-ID-RANDOM.scope" or
/// "app-ID@RANDOM.service" (systemd's naming of desktop applications); empty for any other.
std::string applicationOfControlGroup(std::string_view group) {
    while (group.ends_with('\n')) {
        group.remove_suffix(1);
    }
    std::string_view unit = fileName(group);
    if (!unit.starts_with("app-") || unit.find('.') == std::string_view::npos) {
        return {};
    }
    unit.remove_prefix(4);
    unit = unit.substr(0, unit.rfind('.'));
    if (const std::size_t instance = unit.rfind('@'); instance != std::string_view::npos) {
        unit = unit.substr(0, instance);
    } else if (const std::size_t random = unit.rfind('-'); random != std::string_view::npos) {
        unit = unit.substr(0, random);
    }
    if (const std::size_t launcher = unit.find('-'); launcher != std::string_view::npos) {
        unit.remove_prefix(launcher + 1);
    }
    return unescaped(unit);
}

RunningProcess readProcess(const std::string& folder) {
    constexpr std::size_t mostBytes = std::size_t{256} * 1024;
    constexpr std::string_view replacedProgram = " (deleted)";
    RunningProcess process;
    std::string program = linkTarget(folder + "/exe").value_or("");
    if (program.ends_with(replacedProgram)) {
        program.resize(program.size() - replacedProgram.size());
    }
    process.executable = fileName(program);
    process.path = std::move(program);
    if (const auto arguments = readWhole(folder + "/cmdline", mostBytes)) {
        process.argumentZero = fileName(std::string_view(*arguments).substr(0, arguments->find('\0')));
    }
    if (const auto group = readWhole(folder + "/cgroup", mostBytes)) {
        process.applicationID = applicationOfControlGroup(*group);
    }
    return process;
}

} // namespace

std::vector<RunningProcess> runningProcesses() {
    std::vector<RunningProcess> processes;
    for (const std::string& name : namesIn("/proc")) {
        const bool isProcess = std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; });
        if (isProcess) {
            processes.push_back(readProcess("/proc/" + name));
        }
    }
    return processes;
}

} // namespace lumo::platform
