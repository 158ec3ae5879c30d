import QtQuick
import Tarvo

// Before an item is replaced by its archive.
Question {
    acceptText: App.archiveRequest.acceptText || ""
    asks: App.archiveRequest.title !== undefined
    message: App.archiveRequest.message || ""
    title: App.archiveRequest.title || ""

    onAccepted: App.archive()
    onRefused: App.cancelArchive()
}
