import QtQuick
import Tarvo

// The lines, with what the ends of the picture stand for. A click chooses the line below the pointer.
Rectangle {
    id: chart

    component Mark: Line {
        Accessible.ignored: true
        color: Theme.secondaryText
        font.pixelSize: Theme.small
    }

    Accessible.description: App.growth.facts
    Accessible.name: SideWords.growth + ": " + App.growth.title
    Accessible.role: Accessible.Graphic
    border.color: Theme.hairline
    color: Theme.surface
    radius: Theme.cardRadius

    TrendLines {
        id: lines

        accent: Theme.accent
        anchors.bottom: from.top
        anchors.bottomMargin: 4
        anchors.left: marks.right
        anchors.leftMargin: 8
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.top: parent.top
        anchors.topMargin: 12
        chosen: App.growth.chosen
        ink: Theme.secondaryText
        lines: App.growth.lines
        zero: App.growth.zero

        TapHandler {
            onTapped: point => {
                const index = lines.lineAt(point.position.x, point.position.y);
                if (index >= 0)
                    App.growth.chosen = index;
            }
        }
    }
    Item {
        id: marks

        anchors.bottom: lines.bottom
        anchors.left: parent.left
        anchors.leftMargin: 12
        anchors.top: lines.top
        width: Math.max(highest.implicitWidth, lowest.implicitWidth)

        Mark {
            id: highest

            anchors.right: parent.right
            text: App.growth.highest.length > 0 ? App.growth.highest : "0"
        }
        Mark {
            anchors.right: parent.right
            text: "0"
            visible: y > highest.height && y + height < parent.height - lowest.height
            y: App.growth.zero * parent.height - height / 2
        }
        Mark {
            id: lowest

            anchors.bottom: parent.bottom
            anchors.right: parent.right
            text: App.growth.lowest.length > 0 ? App.growth.lowest : "0"
        }
    }
    Mark {
        id: from

        anchors.bottom: parent.bottom
        anchors.bottomMargin: 8
        anchors.left: lines.left
        text: App.growth.from
    }
    Mark {
        anchors.bottom: from.bottom
        anchors.right: lines.right
        text: App.growth.to
    }
}
