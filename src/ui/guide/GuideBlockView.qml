import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** A heading, a paragraph, a list or a picture of the guide. */
Item {
    id: block

    required property guideBlock modelData

    readonly property bool isHeading: modelData.headingLevel > 0
    readonly property bool isPicture: modelData.text === ""

    signal followed(link: string)

    implicitHeight: isPicture ? picture.height : words.y + words.height

    PVText {
        id: words

        visible: !block.isPicture
        y: block.modelData.headingLevel > 1 ? 10 : 0
        width: parent.width
        text: block.modelData.text
        textFormat: block.isHeading ? Text.PlainText : Text.MarkdownText
        size: block.modelData.headingLevel === 1 ? 26 : block.isHeading ? 18 : Fonts.subheadline
        weight: block.isHeading ? Font.Bold : Font.Normal
        wrapMode: Text.Wrap
        lineHeight: 1.2
        Accessible.role: block.isHeading ? Accessible.Heading : Accessible.StaticText
        Accessible.name: block.modelData.spoken
        onLinkActivated: link => block.followed(link)

        HoverHandler {
            cursorShape: words.hoveredLink !== "" ? Qt.PointingHandCursor : Qt.ArrowCursor
        }
    }
    Image {
        id: picture

        visible: block.isPicture
        source: block.modelData.picture
        width: Math.min(parent.width, sourceSize.width)
        height: sourceSize.width > 0 ? width * sourceSize.height / sourceSize.width : 0
        mipmap: true
        Accessible.role: Accessible.Graphic
        Accessible.name: block.modelData.spoken
    }
}
