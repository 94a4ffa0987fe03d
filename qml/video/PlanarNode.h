#pragma once

#include "PlaneTexture.h"

#include <QtGui/QMatrix4x4>
#include <QtQuick/QSGGeometryNode>
#include <QtQuick/QSGMaterial>

namespace voro::qml {

/** Makes red, green and blue of what a shader reads from the textures of luma, Cb and Cr. */
QMatrix4x4 colorMatrix(const renderer::PlanarDescription &description);

/** Draws pictures of several planes, whose colours a shader converts. */
class PlanarMaterial : public QSGMaterial {
public:
    explicit PlanarMaterial(const renderer::PlanarDescription &description);

    QSGMaterialType *type() const override;
    QSGMaterialShader *createShader(QSGRendererInterface::RenderMode mode) const override;
    int compare(const QSGMaterial *other) const override;

    const renderer::PlanarDescription &description() const { return m_description; }
    void setFrame(const std::shared_ptr<renderer::Frame> &frame);
    /** Luma, Cb and Cr, of which the latter two may be the same. */
    PlaneTexture *texture(size_t index) const;

private:
    const renderer::PlanarDescription m_description;
    std::vector<std::unique_ptr<PlaneTexture>> m_textures;
};

/** A picture of several planes in a scene. */
class PlanarNode : public QSGGeometryNode {
public:
    PlanarNode();

    void setFrame(const std::shared_ptr<renderer::Frame> &frame);
    /** Where the picture is drawn, and which part of it, in its pixels. */
    void setRects(const QRectF &target, const QRectF &source);

private:
    QSGGeometry m_geometry;
    std::unique_ptr<PlanarMaterial> m_material;
};

} // namespace voro::qml
