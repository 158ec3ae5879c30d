import QtQuick
import QtQuick.Layouts
import Tarvo

// How much the user wants back, and how far what is ticked goes.
ColumnLayout {
    id: meter

    spacing: 4

    RowLayout {
        Layout.fillWidth: true
        spacing: 4

        Line {
            Accessible.ignored: true
            Layout.fillWidth: true
            Layout.maximumWidth: Math.ceil(implicitWidth)
            // Rather than the number.
            Layout.minimumWidth: 0
            color: Theme.secondaryText
            text: Words.goal
        }
        Line {
            Accessible.name: Words.goal + ": " + text
            Layout.fillWidth: true
            Layout.minimumWidth: Math.ceil(implicitWidth)
            font.pixelSize: Theme.strong
            font.weight: Font.DemiBold
            leftPadding: 4
            text: App.ticked.goalText
        }
        IconButton {
            name: Words.lowerGoal
            shape: "minus"
            side: Math.round(26 * Theme.scale)

            onClicked: App.ticked.lowerGoal()
        }
        IconButton {
            name: Words.raiseGoal
            shape: "plus"
            side: Math.round(26 * Theme.scale)

            onClicked: App.ticked.raiseGoal()
        }
    }
    Rectangle {
        Accessible.name: Words.goal + ": " + App.ticked.goalMeterText
        Accessible.role: Accessible.ProgressBar
        Layout.fillWidth: true
        Layout.preferredHeight: 6
        color: Theme.raised
        radius: 3

        Rectangle {
            color: App.ticked.isGoalReached ? Theme.reached : Theme.accent
            height: parent.height
            radius: parent.radius
            width: Math.max(parent.width * App.ticked.goalFraction, App.ticked.goalFraction > 0 ? height : 0)

            Behavior on width {
                NumberAnimation { duration: Theme.shortTime; easing.type: Easing.OutCubic }
            }
        }
    }
    Line {
        Accessible.ignored: true
        Layout.fillWidth: true
        color: Theme.secondaryText
        font.pixelSize: Theme.small
        maximumLineCount: 2
        text: App.ticked.goalMeterText
        // Nobody is told to tick more where more is not enough.
        visible: App.ticked.goalBeyondText.length === 0
        wrapMode: Text.WordWrap
    }
    Line {
        Layout.fillWidth: true
        color: Theme.secondaryText
        font.pixelSize: Theme.small
        text: App.ticked.goalBeyondText
        visible: text.length > 0
        wrapMode: Text.WordWrap
    }
    PlainButton {
        Layout.leftMargin: -6
        font.pixelSize: Theme.small
        font.underline: true
        implicitHeight: Math.round(22 * Theme.scale)
        kind: PlainButton.Link
        text: App.ticked.goalOfferText
        visible: text.length > 0

        onClicked: App.ticked.takeGoalOffer()
    }
}
