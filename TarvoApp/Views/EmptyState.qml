import QtQuick
import QtQuick.Layouts
import Tarvo

// While there is nothing to show: why, and what comes next.
Item {
    id: state

    readonly property bool scanned: App.scanning.hasReport
    // The quick pass alone has not seen enough to speak of order.
    readonly property bool looking: App.activity.isBusy
    readonly property bool seen: App.scanning.hasSeenHome
    readonly property bool tidy: scanned && seen && !looking && !App.volumes.spaceIsLow

    ColumnLayout {
        anchors.centerIn: parent
        spacing: 8
        width: Math.min(parent.width - 48, Math.round(420 * Theme.scale))

        Glyph {
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: 8
            Layout.preferredHeight: Layout.preferredWidth
            Layout.preferredWidth: 64
            color: Theme.secondaryText
            shape: state.tidy ? "tick" : "disk"
            weight: 1
        }
        Line {
            Accessible.name: text
            Accessible.role: Accessible.StaticText
            Layout.fillWidth: true
            font.pixelSize: Theme.title
            horizontalAlignment: Text.AlignHCenter
            text: state.looking ? App.scanning.statusText : !state.scanned ? Words.notScanned
                  : state.seen ? Words.nothingToClean : Words.homeUnseen
            wrapMode: Text.WordWrap
        }
        Line {
            Layout.fillWidth: true
            color: Theme.secondaryText
            horizontalAlignment: Text.AlignHCenter
            text: state.looking ? state.scanned ? Words.nothingSeen : ModelWords.firstLook
                  : !state.scanned ? Words.notScannedHelp : !state.seen ? Words.homeUnseenHelp
                  : state.tidy ? Words.nothingToCleanHelp : Words.fullOfYourOwn
            wrapMode: Text.WordWrap
        }
        Line {
            Layout.fillWidth: true
            color: Theme.secondaryText
            font.pixelSize: Theme.small
            horizontalAlignment: Text.AlignHCenter
            text: App.activity.progressText
            visible: state.looking
        }
        PlainButton {
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: 12
            kind: PlainButton.Primary
            text: Words.lookIntoHome
            visible: state.scanned && state.seen && !state.looking

            onClicked: App.places.openHome()
        }
        PlainButton {
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: 12
            kind: state.looking || state.scanned && state.seen ? PlainButton.Plain : PlainButton.Primary
            text: state.looking ? Words.stop : state.scanned ? Words.scan : Words.analyze

            onClicked: state.looking ? App.activity.stop() : App.scanning.scan()
        }
    }
}
