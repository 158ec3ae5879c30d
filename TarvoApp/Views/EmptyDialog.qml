import QtQuick
import Tarvo

// Before what was set aside is deleted for good.
Question {
    acceptKind: PlainButton.Danger
    acceptText: Words.deletePermanently
    asks: App.confirmingEmpty
    message: ModelWords.emptyExplanation
    title: App.holdingQuestion

    onAccepted: App.emptyHolding()
    onRefused: App.cancelEmpty()
}
