#include "LumoCore/Explaining/HelpTopicRow.h"

#include <array>

namespace lumo::HelpCatalog {

// What is cleaned, and what is not, in places that people ask about.
std::span<const Row> placeRows() {
    static constexpr auto rows = std::to_array<Row>(
        {{.id = "docker",
          .question = {"¿Por qué Docker aparenta más de lo que ocupa?",
                       "Why does Docker look bigger than it is?"},
          .answer = {"Docker guarda todo en un archivo que reserva mucho sitio pero solo ocupa lo que de "
                     "verdad se ha escrito en él. Otros programas enseñan el tamaño reservado; aquí ves el "
                     "real. Es ámbar y nunca se marca solo. Si lo marcas, el propio Docker quita lo que no "
                     "usa, también los contenedores parados («docker system prune»): eso no se puede "
                     "deshacer, pero deja los volúmenes, donde suelen estar las bases de datos. En Linux, "
                     "Docker suele guardar sus datos fuera de tu carpeta personal, y entonces no aparecen.",
                     "Docker keeps everything in one file that reserves a lot of room but only takes what "
                     "was really written to it. Other programs show the reserved size; here you see the real "
                     "one. It is amber and never selected for you. If you select it, Docker itself removes "
                     "what it doesn't use, stopped containers included (“docker system prune”): that can't "
                     "be undone, but it leaves volumes alone, where databases usually live. On Linux, Docker "
                     "mostly keeps its data outside your home folder, and then it doesn't show up."},
          .keywords =
              {"docker, contenedor, contenedores, imagenes, volumen, volumenes, orbstack, disco virtual, "
               "prune",
               "docker, container, containers, images, volume, volumes, orbstack, virtual disk, prune"}},
         {.id = "proyectos",
          .question = {"¿Qué toca en mis proyectos de código?", "What does it touch in my code projects?"},
          .answer =
              {"Tu código, nunca. Solo las carpetas que se vuelven a crear, como node_modules, .venv, target "
               "o .next, y te dice cómo vuelve cada una. Si has trabajado en un proyecto en los últimos 30 "
               "días, sus dependencias se quedan fuera; esos días se cambian en los Ajustes. Lo que limpies "
               "de un proyecto se borra al momento, y luego tendrás que instalar o compilar otra vez. Para "
               "que un proyecto no se toque nunca, protege su carpeta en los Ajustes.",
               "Your code, never. Only folders that can be made again, such as node_modules, .venv, target "
               "or .next, and it says how each one comes back. If you worked on a project in the last 30 "
               "days, its dependencies are left out; the number of days can be changed in the Settings. What "
               "you clean from a project is deleted right away, and you will have to install or build again "
               "afterwards. To keep a project from ever being touched, protect its folder in the Settings."},
          .keywords = {"proyecto, proyectos, borrar codigo, repositorio, repositorios, node modules, "
                       "dependencias, venv, compilaciones, git",
                       "project, projects, delete code, repository, repo, node modules, dependencies, remove "
                       "venv, builds, git"}},
         {.id = "icloud",
          .question = {"¿Qué hace «Eliminar descarga» de iCloud Drive?",
                       "What does iCloud Drive “Remove Download” do?"},
          .answer = {"Es una opción del propio Mac: en el Finder, con clic derecho sobre un archivo de "
                     "iCloud Drive, quita la copia que hay en tu disco y deja el archivo en iCloud. Cuando "
                     "lo abres, se vuelve a descargar, así que no pierdes nada, pero necesitas internet. "
                     "Tarvo AI todavía no busca esos archivos ni lo hace por ti: por ahora te toca hacerlo "
                     "en el Finder. En Linux no hay iCloud Drive.",
                     "It is an option of the Mac itself: in the Finder, right-clicking a file in iCloud "
                     "Drive lets you remove the copy on your disk and leave the file in iCloud. When you "
                     "open it, it downloads again, so you lose nothing, but you need the internet. Tarvo AI "
                     "doesn't look for those files yet and doesn't do it for you: for now you do it in the "
                     "Finder. Linux has no iCloud Drive."},
          .keywords = {"sitio con icloud, icloud drive, eliminar descarga, quitar descarga, nube, "
                       "descargado, copia local, sincronizar",
                       "free space in icloud, icloud drive, remove download, cloud, downloaded, local copy, "
                       "sync, evict"}},
         {.id = "apps",
          .question = {"¿Cómo desinstala las apps que no uso?", "How does it uninstall apps I don't use?"},
          .answer =
              {"Por ahora no las desinstala. Sí limpia sus cachés y, cuando una carpeta grande no es de "
               "ninguna app instalada, te dice que puede ser un resto. Para quitar una app en un Mac, "
               "llévala de Aplicaciones a la Papelera; en Linux, usa el centro de software o lo que usaste "
               "para instalarla. Después vuelve a analizar: lo que haya dejado y ocupe más de cien megas "
               "saldrá sin clasificar.[ «tarvo apps» enseña las que tienes.]",
               "For now it doesn't uninstall them. It does clean their caches and, when a large folder "
               "matches no installed app, it tells you it may be a leftover. To remove an app on a Mac, drag "
               "it from Applications to the Trash; on Linux, use the software center or whatever you "
               "installed it with. Then analyze again: what it left behind and takes more than a hundred "
               "megabytes shows up as unclassified.[ “tarvo apps” lists the ones you have.]"},
          .keywords =
              {"app, apps, aplicacion, aplicaciones, desinstalar, desinstala, quitar app, programas, restos, "
               "sobras",
               "app, apps, application, applications, uninstall, remove app, programs, leftovers, unused"}},
         {.id = "purgable",
          .question = {"¿Qué es el espacio que macOS libera solo?",
                       "What is the space macOS frees by itself?"},
          .answer =
              {"Es sitio ocupado que macOS recupera por su cuenta cuando el disco se llena: instantáneas "
               "locales de Time Machine y copias de iCloud o del sistema que puede volver a bajar. El Finder "
               "lo cuenta como libre, y por eso sus cifras no siempre cuadran con otras. Tarvo AI lo mide y "
               "te lo enseña, pero no lo toca: el sistema ya se ocupa.[ «tarvo espacio» dice cuánto es "
               "ahora.] "
               "Linux no tiene nada parecido, y ahí siempre es cero.",
               "It is occupied room that macOS takes back on its own when the disk fills up: local Time "
               "Machine snapshots, and copies from iCloud or the system that it can download again. The "
               "Finder counts it as free, which is why its figures don't always match others. Tarvo AI "
               "measures it and shows it, but doesn't touch it: the system takes care of that.[ “tarvo "
               "space” "
               "tells how much it is now.] Linux has nothing like it, so there it is always zero."},
          .keywords = {"purgable, time machine, instantanea, instantaneas, libera solo, snapshot, snapshots, "
                       "su cuenta",
                       "purgeable, time machine, snapshot, snapshots, frees by itself, reclaim, on its own"}},
         {.id = "disco-entero",
          .question = {"¿Qué hace «Ver disco entero»?", "What does “Show Whole Disk” do?"},
          .answer =
              {"Normalmente el mapa enseña solo lo que se puede limpiar, para que se vea más grande. Con "
               "«Ver disco entero» se añaden dos bloques grises: uno con el sistema, las apps y tus "
               "archivos, que no se toca, y otro con el espacio libre. Así ves de un vistazo qué parte del "
               "disco es cada cosa. No cambia nada de lo que se limpia, y el mapa recuerda cómo lo dejaste.",
               "Normally the map shows only what can be cleaned, so that it is bigger. “Show Whole Disk” "
               "adds two gray blocks: one with the system, the apps and your files, which isn't touched, and "
               "one with the free space. That way you see at a glance how much of the disk each thing is. It "
               "changes nothing about what gets cleaned, and the map remembers how you left it."},
          .keywords = {
              "disco entero, ver disco entero, todo el disco, disco completo, mapa completo, resto del disco",
              "whole disk, show whole disk, entire disk, full disk, full map, rest of the disk"}}});
    return rows;
}

} // namespace lumo::HelpCatalog
