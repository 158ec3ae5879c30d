#include "LumoCore/Inventories/UserFiles.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "LumoCore/Scanning/ProjectMarkers.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

namespace lumo {

namespace {

/// What a program keeps as one whole, though it is a folder; taking a file out of it breaks it.
constexpr std::array<std::string_view, 19> wholes{".photoslibrary", ".photolibrary",  ".migratedphotolibrary",
                                                  ".aplibrary",     ".imovielibrary", ".fcpbundle",
                                                  ".tvlibrary",     ".musiclibrary",  ".logicx",
                                                  ".band",          ".vmwarevm",      ".pvm",
                                                  ".utm",           ".vbox",          ".sparsebundle",
                                                  ".backupdb",      ".app",           ".bundle",
                                                  ".lrdata"};

/// Names in a folder that make it another program's: a Wine prefix, games of Steam, backups of macOS, and
/// what says of itself that it is a cache.
constexpr std::array<std::string_view, 6> foreignMarks{"drive_c",  "steamapps",        "dosdevices",
                                                       "pfx.lock", "Backups.backupdb", "CACHEDIR.TAG"};

/// Names that only together say so: the repositories of restic and of Borg.
constexpr std::array<std::string_view, 4> resticMarks{"config", "index", "keys", "snapshots"};
constexpr std::array<std::string_view, 3> borgMarks{"config", "data", "integrity.2"};

/// Names in the folder of a program that was unpacked in a home: those of Chromium and what is built on it,
/// of Firefox, of the JetBrains editors, of Unity's games, and of Python and Conda environments.
constexpr std::array<std::string_view, 9> programMarks{
    "chrome-sandbox",    "chrome_100_percent.pak", "resources.pak", "icudtl.dat", "omni.ja",
    "product-info.json", "UnityPlayer.so",         "pyvenv.cfg",    "conda-meta"};

/// The folder of a Java, or of what is laid out like it.
constexpr std::array<std::string_view, 3> runtimeMarks{"bin", "lib", "release"};

/// So many shared libraries nobody keeps in one folder but a program.
constexpr std::ptrdiff_t mostLibraries = 2;

/// Folders of a home that hold what is not the user's by its name, though they can be seen.
constexpr std::array<std::string_view, 4> foreignFolders{"Library", "snap", "VirtualBox VMs", "Applications"};

bool holds(std::span<const std::string_view> names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

bool holdsAll(std::span<const std::string_view> names, std::span<const std::string_view> sought) {
    return std::ranges::all_of(sought, [&](std::string_view name) { return holds(names, name); });
}

bool isProgram(std::span<const std::string_view> names) {
    const auto isLibrary = [](std::string_view name) {
        return name.ends_with(".so") || name.find(".so.") != std::string_view::npos ||
               name.ends_with(".dll") || name.ends_with(".dylib");
    };
    return std::ranges::any_of(names, [](std::string_view name) { return holds(programMarks, name); }) ||
           holdsAll(names, runtimeMarks) || std::ranges::count_if(names, isLibrary) > mostLibraries;
}

bool isAnothers(std::span<const std::string_view> names) {
    const bool isMarked = std::ranges::any_of(
        names, [](std::string_view name) { return marksProject(name) || holds(foreignMarks, name); });
    return isMarked || isProgram(names) || holdsAll(names, resticMarks) || holdsAll(names, borgMarks);
}

bool isWhole(std::string_view name) {
    return std::ranges::any_of(wholes, [&](std::string_view ending) {
        return name.size() > ending.size() && name.ends_with(ending);
    });
}

struct KindOfFile {
    Words words;
    std::string_view extensions; ///< With a blank around each.
};

constexpr std::array<KindOfFile, 9> kinds{
    {{{"Vídeo", "Film"}, " mp4 mkv avi mov m4v webm wmv flv mpg mpeg ts m2ts vob 3gp ogv "},
     {{"Audio", "Sound"}, " mp3 flac wav aiff aif m4a ogg opus ape wma "},
     {{"Imagen", "Picture"}, " jpg jpeg png tif tiff heic raw dng cr2 cr3 nef arw psd psb xcf bmp gif "},
     {{"Imagen de disco", "Disk image"}, " iso img dmg vdi vmdk vhd vhdx qcow2 qcow ova raw vmem bin "},
     {{"Comprimido", "Archive"}, " zip tar gz tgz xz bz2 zst 7z rar lz4 tbz2 txz cab "},
     {{"Documento", "Document"}, " pdf doc docx ppt pptx xls xlsx odt odp ods epub djvu csv "},
     {{"Base de datos", "Database"}, " db sqlite sqlite3 sql mdb accdb dump parquet "},
     {{"Modelo de IA", "AI model"}, " gguf ggml safetensors ckpt pt pth onnx "},
     {{"Programa o instalador", "Program or installer"},
      " deb rpm appimage flatpak snap run exe msi pkg apk "}}};

} // namespace

UserFiles::UserFiles(const InventoryQuery& query) : query_(query) {
    for (std::vector<std::string>& paths : resolveAll(RuleCatalog::inHome(query.home), query.home)) {
        claimed_.insert(std::make_move_iterator(paths.begin()), std::make_move_iterator(paths.end()));
    }
    for (std::string own :
         {OwnFiles::support(query.home), OwnFiles::caches(query.home), OwnFiles::settings(query.home)}) {
        claimed_.insert(std::move(own));
    }
}

platform::FilesFound UserFiles::search(std::int64_t minimumBytes) const {
    platform::FileSearch search{
        .roots = query_.folders,
        .minimumBytes = minimumBytes,
        .enters = [this](const std::string& path, std::string_view name) { return mayEnter(path, name); },
        .refuses = isAnothers};
    if (search.roots.empty()) {
        search.roots.push_back(query_.home);
    }
    std::erase_if(search.roots,
                  [this](const std::string& root) { return root != query_.home && !mayHold(root); });
    return platform::searchFiles(search, query_.progress, query_.stop);
}

bool UserFiles::mayHold(std::string_view path) const {
    const bool isInHome = isInside(path, query_.home) && path.size() > query_.home.size();
    const std::vector<std::string_view> names =
        components(isInHome ? path.substr(query_.home.size() + 1) : path);
    const bool isForeign = std::ranges::any_of(
        names, [](std::string_view name) { return name.starts_with('.') || isWhole(name); });
    return !isForeign && !(isInHome && holds(foreignFolders, names.front())) && !isClaimed(path);
}

bool UserFiles::mayEnter(const std::string& path, std::string_view name) const {
    const bool isForeign = path.size() == query_.home.size() + 1 + name.size() &&
                           holds(foreignFolders, name) && path.starts_with(query_.home);
    return !name.starts_with('.') && !isWhole(name) && !isForeign && !claimed_.contains(path);
}

std::vector<std::string> UserFiles::namesOf(const std::string& path,
                                            const platform::FileStatus& status) const {
    std::vector<std::string> names{path};
    if (status.links == 1) {
        return names;
    }
    const platform::FilesFound found = search(status.bytes);
    for (const platform::FilesFound::File& file : found.files()) {
        std::string name = found.pathOf(file);
        const bool isOther =
            file.object == status.identity.object && file.bytes == status.bytes && name != path;
        if (const auto same =
                isOther && mayHold(name) ? platform::statusOfFile(name) : platform::failed(EINVAL);
            same && same->identity == status.identity) {
            names.push_back(std::move(name));
        }
    }
    return names.size() == status.links ? names : std::vector<std::string>();
}

bool UserFiles::isClaimed(std::string_view path) const {
    for (std::size_t end = path.size(); end != std::string_view::npos && end > 0;
         end = path.rfind('/', end - 1)) {
        if (claimed_.contains(path.substr(0, end))) {
            return true;
        }
    }
    return false;
}

std::string otherNamesText(const std::vector<std::string>& names, std::string_view home, Language language) {
    constexpr std::size_t most = 3;
    std::string text;
    for (std::size_t other = 1; other < names.size() && other <= most; ++other) {
        text += (text.empty() ? "" : ", ") + abbreviated(names[other], home);
    }
    if (names.size() > most + 1) {
        text += Words{" y {} más", " and {} more"}.in(language, names.size() - most - 1);
    }
    return text.empty() ? text : Words{"también se llama {}", "also called {}"}.in(language, text);
}

std::string kindOfFile(std::string_view name, Language language) {
    const std::size_t point = name.rfind('.');
    if (point != std::string_view::npos && point > 0) {
        const std::string extension = " " + lowerCased(name.substr(point + 1)) + " ";
        for (const KindOfFile& kind : kinds) {
            if (kind.extensions.find(extension) != std::string_view::npos) {
                return kind.words.in(language);
            }
        }
    }
    return Words{"Archivo", "File"}.in(language);
}

} // namespace lumo
