pragma Singleton
import QtQuick
import Tarvo

// Every color, size and duration of the windows.
QtObject {
    readonly property bool dark: Desktop.isDark
    readonly property color window: dark ? "#1B1B1D" : "#F6F6F3"
    readonly property color surface: dark ? "#262629" : "#FFFFFF"
    readonly property color raised: dark ? "#333337" : "#EDEDE9"
    readonly property color hairline: dark ? "#3A3A3E" : "#E2E2DD"
    readonly property color text: dark ? "#F3F3F0" : "#1A1A19"
    readonly property color secondaryText: dark ? "#A6A6A1" : "#62625E"
    readonly property color accent: Desktop.accent
    readonly property color accentInk: Desktop.accentWantsDarkInk ? darkInk : lightInk
    readonly property color darkInk: "#1A1A19"
    readonly property color lightInk: "#FAFAF8"
    readonly property color neutralTile: dark ? "#3D3D42" : "#D9D9D3"
    readonly property color danger: dark ? "#E5675B" : "#B3261E"
    readonly property color dangerInk: dark ? darkInk : lightInk
    readonly property color reached: dark ? "#35C48E" : "#14875D"
    readonly property color shade: dark ? "#99000000" : "#59000000"

    // The colors of the list's groups, in their order; the map has them from the model.
    readonly property list<color> groups: ["#1CB07A", "#EDA100", "#878780", "#614FD6"]

    readonly property real scale: App.settings.textScale
    readonly property int small: Math.round(11 * scale)
    readonly property int body: Math.round(13 * scale)
    readonly property int strong: Math.round(15 * scale)
    readonly property int title: Math.round(20 * scale)
    readonly property int figure: Math.round(28 * scale)

    readonly property int tileRadius: 6
    readonly property int nestedRadius: 4
    readonly property int cardRadius: 10
    readonly property int buttonRadius: 8
    readonly property int controlHeight: Math.round(30 * scale)

    readonly property bool moves: !Desktop.reducesMotion
    readonly property int hoverTime: moves ? 120 : 0
    readonly property int shortTime: moves ? 180 : 0
    readonly property int zoomTime: moves ? 850 : 0
    readonly property real dimmed: 0.22
}
