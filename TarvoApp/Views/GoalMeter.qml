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
            color: Theme.secondaryText
            text: Words.goal
        }
        Line {
            Accessible.name: Words.goal + ": " + text
            Layout.fillWidth: true
            font.pixelSize: Theme.strong
            font.weight: Font.DemiBold
            leftPadding: 4
            text: App.goalText
        }
        IconButton {
            name: Words.lowerGoal
            shape: "minus"
            side: Math.round(26 * Theme.scale)

            onClicked: App.lowerGoal()
        }
        IconButton {
            name: Words.raiseGoal
            shape: "plus"
            side: Math.round(26 * Theme.scale)

            onClicked: App.raiseGoal()
        }
    }
    Rectangle {
        Accessible.name: Words.goal + ": " + App.goalMeterText
        Accessible.role: Accessible.ProgressBar
        Layout.fillWidth: true
        Layout.preferredHeight: 6
        color: Theme.raised
        radius: 3

        Rectangle {
            color: App.isGoalReached ? Theme.reached : Theme.accent
            height: parent.height
            radius: parent.radius
            width: Math.max(parent.width * App.goalFraction, App.goalFraction > 0 ? height : 0)

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
        text: App.goalMeterText
        wrapMode: Text.WordWrap
    }
}
