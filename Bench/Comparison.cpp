#include "Comparison.h"

#include <algorithm>
#include <cstddef>
#include <fmt/format.h>
#include <utility>

namespace tarvo::bench {

namespace {

using Role = Contestant::Role;

std::optional<double> ratio(const Contestant* one, const Contestant* other) {
    if (one == nullptr || other == nullptr || !one->hasFigures() || !other->hasFigures()) {
        return std::nullopt;
    }
    return one->median() / other->median();
}

std::string ratioText(std::optional<double> value) {
    return value ? fmt::format("{:.2f}", *value) : "-";
}

Target targetBelow(std::string promise, std::optional<double> figure, double bound, std::string unit) {
    return {std::move(promise), figure, std::move(unit), figure.has_value() && *figure < bound};
}

Target targetUpTo(std::string promise, std::optional<double> figure, double bound) {
    return {std::move(promise), figure, "x", figure.has_value() && *figure <= bound};
}

std::optional<double> peakOf(const Contestant* contestant) {
    return contestant == nullptr ? std::nullopt : std::optional(contestant->peakMebibytes);
}

std::string rowOf(const Contestant& contestant, const Contestant* floor, const Contestant* du) {
    if (!contestant.hasFigures()) {
        return fmt::format("{:<26} {}\n", contestant.name, contestant.problem);
    }
    return fmt::format("{:<26} {:>10.1f} {:>10.1f} {:>8} {:>8} {:>10.1f}{}\n", contestant.name,
                       contestant.median(), contestant.minimum(), ratioText(ratio(&contestant, floor)),
                       ratioText(ratio(&contestant, du)), contestant.peakMebibytes,
                       &contestant == floor ? "  <- the floor" : "");
}

std::string lineOf(const Target& target) {
    if (!target.figure) {
        return fmt::format("{}: not measured\n", target.promise);
    }
    return fmt::format("{}: {} ({:.2f} {})\n", target.promise, target.isReached ? "reached" : "missed",
                       *target.figure, target.unit);
}

/// A path is bytes: what is not plain text is written so that the document stays valid.
std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\') {
            result += '\\';
            result += character;
        } else if (byte < 0x20 || byte > 0x7e) {
            result += fmt::format("\\u{:04x}", byte);
        } else {
            result += character;
        }
    }
    return result + "\"";
}

std::string jsonOf(const Contestant& contestant, const Contestant* floor, const Contestant* du) {
    const std::string name = quoted(contestant.name);
    if (!contestant.hasFigures()) {
        return fmt::format("{{\"name\": {}, \"problem\": {}}}", name, quoted(contestant.problem));
    }
    const auto number = [](std::optional<double> value) {
        return value ? fmt::format("{:.4f}", *value) : std::string("null");
    };
    return fmt::format("{{\"name\": {}, \"medianMilliseconds\": {:.3f}, \"minimumMilliseconds\": {:.3f}, "
                       "\"ratioToFloor\": {}, \"ratioToDu\": {}, \"peakMebibytes\": {:.2f}, "
                       "\"milliseconds\": [{:.3f}]}}",
                       name, contestant.median(), contestant.minimum(), number(ratio(&contestant, floor)),
                       number(ratio(&contestant, du)), contestant.peakMebibytes,
                       fmt::join(contestant.milliseconds, ", "));
}

std::string jsonOf(const Target& target) {
    const std::string head = fmt::format("{{\"promise\": {}", quoted(target.promise));
    if (!target.figure) {
        return head + "}";
    }
    return fmt::format("{}, \"figure\": {:.4f}, \"unit\": {}, \"isReached\": {}}}", head, *target.figure,
                       quoted(target.unit), target.isReached);
}

template <typename Items, typename Write>
std::string listOf(const Items& items, Write write) {
    std::vector<std::string> texts;
    for (const auto& item : items) {
        texts.push_back("    " + write(item));
    }
    return fmt::format("[\n{}\n  ]", fmt::join(texts, ",\n"));
}

const char* nameOf(Temperature temperature) {
    return temperature == Temperature::warm ? "warm" : "cold";
}

} // namespace

double medianOf(std::vector<double> values) {
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double Contestant::minimum() const {
    return *std::ranges::min_element(milliseconds);
}

const Contestant* quickest(const Comparison& comparison, Role role) {
    const Contestant* found = nullptr;
    for (const Contestant& contestant : comparison.contestants) {
        if (contestant.role == role && contestant.hasFigures() &&
            (found == nullptr || contestant.median() < found->median())) {
            found = &contestant;
        }
    }
    return found;
}

std::vector<Target> targetsOf(const Comparison& comparison) {
    const Contestant* measure = quickest(comparison, Role::measure);
    const Contestant* scan = quickest(comparison, Role::scan);
    const Contestant* rules = quickest(comparison, Role::rules);
    const Contestant* floor = quickest(comparison, Role::floor);
    const Target passes =
        targetUpTo("both passes of the window at most 1.25 x the full one",
                   ratio(quickest(comparison, Role::bothPasses), quickest(comparison, Role::onePass)), 1.25);
    if (comparison.temperature == Temperature::cold) {
        const Contestant* du = quickest(comparison, Role::du);
        return {targetUpTo("measure-tree at most 1.10 x the floor, cold", ratio(measure, floor), 1.10),
                targetUpTo("tarvo scan at most 0.30 x du, cold", ratio(scan, du), 0.30), passes};
    }
    const auto rulesTime = rules == nullptr ? std::nullopt : std::optional(rules->median());
    return {targetUpTo("measure-tree at most 1.05 x the floor, warm", ratio(measure, floor), 1.05),
            targetUpTo("tarvo scan at most 1.10 x the floor, warm", ratio(scan, floor), 1.10),
            passes,
            targetBelow("tarvo rules under 20 ms", rulesTime, 20, "ms"),
            targetBelow("measure-tree under 24 MiB", peakOf(measure), 24, "MiB"),
            targetBelow("tarvo scan under 24 MiB", peakOf(scan), 24, "MiB")};
}

std::string tableOf(const Comparison& comparison) {
    const Contestant* floor = quickest(comparison, Role::floor);
    const Contestant* du = quickest(comparison, Role::du);
    const MachineShape& machine = comparison.machine;
    std::string text =
        fmt::format("{} cores, {:.1f} GiB memory, {}, {}; {} ({} entries); {} rounds, {}\n\n", machine.cores,
                    machine.memoryGibibytes, machine.kernel, machine.fileSystem, comparison.home,
                    comparison.entries == 0 ? "?" : fmt::to_string(comparison.entries), comparison.rounds,
                    nameOf(comparison.temperature));
    text += fmt::format("{:<26} {:>10} {:>10} {:>8} {:>8} {:>10}\n", "contestant", "median ms", "min ms",
                        "x floor", "x du", "peak MiB");
    for (const Contestant& contestant : comparison.contestants) {
        text += rowOf(contestant, floor, du);
    }
    text += "\n";
    for (const Target& target : targetsOf(comparison)) {
        text += lineOf(target);
    }
    return text;
}

std::string jsonOf(const Comparison& comparison) {
    const Contestant* floor = quickest(comparison, Role::floor);
    const Contestant* du = quickest(comparison, Role::du);
    const MachineShape& machine = comparison.machine;
    return fmt::format(
        "{{\n  \"machine\": {{\"cores\": {}, \"memoryGibibytes\": {:.2f}, \"kernel\": {}, \"fileSystem\": "
        "{}}},\n"
        "  \"home\": {},\n  \"entries\": {},\n  \"rounds\": {},\n  \"temperature\": \"{}\",\n"
        "  \"floor\": {},\n  \"contestants\": {},\n  \"targets\": {}\n}}\n",
        machine.cores, machine.memoryGibibytes, quoted(machine.kernel), quoted(machine.fileSystem),
        quoted(comparison.home), comparison.entries, comparison.rounds, nameOf(comparison.temperature),
        floor == nullptr ? "null" : quoted(floor->name),
        listOf(comparison.contestants, [&](const Contestant& one) { return jsonOf(one, floor, du); }),
        listOf(targetsOf(comparison), [](const Target& one) { return jsonOf(one); }));
}

} // namespace tarvo::bench
