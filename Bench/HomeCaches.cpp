#include "HomeRooms.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace tarvo::bench {

namespace {

/// 256 first shards, as many second ones as the allowance needs, one or two files in each.
void writeShards(Folder& tree, std::int64_t secondShards, std::size_t nameDigits) {
    for (int first = 0; first < 256 && tree.hasRoom(); ++first) {
        Folder outer(tree, fmt::format("{:02x}", first));
        for (std::int64_t number = 0; number < secondShards && tree.hasRoom(); ++number) {
            Folder inner(outer, fmt::format("{:02x}", (number * 37 + first) % 256));
            const std::int64_t files = inner.random().chance(300) ? 2 : 1;
            for (std::int64_t file = 0; file < files; ++file) {
                inner.smallFile(hexName(inner.random(), nameDigits));
            }
        }
    }
}

void writeNpmCache(Folder& home) {
    Folder npm(home, ".npm");
    npm.setAge(60);
    npm.smallFile("_update-notifier-last-checked");
    Folder cache(npm, "_cacache");
    cache.emptyFolder("tmp");
    const std::int64_t half = home.state().left / 2;
    const std::int64_t shards = std::clamp<std::int64_t>(half / 320 + 1, 1, 256);
    {
        const Allowance allowance(home.state(), half);
        Folder content(cache, "content-v2");
        Folder kind(content, "sha512");
        writeShards(kind, shards, 124);
    }
    {
        Folder index(cache, "index-v5");
        writeShards(index, shards, 60);
    }
    Folder logs(npm, "_logs");
    logs.smallFiles(home.state().left, "2025-11-0", "-debug-0.log");
}

void writeUvCache(Folder& cache) {
    Folder uv(cache, "uv");
    uv.setAge(120);
    uv.file("CACHEDIR.TAG", 43);
    uv.file(".gitignore", 1);
    Folder archives(uv, "archive-v0");
    while (archives.hasRoom()) {
        Folder archive(archives, hexName(archives.random(), 21));
        const std::string package = fmt::format("package_{}", archives.random().below(4000));
        Folder code(archive, package);
        code.smallFiles(code.random().between(3, 14), "module_", ".py");
        if (code.random().chance(400)) {
            Folder inner(code, "_internal");
            inner.smallFiles(inner.random().between(2, 9), "part_", ".py");
        }
        Folder info(archive, package + "-1.0.0.dist-info");
        for (const char* name : {"METADATA", "RECORD", "WHEEL"}) {
            info.smallFile(name);
        }
    }
}

void writeModels(Folder& cache) {
    Folder store(cache, "huggingface");
    Folder hub(store, "hub");
    for (int number = 0; hub.hasRoom(); ++number) {
        Folder model(hub, fmt::format("models--lab--model-{}", number));
        model.setAge(40 * (number % 12));
        const std::string revision = hexName(model.random(), 40);
        Folder blobs(model, "blobs");
        Folder snapshots(model, "snapshots");
        Folder snapshot(snapshots, revision);
        for (int file = 0; file < 6 && model.hasRoom(); ++file) {
            const std::string blob = hexName(model.random(), 64);
            blobs.file(blob, file == 0 ? model.random().between(1 << 20, 6 << 20) : 2000);
            snapshot.symbolicLink("../../blobs/" + blob, fmt::format("part-{}.safetensors", file));
        }
        Folder references(model, "refs");
        references.file("main", 40);
    }
}

void writeGradleCache(Folder& home) {
    Folder gradle(home, ".gradle");
    gradle.setAge(200);
    Folder caches(gradle, "caches");
    Folder modules(caches, "modules-2");
    Folder files(modules, "files-2.1");
    for (int group = 0; files.hasRoom(); ++group) {
        Folder groupFolder(files, fmt::format("org.example.group{}", group));
        const std::int64_t artifacts = files.random().between(2, 12);
        for (std::int64_t artifact = 0; artifact < artifacts && files.hasRoom(); ++artifact) {
            Folder artifactFolder(groupFolder, fmt::format("artifact-{}", artifact));
            Folder version(artifactFolder, fmt::format("{}.{}.0", group % 7, artifact));
            for (const char* ending : {"jar", "pom", "module"}) {
                Folder digest(version, hexName(files.random(), 40));
                digest.smallFile(fmt::format("artifact-{}.{}", artifact, ending));
            }
        }
    }
}

void writePipCache(Folder& caches) {
    Folder pip(caches, "pip");
    pip.setAge(90);
    Folder http(pip, "http-v2");
    constexpr std::array<const char*, 16> digits{"0", "1", "2", "3", "4", "5", "6", "7",
                                                 "8", "9", "a", "b", "c", "d", "e", "f"};
    const std::int64_t perShard = std::max<std::int64_t>(1, http.state().left / (16 * 16));
    for (const char* first : digits) {
        Folder outer(http, first);
        for (const char* second : digits) {
            Folder inner(outer, second);
            for (std::int64_t file = 0; file < perShard / 2; ++file) {
                const std::string name = first + (second + hexName(inner.random(), 54));
                inner.smallFile(name);
                inner.smallFile(name + ".body");
            }
        }
    }
    Folder wheels(pip, "wheels");
    wheels.smallFiles(wheels.state().left, "wheel-", "-py3-none-any.whl");
}

void writeHomebrewCache(Folder& caches) {
    Folder homebrew(caches, "Homebrew");
    homebrew.setAge(30);
    Folder downloads(homebrew, "downloads");
    for (int number = 0; homebrew.hasRoom(); ++number) {
        const std::string bottle =
            fmt::format("{}--formula-{}.bottle.tar.gz", hexName(homebrew.random(), 64), number);
        if (homebrew.random().chance(60)) {
            downloads.file(bottle, homebrew.random().between(50'000, 500'000));
        } else {
            downloads.smallFile(bottle);
        }
        homebrew.symbolicLink("downloads/" + bottle, fmt::format("formula-{}--1.{}", number, number % 9));
    }
}

void writeCargoRegistry(Folder& home) {
    Folder cargo(home, ".cargo");
    cargo.setAge(150);
    Folder registry(cargo, "registry");
    Folder sources(registry, "src");
    Folder index(sources, "index-6f17d22bba15001f");
    for (int number = 0; index.hasRoom(); ++number) {
        Folder crate(index, fmt::format("crate-{}-0.{}.1", number, number % 30));
        for (const char* name : {".cargo-ok", "Cargo.toml", "Cargo.lock", "README.md", "LICENSE"}) {
            crate.smallFile(name);
        }
        Folder code(crate, "src");
        code.smallFiles(code.random().between(1, 20), "module_", ".rs");
    }
}

} // namespace

void writePackageCaches(Folder& home, Folder& library) {
    HomeState& state = home.state();
    const std::int64_t total = state.left;
    const auto under = [&](std::int64_t perThousand, auto&& write) {
        const Allowance allowance(state, total * perThousand / 1000);
        write();
    };
    under(300, [&] { writeNpmCache(home); });
    Folder cache(home, ".cache");
    under(300, [&] { writeUvCache(cache); });
    under(2, [&] { writeModels(cache); });
    under(80, [&] { writeGradleCache(home); });
    Folder caches(library, "Caches");
    under(140, [&] { writePipCache(caches); });
    under(40, [&] { writeHomebrewCache(caches); });
    writeCargoRegistry(home);
}

} // namespace tarvo::bench
