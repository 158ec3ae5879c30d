pragma Singleton
import QtQuick

// The fixed words of the windows. What speaks of amounts and items comes from the model, and so do words that
// other faces say as well or that name keys (ModelWords).
QtObject {
    readonly property bool spanish: Qt.uiLanguage === "es"

    function pick(es: string, en: string): string {
        return spanish ? es : en;
    }

    readonly property string freeOf: pick("libres de %1", "free of %1")
    readonly property string usedShare: pick("Disco ocupado", "Disk used")
    readonly property string scan: pick("Volver a analizar", "Analyze again")
    readonly property string stop: pick("Parar", "Stop")
    readonly property string progress: pick("Va por el %1 %", "%1% done")
    readonly property string stopHelp: pick("Para aquí: lo que ya se ve se queda", "Stops here: what is shown stays")
    readonly property string stopCleaningHelp: pick("Para cuando acabe lo que está en marcha; lo demás se queda como está",
                                                    "Stops after what is in hand; the rest stays as it is")
    readonly property string settings: pick("Ajustes", "Settings")
    readonly property string help: pick("Ayuda", "Help")
    readonly property string helpHelp: pick("Ayuda (F1)", "Help (F1)")

    readonly property string more: pick("Más", "More")
    readonly property string openFile: pick("Abrir informe o plan…", "Open Report or Plan…")
    readonly property string saveReport: pick("Guardar informe…", "Save Report…")
    readonly property string savePlan: pick("Guardar lo marcado como plan…", "Save Selection as Plan…")
    readonly property string backToDisk: pick("Analizar este disco", "Analyze This Disk")
    readonly property string folderAbove: pick("Carpeta de arriba", "Folder above")
    readonly property string fileName: pick("Nombre del archivo", "File name")
    readonly property string noFiles: pick("Aquí no hay informes ni planes guardados", "There are no saved reports or plans here")
    readonly property string noFolders: pick("Aquí no hay más carpetas", "There are no folders here")
    readonly property string isTaken: pick("Ya hay un archivo con ese nombre: se reemplazaría.",
                                           "There is a file of that name already: it would be replaced.")
    readonly property string replace: pick("Reemplazar", "Replace")
    readonly property string save: pick("Guardar", "Save")
    readonly property string thisFolder: pick("Elegir esta carpeta", "Choose This Folder")

    readonly property string goal: pick("Objetivo", "Goal")
    readonly property string raiseGoal: pick("Subir objetivo 1 GB", "Raise goal by 1 GB")
    readonly property string lowerGoal: pick("Bajar objetivo 1 GB", "Lower goal by 1 GB")

    readonly property string byAI: pick("IA", "AI")
    readonly property string byAIHelp: pick("Escrito por el modelo de tu equipo", "Written by the model on your computer")
    readonly property string summary: pick("Resumen del disco", "Disk summary")

    readonly property string panes: pick("Qué se ve", "What is shown")
    readonly property string map: pick("Mapa", "Map")
    readonly property string mapName: pick("Mapa del disco", "Disk map")
    readonly property string list: pick("Lista", "List")
    readonly property string wholeDisk: pick("Ver disco entero", "Show Whole Disk")
    readonly property string lookInto: pick("Mirar en…", "Look Into…")
    readonly property string lookIntoHelp: pick("Qué hay en toda tu carpeta o en otro disco",
                                                "What is in your whole home folder or on another disk")
    readonly property string lookIntoHome: pick("Mirar en tu carpeta personal", "Look Into Your Home Folder")
    readonly property string disk: pick("Disco", "Disk")
    readonly property string backTo: pick("Volver a %1", "Back to %1")
    readonly property string escapeHelp: pick("Esc sale de un bloque abierto con la lupa",
                                              "Esc leaves a block you opened with the magnifier")
    readonly property string skipped: pick("Dentro de %1", "Inside %1")
    readonly property string opening: pick("Mirando qué hay dentro…", "Looking inside…")
    readonly property string zoom: pick("Ver qué hay dentro", "See What's Inside")
    readonly property string magnifier: pick("La lupa enseña qué hay dentro", "The magnifier shows what's inside")

    // As the model calls the list's groups, in their order.
    readonly property list<string> groups: [
        pick("Se regenera solo", "Recreates itself"),
        pick("Míralo antes", "Needs a look"),
        pick("Se conserva", "Kept"),
        pick("Sin clasificar", "Unclassified")
    ]

    readonly property string search: pick("Buscar", "Search")
    readonly property string clearSearch: pick("Borrar la búsqueda", "Clear the search")
    readonly property string nothingFound: pick("Nada coincide con «%1»", "Nothing matches “%1”")
    readonly property string explain: pick("Explicar con IA", "Explain with AI")
    readonly property string grew: pick("Lo que más ha crecido desde el %1", "Grew most since %1")
    readonly property list<string> orders: [pick("Tamaño", "Size"), pick("Nombre", "Name"), pick("Fecha", "Date")]
    readonly property list<string> orderHelps: [
        pick("lo más grande primero", "the largest first"),
        pick("por su nombre", "by name"),
        pick("primero lo que lleva más tiempo sin cambiar", "what hasn't changed for longest first")
    ]
    readonly property string sortedBy: pick("Orden: %1", "Sort: %1")
    readonly property string only: pick("Solo «%1»", "Only “%1”")
    readonly property string onlyHelp: pick("Enseña solo esto en el mapa y en la lista",
                                            "Shows only this on the map and in the list")
    readonly property string onlyAgain: pick("Volver a enseñar todo (Esc)", "Show everything again (Esc)")
    readonly property string showAll: pick("Ver todo", "Show all")
    readonly property string closerLook: pick("De cerca", "Closer Look")
    readonly property string closerLookHelp: pick("Archivos grandes, duplicados, modelos, restos… uno a uno",
                                                  "Large files, duplicates, models, leftovers… one by one")
    readonly property string itemKinds: pick("Qué enseña la lista", "What the list shows")
    readonly property string fromScan: pick("Lo del análisis", "What the scan found")
    readonly property string copyCommand: pick("Copiar orden", "Copy Command")
    readonly property string copyCommandHelp: pick("Para pegarla en una terminal", "To paste into a terminal")
    readonly property string chosen: pick("elegida", "chosen")
    readonly property string chooseNone: pick("Ninguna", "None")
    readonly property string tick: pick("Marcar", "Select")
    readonly property string untick: pick("Desmarcar", "Deselect")
    readonly property string tickWhole: pick("Marcar", "Select")
    readonly property string tickAll: pick("Marcar «%1»", "Select “%1”")
    readonly property string untickAll: pick("Desmarcar «%1»", "Deselect “%1”")
    readonly property string explainThis: pick("Ver qué es", "See What It Is")
    readonly property string openOutside: pick("Abrir", "Open")
    readonly property string showInFiles: pick("Mostrar en el gestor de archivos", "Show in File Manager")
    readonly property string copyPath: pick("Copiar ruta", "Copy Path")
    readonly property string copyPaths: pick("Copiar rutas", "Copy Paths")
    readonly property string theseRows: pick("Estas %1 filas", "These %1 rows")
    readonly property string protect: pick("No tocar nunca esta carpeta", "Never Touch This Folder")
    readonly property string protectFile: pick("No tocar nunca este archivo", "Never Touch This File")
    readonly property string isKept: pick("No tocar nunca: ya está protegido", "Never Touch: Already Protected")
    readonly property string protectAll: pick("No tocar nunca estas carpetas", "Never Touch These Folders")

    readonly property string moreAbout: pick("Ver todo sobre %1", "See all about %1")
    readonly property string lessAbout: pick("Plegar %1", "Collapse %1")
    readonly property string what: pick("Qué es", "What")
    readonly property string cannotNow: pick("Ahora no", "Not now")
    readonly property string morePlaces: pick("y %1 más", "and %1 more")
    readonly property string where: pick("Dónde", "Where")
    readonly property string source: pick("Lo dice", "Says who")
    readonly property string byHeuristics: pick("Aproximación por el nombre, el lugar y el contenido",
                                                "A guess from its name, place and contents")
    readonly property string evidence: pick("En qué se basa", "What it rests on")
    readonly property string evidenceHelp: pick("Mide la carpeta y enseña los datos de la explicación",
                                                "Measures the folder and shows the facts behind the explanation")
    readonly property string gathering: pick("Midiendo…", "Measuring…")
    readonly property string preview: pick("Vista previa", "Preview")

    readonly property string archive: pick("Archivar…", "Archive…")
    readonly property string recoverable: pick("%1 se pueden recuperar sin riesgo", "%1 can be recovered with no risk")
    readonly property string openWindow: pick("Abrir Tarvo AI", "Open Tarvo AI")
    readonly property string quit: pick("Salir", "Quit")

    readonly property string spaceAccepts: pick("Intro nunca borra: acepta con Espacio o con un clic.",
                                                "Return never deletes: accept with Space or a click.")
    readonly property string undo: pick("Deshacer", "Undo")
    readonly property string undoHelp: pick("Devuelve a su sitio lo que apartó la última limpieza",
                                            "Puts back what the last cleanup set aside")
    readonly property string emptyNow: pick("Vaciar ahora…", "Empty Now…")

    readonly property string selectSafe: pick("Marcar lo seguro", "Select Safe")
    readonly property string deselectAll: pick("Desmarcar todo", "Deselect All")
    readonly property string deselectAllHelp: pick("Desmarca todo para elegir uno a uno",
                                                   "Deselect everything to choose one by one")
    readonly property string clean: pick("Limpiar…", "Clean…")
    readonly property string cleanLater: pick("Se puede limpiar cuando acabe lo que está en marcha",
                                              "Cleaning is possible when what is going on has ended")
    readonly property string tickFirst: pick("Marca antes algo en el mapa o en la lista",
                                             "Select something in the map or the list first")
    readonly property string cancel: pick("Cancelar", "Cancel")
    readonly property string details: pick("Ver detalles", "See Details")
    readonly property string whatGoes: pick("Lo que se limpia", "What goes")
    readonly property string close: pick("Cerrar", "Close")

    readonly property string notScanned: pick("Aún no se ha analizado el disco", "The disk hasn't been analyzed yet")
    readonly property string notScannedHelp: pick("El análisis solo mira: no cambia nada.",
                                                  "Analyzing only looks: nothing is changed.")
    readonly property string analyze: pick("Analizar el disco", "Analyze the Disk")
    readonly property string nothingToClean: pick("No hay nada que limpiar", "Nothing to clean")
    readonly property string nothingToCleanHelp: pick("Tu disco ya está en orden.", "Your disk is already tidy.")
    readonly property string homeUnseen: pick("No se puede mirar tu carpeta personal",
                                              "Your home folder can't be looked at")
    readonly property string homeUnseenHelp: pick("Por eso no se sabe qué llena el disco. Cuando esté arreglado, analiza otra vez.",
                                                  "So nothing is known of what fills the disk. Once that is mended, analyze again.")
    readonly property string fullOfYourOwn: pick(
        "Queda poco espacio: lo que llena el disco es tuyo. El mapa de tu carpeta enseña qué es.",
        "There is little space left: what fills the disk is yours. The map of your home folder shows what it is.")
    readonly property string nothingSeen: pick("Todavía no hay nada que enseñar.", "There is nothing to show yet.")

    readonly property string welcomeTitle: pick("Recupera espacio sin miedo", "Get space back, without fear")
    readonly property string welcomeLooks: pick("Primero solo mira: te enseña qué ocupa tu disco.",
                                                "It only looks at first: it shows what fills your disk.")
    readonly property string welcomeSetsAside: pick(
        "Lo que se regenera solo se borra; lo tuyo se aparta %1\u00a0días.",
        "What recreates itself is deleted; your own files are set aside for %1\u00a0days.")
    readonly property string welcomeAsks: pick("Nada se limpia sin que tú lo confirmes.",
                                               "Nothing is cleaned until you confirm.")

    readonly property string ticked: pick("marcado", "selected")
    readonly property string unticked: pick("sin marcar", "not selected")
    readonly property string blocked: pick("no se puede limpiar ahora", "can't be cleaned right now")
    readonly property string shownOnly: pick("solo se enseña", "shown only")

    // A line never ends between a number and its unit.
    function unbroken(text: string): string {
        return text.replace(/(\d) (?=([kKMGTP]?B|días?|days?)\b)/g, "$1\u00a0");
    }
    // Of a thing itself, or of the row that it is a part of.
    function tickText(isTicked: bool, row: string): string {
        if (row.length > 0)
            return (isTicked ? untickAll : tickAll).arg(row);
        return isTicked ? untick : tick;
    }
    function tickState(state: int): string {
        switch (state) {
        case Kinds.Selected:
            return ticked;
        case Kinds.Unselected:
            return unticked;
        case Kinds.Blocked:
            return blocked;
        default:
            return shownOnly;
        }
    }
}
