#include "LumoCore/Rules/RuleRow.h"

#include <array>

namespace lumo::RuleCatalog {

// What needs a look before it goes, and only Linux has.
std::span<const Row> linuxReviewRows() {
    static const auto rows = std::to_array<Row>(
        {{.id = "maven-repository",
          .category = Category::packageCache,
          .name = {"Repositorio local de Maven", "Maven local repository"},
          .explanation = {"Dependencias de proyectos Java; la próxima compilación las vuelve a descargar. Lo "
                          "que compilaste aquí con mvn install no se descarga: hay que volver a compilarlo.",
                          "Dependencies of Java projects; the next build downloads them again. What you "
                          "built here with mvn install isn't downloaded: you have to build it again."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.m2/repository"}},
         {.id = "python-environments",
          .category = Category::developerTools,
          .name = {"Entornos de Python", "Python environments"},
          .explanation = {"Un entorno por proyecto, con sus paquetes, creado por Poetry, Pipenv o "
                          "virtualenvwrapper. Sin él, el proyecto no arranca hasta que lo instales de nuevo.",
                          "One environment per project, with its packages, made by Poetry, Pipenv or "
                          "virtualenvwrapper. Without it the project won't run until you install it again."},
          .cleanup = byHand("Cada uno con su orden: poetry env remove, pipenv --rm, rmvirtualenv",
                            "Each by its own command: poetry env remove, pipenv --rm, rmvirtualenv"),
          .locator = locator::Path{"~/.cache/pypoetry/virtualenvs"},
          .onLinux = {locator::Path{"~/.local/share/virtualenvs"}, locator::Path{"~/.virtualenvs"}}},
         {.id = "rust-toolchains",
          .category = Category::developerTools,
          .name = {"Versiones de Rust", "Rust toolchains"},
          .explanation = {"Compiladores de Rust instalados con rustup. Los que pida un proyecto se vuelven a "
                          "descargar. Mira cuáles tienes con rustup toolchain list.",
                          "Rust compilers installed with rustup. Those a project asks for are downloaded "
                          "again. See which you have with rustup toolchain list."},
          .cleanup = byHand("Quita las que no uses con rustup toolchain uninstall",
                            "Remove the ones you don't use with rustup toolchain uninstall"),
          .locator = locator::Path{"~/.rustup/toolchains"}},
         {.id = "language-versions",
          .category = Category::developerTools,
          .name = {"Versiones de lenguajes", "Language versions"},
          .explanation = {"Versiones de Python, Node.js, Java, Ruby, Haskell y otros, con lo que instalaste "
                          "en cada una. Tus proyectos pueden depender de ellas.",
                          "Versions of Python, Node.js, Java, Ruby, Haskell and others, with what you "
                          "installed in each. Your projects may depend on them."},
          .cleanup = byHand(
              "Cada una con su orden: pyenv uninstall, nvm uninstall, sdk uninstall, asdf uninstall, mise "
              "uninstall, ghcup rm, rbenv uninstall; las de ~/.jdks, borrando su carpeta",
              "Each by its own command: pyenv uninstall, nvm uninstall, sdk uninstall, asdf uninstall, mise "
              "uninstall, ghcup rm, rbenv uninstall; those in ~/.jdks by deleting their folder"),
          .locator = locator::Path{"~/.pyenv/versions"},
          .onLinux = {locator::Path{"~/.nvm/versions"}, locator::Path{"~/.sdkman/candidates"},
                      locator::Path{"~/.asdf/installs"}, locator::Path{"~/.local/share/mise/installs"},
                      locator::Path{"~/.ghcup/ghc"}, locator::Path{"~/.jdks"},
                      locator::Path{"~/.rbenv/versions"}}},
         {.id = "editor-extensions",
          .category = Category::developerTools,
          .name = {"Extensiones de editores de código", "Code editor extensions"},
          .explanation =
              {"Extensiones instaladas en VS Code, VSCodium y Cursor. Si las borras, hay que reinstalarlas.",
               "Extensions installed in VS Code, VSCodium and Cursor. If you delete them, you'll have to "
               "reinstall them."},
          .cleanup = byHand("Desinstala las que no uses desde el editor → Extensiones",
                            "Uninstall the ones you don't use from the editor → Extensions"),
          .locator = locator::Path{"~/.vscode/extensions"},
          .onLinux = {locator::Path{"~/.vscode-oss/extensions"}, locator::Path{"~/.cursor/extensions"}}},
         {.id = "editor-servers",
          .category = Category::developerTools,
          .name = {"Servidores remotos de VS Code y Cursor", "VS Code and Cursor remote servers"},
          .explanation =
              {"Lo que el editor instala aquí cuando te conectas desde otro equipo. Se instala de nuevo en "
               "la próxima conexión; los ajustes y el historial guardados aquí no vuelven.",
               "What the editor installs here when you connect from another computer. Installed again at the "
               "next connection; the settings and history kept here don't come back."},
          .cleanup = deleteItems,
          .locator = locator::Path{"~/.vscode-server"},
          .onLinux = {locator::Path{"~/.cursor-server"}}},
         {.id = "containers-storage",
          .category = Category::virtualMachine,
          .name = {"Contenedores de Podman", "Podman containers"},
          .explanation = {"Imágenes, contenedores y volúmenes. Los volúmenes pueden guardar bases de datos; "
                          "«prune» solo quita los contenedores parados y las imágenes sin nombre.",
                          "Images, containers and volumes. Volumes can hold databases; “prune” only removes "
                          "stopped containers and images without a name."},
          .cleanup = command("podman system prune -f"),
          .locator = locator::Path{"~/.local/share/containers"}},
         {.id = "docker-rootless",
          .category = Category::virtualMachine,
          .name = {"Datos de Docker sin root", "Rootless Docker data"},
          .explanation =
              {"Imágenes, contenedores y volúmenes. Los volúmenes pueden guardar bases de datos; «prune» no "
               "los toca.",
               "Images, containers and volumes. Volumes can hold databases; “prune” leaves them alone."},
          .cleanup = command("docker system prune -f"),
          .locator = locator::Path{"~/.local/share/docker"}},
         {.id = "virtual-machines",
          .category = Category::virtualMachine,
          .name = {"Máquinas virtuales", "Virtual machines"},
          .explanation = {"Discos de máquinas de VirtualBox, GNOME Boxes y libvirt, con todo lo que hay "
                          "dentro. No se pueden volver a crear.",
                          "Disks of VirtualBox, GNOME Boxes and libvirt machines, with everything inside "
                          "them. They can't be recreated."},
          .cleanup = byHand("Borra las que no uses desde VirtualBox, Boxes o virt-manager",
                            "Delete the ones you don't use from VirtualBox, Boxes or virt-manager"),
          .locator = locator::Path{"~/VirtualBox VMs"},
          .onLinux = {locator::Path{"~/.local/share/gnome-boxes/images"},
                      locator::Path{"~/.local/share/libvirt/images"}}},
         {.id = "vagrant-boxes",
          .category = Category::virtualMachine,
          .name = {"Plantillas de Vagrant", "Vagrant boxes"},
          .explanation =
              {"Imágenes de las que Vagrant crea máquinas. Las de internet se vuelven a descargar; las que "
               "añadiste de un archivo, no. Mira cuáles tienes con vagrant box list.",
               "Images Vagrant creates machines from. Those from the internet are downloaded again, those "
               "you added from a file are not. See which you have with vagrant box list."},
          .cleanup = byHand("Quita las que no uses con vagrant box remove",
                            "Remove the ones you don't use with vagrant box remove"),
          .locator = locator::Path{"~/.vagrant.d/boxes"}},
         {.id = "minikube",
          .category = Category::virtualMachine,
          .name = {"Datos de minikube", "minikube data"},
          .explanation = {"Tus clústeres de Kubernetes de pruebas y las imágenes con que se crean. Al borrar "
                          "un clúster se pierde lo que hay dentro.",
                          "Your Kubernetes test clusters and the images they are made from. Deleting a "
                          "cluster loses what is inside it."},
          .cleanup =
              byHand("minikube delete borra el clúster; con --all --purge, todos y esta carpeta",
                     "minikube delete removes the cluster; with --all --purge, all of them and this folder"),
          .locator = locator::Path{"~/.minikube"}},
         {.id = "wine-prefixes",
          .category = Category::personal,
          .name = {"Programas de Windows (Wine)", "Windows programs (Wine)"},
          .explanation = {"Programas y juegos de Windows instalados con Wine, Bottles o Lutris, con sus "
                          "datos y partidas guardadas.",
                          "Windows programs and games installed with Wine, Bottles or Lutris, with their "
                          "data and saved games."},
          .cleanup = byHand("Quita cada uno desde Bottles, Lutris o con wine uninstaller",
                            "Remove each from Bottles, Lutris or with wine uninstaller"),
          .locator = locator::Path{"~/.wine"},
          .onLinux = {locator::Path{"~/.local/share/bottles/bottles"},
                      locator::Path{"~/Games", {"~/.local/share/lutris", "~/.config/lutris"}}}},
         {.id = "steam-games",
          .category = Category::personal,
          .name = {"Juegos de Steam", "Steam games"},
          .explanation = {"Juegos instalados. Se pueden volver a descargar, pero pesan mucho; los mods y "
                          "algunas partidas guardadas solo están aquí.",
                          "Installed games. They can be downloaded again, but they're big; mods and some "
                          "saved games are only here."},
          .cleanup = byHand("Desinstala los que no juegues desde Steam → Biblioteca",
                            "Uninstall the ones you don't play from Steam → Library"),
          .locator = locator::Path{"~/.local/share/Steam/steamapps/common"},
          .onLinux = {locator::Path{"~/.steam/steam/steamapps/common"}}},
         {.id = "flatpak-apps",
          .category = Category::personal,
          .name = {"Apps Flatpak de tu usuario", "Your user's Flatpak apps"},
          .explanation = {"Apps Flatpak instaladas solo para ti y los componentes que comparten. La orden "
                          "solo quita los componentes que ya no usa ninguna.",
                          "Flatpak apps installed just for you and the components they share. The command "
                          "only removes components no app uses any more."},
          .cleanup = command("flatpak uninstall --user --unused -y"),
          .locator = locator::Path{"~/.local/share/flatpak"}},
         {.id = "llama-models",
          .category = Category::aiModel,
          .name = {"Modelos de llama.cpp", "llama.cpp models"},
          .explanation =
              {"Modelos de IA que llama.cpp descargó. Se vuelven a bajar al usarlos, pero pesan mucho.",
               "AI models llama.cpp downloaded. Downloaded again when used, but they're big."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/llama.cpp"}},
         {.id = "gpt4all-models",
          .category = Category::aiModel,
          .name = {"Modelos de GPT4All", "GPT4All models"},
          .explanation = {"Modelos de IA locales. Se pueden volver a bajar desde GPT4All, pero pesan mucho. "
                          "Tus conversaciones no se tocan.",
                          "Local AI models. They can be downloaded again from GPT4All, but they're big. Your "
                          "conversations are left alone."},
          .cleanup = deleteItems,
          // The conversations and the index of the user's documents stand beside the models.
          .locator =
              locator::Children{"~/.local/share/nomic.ai/GPT4All", {"*.gguf", "*.bin", "incomplete-*"}}},
         {.id = "aur-builds",
          .category = Category::packageCache,
          .name = {"Paquetes compilados del AUR", "Packages built from the AUR"},
          .explanation = {"Recetas, fuentes y paquetes que yay y paru ya instalaron. Se vuelven a bajar y a "
                          "compilar si hacen falta; los cambios que hiciste en una receta se pierden.",
                          "Recipes, sources and packages yay and paru already installed. Downloaded and "
                          "built again if needed; changes you made to a recipe are lost."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/yay"},
          .onLinux = {locator::Path{"~/.cache/paru/clone"}}},
         {.id = "rclone-cache",
          .category = Category::personal,
          .name = {"Caché de rclone", "rclone cache"},
          .explanation = {"Copias de archivos de tus discos en la nube. Pueden ser archivos que aún no se "
                          "han subido: rclone los sube la próxima vez que los monta.",
                          "Copies of files on your cloud drives. Some may not have been uploaded yet: rclone "
                          "uploads them the next time it mounts them."},
          .cleanup = byHand("Monta tus discos con rclone, espera a que lo suba todo y desmóntalos; después "
                            "puedes borrar la carpeta",
                            "Mount your drives with rclone, wait until everything is uploaded and unmount "
                            "them; then you can delete the folder"),
          .locator = locator::Path{"~/.cache/rclone"}}});
    return rows;
}

// The user's own data, where only Linux has it.
std::span<const Row> linuxKeepRows() {
    static const auto rows = std::to_array<Row>(
        {{.id = "firefox-profiles",
          .category = Category::personal,
          .name = {"Perfiles de Firefox y LibreWolf", "Firefox and LibreWolf profiles"},
          .explanation = {"Marcadores, contraseñas, historial y extensiones.",
                          "Bookmarks, passwords, history and extensions."},
          .cleanup = byHand("Son tus datos de navegación", "This is your browsing data"),
          // Newer versions make new profiles in the second place.
          .locator = locator::Path{"~/.mozilla/firefox"},
          .onLinux = {locator::Path{"~/.config/mozilla/firefox"}, locator::Path{"~/.librewolf"}}},
         {.id = "chromium-profiles",
          .category = Category::personal,
          .name = {"Perfiles de Chromium y parecidos", "Profiles of Chromium and similar browsers"},
          .explanation = {"Marcadores, contraseñas, historial y extensiones de Chromium, Brave, Edge, "
                          "Vivaldi, Opera y las versiones de prueba de Chrome.",
                          "Bookmarks, passwords, history and extensions of Chromium, Brave, Edge, Vivaldi, "
                          "Opera and the test versions of Chrome."},
          .cleanup = byHand("Son tus datos de navegación", "This is your browsing data"),
          .locator = locator::Path{"~/.config/chromium"},
          .onLinux = {locator::Path{"~/.config/BraveSoftware/Brave-Browser"},
                      locator::Path{"~/.config/microsoft-edge"}, locator::Path{"~/.config/vivaldi"},
                      locator::Path{"~/.config/opera"}, locator::Path{"~/.config/google-chrome-beta"},
                      locator::Path{"~/.config/google-chrome-unstable"}}},
         {.id = "mail",
          .category = Category::personal,
          .name = {"Correo", "Mail"},
          .explanation =
              {"Tus mensajes, cuentas, contactos y calendarios. Parte puede estar solo en este equipo.",
               "Your messages, accounts, contacts and calendars. Some of it may be only on this computer."},
          .cleanup = byHand("Es tu correo", "This is your mail"),
          .locator = locator::Path{"~/.thunderbird"},
          .onLinux = {locator::Path{"~/.local/share/evolution"}, locator::Path{"~/.local/share/geary"},
                      locator::Path{"~/.local/share/local-mail"}, locator::Path{"~/Mail"},
                      locator::Path{"~/Maildir"}}},
         {.id = "keys",
          .category = Category::personal,
          .name = {"Claves y contraseñas", "Keys and passwords"},
          .explanation = {"Con ellas entras en servidores y cuentas, firmas y descifras. Sin una copia no "
                          "hay forma de recuperarlas.",
                          "What you sign in to servers and accounts, sign and decrypt with. Without a copy "
                          "there is no way to get them back."},
          .cleanup = byHand("Son tus claves", "These are your keys"),
          .locator = locator::Path{"~/.ssh"},
          .onLinux = {locator::Path{"~/.gnupg"}, locator::Path{"~/.password-store"},
                      locator::Path{"~/.local/share/keyrings"}, locator::Path{"~/.pki"},
                      locator::Path{"~/.local/share/pki"}}},
         {.id = "wallets",
          .category = Category::personal,
          .name = {"Monederos de criptomonedas", "Cryptocurrency wallets"},
          .explanation = {"Tu dinero: quien pierde estos archivos y no tiene copia ni la frase de "
                          "recuperación lo pierde todo.",
                          "Your money: whoever loses these files without a backup or the recovery phrase "
                          "loses all of it."},
          .cleanup = byHand("Es tu dinero", "This is your money"),
          .locator = locator::Path{"~/.bitcoin"},
          .onLinux = {locator::Path{"~/.electrum"}, locator::Path{"~/.ethereum"}, locator::Path{"~/.monero"},
                      locator::Path{"~/.bitmonero"}, locator::Path{"~/Monero"}}},
         {.id = "chats",
          .category = Category::personal,
          .name = {"Conversaciones", "Chats"},
          .explanation = {"Mensajes y cuentas de Telegram, Signal y Pidgin. Los de Signal y Pidgin pueden "
                          "estar solo aquí.",
                          "Messages and accounts of Telegram, Signal and Pidgin. Those of Signal and Pidgin "
                          "may be only here."},
          .cleanup = byHand("Son tus conversaciones", "These are your conversations"),
          .locator = locator::Path{"~/.local/share/TelegramDesktop"},
          .onLinux = {locator::Children{"~/.config/Signal", {"*"}, {"Cache", "Code Cache", "GPUCache"}},
                      locator::Path{"~/.purple"}}}});
    return rows;
}

} // namespace lumo::RuleCatalog
