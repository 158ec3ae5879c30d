import QtQuick
import Tarvo

// How far what goes on has come. Keeps its room while that is not known, so that nothing jumps.
Rectangle {
    id: line

    readonly property bool known: App.activity.isBusy && App.activity.progress >= 0

    Accessible.ignored: !known
    Accessible.name: Words.progress.arg(Math.round(100 * App.activity.progress))
    Accessible.role: Accessible.ProgressBar
    color: known ? Theme.raised : Qt.alpha(Theme.raised, 0)
    implicitHeight: 4
    radius: 2

    Rectangle {
        color: Theme.accent
        height: parent.height
        radius: parent.radius
        visible: line.known
        width: parent.width * Math.max(0, Math.min(1, App.activity.progress))

        Behavior on width {
            // Not back to the beginning when the next thing begins.
            enabled: Theme.moves && App.activity.progress > 0.02

            NumberAnimation { duration: 200 }
        }
    }
}
