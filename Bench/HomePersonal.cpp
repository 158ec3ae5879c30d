#include "HomeRooms.h"

#include <array>
#include <fmt/format.h>

namespace tarvo::bench {

namespace {

constexpr int chainDepth = 200;
constexpr std::size_t longestName = 255;

std::string repeated(std::string_view part, std::size_t times) {
    std::string text;
    for (std::size_t number = 0; number < times; ++number) {
        text += part;
    }
    return text;
}

/// Names are bytes: each of these has broken some program that took them for text.
void writeOddNames(Folder& owner) {
    Folder odd(owner, "Odd names");
    const std::array<std::string, 14> names{
        "two  spaces.txt",
        " leading and trailing ",
        "caf\xC3\xA9.txt",  // composed
        "cafe\xCC\x81.txt", // decomposed: looks the same, is another file
        "first line\nsecond line.txt",
        "tab\there.txt",
        "not utf-8 \xE9\xFF.txt",
        "\xFE\xFF.bin",
        "-rf",
        "* ? [a].txt",
        "back\\slash \"quoted\" 'too'.txt",
        "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E \xF0\x9F\x93\x81.txt",
        std::string(longestName - 4, 'n') + ".txt",
        repeated("\xC3\xB1", longestName / 2) + "x",
    };
    for (const std::string& name : names) {
        odd.smallFile(name);
    }
    for (const std::string& name : {std::string("folder\nwith a line feed"), std::string("folder \xE9\xFF"),
                                    std::string(longestName, 'd'), std::string("Canci\xC3\xB3n")}) {
        Folder folder(odd, name);
        folder.smallFiles(3, "inside ", ".txt");
    }
}

void writeLinks(Folder& documents) {
    Folder links(documents, "Links");
    links.smallFile("original.txt");
    links.hardLink("original.txt", "second name.txt");
    links.symbolicLink("original.txt", "to a file");
    links.symbolicLink("../Odd names", "to a folder");
    links.symbolicLink("..", "to the parent");
    links.symbolicLink("nowhere/at all", "dangling");
    links.symbolicLink("itself", "itself");
    links.symbolicLink("/", "to the root");
}

void writeChain(Folder& parent, int depth) {
    Folder level(parent, fmt::format("level-{:03}", depth));
    if (depth % 10 == 0) {
        level.smallFile("marker.txt");
    }
    if (depth < chainDepth) {
        writeChain(level, depth + 1);
    }
}

void writeDesktop(Folder& home) {
    Folder desktop(home, "Desktop");
    for (int number = 0; desktop.hasRoom(); ++number) {
        const std::string time =
            fmt::format("{:02}.{:02}.{:02}", number / 3600 % 24, number / 60 % 60, number % 60);
        // The system writes a narrow no-break space before AM and PM.
        desktop.smallFile(number % 3 == 0 ? fmt::format("Captura de pantalla 2025-04-11 a las {}.png", time)
                                          : fmt::format("Screenshot 2025-03-02 at {}\u202fPM.png", time));
    }
}

void writeDownloads(Folder& home) {
    constexpr std::array<const char*, 5> endings{"dmg", "zip", "pdf", "pkg", "csv"};
    Folder downloads(home, "Downloads");
    downloads.setAge(200);
    downloads.sparseFile("disk image.img", std::int64_t{8} << 30);
    for (std::size_t number = 0; downloads.hasRoom(); ++number) {
        const std::string name = fmt::format("download ({}).{}", number, endings[number % endings.size()]);
        if (downloads.random().chance(20)) {
            downloads.file(name, downloads.random().between(100'000, 1'500'000));
        } else {
            downloads.smallFile(name);
        }
    }
}

void writePictures(Folder& home) {
    Folder pictures(home, "Pictures");
    Folder library(pictures, "Photos Library.photoslibrary");
    Folder originals(library, "originals");
    for (int month = 0; originals.hasRoom(); ++month) {
        Folder album(originals, fmt::format("{}-{:02}", 2015 + month / 12, month % 12 + 1));
        album.setAge(30 * (130 - month % 130));
        const std::int64_t photos = album.random().between(10, 200);
        for (std::int64_t photo = 0; photo < photos; ++photo) {
            const std::string name = fmt::format("IMG_{:04}.HEIC", photo);
            if (album.random().chance(20)) {
                album.file(name, album.random().between(100'000, 900'000));
            } else {
                album.smallFile(name);
            }
        }
    }
}

void writePapers(Folder& documents) {
    for (int subject = 0; documents.hasRoom(); ++subject) {
        Folder folder(documents, fmt::format("Asunto {}", subject));
        folder.setAge(10 * (subject % 120));
        const std::int64_t years = folder.random().between(1, 4);
        for (std::int64_t year = 0; year < years; ++year) {
            Folder inner(folder, fmt::format("{}", 2022 + year));
            inner.smallFiles(inner.random().between(0, 40), "Factura n.\xC2\xBA ", ".pdf");
        }
        if (subject % 9 == 0) {
            folder.emptyFolder("Borradores");
        }
    }
}

} // namespace

void writePersonalFiles(Folder& home) {
    HomeState& state = home.state();
    const std::int64_t total = state.left;
    Folder documents(home, "Documents");
    writeOddNames(documents);
    writeLinks(documents);
    writeChain(documents, 1);
    {
        const Allowance allowance(state, total / 20);
        writeDesktop(home);
    }
    {
        const Allowance allowance(state, total / 5);
        writeDownloads(home);
    }
    {
        const Allowance allowance(state, total * 2 / 5);
        writePictures(home);
    }
    writePapers(documents);
}

} // namespace tarvo::bench
