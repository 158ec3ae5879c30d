#include "LumoCore/Inventories/Packages.h"

#include "Platform/StateFile.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace lumo {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Letters come before everything else, and "~" even before the end.
int weightOf(char c) {
    if (c == '~') {
        return -1;
    }
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    return isLetter ? c : static_cast<unsigned char>(c) + 256;
}

/// Takes the characters up to the next digit, or the digits up to the next other character.
std::string_view takeRun(std::string_view& text, bool ofDigits) {
    std::size_t length = 0;
    while (length < text.size() && isDigit(text[length]) == ofDigits) {
        ++length;
    }
    const std::string_view run = text.substr(0, length);
    text.remove_prefix(length);
    return run;
}

int compareOthers(std::string_view left, std::string_view right) {
    for (std::size_t index = 0; index < std::max(left.size(), right.size()); ++index) {
        const int ofLeft = index < left.size() ? weightOf(left[index]) : 0;
        const int ofRight = index < right.size() ? weightOf(right[index]) : 0;
        if (ofLeft != ofRight) {
            return ofLeft < ofRight ? -1 : 1;
        }
    }
    return 0;
}

int compareNumbers(std::string_view left, std::string_view right) {
    left.remove_prefix(std::min(left.find_first_not_of('0'), left.size()));
    right.remove_prefix(std::min(right.find_first_not_of('0'), right.size()));
    if (left.size() != right.size()) {
        return left.size() < right.size() ? -1 : 1;
    }
    const int order = left.compare(right);
    return order == 0 ? 0 : (order < 0 ? -1 : 1);
}

int compareParts(std::string_view left, std::string_view right) {
    while (!left.empty() || !right.empty()) {
        const std::string_view ofLeft = takeRun(left, false);
        const std::string_view ofRight = takeRun(right, false);
        int order = compareOthers(ofLeft, ofRight);
        if (order == 0) {
            const std::string_view numberOfLeft = takeRun(left, true);
            order = compareNumbers(numberOfLeft, takeRun(right, true));
        }
        if (order != 0) {
            return order;
        }
    }
    return 0;
}

/// Takes what stands before the first colon; "0" when there is none.
std::string_view takeEpoch(std::string_view& version) {
    const std::size_t colon = version.find(':');
    if (colon == std::string_view::npos) {
        return "0";
    }
    const std::string_view epoch = version.substr(0, colon);
    version.remove_prefix(colon + 1);
    return epoch;
}

Package packageIn(std::string_view paragraph) {
    Package package{.version = std::string(controlField(paragraph, "Version"))};
    const std::string_view status = controlField(paragraph, "Status");
    if (status.ends_with(" installed")) {
        package.state = Package::State::installed;
    } else if (status.ends_with(" config-files")) {
        package.state = Package::State::removed;
    }
    const std::string_view kibibytes = controlField(paragraph, "Installed-Size");
    constexpr std::int64_t most = std::int64_t{1} << 40;
    std::int64_t size = 0;
    std::from_chars(kibibytes.data(), kibibytes.data() + kibibytes.size(), size);
    package.installedBytes = std::clamp<std::int64_t>(size, 0, most) * 1024;
    return package;
}

} // namespace

std::string_view controlField(std::string_view paragraph, std::string_view name) {
    while (!paragraph.empty()) {
        const std::size_t end = std::min(paragraph.find('\n'), paragraph.size());
        std::string_view line = paragraph.substr(0, end);
        paragraph.remove_prefix(std::min(end + 1, paragraph.size()));
        if (line.empty()) {
            break;
        }
        if (line.starts_with(name) && line.size() > name.size() && line[name.size()] == ':') {
            line.remove_prefix(name.size() + 1);
            line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
            return line.substr(0, line.find_last_not_of(" \t\r") + 1);
        }
    }
    return {};
}

std::map<std::string, Package, std::less<>> packagesInStatus(std::string_view status) {
    std::map<std::string, Package, std::less<>> packages;
    while (!status.empty()) {
        const std::size_t end = std::min(status.find("\n\n"), status.size());
        const std::string_view paragraph = status.substr(0, end);
        status.remove_prefix(std::min(end + 2, status.size()));
        const std::string_view name = controlField(paragraph, "Package");
        if (name.empty()) {
            continue;
        }
        Package package = packageIn(paragraph);
        const auto known = packages.find(name);
        if (known == packages.end()) {
            packages.emplace(name, std::move(package));
            continue;
        }
        const bool isMore = std::pair(package.state != Package::State::installed, 0) <
                                std::pair(known->second.state != Package::State::installed, 0) ||
                            (package.state == known->second.state &&
                             compareVersions(known->second.version, package.version) < 0);
        if (isMore) {
            known->second = std::move(package);
        }
    }
    return packages;
}

std::map<std::string, Package, std::less<>> packagesOfSystem(const std::string& root) {
    constexpr std::size_t mostBytes = std::size_t{64} * 1024 * 1024;
    const auto status = platform::readWhole(root + "/var/lib/dpkg/status", mostBytes);
    return status ? packagesInStatus(*status) : std::map<std::string, Package, std::less<>>();
}

int compareVersions(std::string_view left, std::string_view right) {
    if (const int order = compareNumbers(takeEpoch(left), takeEpoch(right)); order != 0) {
        return order;
    }
    const std::size_t ofLeft = std::min(left.rfind('-'), left.size());
    const std::size_t ofRight = std::min(right.rfind('-'), right.size());
    const int order = compareParts(left.substr(0, ofLeft), right.substr(0, ofRight));
    return order != 0 ? order
                      : compareParts(left.substr(std::min(ofLeft + 1, left.size())),
                                     right.substr(std::min(ofRight + 1, right.size())));
}

} // namespace lumo
