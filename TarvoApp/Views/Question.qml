import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T
import Tarvo

// What the user is asked, or only told where there is nothing to accept. Return and Escape both mean no.
T.Dialog {
    id: question

    // Whether this window asks it.
    required property bool asks

    anchors.centerIn: T.Overlay.overlay
    closePolicy: T.Popup.CloseOnEscape
    dim: true
    focus: true
    modal: true
    padding: 24
    title: App.question.title
    parent: T.Overlay.overlay
    height: Math.min(implicitHeight, (question.parent ? question.parent.height : 600) - 48)
    implicitHeight: contentHeight + topPadding + bottomPadding
    width: Math.min(Math.round(440 * Theme.scale), (question.parent ? question.parent.width : 900) - 48)

    // Somebody has tried to accept with Return.
    property bool refused: false

    // A dialog takes its name once, and this one asks about more than one thing.
    function tellName() {
        contentItem.parent.Accessible.name = title;
    }

    onAboutToShow: tellName()
    onTitleChanged: tellName()
    onAsksChanged: asks ? question.open() : question.close()
    onClosed: if (asks) App.question.cancel()
    onAboutToHide: refused = false
    onOpened: {
        cancel.forceActiveFocus(Qt.TabFocusReason);
        // Where the focus was before, it comes back by itself, and for no reason that shows a ring.
        cancel.focusReason = Qt.TabFocusReason;
    }

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
        // Both this and what goes give way in a low window, so that the buttons are whole.
        ScrollView {
            id: asked

            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.maximumHeight: Math.min(words.implicitHeight, Math.round(300 * Theme.scale))
            Layout.minimumHeight: Math.min(words.implicitHeight, Math.round(60 * Theme.scale))
            Layout.preferredHeight: Layout.maximumHeight
            ScrollBar.vertical.policy: words.implicitHeight > height + 1 ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
            clip: true
            contentWidth: availableWidth

            Line {
                id: words

                lineHeight: 1.25
                text: App.question.message
                // Beside what it is scrolled with, whether that is there or not.
                width: question.availableWidth - 10
                wrapMode: Text.Wrap
            }
        }
        ListView {
            id: going

            Accessible.name: Words.whatGoes
            Accessible.role: Accessible.List
            Layout.fillWidth: true
            // As much of it as the window has room for.
            Layout.fillHeight: true
            Layout.maximumHeight: contentHeight
            Layout.minimumHeight: Math.min(contentHeight, Math.round(60 * Theme.scale))
            Layout.preferredHeight: contentHeight
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            model: App.question.lines
            visible: count > 0

            ScrollBar.vertical: ScrollBar {
                policy: going.contentHeight > going.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff // qmllint disable unqualified
                width: 8
            }
            delegate: GoingLine {
                width: going.width // qmllint disable unqualified
            }
        }
        Line {
            Accessible.name: text
            Accessible.role: Accessible.AlertMessage
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignRight
            text: Words.spaceAccepts
            visible: question.refused
            wrapMode: Text.WordWrap
        }
        RowLayout {
            Layout.alignment: Qt.AlignRight
            Layout.topMargin: 12
            spacing: 8

            PlainButton {
                id: cancel

                // Whoever comes to it hears what is asked.
                Accessible.description: App.question.message
                text: App.question.acceptText.length > 0 ? Words.cancel : Words.close

                onClicked: App.question.cancel()
            }
            PlainButton {
                help: Words.spaceAccepts
                kind: App.question.isDangerous ? PlainButton.Danger : PlainButton.Primary
                takesReturn: false
                text: App.question.acceptText
                visible: text.length > 0

                onClicked: App.question.accept()
                onReturnRefused: question.refused = true
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
