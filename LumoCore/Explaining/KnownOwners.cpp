#include "LumoCore/Explaining/KnownOwners.h"

#include "LumoCore/Basics/Text.h"

#include <algorithm>
#include <array>
#include <string>

namespace lumo {

namespace {

struct Owner {
    std::string_view folder;
    std::string_view program;
};

constexpr auto owners = std::to_array<Owner>({{"android", "Android"},
                                              {"anki2", "Anki"},
                                              {"audacity", "Audacity"},
                                              {"blender", "Blender"},
                                              {"bravesoftware", "Brave"},
                                              {"bun", "Bun"},
                                              {"cabal", "Cabal"},
                                              {"calibre", "Calibre"},
                                              {"cargo", "Cargo"},
                                              {"chromium", "Chromium"},
                                              {"code", "Visual Studio Code"},
                                              {"composer", "Composer"},
                                              {"conda", "Conda"},
                                              {"darktable", "darktable"},
                                              {"deno", "Deno"},
                                              {"digikam", "digiKam"},
                                              {"discord", "Discord"},
                                              {"docker", "Docker"},
                                              {"dotnet", ".NET"},
                                              {"dropbox", "Dropbox"},
                                              {"emacs.d", "Emacs"},
                                              {"evolution", "Evolution"},
                                              {"gem", "RubyGems"},
                                              {"ghcup", "GHCup"},
                                              {"gimp", "GIMP"},
                                              {"gnome-boxes", "GNOME Boxes"},
                                              {"google-chrome", "Google Chrome"},
                                              {"gradle", "Gradle"},
                                              {"inkscape", "Inkscape"},
                                              {"ipython", "IPython"},
                                              {"ivy2", "Ivy"},
                                              {"jetbrains", "JetBrains"},
                                              {"joplin", "Joplin"},
                                              {"julia", "Julia"},
                                              {"jupyter", "Jupyter"},
                                              {"keepassxc", "KeePassXC"},
                                              {"kdenlive", "Kdenlive"},
                                              {"krita", "Krita"},
                                              {"libreoffice", "LibreOffice"},
                                              {"lutris", "Lutris"},
                                              {"m2", "Maven"},
                                              {"microsoft-edge", "Microsoft Edge"},
                                              {"minecraft", "Minecraft"},
                                              {"mozilla", "Firefox"},
                                              {"nextcloud", "Nextcloud"},
                                              {"npm", "npm"},
                                              {"nuget", "NuGet"},
                                              {"nvim", "Neovim"},
                                              {"nvm", "nvm"},
                                              {"obs-studio", "OBS Studio"},
                                              {"obsidian", "Obsidian"},
                                              {"ollama", "Ollama"},
                                              {"opam", "opam"},
                                              {"opera", "Opera"},
                                              {"pnpm", "pnpm"},
                                              {"pyenv", "pyenv"},
                                              {"pypoetry", "Poetry"},
                                              {"rbenv", "rbenv"},
                                              {"rustup", "rustup"},
                                              {"sbt", "sbt"},
                                              {"sdkman", "SDKMAN!"},
                                              {"shotwell", "Shotwell"},
                                              {"signal", "Signal"},
                                              {"slack", "Slack"},
                                              {"spotify", "Spotify"},
                                              {"steam", "Steam"},
                                              {"syncthing", "Syncthing"},
                                              {"telegramdesktop", "Telegram"},
                                              {"texlive", "TeX Live"},
                                              {"thunderbird", "Thunderbird"},
                                              {"uv", "uv"},
                                              {"vagrant.d", "Vagrant"},
                                              {"vim", "Vim"},
                                              {"vivaldi", "Vivaldi"},
                                              {"vlc", "VLC"},
                                              {"vscode", "Visual Studio Code"},
                                              {"vscodium", "VSCodium"},
                                              {"wine", "Wine"},
                                              {"yarn", "Yarn"},
                                              {"zoom", "Zoom"},
                                              {"zotero", "Zotero"}});

} // namespace

std::optional<std::string_view> knownOwner(std::string_view folderName) {
    const std::string name = lowerCased(folderName.substr(folderName.starts_with('.') ? 1 : 0));
    const auto* owner = std::ranges::find(owners, name, &Owner::folder);
    return owner != owners.end() ? std::optional(owner->program) : std::nullopt;
}

} // namespace lumo
