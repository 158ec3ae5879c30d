import QtQml
import Qt.labs.platform as Native
import Tarvo

// What the desktop's panel shows while the window is closed: free space, what grew, what can be recovered.
Native.SystemTrayIcon {
    id: tray

    signal openWanted
    signal quitWanted

    // Closing the window leaves the application here.
    readonly property bool keepsRunning: visible && available

    icon.name: "tarvo-ai"
    icon.source: "qrc:/qt/qml/Tarvo/tarvo-ai.png"
    tooltip: "Tarvo AI · " + App.volumes.freeNow + " " + Words.freeOf.arg(App.volumes.capacity)
    visible: App.settings.showInMenuBar && !App.isDemo && !App.isCapturing

    onActivated: tray.openWanted()

    menu: Native.Menu {
        id: panel

        Native.MenuItem {
            enabled: false
            text: App.volumes.freeNow + " " + Words.freeOf.arg(App.volumes.capacity)
        }
        Native.MenuItem {
            enabled: false
            text: Words.recoverable.arg(App.ticked.safeRecoverable)
            visible: App.scanning.hasReport
        }
        Native.MenuItem {
            enabled: false
            text: Words.grew.arg(App.growth.growthSince)
            visible: App.growth.growth.length > 0
        }
        Instantiator {
            model: App.growth.growth.slice(0, 3)

            delegate: Native.MenuItem {
                required property var modelData

                text: "   " + modelData.name + "  " + modelData.delta

                onTriggered: {
                    tray.openWanted();
                    App.places.revealRow(modelData.key);
                }
            }

            onObjectAdded: (index, item) => panel.insertItem(3 + index, item)
            onObjectRemoved: (index, item) => panel.removeItem(item)
        }
        Native.MenuSeparator {}
        Native.MenuItem {
            enabled: !App.activity.isBusy
            text: Words.scan

            onTriggered: App.scanning.scan()
        }
        Native.MenuItem {
            text: Words.openWindow

            onTriggered: tray.openWanted()
        }
        Native.MenuItem {
            text: Words.quit

            onTriggered: tray.quitWanted()
        }
    }
}
