#include "HomeRooms.h"

#include <array>
#include <fmt/format.h>

namespace tarvo::bench {

namespace {

constexpr std::array<const char*, 10> applicationNames{"Slack",  "Code",    "Google Chrome", "Spotify",
                                                       "Notion", "discord", "Figma",         "Postman",
                                                       "Signal", "Obsidian"};

void writeBrowserStore(Folder& owner) {
    {
        Folder cache(owner, "Cache");
        Folder entries(cache, "Cache_Data");
        entries.smallFiles(entries.random().between(20, 300), "f_", "");
    }
    {
        Folder compiled(owner, "Code Cache");
        Folder scripts(compiled, "js");
        scripts.smallFiles(scripts.random().between(10, 150), "script_", "_0");
    }
    Folder storage(owner, "Local Storage");
    Folder database(storage, "leveldb");
    database.smallFile("CURRENT");
    database.smallFiles(database.random().between(3, 12), "00", ".ldb");
}

void writeSupportFolders(Folder& support) {
    for (std::size_t number = 0; support.hasRoom(); ++number) {
        const char* base = applicationNames[number % applicationNames.size()];
        const std::size_t series = number / applicationNames.size();
        Folder application(support, series == 0 ? std::string(base) : fmt::format("{} {}", base, series + 1));
        application.setAge(application.random().between(0, 500));
        application.smallFile("Preferences");
        application.emptyFolder("Crashpad");
        writeBrowserStore(application);
        Folder logs(application, "logs");
        logs.smallFiles(logs.random().between(2, 20), "session-", ".log");
    }
}

void writeMailbox(Folder& support, std::int64_t entries) {
    Folder mail(support, "Thunderbird");
    Folder profiles(mail, "Profiles");
    Folder profile(profiles, "k3x9.default-release");
    Folder inbox(profile, "Inbox");
    inbox.emptyFolder("new");
    inbox.emptyFolder("tmp");
    Folder current(inbox, "cur");
    for (std::int64_t number = 0; number < entries; ++number) {
        current.smallFile(fmt::format("{}.M{}P{}.mail:2,S", 1'740'000'000 + number, number * 7919 % 1'000'000,
                                      number % 4096));
    }
}

void writeContainer(Folder& containers, std::string_view name) {
    Folder container(containers, name);
    container.setAge(container.random().between(0, 300));
    container.smallFile(".com.apple.containermanagerd.metadata.plist");
    Folder data(container, "Data");
    data.symbolicLink("../../../../Desktop", "Desktop");
    data.symbolicLink("../../../../Downloads", "Downloads");
    data.emptyFolder("tmp");
    {
        Folder documents(data, "Documents");
        documents.smallFiles(documents.random().between(0, 8), "Item ", ".data");
    }
    Folder library(data, "Library");
    library.emptyFolder("Application Scripts");
    {
        Folder caches(library, "Caches");
        caches.smallFiles(caches.random().between(5, 80), "entry-", ".cache");
    }
    Folder preferences(library, "Preferences");
    preferences.smallFile(fmt::format("{}.plist", name));
}

void writeContainers(Folder& library) {
    Folder containers(library, "Containers");
    {
        Folder docker(containers, "com.docker.docker");
        Folder data(docker, "Data");
        Folder machines(data, "vms");
        Folder machine(machines, "0");
        machine.sparseFile("Docker.raw", std::int64_t{64} << 30);
    }
    for (int number = 0; containers.hasRoom(); ++number) {
        writeContainer(containers, fmt::format("com.example.app{}", number));
    }
}

void writeGroupContainers(Folder& library) {
    Folder groups(library, "Group Containers");
    for (int number = 0; groups.hasRoom(); ++number) {
        Folder group(groups, fmt::format("A1B2C3D4E5.com.example.suite{}", number));
        group.setAge(20 * (number % 15));
        group.smallFiles(group.random().between(1, 40), "shared-", ".sqlite");
        Folder inner(group, "Library");
        inner.smallFiles(inner.random().between(1, 30), "record-", ".db");
    }
}

void writeExtensions(Folder& home) {
    Folder editor(home, ".vscode");
    Folder extensions(editor, "extensions");
    extensions.smallFile("extensions.json");
    for (int number = 0; extensions.hasRoom(); ++number) {
        Folder extension(extensions, fmt::format("publisher.extension-{}-1.{}.0", number, number % 40));
        extension.setAge(15 * (number % 30));
        extension.smallFile("package.json");
        Folder output(extension, "out");
        output.smallFiles(output.random().between(3, 40), "bundle-", ".js");
    }
}

void writeHiddenFolders(Folder& home) {
    for (const char* name : {".zshrc", ".zsh_history", ".gitconfig", ".npmrc"}) {
        home.smallFile(name);
    }
    const std::int64_t half = home.state().left / 2;
    {
        const Allowance allowance(home.state(), half);
        Folder configuration(home, ".config");
        for (int number = 0; configuration.hasRoom(); ++number) {
            Folder tool(configuration, fmt::format("tool-{}", number));
            tool.smallFiles(tool.random().between(1, 6), "settings-", ".toml");
        }
    }
    {
        Folder android(home, ".android");
        Folder devices(android, "avd");
        Folder device(devices, "Phone.avd");
        device.sparseFile("userdata-qemu.img", std::int64_t{6} << 30);
        device.smallFile("config.ini");
    }
    writeExtensions(home);
}

} // namespace

void writeApplications(Folder& home, Folder& library, std::int64_t flatEntries) {
    HomeState& state = home.state();
    {
        Folder support(library, "Application Support");
        {
            const Allowance allowance(state, flatEntries);
            writeMailbox(support, flatEntries);
        }
        const Allowance allowance(state, state.left / 2);
        writeSupportFolders(support);
    }
    const std::int64_t rest = state.left;
    {
        const Allowance allowance(state, rest / 2);
        writeContainers(library);
    }
    {
        const Allowance allowance(state, rest / 5);
        writeGroupContainers(library);
    }
    writeHiddenFolders(home);
}

} // namespace tarvo::bench
