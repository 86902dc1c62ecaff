// The image items as a client's QML meets them: bindings, statuses and the order of their signals.

import QtQuick 2.15
import QtTest 1.15
import com.ostrel.im.component 1.0

Item {
    id: root

    // A resource that the module carries itself: 16 by 16, opaque.
    readonly property string checker: ":/qml/image/transparent.png"

    width: 300
    height: 200

    Component {
        id: roundedComponent

        RoundedImage {
            width: 40
            height: 40
        }
    }

    Component {
        id: renderComponent

        ImageRender {
            id: renderer

            property var log: []

            width: 40
            height: 40
            onSourceChanged: log.push("source " + source)
            onBackgroundSourceChanged: log.push("background " + backgroundSource)
            onStatusSourceChanged: log.push("statusSource " + statusSource)
            onStatusBackgroundChanged: log.push("statusBackground " + statusBackground)
        }
    }

    Component {
        id: previewComponent

        ImagePreviewer {
            property var log: []

            onStatusSourceChanged: log.push("statusSource " + statusSource)
            onStatusBackgroundChanged: log.push("statusBackground " + statusBackground)
        }
    }

    Component {
        id: drawableComponent

        DrawableImage {
            width: 40
            height: 40
        }
    }

    Component {
        id: shapeComponent

        RoundedRectItem {
            width: 40
            height: 40
        }
    }

    Component {
        id: progressComponent

        CircleProgress {}
    }

    Component {
        id: boundaryComponent

        Item {
            width: 150
            height: 100
        }
    }

    TestCase {
        name: "Images"
        when: windowShown

        function test_enumerationsHaveTheirNumbers() {
            compare([RoundedImage.Stretch, RoundedImage.PreserveAspectFit, RoundedImage.PreserveAspectCrop],
                    [0, 1, 2]);
            compare([ImageRender.Stretch, ImageRender.PreserveAspectFit, ImageRender.PreserveAspectCrop],
                    [0, 1, 2]);
            compare([ImageRender.Null, ImageRender.Ready, ImageRender.Loading, ImageRender.Error], [0, 1, 2, 3]);
            compare([ImagePreviewer.Null, ImagePreviewer.Ready, ImagePreviewer.Loading, ImagePreviewer.Error],
                    [0, 1, 2, 3]);
            compare([DrawableImage.Stretch, DrawableImage.PreserveAspectFit, DrawableImage.PreserveAspectCrop,
                     DrawableImage.Tile, DrawableImage.TileVertically, DrawableImage.TileHorizontally,
                     DrawableImage.Pad], [0, 1, 2, 3, 4, 5, 6]);
        }

        function test_defaults() {
            const rounded = createTemporaryObject(roundedComponent, root);
            compare([rounded.source, rounded.radius, rounded.radiusTopLeft, rounded.radiusTopRight,
                     rounded.radiusBottomLeft, rounded.radiusBottomRight, rounded.fillMode, rounded.cache],
                    ["", 0, 0, 0, 0, 0, RoundedImage.Stretch, false]);
            compare(rounded.sourceSize, Qt.size(-1, -1));

            const renderer = createTemporaryObject(renderComponent, root);
            compare([renderer.source, renderer.backgroundSource, renderer.blurRadius, renderer.cache,
                     renderer.sourceFillMode, renderer.backgroundFillMode, renderer.statusSource,
                     renderer.statusBackground], ["", "", 0, false, 0, 0, ImageRender.Null, ImageRender.Null]);
            compare(renderer.sourceSize, Qt.size(-1, -1));

            const preview = createTemporaryObject(previewComponent, root);
            compare([preview.source, preview.backgroundSource, preview.blurRadius, preview.statusSource,
                     preview.statusBackground, preview.boundaryItem], ["", "", 0, 0, 0, null]);
            compare(preview.viewGeometry, Qt.rect(0, 0, 0, 0));

            const drawable = createTemporaryObject(drawableComponent, root);
            compare([drawable.source, drawable.radius, drawable.borderWidth, drawable.dizzyBackground,
                     drawable.borderStyle, drawable.opacity, drawable.scale, drawable.darkMode, drawable.fillMode,
                     drawable.blurRatio, drawable.gradientRotation],
                    ["", 0, 0, false, Qt.SolidLine, 1, 1, false, DrawableImage.Pad, 0, 0]);
            verify(Qt.colorEqual(drawable.borderColor, "#a0a0a4"));
            verify(Qt.colorEqual(drawable.backgroundColor, "white"));

            const shape = createTemporaryObject(shapeComponent, root);
            compare([shape.topLeftRadius, shape.topRightRadius, shape.bottomLeftRadius, shape.bottomRightRadius,
                     shape.borderWidth, shape.gradient.length], [0, 0, 0, 0, 0.5, 0]);

            const progress = createTemporaryObject(progressComponent, root);
            compare([progress.progress, progress.radius, progress.quality, progress.width, progress.height],
                    [0, 20, 1, 40, 40]);
            verify(Qt.colorEqual(progress.color, "black"));
        }

        function test_roundedImageShowsWhatItLoads() {
            const rounded = createTemporaryObject(roundedComponent, root, {source: root.checker});
            tryVerify(() => grabImage(rounded).pixel(20, 20) != Qt.rgba(1, 1, 1, 1)
                            || grabImage(rounded).pixel(10, 10) != Qt.rgba(1, 1, 1, 1));
        }

        function test_rendererTellsItsStatusesInOrder() {
            const renderer = createTemporaryObject(renderComponent, root,
                                                   {source: root.checker, backgroundSource: ":/nothing.png"});
            // The properties come before the completion, which starts both loads.
            compare(renderer.log.slice(0, 4),
                    ["source " + root.checker, "background :/nothing.png", "statusSource 2", "statusBackground 2"]);
            tryCompare(renderer, "statusSource", ImageRender.Ready);
            tryCompare(renderer, "statusBackground", ImageRender.Error);
            renderer.log = [];
            renderer.source = "";
            renderer.backgroundSource = "";
            compare(renderer.log, ["source ", "statusSource 0", "background ", "statusBackground 0"]);
        }

        function test_displayAreasAreAnArrayForScripts() {
            const renderer = createTemporaryObject(renderComponent, root, {width: 200, height: 100});
            const square = createTemporaryObject(shapeComponent, root, {width: 50, height: 50});
            let picture = null;
            verify(square.grabToImage(result => picture = result.image));
            tryVerify(() => picture !== null);

            const fitted = renderer.calcImageDisplayArea(picture, ImageRender.PreserveAspectFit);
            compare(fitted.length, 2);
            compare(fitted[0], Qt.rect(0.25, 0, 0.5, 1));
            compare(fitted[1], Qt.rect(0, 0, 1, 1));
            const cropped = renderer.calcImageDisplayArea(picture, ImageRender.PreserveAspectCrop);
            compare(cropped[0], Qt.rect(0, 0, 1, 1));
            compare(cropped[1], Qt.rect(0, 0.25, 1, 0.5));
        }

        function test_statusesAreReadOnly() {
            const renderer = createTemporaryObject(renderComponent, root);
            let refused = 0;
            try { renderer.statusSource = ImageRender.Ready; } catch (error) { ++refused; }
            try { renderer.statusBackground = ImageRender.Ready; } catch (error) { ++refused; }
            compare(refused, 2);
            // The setters are there for clients that drive a status themselves; no picture, nothing to paint.
            renderer.setStatusSource(ImageRender.Ready);
            compare(renderer.statusSource, ImageRender.Ready);
            waitForRendering(root);
        }

        function test_previewPlacesItself() {
            const boundary = createTemporaryObject(boundaryComponent, root);
            const preview = createTemporaryObject(previewComponent, boundary,
                                                  {boundaryItem: boundary, source: root.checker});
            tryCompare(preview, "statusSource", ImagePreviewer.Ready);
            compare(preview.log, ["statusSource 2", "statusSource 1"]);
            preview.viewGeometry = Qt.rect(-100, -50, 300, 200);
            compare(Qt.point(preview.x, preview.y), Qt.point(100, 50));
            preview.viewGeometry = Qt.rect(30, 20, 60, 40);
            compare(Qt.point(preview.x, preview.y), Qt.point(0, 0));
        }

        function test_boundaryThatDiesIsForgotten() {
            const preview = createTemporaryObject(previewComponent, root, {source: root.checker});
            const boundary = createTemporaryObject(boundaryComponent, root);
            preview.boundaryItem = boundary;
            preview.viewGeometry = Qt.rect(-10, -10, 100, 100);
            tryCompare(preview, "statusSource", ImagePreviewer.Ready);
            boundary.destroy();
            tryCompare(preview, "boundaryItem", null);
            preview.viewGeometry = Qt.rect(-20, -10, 100, 100);
            waitForRendering(root);
        }

        function test_drawableHasAnOpacityAndAScaleOfItsOwn() {
            const drawable = createTemporaryObject(drawableComponent, root, {backgroundColor: "red"});
            const before = grabImage(drawable).pixel(20, 20);
            drawable.opacity = 0.25;
            drawable.scale = 3;
            compare(drawable.opacity, 0.25);
            compare(drawable.scale, 3);
            compare(grabImage(drawable).pixel(20, 20), before);
            verify(Qt.colorEqual(before, "red"));
        }

        function test_drawableStoresResourceUrlsAsPaths() {
            const drawable = createTemporaryObject(drawableComponent, root, {source: "qrc:/qml/image/transparent.png"});
            compare(drawable.source, root.checker);
        }

        function test_gradientOfObjectsIsPainted() {
            const shape = createTemporaryObject(shapeComponent, root, {
                borderWidth: 1,
                borderColor: "black",
                gradient: [{position: 0, color: "red"}, {position: 1, color: Qt.rgba(0, 0, 1, 1)}]
            });
            const image = grabImage(shape);
            verify(image.red(20, 3) > 220 && image.blue(20, 3) < 35);
            verify(image.blue(20, 36) > 220 && image.red(20, 36) < 35);
        }

        function test_progressTakesItsSizeFromItsRadius() {
            const progress = createTemporaryObject(progressComponent, root, {radius: 30, progress: 1, color: "red"});
            compare([progress.width, progress.height], [60, 60]);
            const image = grabImage(progress);
            compare([image.red(30, 30), image.green(30, 30)], [255, 0]);
        }
    }
}
