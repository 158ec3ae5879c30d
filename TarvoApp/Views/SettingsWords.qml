pragma Singleton
import QtQuick

// The fixed words of the settings.
QtObject {
    function pick(es: string, en: string): string {
        return Qt.uiLanguage === "es" ? es : en;
    }

    readonly property list<string> tabs: [
        pick("General", "General"), pick("Limpieza", "Cleaning"), pick("Avisos", "Alerts"), pick("IA", "AI"),
        pick("Acerca de", "About")
    ]

    readonly property string language: pick("Idioma", "Language")
    readonly property list<string> languages: [pick("El del sistema", "System"), "Español", "English"]
    readonly property string languageLater: pick("Vale desde la próxima vez que abras Tarvo AI.",
                                                 "Holds from the next time you open Tarvo AI.")
    readonly property string appearance: pick("Aspecto", "Appearance")
    readonly property list<string> appearances: [
        pick("Sistema", "System"), pick("Claro", "Light"), pick("Oscuro", "Dark")
    ]
    readonly property string textSize: pick("Tamaño del texto", "Text size")
    readonly property string percent: pick("%1 %", "%1%")
    readonly property string tray: pick("Mostrar en la bandeja del sistema", "Show in the system tray")
    readonly property string noTray: pick("Tu escritorio no tiene una bandeja que la muestre.", "Your desktop has no tray that could show it.")
    readonly property string trayMore: pick("El espacio libre, siempre a la vista.", "The free space, always in sight.")
    readonly property string login: pick("Abrir al iniciar sesión", "Start at login")
    readonly property string loginMore: pick("Para que pueda avisarte a tiempo.", "So that it can warn you in time.")

    readonly property string activeDays: pick("Proyecto activo", "Active project")
    readonly property string activeDaysMore: pick(
        "Si lo has tocado en estos días, sus dependencias (node_modules, .venv) no se limpian; lo compilado, sí.",
        "Changed within these days: its dependencies (node_modules, .venv) aren't cleaned; what it builds is.")
    readonly property string days: pick("%1 días", "%1 days")
    readonly property string day: pick("%1 día", "%1 day")
    readonly property string protectedFolders: pick("Carpetas protegidas", "Protected folders")
    readonly property string protectedMore: pick("Nada de lo que hay dentro se limpia nunca.",
                                                 "Nothing inside them is ever cleaned.")
    readonly property string nothingProtected: pick("Ninguna todavía", "None yet")
    readonly property string addFolder: pick("Añadir carpeta…", "Add Folder…")
    readonly property string unprotect: pick("Dejar de proteger %1", "Stop protecting %1")
    readonly property string weekly: pick("Limpieza semanal", "Weekly cleanup")
    readonly property string weeklyMore: pick("Una vez a la semana borra solo lo que se regenera solo; la primera vez, al activarla.",
                                              "Once a week it deletes only what recreates itself; the first time when it is switched on.")
    readonly property string held: pick("Apartado", "Recently Cleaned")
    readonly property string heldEmpty: pick("No hay nada apartado", "Nothing is set aside")

    readonly property string notify: pick("Avisar cuando quede poco espacio", "Warn when space runs low")
    readonly property string notifyMore: pick("Con una notificación, como mucho una vez al día.",
                                              "With a notification, at most once a day.")
    readonly property string lowSpace: pick("Poco espacio", "Low space")
    readonly property string lowSpaceMore: pick("Por debajo de estos GB libres.", "Below this many free GB.")
    readonly property string gigabytes: pick("%1 GB", "%1 GB")

    readonly property string model: pick("Modelo de tu equipo", "Model on your computer")
    readonly property string aiSummary: pick("Escribir el resumen con IA", "Write the summary with AI")
    readonly property string aiSummaryMore: pick("Solo ve las cifras del análisis, nunca tus archivos.",
                                                 "It only sees the scan's figures, never your files.")
    readonly property string autoExplain: pick("Explicar las carpetas tras cada análisis",
                                               "Explain folders after each scan")
    readonly property string autoExplainMore: pick("Las que ninguna regla conoce.", "Those that no rule knows.")
    readonly property string place: pick("Modelo local", "Local model")
    readonly property string placeMore: pick("Una dirección de este ordenador y el nombre de un modelo.",
                                             "An address of this computer and the name of a model.")
    readonly property string placeExample: "http://127.0.0.1:11434 llama3.2"
    readonly property string aiUnavailable: pick("IA no disponible: %1", "AI unavailable: %1")

    readonly property string agents: pick("Conectar con tu agente de IA", "Connect your AI agent")
    readonly property string agentsMore: pick(
        "Tu agente podrá analizar el disco, ver qué hay en cada carpeta y proponer una limpieza. Para limpiar siempre te pide permiso, y lo tuyo se aparta %1 días.",
        "Your agent can analyze the disk, see what's in each folder and propose a cleanup. It always asks before cleaning, and your files are kept for %1 days.")
    readonly property string claudeCode: pick("Claude Code (también en la app de Claude)", "Claude Code (also in the Claude app)")
    readonly property string claudeCodeMore: pick(
        "Lo añade a tu configuración de Claude Code: sirve en la terminal y en la app de escritorio.",
        "Adds it to your Claude Code settings: works in Terminal and in the desktop app.")
    readonly property string claudeDesktop: pick("Claude Desktop (el chat)", "Claude Desktop (chat)")
    readonly property string claudeDesktopMore: pick(
        "Lo añade a la configuración de Claude Desktop (con copia de seguridad).",
        "Adds it to Claude Desktop's settings (with a backup).")
    readonly property string otherAgents: pick("Cursor, Windsurf y otros (JSON)", "Cursor, Windsurf and others (JSON)")
    readonly property string connect: pick("Conectar", "Connect")
    readonly property string disconnect: pick("Desconectar", "Disconnect")
    readonly property string connecting: pick("Un momento…", "One moment…")
    readonly property string copy: pick("Copiar", "Copy")

    readonly property string version: pick("Versión %1", "Version %1")
    readonly property string privacy: pick(
        "Nada sale de tu equipo: ni tus archivos, ni sus nombres, ni lo que limpias.",
        "Nothing leaves the machine: not your files, not their names, not what you clean.")
    readonly property string whatsNew: pick("Novedades…", "What's New…")
}
