import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T
import Tarvo

// Asks before something that cannot be taken back, or only tells where there is nothing to accept. Return and Escape
// both mean no.
T.Dialog {
    id: question

    required property bool asks
    required property string message
    property string acceptText: ""
    property string refuseText: Words.cancel
    property int acceptKind: PlainButton.Primary

    signal refused

    anchors.centerIn: T.Overlay.overlay
    closePolicy: T.Popup.CloseOnEscape
    dim: true
    focus: true
    modal: true
    padding: 24
    parent: T.Overlay.overlay
    implicitHeight: contentHeight + topPadding + bottomPadding
    width: Math.min(Math.round(440 * Theme.scale), (question.parent ? question.parent.width : 900) - 48)

    // A dialog takes its name once, and this one asks about more than one thing.
    function tellName() {
        contentItem.parent.Accessible.name = title;
    }

    onAboutToShow: tellName()
    onTitleChanged: tellName()
    onAsksChanged: asks ? question.open() : question.close()
    onClosed: if (asks) refused()
    onOpened: cancel.forceActiveFocus(Qt.TabFocusReason)

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
            Layout.fillWidth: true
            font.pixelSize: Theme.title
            font.weight: Font.DemiBold
            text: question.title
            wrapMode: Text.WordWrap
        }
        ScrollView {
            Layout.fillWidth: true
            Layout.maximumHeight: Math.round(300 * Theme.scale)
            Layout.preferredHeight: words.implicitHeight
            clip: true
            contentWidth: availableWidth

            Line {
                id: words

                lineHeight: 1.25
                text: question.message
                width: question.availableWidth
                wrapMode: Text.Wrap
            }
        }
        RowLayout {
            Layout.alignment: Qt.AlignRight
            Layout.topMargin: 12
            spacing: 8

            PlainButton {
                id: cancel

                // Whoever comes to it hears what is asked.
                Accessible.description: question.message
                text: question.refuseText

                onClicked: question.refused()
            }
            PlainButton {
                kind: question.acceptKind
                takesReturn: false
                text: question.acceptText
                visible: text.length > 0

                onClicked: question.accepted()
            }
        }
    }
    enter: Transition {
        NumberAnimation { duration: Theme.hoverTime; from: 0; property: "opacity"; to: 1 }
    }
    exit: Transition {
        NumberAnimation { duration: Theme.hoverTime; from: 1; property: "opacity"; to: 0 }
    }
}
