#pragma once

#include "FrameReceiver.h"

#include <QtQuick/QQuickItem>

namespace voro::qml {

/**
 * Shows the pictures of a player, composed like any other item on whatever the scene is drawn with.
 *
 * Give its windowId to the player's windowId (or closedCaptionWindowId): `MediaPlayer { windowId: video.windowId }`.
 * The pictures come from the renderer's worker through shared memory. The last one stays while the player pauses;
 * nothing is drawn when there is none, which is also so when a worker dies.
 */
class VideoWindow : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /** What a player names this item by; another one for every item. */
    Q_PROPERTY(QString windowId READ windowId CONSTANT)
    /** How the picture fills the item; PreserveAspectFit at first. */
    Q_PROPERTY(FillMode fillMode READ fillMode WRITE setFillMode NOTIFY fillModeChanged)
    /** The size of the picture in pixels, empty without one. */
    Q_PROPERTY(QSize sourceSize READ sourceSize NOTIFY sourceSizeChanged)
    /** The part of the item that the picture covers. */
    Q_PROPERTY(QRectF contentRect READ contentRect NOTIFY contentRectChanged)
    Q_PROPERTY(bool hasPicture READ hasPicture NOTIFY hasPictureChanged)
public:
    enum FillMode {
        /** Distorted as needed. */
        Stretch,
        /** Whole, in the middle of the item. */
        PreserveAspectFit,
        /** Covers all of the item and is cut off where it is larger. */
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
    /** Another picture is shown from the next drawing on. */
    void pictureChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    void onFrameChanged();
    QRectF sourceRect() const;

    const QString m_windowId;
    FillMode m_fillMode = PreserveAspectFit;
    FrameReceiver m_receiver;
    QSize m_sourceSize;
    QSizeF m_shownSize;
    /** Whether the picture is another one than that of the scene. */
    bool m_isNew = false;
};

} // namespace voro::qml
