import QtQuick
import Tarvo

// What is written on a tile: as much of it as there is room for, and never part of a number.
Item {
    id: texts

    required property string label
    required property string bytes
    required property int tickState
    required property color ink
    required property color fill
    required property bool large

    // Below two lines of a name there has to be room for the amount and the tick, and no word is torn apart.
    readonly property int longestWord: label.split(" ").reduce((most, word) => Math.max(most, word.length), 0)
    readonly property bool twoLines: large || height >= 4.2 * name.font.pixelSize + tick.side
                                     && longestWord * 0.7 * name.font.pixelSize <= width

    readonly property bool hasName: width > 34 * Theme.scale && height > 14 * Theme.scale
    readonly property bool hasAmount: hasName && amount.implicitWidth <= width
                                      && name.height + amount.implicitHeight <= height + 2
    readonly property bool hasTick: tickState !== Kinds.Info && width >= tick.side && height >= tick.side
                                    && (!hasName || height > name.height + tick.side)

    Line {
        id: name

        Accessible.ignored: true
        color: texts.ink
        font.pixelSize: texts.large ? Theme.strong : texts.width > 60 * Theme.scale ? Theme.body : Theme.small
        font.weight: Font.DemiBold
        maximumLineCount: texts.twoLines ? 2 : 1
        text: texts.label
        visible: texts.hasName
        width: parent.width
        wrapMode: texts.twoLines ? Text.Wrap : Text.NoWrap
    }
    Line {
        id: amount

        Accessible.ignored: true
        anchors.top: name.bottom
        color: texts.ink
        elide: Text.ElideNone
        font.pixelSize: texts.large ? Theme.title : name.font.pixelSize
        text: texts.bytes
        visible: texts.hasAmount
    }
    TickBox {
        id: tick

        readonly property bool besideAmount: texts.hasAmount && amount.implicitWidth + side + 6 <= texts.width

        ink: texts.ink
        inner: texts.fill
        side: Math.round((texts.large ? 20 : 15) * Theme.scale)
        tickState: texts.tickState
        visible: texts.hasTick && (besideAmount || !texts.hasAmount || y + side <= texts.height)
        x: texts.hasName ? besideAmount ? parent.width - width : 0 : (parent.width - width) / 2
        y: besideAmount ? amount.y + (amount.height - height) / 2
                        : texts.hasAmount ? amount.y + amount.height + 2
                                          : texts.hasName ? name.height + 2 : (parent.height - height) / 2
    }
}
