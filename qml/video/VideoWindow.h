#pragma once

#include "PlaneTexture.h"

#include <QtQuick/QQuickItem>

#include <renderer/frames/FrameReceiver.h>

namespace voro::qml {

class ImageNode;
class PlanarNode;

/**
 * Shows the video of a player. The scene composes it like any other item.
 *
 * Bind the player's windowId (or closedCaptionWindowId) to this item's: `MediaPlayer { windowId: video.windowId }`.
 * The pictures come from the renderer's worker through shared memory. The last one stays while the player pauses.
 * Without a picture, for example after a worker's death, the item draws nothing.
 */
class VideoWindow : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /** The window id for a player, unique for each item. */
    Q_PROPERTY(QString windowId READ windowId CONSTANT)
    /** How the picture fills the item; PreserveAspectFit at first. */
    Q_PROPERTY(FillMode fillMode READ fillMode WRITE setFillMode NOTIFY fillModeChanged)
    /** The size of the picture in pixels; empty without one. */
    Q_PROPERTY(QSize sourceSize READ sourceSize NOTIFY sourceSizeChanged)
    /** The part of the item that the picture covers. */
    Q_PROPERTY(QRectF contentRect READ contentRect NOTIFY contentRectChanged)
    Q_PROPERTY(bool hasPicture READ hasPicture NOTIFY hasPictureChanged)
public:
    enum FillMode {
        /** The picture fills the item and may be distorted. */
        Stretch,
        /** The whole picture, centred in the item. */
        PreserveAspectFit,
        /** The picture covers the item and is cropped. */
        PreserveAspectCrop
    };
    Q_ENUM(FillMode)

    explicit VideoWindow(QQuickItem *parent = nullptr);

    QString windowId() const { return m_windowId; }
    FillMode fillMode() const { return m_fillMode; }
    void setFillMode(FillMode mode);
    QSize sourceSize() const { return m_sourceSize; }
    QRectF contentRect() const;
    bool hasPicture() const { return !m_sourceSize.isEmpty(); }

Q_SIGNALS:
    void fillModeChanged();
    void sourceSizeChanged();
    void contentRectChanged();
    void hasPictureChanged();
    /** The next update of the scene shows another picture. */
    void pictureChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    void onFrameChanged();
    QRectF sourceRect() const;
    QSGNode *updateImage(ImageNode *node, bool isNew);
    QSGNode *updatePlanes(PlanarNode *node, bool isNew);

    const QString m_windowId;
    FillMode m_fillMode = PreserveAspectFit;
    renderer::FrameReceiver m_receiver;
    QSize m_sourceSize;
    QSizeF m_shownSize;
    /** Whether the picture differs from the scene's. */
    bool m_isNew = false;
    SceneFormats m_sceneFormats;
    /** What the scene can draw, as bits of FrameFormat, and whether its picture has several planes. */
    uint32_t m_formats = static_cast<uint32_t>(renderer::FrameFormat::Bgrx);
    bool m_isPlanar = false;
};

} // namespace voro::qml
