#include "HomeRooms.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace tarvo::bench {

namespace {

constexpr std::array<const char*, 12> projectWords{"atlas", "brisa",  "cobalt", "delta", "ember",   "faro",
                                                   "gneis", "harbor", "iris",   "jade",  "kestrel", "lumen"};
constexpr std::array<const char*, 10> packageWords{"array", "buffer", "core", "debug", "event",
                                                   "fetch", "glob",   "http", "parse", "stream"};

template <typename Words>
const char* wordOf(const Words& words, std::int64_t number) {
    return words[static_cast<std::size_t>(number) % words.size()];
}

void writeObjects(Folder& git, std::int64_t loose) {
    Folder objects(git, "objects");
    objects.emptyFolder("info");
    {
        Folder pack(objects, "pack");
        const std::string name = "pack-" + hexName(pack.random(), 40);
        pack.file(name + ".pack", pack.random().between(30'000, 400'000));
        pack.smallFile(name + ".idx");
    }
    const std::int64_t shards = std::min<std::int64_t>(256, loose / 2 + 1);
    for (std::int64_t shard = 0; shard < shards && objects.hasRoom(); ++shard) {
        Folder folder(objects, fmt::format("{:02x}", shard));
        for (std::int64_t file = 0; file < loose / shards + 1; ++file) {
            folder.smallFile(hexName(folder.random(), 38));
        }
    }
}

void writeHistory(Folder& project, std::int64_t loose) {
    Folder git(project, ".git");
    git.file("HEAD", 21);
    git.file("description", 73);
    for (const char* name : {"config", "index", "packed-refs", "COMMIT_EDITMSG"}) {
        git.smallFile(name);
    }
    {
        Folder hooks(git, "hooks");
        hooks.smallFiles(10, "hook-", ".sample");
    }
    {
        Folder references(git, "refs");
        references.emptyFolder("tags");
        Folder heads(references, "heads");
        heads.file("main", 41);
    }
    writeObjects(git, loose);
}

void writeSources(Folder& project, std::string_view ending) {
    Folder sources(project, "src");
    sources.smallFiles(sources.random().between(3, 15), "file", ending);
    const std::int64_t parts = sources.random().between(1, 5);
    for (std::int64_t part = 0; part < parts && sources.hasRoom(); ++part) {
        Folder folder(sources, fmt::format("part-{}", part));
        folder.smallFiles(folder.random().between(2, 10), "unit", ending);
    }
}

void writeNodeModules(Folder& owner, int depth, std::int64_t packages);

void writeNodePackage(Folder& modules, const std::string& name, int depth) {
    Folder package(modules, name);
    for (const char* file : {"package.json", "README.md", "LICENSE", "index.js"}) {
        package.smallFile(file);
    }
    for (const char* folder : {"lib", "dist"}) {
        if (package.random().chance(450)) {
            Folder built(package, folder);
            const std::int64_t files = built.random().between(1, 9);
            built.smallFiles(files, "chunk-", ".js");
            built.smallFiles(files / 2, "chunk-", ".js.map");
        }
    }
    if (depth < 3 && package.random().chance(80)) {
        writeNodeModules(package, depth + 1, package.random().between(1, 6));
    }
}

/// `packages` of them, or as many as the allowance holds.
void writeNodeModules(Folder& owner, int depth, std::int64_t packages) {
    Folder modules(owner, "node_modules");
    Folder commands(modules, ".bin");
    for (std::int64_t number = 0; number < packages && modules.hasRoom(); ++number) {
        const std::string name = fmt::format("{}-{}-{}", wordOf(packageWords, number),
                                             wordOf(packageWords, modules.random().below(10)), number);
        if (modules.random().chance(120)) {
            Folder scope(modules, fmt::format("@scope{}", number));
            writeNodePackage(scope, name, depth);
        } else {
            writeNodePackage(modules, name, depth);
        }
        if (modules.random().chance(100)) {
            commands.symbolicLink(fmt::format("../{}/index.js", name), name);
        }
    }
}

void writeNodeProject(Folder& project) {
    for (const char* name :
         {"package.json", "package-lock.json", "tsconfig.json", "README.md", ".gitignore"}) {
        project.smallFile(name);
    }
    writeSources(project, ".ts");
    writeHistory(project, project.random().between(5, 120));
    writeNodeModules(project, 0, project.state().left);
}

void writeFingerprint(Folder& fingerprints, const std::string& crate) {
    Folder folder(fingerprints, crate);
    for (const char* name : {"invoked.timestamp", "lib", "dep-lib", "lib.json"}) {
        folder.file(name, folder.random().between(0, 600));
    }
}

void writeRustTarget(Folder& project) {
    Folder target(project, "target");
    target.file("CACHEDIR.TAG", 177);
    target.smallFile(".rustc_info.json");
    Folder debug(target, "debug");
    debug.emptyFolder("examples");
    Folder fingerprints(debug, ".fingerprint");
    Folder incremental(debug, "incremental");
    Folder dependencies(debug, "deps");
    for (int number = 0; target.hasRoom(); ++number) {
        const std::string crate = fmt::format("crate_{}-{}", number, hexName(target.random(), 16));
        writeFingerprint(fingerprints, crate);
        for (const char* ending : {".d", ".rmeta"}) {
            dependencies.smallFile(crate + ending);
        }
        const bool large = target.random().chance(60);
        dependencies.file("lib" + crate + ".rlib", target.random().between(2'000, large ? 120'000 : 16'000));
        if (target.random().chance(150)) {
            Folder crateFolder(incremental, crate);
            Folder session(crateFolder, "s-" + hexName(target.random(), 20));
            session.smallFile("dep-graph.bin");
            session.smallFile("query-cache.bin");
            session.smallFiles(session.random().between(4, 30), "unit-", ".o");
        }
    }
}

void writeRustProject(Folder& project) {
    for (const char* name : {"Cargo.toml", "Cargo.lock", "README.md", ".gitignore"}) {
        project.smallFile(name);
    }
    writeSources(project, ".rs");
    writeHistory(project, project.random().between(5, 200));
    writeRustTarget(project);
}

void writePythonPackage(Folder& sitePackages, int number) {
    const std::string name = fmt::format("dependency_{}", number);
    {
        Folder package(sitePackages, name);
        const std::int64_t modules = package.random().between(2, 16);
        package.smallFiles(modules, "module_", ".py");
        Folder compiled(package, "__pycache__");
        compiled.smallFiles(modules, "module_", ".cpython-312.pyc");
    }
    Folder info(sitePackages, name + "-2.1.0.dist-info");
    for (const char* file : {"INSTALLER", "METADATA", "RECORD", "WHEEL"}) {
        info.smallFile(file);
    }
}

void writePythonProject(Folder& project) {
    for (const char* name : {"pyproject.toml", "uv.lock", "README.md", ".gitignore"}) {
        project.smallFile(name);
    }
    writeSources(project, ".py");
    {
        Folder compiled(project, "__pycache__");
        compiled.smallFiles(6, "file", ".cpython-312.pyc");
    }
    writeHistory(project, project.random().between(5, 80));
    Folder environment(project, ".venv");
    environment.smallFile("pyvenv.cfg");
    environment.symbolicLink("lib", "lib64");
    {
        Folder commands(environment, "bin");
        commands.symbolicLink("/usr/bin/python3.99", "python");
        commands.symbolicLink("python", "python3");
        commands.smallFiles(8, "command-", "");
    }
    Folder library(environment, "lib");
    Folder version(library, "python3.12");
    Folder sitePackages(version, "site-packages");
    for (int number = 0; sitePackages.hasRoom(); ++number) {
        writePythonPackage(sitePackages, number);
    }
}

void writeProject(Folder& parent, std::int64_t number) {
    Folder project(parent, fmt::format("{}-{}", wordOf(projectWords, number), number));
    SplitMix& random = project.random();
    project.setAge(random.chance(300) ? random.below(20) : random.between(30, 700));
    const std::int64_t kind = random.below(100);
    // A few projects are far larger than the rest, as in a real home.
    const Allowance allowance(project.state(),
                              random.chance(50) ? random.between(6'000, 12'000) : random.between(300, 2'500));
    if (kind < 55) {
        writeNodeProject(project);
    } else if (kind < 78) {
        writeRustProject(project);
    } else {
        writePythonProject(project);
    }
}

} // namespace

void writeProjects(Folder& home) {
    Folder code(home, "code");
    for (std::int64_t number = 0; code.hasRoom();) {
        const std::int64_t place = code.random().below(10);
        if (place < 6) {
            writeProject(code, number++);
            continue;
        }
        Folder client(code, fmt::format("client-{}", number));
        client.smallFile("notes.md");
        if (place < 8) {
            writeProject(client, number++);
            writeProject(client, number++);
            continue;
        }
        Folder year(client, "2025");
        Folder team(year, "Equipo móvil");
        writeProject(team, number++);
        writeProject(team, number++);
    }
}

} // namespace tarvo::bench
