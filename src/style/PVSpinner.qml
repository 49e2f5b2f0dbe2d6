import QtQuick
import Tessivo.Style

/** Turns while something is awaited. */
Canvas {
    id: spinner

    property color color: Colors.pvPaperDim

    width: 28
    height: 28

    onPaint: {
        const context = getContext("2d");
        context.reset();
        context.lineWidth = 3;
        context.lineCap = "round";
        context.strokeStyle = color;
        context.arc(width / 2, height / 2, width / 2 - 2, 0, 1.5 * Math.PI);
        context.stroke();
    }

    RotationAnimator on rotation {
        running: spinner.visible
        from: 0
        to: 360
        duration: 1200
        loops: Animation.Infinite
    }
}
