#include "Platform/MountedVolumes.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"
#include "Platform/Volume.h"
#include "Platform/linux/MountTable.h"

#include <array>
#include <cstddef>
#include <map>

namespace lumo::platform {

namespace {

std::string lastComponent(std::string_view path) {
    const std::string_view name = fileName(path);
    return std::string(name.empty() ? path : name);
}

/// The device's own name: "dm-0" for what a mapper calls "/dev/mapper/home".
std::string deviceName(const std::string& source) {
    return lastComponent(linkTarget(source).value_or(source));
}

/// A label as udev writes it in the name of a link: "\x20" for a blank.
std::string unescapedLabel(std::string_view text) {
    const auto digit = [](char c) { return c >= 'a' ? c - 'a' + 10 : c - '0'; };
    const auto isDigit = [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); };
    std::string plain;
    while (!text.empty()) {
        if (text.size() >= 4 && text.starts_with("\\x") && isDigit(text[2]) && isDigit(text[3])) {
            plain += static_cast<char>(digit(text[2]) * 16 + digit(text[3]));
            text.remove_prefix(4);
        } else {
            plain += text.front();
            text.remove_prefix(1);
        }
    }
    return plain;
}

std::map<std::string, std::string> labelsByDevice() {
    const std::string folder = "/dev/disk/by-label";
    std::map<std::string, std::string> labels;
    for (const std::string& name : namesIn(folder)) {
        labels.try_emplace(deviceName(folder + "/" + name), unescapedLabel(name));
    }
    return labels;
}

} // namespace

std::vector<MountedVolume> mountedVolumes() {
    constexpr std::size_t mostBytes = std::size_t{4} * 1024 * 1024;
    const auto table = readWhole("/proc/self/mountinfo", mostBytes);
    if (!table) {
        return {};
    }
    const std::map<std::string, std::string> labels = labelsByDevice();
    std::vector<MountedVolume> volumes;
    for (const MountedDisk& disk : disksIn(*table)) {
        const auto capacity = volumeCapacity(disk.path);
        if (!capacity || capacity->total <= 0) {
            continue;
        }
        const auto label = labels.find(deviceName(disk.source));
        volumes.push_back({.path = disk.path,
                           .name = label == labels.end() ? lastComponent(disk.path) : label->second,
                           .total = capacity->total,
                           .free = capacity->available});
    }
    return volumes;
}

std::span<const std::string_view> volumeFolders() {
    static constexpr auto folders = std::to_array<std::string_view>({"/media", "/run/media", "/mnt"});
    return folders;
}

} // namespace lumo::platform
