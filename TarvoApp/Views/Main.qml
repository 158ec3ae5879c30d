import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// The main window.
ApplicationWindow {
    id: window

    signal openSettings
    signal openHelp

    onOpenHelp: sides.openHelp()
    onOpenSettings: sides.openSettings()

    // With large writing neither map nor list has room for its words beside the other.
    readonly property bool narrow: width < 870 * Math.max(1.15, Theme.scale)
    // The map is what there must be room for.
    readonly property bool low: height < 680 * Theme.scale
    // Large writing in a small window: what can be chosen goes before what is told.
    readonly property bool tight: height < 400 * Theme.scale
    readonly property int gap: low ? 8 : 16
    readonly property bool hasRows: App.scanning.hasReport && (App.map.count > 0 || App.map.depth > 0 || App.map.zoomLoading)

    // Nothing can be chosen now; during a scan it can.
    readonly property bool works: App.activity.isBusy && App.activity.phase !== Kinds.Scanning
                                  && App.activity.phase !== Kinds.ScanningFolders

    // Both speak of the list, which may be under its tab.
    readonly property int searchAsked: App.list.focusSearch
    readonly property string rowAsked: App.places.scrollToRow

    // What is seen where there is no room for the map and the list: as the tabs are.
    property int pane: 0
    readonly property bool exploring: App.explorer.open

    function choosePane(wanted: int) {
        pane = wanted;
        if (wanted > 0)
            App.explorer.open = wanted === 2;
    }
    function explore() {
        choosePane(2);
        explorer.takeFocus();
    }

    onRowAskedChanged: if (rowAsked.length > 0) choosePane(1)
    onSearchAskedChanged: {
        choosePane(exploring ? 2 : 1);
        if (exploring)
            explorer.takeFilter();
        else
            list.takeSearch();
    }

    // Somebody has asked for the end: no window may refuse to close then.
    property bool leaving: false
    readonly property bool inPanel: tray.item !== null && (tray.item as TrayItem).keepsRunning

    function leave() {
        leaving = true;
        Qt.quit();
    }

    // The disk is watched on only while the panel has the application's item, by which it can be ended.
    onClosing: close => {
        if (leaving)
            return;
        const stays = App.monitor.monitoring && inPanel;
        close.accepted = !stays;
        if (stays)
            hide();
        else
            leave();
    }

    color: Theme.window
    height: 760
    minimumHeight: 560
    minimumWidth: 800
    title: "Tarvo AI"
    visible: !Desktop.beginsInPanel
    width: 1180

    palette {
        base: Theme.surface
        button: Theme.surface
        buttonText: Theme.text
        dark: Theme.text
        highlight: Theme.accent
        highlightedText: Theme.accentInk
        light: Theme.raised
        mid: Theme.hairline
        midlight: Theme.raised
        text: Theme.text
        toolTipBase: Theme.surface
        toolTipText: Theme.text
        window: Theme.surface
        windowText: Theme.text
    }

    Shortcuts {
        active: !question.visible && !files.asks && !welcome.visible && !sides.covers
        works: window.works

        onHelpWanted: window.openHelp()
        onQuitWanted: window.leave()
        onSettingsWanted: window.openSettings()
        onGrowthWanted: sides.openGrowth()
        onPhotosWanted: sides.openPhotos()
        onExploreWanted: window.explore()
        onHistoryWanted: sides.openHistory()
        onOpenWanted: files.open()
        onSavePlanWanted: files.savePlan()
        onSaveReportWanted: files.saveReport()
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Banner {
            Layout.fillWidth: true
            compact: window.low
            linesBelow: true
            message: App.demoNotice
            shape: "info"
            visible: App.demoNotice.length > 0
        }
        Banner {
            Layout.fillWidth: true
            compact: window.low
            linesBelow: true
            message: App.scanning.openedText
            shape: "info"
            visible: App.scanning.openedText.length > 0

            PlainButton {
                enabled: !App.activity.isBusy
                text: Words.backToDisk

                onClicked: App.scanning.scan()
            }
        }
        Header {
            Layout.bottomMargin: window.low ? 4 : 12
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: window.gap

            onHelpWanted: window.openHelp()
            menuShown: more.visible
            statusLines: !window.tight ? 4 : App.activity.notice.length > 0 ? 1 : 2

            onMenuWanted: at => more.openFor(at)
            onSettingsWanted: window.openSettings()
        }
        Summary {
            Layout.bottomMargin: window.gap
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            compact: window.low
            crowded: window.tight && (App.activity.notice.length > 0 || window.narrow && window.pane > 0)
        }
        ProgressLine {
            Layout.bottomMargin: window.low ? 4 : 8
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            opacity: window.works ? 0 : 1
        }
        NoticeBar {
            Layout.bottomMargin: window.tight ? 4 : 12
            Layout.fillWidth: true
            compact: window.tight

            onDetailsWanted: App.cleaning.showFailures()
        }
        PaneTabs {
            Layout.bottomMargin: window.low ? 4 : 8
            Layout.leftMargin: 24
            Layout.preferredWidth: Math.round(330 * Theme.scale)
            currentIndex: window.pane
            panes: [Words.map, Words.list, SideWords.explore]
            visible: window.narrow && window.hasRows

            onChosen: pane => window.choosePane(pane)
        }
        RowLayout {
            Layout.bottomMargin: window.gap
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            spacing: 16
            visible: window.hasRows

            MapView {
                Layout.fillHeight: true
                Layout.fillWidth: true
                // Rather a narrow map than a list beyond the window's edge.
                Layout.minimumWidth: 0
                compact: window.low
                visible: !window.narrow || window.pane === 0

                onMenuWanted: (key, at) => menu.openFor(key, at)
            }
            ColumnLayout {
                Layout.fillHeight: true
                Layout.fillWidth: window.narrow
                Layout.preferredWidth: Math.min(window.width * 0.37, 560) + (window.exploring ? 0 : list.sideWidth)
                spacing: 6
                visible: !window.narrow || window.pane > 0

                PaneTabs {
                    Layout.preferredWidth: Math.round(220 * Theme.scale)
                    currentIndex: window.exploring ? 1 : 0
                    panes: [Words.list, SideWords.explore]
                    visible: !window.narrow

                    onChosen: pane => window.choosePane(pane + 1)
                }
                RowListView {
                    id: list

                    Layout.fillHeight: true
                    Layout.fillWidth: true
                    roomy: window.narrow || window.width >= 1360
                    visible: !window.exploring

                    onGrowthWanted: sides.openGrowth()
                    onMenuWanted: (key, at) => menu.openForRow(key, at)
                }
                ExplorerView {
                    id: explorer

                    Layout.fillHeight: true
                    Layout.fillWidth: true
                    tight: window.tight
                    visible: window.exploring

                    onMenuWanted: (row, at) => menu.openForEntry(row, at)
                }
            }
        }
        // The list says it at its end, which is under its tab.
        Line {
            Layout.bottomMargin: window.gap
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            color: Theme.secondaryText
            font.pixelSize: Theme.small
            text: App.scanning.unreadable
            visible: window.hasRows && window.narrow && window.pane === 0 && text.length > 0
        }
        EmptyState {
            Layout.fillHeight: true
            Layout.fillWidth: true
            visible: !window.hasRows
        }
        HoldingBanner {
            Layout.fillWidth: true
            compact: window.low

            onHistoryWanted: sides.openHistory()
        }
        Footer {
            Layout.fillWidth: true
            compact: window.low
            visible: App.scanning.hasReport && !window.works
        }
        WorkBar {
            Layout.fillWidth: true
            compact: window.low
            visible: window.works
        }
    }
    PlaceMenu {
        id: menu

        ground: window.contentItem
    }
    Connections {
        function onExploreWanted() {
            window.explore();
        }

        target: App.places
    }
    MoreMenu {
        id: more

        onGrowthWanted: sides.openGrowth()
        onPhotosWanted: sides.openPhotos()
        onExploreWanted: window.explore()
        onHistoryWanted: sides.openHistory()
        onOpenWanted: files.open()
        onSavePlanWanted: files.savePlan()
        onSaveReportWanted: files.saveReport()
    }
    SavedFiles {
        id: files

        objectName: "files"
    }
    Question {
        id: question

        asks: App.question.isOpen
    }
    Loader {
        id: tray

        active: Desktop.hasPanel && !App.isDemo && !App.isCapturing
        sourceComponent: TrayItem {
            onOpenWanted: Desktop.bringBack(window)
            onQuitWanted: window.leave()
        }
    }
    // Nobody could open it again where no panel came.
    Timer {
        interval: 30000
        running: Desktop.beginsInPanel

        onTriggered: if (!window.visible && !window.inPanel) window.showMinimized()
    }
    WelcomeCard {
        id: welcome
    }
    SideWindows {
        id: sides
    }
}
