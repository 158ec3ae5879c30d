import QtQuick
import Tarvo

// What cleanups set aside, until it is deleted.
Banner {
    message: App.holdingTitle
    more: App.holdingText
    shape: "undo"
    visible: App.holdingText.length > 0

    PlainButton {
        enabled: !App.isBusy
        help: Words.undoHelp
        text: Words.undo
        visible: App.canUndo

        onClicked: App.undoLastCleanup()
    }
    PlainButton {
        enabled: !App.isBusy
        text: Words.emptyNow

        onClicked: App.requestEmpty(false)
    }
}
