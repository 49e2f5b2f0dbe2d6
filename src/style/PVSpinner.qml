import QtQuick
import Tessivo.Style

/** Turns while something is awaited. */
Icon {
    id: spinner

    text: Icons.loading
    size: 28

    RotationAnimator on rotation {
        running: spinner.visible
        from: 0
        to: 360
        duration: 1200
        loops: Animation.Infinite
    }
}
