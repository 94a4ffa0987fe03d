#include "ImageNode.h"

#include <QtGui/QMatrix4x4>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>

#include <cmath>

namespace voro::qml {

namespace {

/** Less than this, in pixels, is seen by nobody. */
constexpr qreal Tolerance = 1.0 / 256;

bool isNear(qreal a, qreal b)
{
    return std::abs(a - b) < Tolerance;
}

bool isWhole(QPointF point)
{
    return isNear(point.x(), std::round(point.x())) && isNear(point.y(), std::round(point.y()));
}

/** Whether a node is drawn into a texture, as by an effect or for a picture of an item: in another size, perhaps. */
bool isInLayer(const QSGNode *node)
{
    for (; node; node = node->parent()) {
        if (node->type() == QSGNode::RootNodeType && node->parent()) {
            return true;
        }
    }
    return false;
}

/** From a node's coordinates to those of the scene. */
QMatrix4x4 toScene(const QSGNode *node)
{
    QMatrix4x4 matrix;
    for (; node; node = node->parent()) {
        if (node->type() == QSGNode::TransformNodeType) {
            matrix = static_cast<const QSGTransformNode *>(node)->matrix() * matrix;
        }
    }
    return matrix;
}

} // namespace

ImageNode::ImageNode(QQuickWindow *window) : m_image(window->createImageNode())
{
    m_image->setOwnsTexture(true);
    appendChildNode(m_image);
    setFlag(UsePreprocess);
}

void ImageNode::setTexture(QSGTexture *texture)
{
    m_image->setTexture(texture);
}

void ImageNode::setRects(const QRectF &rect, const QRectF &sourceRect, qreal pixelRatio)
{
    m_image->setRect(rect);
    m_image->setSourceRect(sourceRect);
    m_pixelRatio = pixelRatio;
}

/** Comes before each drawing of the scene: an item around this one may have been moved, turned or scaled. */
void ImageNode::preprocess()
{
    const QSGTexture::Filtering filtering = isPixelByPixel() ? QSGTexture::Nearest : QSGTexture::Linear;
    // Set again, the picture would be drawn again.
    if (filtering != m_image->filtering()) {
        m_image->setFiltering(filtering);
    }
}

bool ImageNode::isPixelByPixel() const
{
    const QMatrix4x4 matrix = toScene(this);
    const QRectF rect = m_image->rect();
    const QRectF source = m_image->sourceRect();
    const QPointF begin = matrix.map(rect.topLeft()) * m_pixelRatio;
    const QPointF corner = matrix.map(rect.topRight()) * m_pixelRatio;
    const QPointF end = matrix.map(rect.bottomRight()) * m_pixelRatio;
    return !isInLayer(this) && isWhole(begin) && isWhole(source.topLeft()) && isNear(corner.y(), begin.y())
           && isNear(end.x(), corner.x()) && isNear(end.x() - begin.x(), source.width())
           && isNear(end.y() - begin.y(), source.height());
}

} // namespace voro::qml
