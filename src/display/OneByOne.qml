import QtQuick

/** Makes what is not at once in the places of a repeater, from the first on and a few each frame, so
    that none of them holds the screen. */
Timer {
    required property Repeater places
    property int eachFrame: 1

    interval: 0
    onTriggered: {
        let left = eachFrame;
        for (let i = 0; i < places.count && left > 0; ++i) {
            const place = places.itemAt(i) as DuePlace;
            if (place && !place.active) {
                place.due = true;
                --left;
            }
        }
        if (left === 0) {
            restart();
        }
    }
}
