import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T
import Tarvo

// Says something that leaves nothing to decide. Return and Escape close it.
Popup {
    id: telling

    required property string title
    required property string message

    anchors.centerIn: T.Overlay.overlay
    closePolicy: Popup.CloseOnEscape
    dim: true
    focus: true
    modal: true
    padding: 24
    parent: T.Overlay.overlay
    width: Math.min(Math.round(480 * Theme.scale), (telling.parent ? telling.parent.width : 900) - 48)

    onOpened: close.forceActiveFocus(Qt.TabFocusReason)

    T.Overlay.modal: Rectangle {
        color: Theme.shade
    }
    background: Rectangle {
        Accessible.name: telling.title
        Accessible.role: Accessible.Dialog
        border.color: Theme.hairline
        color: Theme.surface
        radius: Theme.cardRadius
    }
    contentItem: ColumnLayout { // qmllint disable deferred-property-id
        spacing: 12

        Line {
            Layout.fillWidth: true
            font.pixelSize: Theme.title
            font.weight: Font.DemiBold
            text: telling.title
            wrapMode: Text.WordWrap
        }
        ScrollView {
            Layout.fillWidth: true
            Layout.maximumHeight: Math.round(280 * Theme.scale)
            Layout.preferredHeight: words.implicitHeight
            clip: true
            contentWidth: availableWidth

            Line {
                id: words

                lineHeight: 1.25
                text: telling.message
                width: parent ? parent.width : 0
                wrapMode: Text.Wrap
            }
        }
        PlainButton {
            id: close

            Layout.alignment: Qt.AlignRight
            Layout.topMargin: 8
            kind: PlainButton.Primary
            text: Words.close

            onClicked: telling.close()
        }
    }
}
