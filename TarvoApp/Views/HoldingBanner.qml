import QtQuick
import Tarvo

// What cleanups set aside, until it is deleted.
Banner {
    id: banner

    signal historyWanted

    message: App.holding.holdingTitle
    more: App.holding.holdingText
    shape: "undo"
    visible: App.holding.holdingText.length > 0

    PlainButton {
        help: SideWords.historyHelp
        kind: PlainButton.Link
        text: SideWords.history

        onClicked: banner.historyWanted()
    }
    PlainButton {
        enabled: !App.activity.isBusy
        help: Words.undoHelp
        text: Words.undo
        visible: App.holding.canUndo

        onClicked: App.holding.undoLastCleanup()
    }
    PlainButton {
        enabled: !App.activity.isBusy
        text: Words.emptyNow

        onClicked: App.holding.requestEmpty(false)
    }
}
