import QtQuick 2.15

// A ripple on a button: a circle that grows from where the button was touched and reaches both side edges at the same
// moment.
ShaderEffect {
    id: shaderEffect

    property color backgroundColor: "#20000000"
    property color spreadColor: "#20000000"
    property point normTouchPos
    property real widthToHeightRatio: height / width
    property real spread: 0

    // Starts the ripple at a point of the item.
    function touchStart(x, y) {
        normTouchPos = Qt.point(x / width, y / height);
        touchEndAnimation.stop();
        touchStartAnimation.start();
    }

    // Lets the ripple fill the item and fade.
    function touchEnd() {
        touchStartAnimation.stop();
        touchEndAnimation.start();
    }

    width: 512
    height: 128
    opacity: 0

    ParallelAnimation {
        id: touchStartAnimation

        UniformAnimator {
            uniform: "spread"
            target: shaderEffect
            from: 0
            to: 1
            duration: 2000
            easing.type: Easing.InQuad
        }

        OpacityAnimator {
            target: shaderEffect
            from: 0
            to: 1
            duration: 50
            easing.type: Easing.InQuad
        }
    }

    ParallelAnimation {
        id: touchEndAnimation

        UniformAnimator {
            uniform: "spread"
            target: shaderEffect
            from: shaderEffect.spread
            to: 1
            duration: 1000
            easing.type: Easing.OutQuad
        }

        OpacityAnimator {
            target: shaderEffect
            from: 1
            to: 0
            duration: 1000
            easing.type: Easing.OutQuad
        }
    }

    fragmentShader: "
        varying mediump vec2 qt_TexCoord0;
        uniform lowp float qt_Opacity;
        uniform lowp vec4 backgroundColor;
        uniform lowp vec4 spreadColor;
        uniform mediump vec2 normTouchPos;
        uniform mediump float widthToHeightRatio;
        uniform mediump float spread;

        void main() {
            // The radius is full when the circle meets the farther side edge; by then its centre is in the middle.
            mediump float radius = (0.5 + abs(0.5 - normTouchPos.x)) * 1.0 * spread;
            mediump vec2 circleCenter = normTouchPos + (vec2(0.5) - normTouchPos) * radius * 2.0;
            mediump float circleX = qt_TexCoord0.x - circleCenter.x;
            mediump float circleY = (qt_TexCoord0.y - circleCenter.y) * widthToHeightRatio;
            lowp vec4 tapOverlay = spreadColor * step(circleX * circleX + circleY * circleY, radius * radius);
            gl_FragColor = (backgroundColor + tapOverlay) * qt_Opacity;
        }"
}
