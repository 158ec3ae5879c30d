import QtQuick
import QtQuick.Layouts
import Tarvo

// How bad it is, what goes on, and how far the selection goes.
RowLayout {
    id: header

    signal settingsWanted
    signal helpWanted
    signal menuWanted(Item at)

    // A hint would stand in its way.
    property bool menuShown: false
    // The most that the status may take: all of it is told where the pointer stays on it.
    property int statusLines: 4

    // The large figure says the first half of the idle line already.
    readonly property string status: App.volumes.freeNow.length > 0 && App.scanning.statusText.startsWith(App.volumes.freeNow)
                                     ? App.scanning.statusText.slice(App.scanning.statusText.indexOf(" · ") + 3) : App.scanning.statusText

    spacing: 24

    // Places of its own making: a layout in a layout does not notice when the figure comes, in the middle of a scan.
    Column {
        Layout.alignment: Qt.AlignTop
        Layout.fillWidth: true
        // While there is nothing to say, the room is kept all the same.
        Layout.maximumWidth: 100000
        spacing: 4

        Item {
            height: of.y + of.height > figure.height ? of.y + of.height : figure.height
            visible: App.volumes.freeNow.length > 0
            width: parent.width

            Line {
                id: figure

                Accessible.name: text + " " + Words.freeOf.arg(App.volumes.capacity)
                font.pixelSize: Theme.figure
                font.weight: Font.DemiBold
                text: App.volumes.freeNow
            }
            Line {
                id: of

                // Below the figure where there is no room beside it: a number is never cut.
                readonly property bool fits: figure.width + 8 + implicitWidth <= parent.width

                Accessible.ignored: true
                color: Theme.secondaryText
                font.pixelSize: Theme.strong
                text: Words.freeOf.arg(App.volumes.capacity)
                width: Math.min(Math.ceil(implicitWidth), parent.width - x)
                x: fits ? figure.width + 8 : 0
                y: fits ? figure.baselineOffset - baselineOffset : figure.height
            }
        }
        Line {
            id: told

            // In one line, whatever there is room for: else each look at the disk would make the map lower for its time.
            readonly property bool counts: App.activity.progressText.length > 0

            Accessible.name: counts ? header.status + "  " + App.activity.progressText : header.status
            color: Theme.secondaryText
            elide: counts ? Text.ElideNone : Text.ElideRight
            maximumLineCount: counts ? 1 : header.statusLines
            text: Words.unbroken(Accessible.name)
            width: parent.width
            wrapMode: Text.WordWrap

            HoverHandler {
                id: over
            }
            Loader {
                active: over.hovered && told.truncated && !told.counts
                anchors.fill: parent
                sourceComponent: Tip {
                    text: header.status // qmllint disable unqualified
                    visible: true
                }
            }
        }
        Line {
            color: Theme.secondaryText
            font.pixelSize: Theme.small
            text: App.volumes.systemSpace
            visible: text.length > 0
            width: parent.width
        }
    }
    GoalMeter {
        Layout.alignment: Qt.AlignTop
        Layout.fillWidth: false
        visible: App.scanning.hasReport
        Layout.preferredWidth: Math.round(Math.min(290 * Theme.scale, header.width * 0.3))
    }
    RowLayout {
        Layout.alignment: Qt.AlignTop
        Layout.fillWidth: false
        Layout.rightMargin: -6
        spacing: 4

        IconButton {
            help: !App.activity.isBusy ? ModelWords.scanAgainHelp : App.activity.phase === Kinds.Cleaning ? Words.stopCleaningHelp
                                                                                : Words.stopHelp
            name: App.activity.isBusy ? Words.stop : Words.scan
            shape: App.activity.isBusy ? "stop" : "scan"

            onClicked: App.activity.isBusy ? App.activity.stop() : App.scanning.scan()
        }
        IconButton {
            help: ModelWords.settingsHelp
            name: Words.settings
            shape: "settings"

            onClicked: header.settingsWanted()
        }
        IconButton {
            help: Words.helpHelp
            name: Words.help
            shape: "help"

            onClicked: header.helpWanted()
        }
        IconButton {
            id: more

            objectName: "more"
            Accessible.role: Accessible.ButtonMenu
            help: header.menuShown ? "" : Words.more
            name: Words.more
            shape: "menu"

            onClicked: header.menuWanted(more)
        }
    }
}
