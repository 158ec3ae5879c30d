import QtQuick
import QtQuick.Layouts
import Tarvo

// All that is known of a row, below it.
Column {
    id: details

    required property string key
    required property string detail
    required property list<string> places
    required property string reason
    required property string command
    required property var explanation
    required property string evidence
    required property var facts
    required property bool unclassified

    property bool asked: false
    // More would push the row's own buttons out of sight.
    readonly property int mostPlaces: 10

    spacing: 6

    // A scan forgets it.
    onEvidenceChanged: if (evidence.length === 0) asked = false

    component Told: RowLayout {
        id: told

        required property string label
        property string says: ""

        spacing: 8
        visible: says.length > 0
        width: parent.width

        Line {
            Layout.alignment: Qt.AlignTop
            Layout.preferredWidth: Math.round(64 * Theme.scale)
            color: Theme.secondaryText
            font.pixelSize: Theme.small
            text: told.label
        }
        Line {
            Layout.fillWidth: true
            font.pixelSize: Theme.small
            lineHeight: 1.15
            text: told.says
            wrapMode: Text.Wrap
        }
    }

    Told {
        label: Words.cannotNow
        says: details.reason
    }
    Told {
        label: Words.what
        says: details.unclassified ? "" : details.detail
    }
    Repeater {
        model: details.explanation.lines || []

        Told {
            required property var modelData

            label: modelData.label
            says: modelData.text
        }
    }
    Told {
        label: Words.source
        says: details.explanation.byAI ? Words.byAIHelp : details.explanation.isGuess ? Words.byHeuristics : ""
    }
    Repeater {
        model: details.facts

        Told {
            required property var modelData

            label: modelData.label
            says: modelData.text
        }
    }
    Told {
        label: Words.where
        says: details.places.slice(0, details.mostPlaces).join("\n")
            + (details.places.length > details.mostPlaces
               ? "\n" + Words.morePlaces.arg(details.places.length - details.mostPlaces) : "")
    }
    Rectangle {
        color: Theme.raised
        height: facts.implicitHeight + 16
        radius: Theme.tileRadius
        visible: details.evidence.length > 0
        width: parent.width

        Line {
            id: facts

            Accessible.name: Words.evidence + ": " + text
            anchors.left: parent.left
            anchors.margins: 8
            anchors.right: parent.right
            anchors.top: parent.top
            font.pixelSize: Theme.small
            lineHeight: 1.2
            text: details.evidence
            wrapMode: Text.Wrap
        }
    }
    Flow {
        spacing: 4
        width: parent.width

        PlainButton {
            font.pixelSize: Theme.small
            help: ModelWords.previewHelp
            implicitHeight: Math.round(26 * Theme.scale)
            text: Words.preview
            visible: details.places.length > 0

            onClicked: App.places.showPreview(details.key)
        }
        PlainButton {
            enabled: App.cleaning.mayClean
            font.pixelSize: Theme.small
            help: SideWords.wholeAsideHelp
            implicitHeight: Math.round(26 * Theme.scale)
            text: SideWords.setAside
            visible: details.unclassified && App.places.offers([details.key]).aside === true

            onClicked: App.places.setAside([details.key])
        }
        PlainButton {
            font.pixelSize: Theme.small
            help: Words.copyCommandHelp
            implicitHeight: Math.round(26 * Theme.scale)
            text: Words.copyCommand
            visible: details.command.length > 0

            onClicked: Desktop.copyText(details.command)
        }
        PlainButton {
            enabled: !details.asked
            font.pixelSize: Theme.small
            help: Words.evidenceHelp
            implicitHeight: Math.round(26 * Theme.scale)
            text: details.asked ? Words.gathering : Words.evidence
            visible: details.unclassified && details.evidence.length === 0

            onClicked: {
                details.asked = true;
                App.places.gatherEvidence(details.key);
            }
        }
    }
}
