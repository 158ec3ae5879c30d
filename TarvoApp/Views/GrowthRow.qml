import QtQuick
import QtQuick.Layouts
import Tarvo

// A thing that grew or shrank, beside its line in the picture.
ChosenRow {
    id: row

    readonly property var line: App.growth.lines[index] ?? null

    more: line?.values ?? ""
    name: line === null ? "" : [line.name, line.delta, SideWords.nowTakes.arg(line.now), line.word].filter(part => part.length > 0).join(", ")

    RowLayout {
        spacing: 12
        width: parent.width

        Line {
            Accessible.ignored: true
            Layout.fillWidth: true
            font.weight: row.chosen ? Font.DemiBold : Font.Normal
            text: row.line?.name ?? ""
        }
        Line {
            Accessible.ignored: true
            color: Theme.secondaryText
            elide: Text.ElideNone
            font.pixelSize: Theme.small
            text: row.line?.word ?? ""
        }
        Line {
            Accessible.ignored: true
            Layout.minimumWidth: Math.round(76 * Theme.scale)
            color: Theme.secondaryText
            elide: Text.ElideNone
            horizontalAlignment: Text.AlignRight
            text: row.line?.now ?? ""
        }
        Line {
            Accessible.ignored: true
            Layout.minimumWidth: Math.round(84 * Theme.scale)
            elide: Text.ElideNone
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignRight
            text: row.line?.delta ?? ""
        }
    }
}
