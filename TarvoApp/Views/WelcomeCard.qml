import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T
import Tarvo

// What the application does, before the first scan.
T.Dialog {
    id: card

    anchors.centerIn: T.Overlay.overlay
    closePolicy: T.Popup.NoAutoClose
    focus: true
    modal: true
    padding: 32
    implicitHeight: contentHeight + topPadding + bottomPadding
    parent: T.Overlay.overlay
    title: Words.welcomeTitle
    visible: App.showWelcome && !App.isCapturing
    width: Math.min(Math.round(520 * Theme.scale), (card.parent ? card.parent.width : 900) - 48)

    onOpened: begin.forceActiveFocus(Qt.TabFocusReason)

    T.Overlay.modal: Rectangle {
        color: Theme.shade
    }
    background: Rectangle {
        border.color: Theme.hairline
        color: Theme.surface
        radius: Theme.cardRadius
    }
    contentItem: ColumnLayout { // qmllint disable deferred-property-id
        spacing: 12

        Line {
            Layout.bottomMargin: 4
            Layout.fillWidth: true
            font.pixelSize: Theme.figure
            font.weight: Font.DemiBold
            text: Words.welcomeTitle
            wrapMode: Text.WordWrap
        }
        Repeater {
            model: [
                Words.welcomeLooks, Words.welcomeSetsAside.arg(ModelWords.retentionDays), Words.welcomeAsks
            ]

            Line {
                required property string modelData

                Layout.fillWidth: true
                font.pixelSize: Theme.strong
                lineHeight: 1.25
                text: modelData
                wrapMode: Text.WordWrap
            }
        }
        PlainButton {
            id: begin

            Layout.alignment: Qt.AlignRight
            Layout.topMargin: 12
            implicitHeight: Math.round(36 * Theme.scale)
            kind: PlainButton.Primary
            leftPadding: 20
            text: Words.analyze

            onClicked: App.finishWelcome()
        }
    }
}
