import QtQuick
import QtQuick.Layouts
import Tarvo

// What the user chose, a tab for each subject. Changes hold at once.
SideWindow {
    id: window

    property alias tab: tabs.current

    signal historyWanted
    signal newsWanted

    asks: App.question.isOpenInSettings
    first: tabs.currentWord

    // From the last page on to the first.
    function turn(by: int): void {
        const count = SettingsWords.tabs.length;
        tabs.go((tabs.current + by + count) % count);
    }

    title: Words.settings

    onVisibleChanged: {
        if (visible) {
            App.holding.refreshHolding();
            App.agents.refresh();
            App.login.refreshLogin();
            App.monitor.refreshTimer();
        }
    }

    // As in every window of tabs: the focus goes to the tab, since what had it is gone with its page.
    Shortcut {
        sequences: ["Ctrl+Tab", "Ctrl+PgDown"]

        onActivated: window.turn(1)
    }
    Shortcut {
        sequences: ["Ctrl+Shift+Tab", "Ctrl+PgUp"]

        onActivated: window.turn(-1)
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Choice {
            id: tabs

            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: 12
            Layout.topMargin: 16
            role: Accessible.PageTab
            words: SettingsWords.tabs

            onChosen: index => tabs.current = index
        }
        Banner {
            Accessible.role: Accessible.AlertMessage
            Layout.fillWidth: true
            message: App.settings.problem
            shape: "warning"
            visible: message.length > 0
        }
        Banner {
            Accessible.role: Accessible.AlertMessage
            Layout.fillWidth: true
            message: window.told
            shape: "info"
            visible: message.length > 0
        }
        Rectangle {
            Layout.fillWidth: true
            color: Theme.hairline
            implicitHeight: 1
        }
        StackLayout {
            Layout.fillHeight: true
            Layout.fillWidth: true
            currentIndex: tabs.current

            SettingsGeneral {}
            SettingsCleaning {
                onHistoryWanted: window.historyWanted()
            }
            SettingsAlerts {}
            SettingsAI {}
            SettingsAbout {
                onNewsWanted: window.newsWanted()
            }
        }
    }
    Question {
        asks: App.question.isOpenInSettings
    }
}
