#include "LumoCore/Rules/RuleRow.h"

#include <array>

namespace lumo::RuleCatalog {

namespace {

/// What editors and chat apps built on Electron rebuild. Their own data stands beside it.
const std::vector<std::string>& electronCaches() {
    static const std::vector<std::string> names{"Cache", "Code Cache", "GPUCache"};
    return names;
}

const std::vector<std::string>& editorCaches() {
    static const std::vector<std::string> names{
        "Cache",      "CachedData", "CachedExtensionVSIXs", "CachedProfilesData",
        "Code Cache", "GPUCache",   "DawnGraphiteCache",    "DawnWebGPUCache",
        "logs"};
    return names;
}

} // namespace

// What recreates itself, and only Linux has.
std::span<const Row> linuxSafeRows() {
    static const auto rows = std::to_array<Row>(
        {{.id = "go-modules",
          .category = Category::packageCache,
          .name = {"Módulos de Go", "Go modules"},
          .explanation =
              {"El código de los módulos que usan tus proyectos de Go. La próxima compilación los vuelve a "
               "descargar.",
               "The code of the modules your Go projects use. The next build downloads them again."},
          .cleanup = command("go clean -modcache"),
          .locator = locator::Path{"~/go/pkg/mod"}},
         {.id = "go-build-cache",
          .category = Category::buildOutput,
          .name = {"Compilaciones de Go", "Go build cache"},
          .explanation =
              {"Resultados intermedios de compilar. Go los regenera; la próxima compilación tardará más.",
               "Intermediate build results. Go recreates them; the next build will take longer."},
          .cleanup = command("go clean -cache"),
          .locator = locator::Path{"~/.cache/go-build"}},
         {.id = "cargo-registry",
          .category = Category::packageCache,
          .name = {"Paquetes de Cargo (Rust)", "Cargo packages (Rust)"},
          .explanation =
              {"Paquetes de Rust descargados y descomprimidos. Cargo los vuelve a bajar al compilar.",
               "Rust packages, downloaded and unpacked. Cargo fetches them again when you build."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cargo/registry/cache"},
          .onLinux = {locator::Path{"~/.cargo/registry/src"}}},
         {.id = "cargo-git",
          .category = Category::packageCache,
          .name = {"Repositorios de Git de Cargo", "Cargo Git repositories"},
          .explanation =
              {"Dependencias de Rust que vienen de repositorios de Git. Cargo las vuelve a clonar al "
               "compilar.",
               "Rust dependencies that come from Git repositories. Cargo clones them again when you build."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cargo/git/db"},
          .onLinux = {locator::Path{"~/.cargo/git/checkouts"}}},
         {.id = "ivy-cache",
          .category = Category::packageCache,
          .name = {"Caché de Ivy", "Ivy cache"},
          .explanation =
              {"Dependencias de proyectos Java y Scala. La próxima compilación las vuelve a descargar.",
               "Dependencies of Java and Scala projects. The next build downloads them again."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.ivy2/cache"}},
         {.id = "coursier-cache",
          .category = Category::packageCache,
          .name = {"Caché de Coursier", "Coursier cache"},
          .explanation =
              {"Dependencias de proyectos Scala y Java. La próxima compilación las vuelve a descargar.",
               "Dependencies of Scala and Java projects. The next build downloads them again."},
          .cleanup = deleteContents,
          // The JDKs that it installed stand beside this folder.
          .locator = locator::Path{"~/.cache/coursier/v1"}},
         {.id = "sbt-boot",
          .category = Category::packageCache,
          .name = {"Versiones de sbt descargadas", "Downloaded sbt versions"},
          .explanation =
              {"Las versiones de sbt y Scala que piden tus proyectos. sbt las vuelve a bajar al arrancar.",
               "The sbt and Scala versions your projects ask for. sbt downloads them again when it starts."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.sbt/boot"}},
         {.id = "nuget-packages",
          .category = Category::packageCache,
          .name = {"Paquetes de NuGet (.NET)", "NuGet packages (.NET)"},
          .explanation =
              {"Paquetes que usan tus proyectos de .NET. Se vuelven a descargar al compilar o con dotnet "
               "restore.",
               "Packages your .NET projects use. Downloaded again when you build or run dotnet restore."},
          .cleanup = command("dotnet nuget locals all --clear"),
          .locator = locator::Path{"~/.nuget/packages"}},
         {.id = "composer-cache",
          .category = Category::packageCache,
          .name = {"Caché de Composer (PHP)", "Composer cache (PHP)"},
          .explanation = {"Paquetes de PHP que Composer ya descargó. Los vuelve a bajar cuando hacen falta.",
                          "PHP packages Composer already downloaded. It fetches them again when needed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/composer"},
          .onLinux = {locator::Path{"~/.composer/cache"}}},
         {.id = "poetry-cache",
          .category = Category::packageCache,
          .name = {"Caché de Poetry (Python)", "Poetry cache (Python)"},
          .explanation = {"Paquetes de Python que Poetry ya descargó. Los vuelve a bajar cuando hacen falta.",
                          "Python packages Poetry already downloaded. It fetches them again when needed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/pypoetry/cache"},
          .onLinux = {locator::Path{"~/.cache/pypoetry/artifacts"}}},
         {.id = "conda-packages",
          .category = Category::packageCache,
          .name = {"Paquetes de conda", "conda packages"},
          .explanation = {"Paquetes que conda ya instaló. Los vuelve a bajar para entornos nuevos; lo que "
                          "comparten con tus entornos no libera espacio.",
                          "Packages conda already installed. It downloads them again for new environments; "
                          "what they share with your environments frees no space."},
          .cleanup = command("conda clean --all -y"),
          .locator = locator::Path{"~/.conda/pkgs"},
          .onLinux = {locator::Path{"~/miniconda3/pkgs"}, locator::Path{"~/anaconda3/pkgs"},
                      locator::Path{"~/miniforge3/pkgs"}, locator::Path{"~/mambaforge/pkgs"}}},
         {.id = "deno-cache",
          .category = Category::packageCache,
          .name = {"Caché de Deno", "Deno cache"},
          .explanation =
              {"Módulos que Deno descargó y compiló. Los vuelve a bajar al ejecutar tus programas.",
               "Modules Deno downloaded and compiled. It fetches them again when you run your programs."},
          .cleanup = deleteItems,
          // What programs keep in localStorage and in Deno.openKv stands beside the modules.
          .locator = locator::Children{"~/.cache/deno", {"*"}, {"location_data", "deno_history.txt"}}},
         {.id = "bazel-cache",
          .category = Category::buildOutput,
          .name = {"Caché de Bazel", "Bazel cache"},
          .explanation = {"Lo que Bazel descargó y compiló. La próxima compilación empieza de cero.",
                          "What Bazel downloaded and built. The next build starts from scratch."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/bazel"}},
         {.id = "cypress-cache",
          .category = Category::developerTools,
          .name = {"Versiones de Cypress", "Cypress versions"},
          .explanation = {"Cypress para tests automáticos. Se vuelve a bajar con npx cypress install.",
                          "Cypress for automated tests. Downloaded again with npx cypress install."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/Cypress"}},
         {.id = "node-gyp-cache",
          .category = Category::packageCache,
          .name = {"Cabeceras de Node.js (node-gyp)", "Node.js headers (node-gyp)"},
          .explanation =
              {"Lo que node-gyp descarga para compilar módulos nativos. Lo vuelve a bajar si hace falta.",
               "What node-gyp downloads to build native modules. It fetches it again if needed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/node-gyp"}},
         {.id = "electron-cache",
          .category = Category::packageCache,
          .name = {"Versiones de Electron descargadas", "Downloaded Electron versions"},
          .explanation = {"Copias de Electron y de sus herramientas para tus proyectos. Se vuelven a bajar "
                          "al instalarlas o al empaquetar.",
                          "Copies of Electron and its tools for your projects. Downloaded again when you "
                          "install or package."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/electron"},
          .onLinux = {locator::Path{"~/.cache/electron-builder"}}},
         {.id = "ccache",
          .category = Category::buildOutput,
          .name = {"Compilaciones de ccache (C y C++)", "ccache builds (C and C++)"},
          .explanation = {"Resultados de compilar en C y C++. Se regeneran; la próxima compilación completa "
                          "tardará más.",
                          "Results of compiling C and C++. Recreated; the next full build will take longer."},
          .cleanup = command("ccache -C"),
          .locator = locator::Path{"~/.cache/ccache"},
          // An old folder has the settings in it too.
          .onLinux = {locator::Children{"~/.ccache", {"?", "tmp"}}}},
         {.id = "sccache",
          .category = Category::buildOutput,
          .name = {"Compilaciones de sccache", "sccache builds"},
          .explanation =
              {"Resultados de compilar en Rust, C y C++. Se regeneran; la próxima compilación completa "
               "tardará más.",
               "Results of compiling Rust, C and C++. Recreated; the next full build will take longer."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/sccache"}},
         {.id = "pre-commit-cache",
          .category = Category::packageCache,
          .name = {"Entornos de pre-commit", "pre-commit environments"},
          .explanation =
              {"Herramientas que pre-commit instala para revisar tus commits. Las vuelve a instalar en el "
               "próximo.",
               "Tools pre-commit installs to check your commits. It installs them again at the next one."},
          .cleanup = command("pre-commit clean"),
          .locator = locator::Path{"~/.cache/pre-commit"}},
         {.id = "cabal-packages",
          .category = Category::packageCache,
          .name = {"Paquetes de Cabal (Haskell)", "Cabal packages (Haskell)"},
          .explanation = {"Paquetes de Haskell descargados y la lista de los que hay. La lista vuelve con "
                          "cabal update y los paquetes al compilar.",
                          "Downloaded Haskell packages and the list of all there are. The list comes back "
                          "with cabal update, the packages when you build."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cabal/packages"},
          .onLinux = {locator::Path{"~/.cache/cabal/packages"}}},
         {.id = "hex-packages",
          .category = Category::packageCache,
          .name = {"Paquetes de Hex (Elixir y Erlang)", "Hex packages (Elixir and Erlang)"},
          .explanation = {"Paquetes descargados por Hex. Los vuelve a bajar con mix deps.get si hacen falta.",
                          "Packages downloaded by Hex. It fetches them again with mix deps.get if needed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.hex/packages"}},
         {.id = "pub-cache",
          .category = Category::packageCache,
          .name = {"Paquetes de pub (Dart y Flutter)", "pub packages (Dart and Flutter)"},
          .explanation = {"Paquetes que usan tus proyectos de Dart y Flutter. Se vuelven a bajar con dart "
                          "pub get o flutter pub get.",
                          "Packages your Dart and Flutter projects use. Downloaded again with dart pub get "
                          "or flutter pub get."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.pub-cache/hosted"}},
         {.id = "vcpkg-cache",
          .category = Category::buildOutput,
          .name = {"Caché de vcpkg (C y C++)", "vcpkg cache (C and C++)"},
          .explanation =
              {"Bibliotecas que vcpkg ya compiló. Si hacen falta las vuelve a compilar, y eso tarda.",
               "Libraries vcpkg already built. It builds them again if needed, which takes a while."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/vcpkg"}},
         {.id = "sdkman-archives",
          .category = Category::packageCache,
          .name = {"Descargas de SDKMAN", "SDKMAN downloads"},
          .explanation =
              {"Comprimidos de versiones que SDKMAN ya instaló. Los instalados no cambian.",
               "Archives of versions SDKMAN already installed. The installed ones stay as they are."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.sdkman/archives"},
          .onLinux = {locator::Path{"~/.sdkman/tmp"}}},
         {.id = "debuginfod-cache",
          .category = Category::developerTools,
          .name = {"Símbolos de depuración descargados", "Downloaded debug symbols"},
          .explanation =
              {"Datos que el depurador bajó de internet. Los vuelve a bajar cuando los necesita.",
               "Data the debugger fetched from the internet. It downloads it again when it needs it."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/debuginfod_client"}},
         {.id = "firefox-cache",
          .category = Category::appCache,
          .name = {"Caché web de Firefox", "Firefox web cache"},
          .explanation =
              {"Páginas e imágenes guardadas por Firefox. Se reconstruye al navegar; mejor con Firefox "
               "cerrado.",
               "Pages and images saved by Firefox. Rebuilt as you browse; best with Firefox closed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/mozilla/firefox"},
          .closeFirst = "firefox"},
         {.id = "thunderbird-cache",
          .category = Category::appCache,
          .name = {"Caché de Thunderbird", "Thunderbird cache"},
          .explanation = {"Imágenes y datos temporales de Thunderbird; tu correo está en otra carpeta. Se "
                          "reconstruye; mejor con Thunderbird cerrado.",
                          "Thunderbird's images and temporary data; your mail is in another folder. Rebuilt "
                          "automatically; best with Thunderbird closed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/thunderbird"},
          .closeFirst = "thunderbird"},
         {.id = "chromium-cache",
          .category = Category::appCache,
          .name = {"Caché web de Chromium", "Chromium web cache"},
          .explanation =
              {"Páginas e imágenes guardadas por Chromium. Se reconstruye al navegar; mejor con Chromium "
               "cerrado.",
               "Pages and images saved by Chromium. Rebuilt as you browse; best with Chromium closed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/chromium"},
          .closeFirst = "chromium"},
         {.id = "brave-cache",
          .category = Category::appCache,
          .name = {"Caché web de Brave", "Brave web cache"},
          .explanation =
              {"Páginas e imágenes guardadas por Brave. Se reconstruye al navegar; mejor con Brave cerrado.",
               "Pages and images saved by Brave. Rebuilt as you browse; best with Brave closed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/BraveSoftware"},
          .closeFirst = "brave-browser"},
         {.id = "edge-cache",
          .category = Category::appCache,
          .name = {"Caché web de Edge", "Edge web cache"},
          .explanation =
              {"Páginas e imágenes guardadas por Edge. Se reconstruye al navegar; mejor con Edge cerrado.",
               "Pages and images saved by Edge. Rebuilt as you browse; best with Edge closed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/microsoft-edge"},
          .closeFirst = "microsoft-edge"},
         {.id = "code-editor-caches",
          .category = Category::developerTools,
          .name = {"Cachés de editores de código", "Code editor caches"},
          .explanation = {"Cachés y registros de VS Code, VSCodium, Cursor y Windsurf. Se reconstruyen al "
                          "abrirlos; ciérralos antes.",
                          "Caches and logs of VS Code, VSCodium, Cursor and Windsurf. Rebuilt when you open "
                          "them; quit them first."},
          .cleanup = deleteItems,
          .locator = locator::Children{"~/.config/Code", editorCaches()},
          .closeFirst = "code-editors",
          .onLinux = {locator::Children{"~/.config/Code - OSS", editorCaches()},
                      locator::Children{"~/.config/VSCodium", editorCaches()},
                      locator::Children{"~/.config/Cursor", editorCaches()},
                      locator::Children{"~/.config/Windsurf", editorCaches()}}},
         {.id = "chat-app-caches",
          .category = Category::appCache,
          .name = {"Cachés de apps de chat", "Chat app caches"},
          .explanation = {"Imágenes y datos temporales de Discord, Slack, Teams, Signal y Element. Se "
                          "reconstruyen al abrirlas; ciérralas antes.",
                          "Images and temporary data of Discord, Slack, Teams, Signal and Element. Rebuilt "
                          "when you open them; quit them first."},
          .cleanup = deleteItems,
          .locator = locator::Children{"~/.config/discord", electronCaches()},
          .closeFirst = "chat-apps",
          .onLinux = {locator::Children{"~/.config/Slack", electronCaches()},
                      locator::Children{"~/.config/Microsoft/Microsoft Teams", electronCaches()},
                      locator::Children{"~/.config/Signal", electronCaches()},
                      locator::Children{"~/.config/Element", electronCaches()}}},
         {.id = "spotify-cache",
          .category = Category::appCache,
          .name = {"Caché de Spotify", "Spotify cache"},
          .explanation = {"Música que Spotify guarda para no bajarla otra vez, también la que descargaste "
                          "para escuchar sin conexión. Se vuelve a bajar; mejor con Spotify cerrado.",
                          "Music Spotify keeps so as not to fetch it again, also what you downloaded to "
                          "listen offline. Downloaded again; best with Spotify closed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/spotify"},
          .closeFirst = "spotify"},
         {.id = "jetbrains-caches",
          .category = Category::developerTools,
          .name = {"Cachés de IDE de JetBrains", "JetBrains IDE caches"},
          .explanation = {"Índices, cachés y registros de IntelliJ IDEA, PyCharm y los demás. Se regeneran "
                          "al abrir cada proyecto, que tardará más; mejor con el IDE cerrado.",
                          "Indexes, caches and logs of IntelliJ IDEA, PyCharm and the others. Recreated when "
                          "you open each project, which will take longer; best with the IDE closed."},
          .cleanup = deleteContents,
          // The folder of each IDE also has its Local History, which nothing brings back.
          .locator = locator::Below{"~/.cache/JetBrains", {"*"}, "caches"},
          .onLinux = {locator::Below{"~/.cache/JetBrains", {"*"}, "index"},
                      locator::Below{"~/.cache/JetBrains", {"*"}, "log"},
                      locator::Below{"~/.cache/JetBrains", {"*"}, "tmp"},
                      locator::Below{"~/.cache/JetBrains", {"*"}, "jcef_cache"},
                      locator::Below{"~/.cache/JetBrains", {"*"}, "compile-server"},
                      locator::Below{"~/.cache/JetBrains", {"*"}, "vcs-log"}}},
         {.id = "thumbnails",
          .category = Category::appCache,
          .name = {"Miniaturas", "Thumbnails"},
          .explanation =
              {"Imágenes pequeñas de tus fotos, vídeos y documentos. Se regeneran al mirar las carpetas.",
               "Small pictures of your photos, videos and documents. Made again as you look at the folders."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/thumbnails"}},
         {.id = "font-cache",
          .category = Category::appCache,
          .name = {"Caché de tipos de letra", "Font cache"},
          .explanation = {"La lista de los tipos de letra instalados. Se regenera sola; las apps tardarán "
                          "algo más en abrirse la primera vez.",
                          "The list of installed fonts. Recreated by itself; apps take a little longer to "
                          "open the first time."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/fontconfig"}},
         {.id = "search-index",
          .category = Category::appCache,
          .name = {"Índice de búsqueda de archivos", "File search index"},
          .explanation = {"El índice con el que el escritorio busca en tus archivos. Se regenera solo; hasta "
                          "entonces la búsqueda encuentra menos.",
                          "The index your desktop searches your files with. It's recreated by itself; until "
                          "then search finds less."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/tracker3"}},
         {.id = "shader-caches",
          .category = Category::appCache,
          .name = {"Cachés de sombreadores (shaders)", "Shader caches"},
          .explanation = {"Programas de la tarjeta gráfica ya preparados para tus juegos y apps. Se "
                          "regeneran; los juegos tardarán más la primera vez.",
                          "Graphics card programs already prepared for your games and apps. Recreated; games "
                          "take longer the first time."},
          .cleanup = deleteContents,
          .locator = locator::Children{"~/.cache", {"mesa_shader_cache*"}},
          .onLinux = {locator::Path{"~/.cache/nvidia"}, locator::Path{"~/.nv/ComputeCache"},
                      locator::Path{"~/.local/share/Steam/steamapps/shadercache"}}},
         {.id = "snap-app-caches",
          .category = Category::appCache,
          .name = {"Cachés de apps Snap", "Snap app caches"},
          .explanation = {"Lo que las apps Snap guardan para ir más rápido. Lo vuelven a crear; mejor con "
                          "ellas cerradas.",
                          "What Snap apps keep to be faster. They create it again; best with them closed."},
          .cleanup = deleteContents,
          .locator = locator::Below{"~/snap", {"*"}, "common/.cache"}},
         {.id = "session-logs",
          .category = Category::appCache,
          .name = {"Registros de la sesión", "Session logs"},
          .explanation = {"Mensajes de las apps de tu sesión gráfica. Solo sirven para diagnosticar errores "
                          "pasados; el de la sesión abierta libera su espacio al cerrarla.",
                          "Messages from the apps of your desktop session. Only useful for diagnosing past "
                          "errors; the open session's log frees its space when you log out."},
          .cleanup = deleteItems,
          .locator = locator::Children{"~", {".xsession-errors*"}}},
         {.id = "vivaldi-cache",
          .category = Category::appCache,
          .name = {"Caché web de Vivaldi", "Vivaldi web cache"},
          .explanation =
              {"Páginas e imágenes guardadas por Vivaldi. Se reconstruye al navegar; mejor con Vivaldi "
               "cerrado.",
               "Pages and images saved by Vivaldi. Rebuilt as you browse; best with Vivaldi closed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/vivaldi"},
          .closeFirst = "vivaldi-stable"},
         {.id = "opera-cache",
          .category = Category::appCache,
          .name = {"Caché web de Opera", "Opera web cache"},
          .explanation =
              {"Páginas e imágenes guardadas por Opera. Se reconstruye al navegar; mejor con Opera cerrado.",
               "Pages and images saved by Opera. Rebuilt as you browse; best with Opera closed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/opera"},
          .closeFirst = "opera"},
         {.id = "librewolf-cache",
          .category = Category::appCache,
          .name = {"Caché web de LibreWolf", "LibreWolf web cache"},
          .explanation =
              {"Páginas e imágenes guardadas por LibreWolf. Se reconstruye al navegar; mejor con LibreWolf "
               "cerrado.",
               "Pages and images saved by LibreWolf. Rebuilt as you browse; best with LibreWolf closed."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/librewolf"},
          .closeFirst = "librewolf"},
         {.id = "bazelisk-cache",
          .category = Category::packageCache,
          .name = {"Versiones de Bazel descargadas", "Downloaded Bazel versions"},
          .explanation =
              {"Las versiones de Bazel que piden tus proyectos. Bazelisk las vuelve a bajar al compilar.",
               "The Bazel versions your projects ask for. Bazelisk downloads them again when you build."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/bazelisk"}},
         {.id = "golangci-lint-cache",
          .category = Category::buildOutput,
          .name = {"Caché de golangci-lint", "golangci-lint cache"},
          .explanation =
              {"Resultados de revisar tu código de Go. Se regeneran; la próxima revisión tardará más.",
               "Results of checking your Go code. Recreated; the next check will take longer."},
          .cleanup = command("golangci-lint cache clean"),
          .locator = locator::Path{"~/.cache/golangci-lint"}},
         {.id = "pixi-cache",
          .category = Category::packageCache,
          .name = {"Caché de pixi", "pixi cache"},
          .explanation =
              {"Paquetes que pixi ya descargó para todos tus proyectos. Los vuelve a bajar con pixi install.",
               "Packages pixi already downloaded for all your projects. It fetches them again with pixi "
               "install."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/rattler/cache"},
          .onLinux = {locator::Path{"~/.cache/pixi"}}},
         {.id = "trivy-cache",
          .category = Category::packageCache,
          .name = {"Bases de datos de Trivy", "Trivy databases"},
          .explanation =
              {"Listas de vulnerabilidades y resultados de análisis. Trivy las vuelve a descargar en el "
               "próximo análisis.",
               "Vulnerability lists and scan results. Trivy downloads them again at the next scan."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.cache/trivy"}},
         {.id = "kubernetes-caches",
          .category = Category::developerTools,
          .name = {"Cachés de kubectl y Helm", "kubectl and Helm caches"},
          .explanation = {"Lo que kubectl y Helm recuerdan de tus clústeres y repositorios. kubectl lo "
                          "vuelve a pedir; Helm, con helm repo update.",
                          "What kubectl and Helm remember of your clusters and repositories. kubectl asks "
                          "for it again; Helm does with helm repo update."},
          .cleanup = deleteContents,
          .locator = locator::Path{"~/.kube/cache"},
          .onLinux = {locator::Path{"~/.cache/helm"}}}});
    return rows;
}

} // namespace lumo::RuleCatalog
