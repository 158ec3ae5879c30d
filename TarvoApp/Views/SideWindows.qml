import QtQuick
import Tarvo

// Everything beside the main window; each is made when it is first wanted.
Item {
    id: sides

    objectName: "sides"

    readonly property bool covers: celebration.visible

    function openSettings(): void {
        settings.present();
    }
    function openHelp(): void {
        help.present();
    }
    function openNews(): void {
        news.present();
    }

    function openPreview(): void {
        preview.present();
    }
    function openHistory(): void {
        history.present();
    }
    function openPhotos(): void {
        photos.present();
    }
    function openGrowth(): void {
        growth.present();
    }

    Connections {
        function onWanted() {
            sides.openPreview();
        }

        target: App.preview
    }

    component Side: Loader {
        active: false

        function present(): void {
            active = true;
            (item as SideWindow).present(sides.Window.window);
        }
    }

    Component.onCompleted: if (!Desktop.beginsInPanel && ReleaseNotes.takeDue()) openNews()

    Side {
        id: settings

        objectName: "settings"

        sourceComponent: SettingsWindow {
            onHelpWanted: sides.openHelp() // qmllint disable unqualified
            onHistoryWanted: sides.openHistory() // qmllint disable unqualified
            onNewsWanted: sides.openNews() // qmllint disable unqualified
        }
    }
    Side {
        id: help

        objectName: "help"

        sourceComponent: HelpWindow {}
    }
    Side {
        id: news

        objectName: "news"

        sourceComponent: WhatsNewWindow {
            onHelpWanted: sides.openHelp() // qmllint disable unqualified
        }
    }
    Side {
        id: preview

        objectName: "preview"

        sourceComponent: PreviewWindow {
            onHelpWanted: sides.openHelp() // qmllint disable unqualified
        }
    }
    Side {
        id: history

        objectName: "history"

        sourceComponent: HistoryWindow {
            onHelpWanted: sides.openHelp() // qmllint disable unqualified
        }
    }
    Side {
        id: growth

        objectName: "growth"

        sourceComponent: GrowthWindow {
            onHelpWanted: sides.openHelp() // qmllint disable unqualified
        }
    }
    Side {
        id: photos

        objectName: "photos"

        sourceComponent: PhotosWindow {
            onHelpWanted: sides.openHelp() // qmllint disable unqualified
        }
    }
    CelebrationCard {
        id: celebration
    }
}
