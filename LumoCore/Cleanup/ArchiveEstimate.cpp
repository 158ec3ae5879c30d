#include "LumoCore/Cleanup/ArchiveTables.h"
#include "LumoCore/Cleanup/Archiver.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Parallel.h"
#include "LumoCore/Basics/Path.h"
#include "Platform/FileContent.h"
#include "Platform/TreeListing.h"

#include <algorithm>

namespace lumo::Archiver {

namespace {

struct SizedFile {
    std::string path; ///< Absolute.
    std::int64_t bytes = 0;
};

/// The files of a tree.
struct Files {
    std::int64_t incompressibleBytes = 0;
    std::int64_t compressibleBytes = 0;
    std::vector<SizedFile> compressible; ///< Ascending by path.
};

Files filesBelow(const std::string& path, const std::stop_token& stop) {
    constexpr std::size_t mostFiles = 300'000;
    const std::string_view folder = parentOf(path);
    Files files;
    std::size_t count = 0;
    // Where the walk ends early, what was seen is what there is to say.
    (void)platform::visitTree(path, [&](const platform::ListedEntry& entry) {
        if (entry.kind == platform::EntryKind::file) {
            const bool isShrinking =
                !ArchiveTables::isIncompressible(ArchiveTables::extensionOf(fileName(entry.path)));
            std::int64_t& sum = isShrinking ? files.compressibleBytes : files.incompressibleBytes;
            sum = saturatedSum(sum, entry.bytes);
            if (isShrinking && entry.bytes > 0) {
                files.compressible.push_back({joined(folder, entry.path), entry.bytes});
            }
            ++count;
        }
        return count < mostFiles && !stop.stop_requested();
    });
    std::ranges::sort(files.compressible, {}, &SizedFile::path);
    return files;
}

/// The files in which that many points lie that cut all the bytes into equal parts: a file that holds most of
/// them is among them for certain, and one among many small ones stands for the others.
std::vector<SizedFile> spread(const Files& files, std::size_t samples) {
    if (files.compressible.size() <= samples) {
        return files.compressible;
    }
    std::vector<SizedFile> chosen;
    const auto parts = 2 * static_cast<std::int64_t>(samples);
    const double part = static_cast<double>(files.compressibleBytes) / static_cast<double>(parts);
    double end = 0; // Of the file in hand, among all the bytes.
    std::int64_t point = 1;
    for (const SizedFile& file : files.compressible) {
        end += static_cast<double>(file.bytes);
        const bool isHit = point < parts && part * static_cast<double>(point) < end;
        while (point < parts && part * static_cast<double>(point) < end) {
            point += 2;
        }
        if (isHit) {
            chosen.push_back(file);
        }
    }
    return chosen;
}

/// What remains of a byte on the average.
double ratioOf(const std::vector<SizedFile>& chosen, std::int64_t sampleBytes, const std::stop_token& stop) {
    std::vector<platform::Sample> samples(chosen.size());
    parallelFor(chosen.size(), stop, [&](std::size_t index) {
        samples[index] = platform::sampleFile(chosen[index].path, sampleBytes).value_or(platform::Sample());
    });
    platform::Sample all;
    for (const platform::Sample& sample : samples) {
        all.readBytes += sample.readBytes;
        all.deflatedBytes += sample.deflatedBytes;
    }
    return all.readBytes == 0 ? 1
                              : static_cast<double>(all.deflatedBytes) / static_cast<double>(all.readBytes);
}

} // namespace

Estimate estimate(const std::string& path, std::size_t samples, std::int64_t sampleBytes,
                  const std::stop_token& stop) {
    const Files files = filesBelow(path, stop);
    const double ratio = ratioOf(spread(files, samples), sampleBytes, stop);
    // A product with 1 must be exact, which doubles are not for the largest counts.
    const std::int64_t shrunk =
        ratio >= 1 ? files.compressibleBytes
                   : static_cast<std::int64_t>(static_cast<double>(files.compressibleBytes) * ratio);
    return {.bytes = saturatedSum(files.incompressibleBytes, files.compressibleBytes),
            .compressedBytes = saturatedSum(files.incompressibleBytes, shrunk)};
}

} // namespace lumo::Archiver
