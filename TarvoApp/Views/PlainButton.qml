import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// A button with words on it.
Button {
    id: button

    enum Kind { Plain, Primary, Danger, Link }

    property int kind: PlainButton.Plain
    property bool tipped: false
    property string help: ""
    property bool takesReturn: true

    // Return was pressed where it does nothing.
    signal returnRefused

    // On its own color the words could not be read.
    readonly property bool isOff: !enabled && (kind === PlainButton.Primary || kind === PlainButton.Danger)

    readonly property color ink: {
        if (isOff)
            return Theme.secondaryText;
        switch (kind) {
        case PlainButton.Primary:
            return Theme.accentInk;
        case PlainButton.Danger:
            return Theme.dangerInk;
        default:
            return Theme.text;
        }
    }
    readonly property color fill: {
        if (isOff)
            return Theme.raised;
        switch (kind) {
        case PlainButton.Primary:
            return Theme.accent;
        case PlainButton.Danger:
            return Theme.danger;
        case PlainButton.Link:
            return "transparent";
        default:
            return Theme.surface;
        }
    }

    Accessible.description: help
    Accessible.name: text
    focusPolicy: Qt.StrongFocus
    font.pixelSize: Theme.body
    font.weight: kind === PlainButton.Primary || kind === PlainButton.Danger ? Font.DemiBold : Font.Normal
    implicitHeight: Theme.controlHeight
    leftPadding: kind === PlainButton.Link ? 6 : 14
    opacity: enabled || isOff ? 1 : 0.45
    rightPadding: leftPadding

    onHoveredChanged: if (hovered && !tipped) {
        tipped = true;
        tip.createObject(button);
    }
    Keys.onEnterPressed: button.takesReturn ? button.clicked() : button.returnRefused()
    Keys.onReturnPressed: button.takesReturn ? button.clicked() : button.returnRefused()

    // Made when it is first wanted: there are hundreds of buttons.
    Component {
        id: tip

        Tip {
            text: button.help // qmllint disable unqualified
            visible: button.hovered && text.length > 0 // qmllint disable unqualified
        }
    }

    background: Rectangle {
        border.color: button.kind === PlainButton.Plain ? Theme.hairline : "transparent"
        color: button.fill
        radius: Theme.buttonRadius

        Rectangle {
            anchors.fill: parent
            color: button.kind === PlainButton.Plain || button.kind === PlainButton.Link ? Theme.text : button.ink
            opacity: button.down ? 0.14 : button.hovered ? 0.07 : 0
            radius: parent.radius

            Behavior on opacity {
                NumberAnimation { duration: Theme.hoverTime }
            }
        }
        FocusRing {
            visible: button.visualFocus
        }
    }
    contentItem: Line {
        Accessible.ignored: true
        color: button.ink
        font: button.font
        horizontalAlignment: Text.AlignHCenter
        text: button.text
        verticalAlignment: Text.AlignVCenter
    }
}
