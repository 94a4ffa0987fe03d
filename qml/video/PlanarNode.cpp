#include "PlanarNode.h"

#include <QtGui/QVector2D>
#include <QtGui/QVector4D>
#include <QtQuick/QSGMaterialShader>

#include <cstring>

namespace voro::qml {

using renderer::FrameFormat;
using renderer::FrameMatrix;
using renderer::FrameRange;
using renderer::PlanarDescription;

namespace {

/** Where chroma is read, in relation to luma: factors and summands of both directions. */
QVector4D chromaCoordinates(const PlanarDescription &description)
{
    // A sample in the middle of the left pixel lies a quarter of its own size to the left of the middle between two.
    constexpr float Quarter = 0.25F;
    const auto width = static_cast<float>(description.frame.width);
    const auto height = static_cast<float>(description.frame.height);
    const auto side = [](uint32_t pictureSide) { return static_cast<float>((pictureSide + 1) / 2); };
    const float chromaWidth = side(description.frame.width);
    const float chromaHeight = side(description.frame.height);
    return {width / 2 / chromaWidth, height / 2 / chromaHeight,
            description.colors.isLeft != 0 ? Quarter / chromaWidth : 0,
            description.colors.isTop != 0 ? Quarter / chromaHeight : 0};
}

/** The uniform block of the shaders. */
struct Uniforms {
    float position[16];
    float colors[16];
    QVector4D chroma;
    QVector2D crChannel;
    float opacity;
};

class PlanarShader : public QSGMaterialShader {
public:
    PlanarShader()
    {
        setShaderFileName(VertexStage, QStringLiteral(":/voro/multimedia/shaders/planes.vert.qsb"));
        setShaderFileName(FragmentStage, QStringLiteral(":/voro/multimedia/shaders/planes.frag.qsb"));
    }

    bool updateUniformData(RenderState &state, QSGMaterial *material, QSGMaterial *former) override
    {
        Uniforms uniforms;
        std::memcpy(&uniforms, state.uniformData()->constData(), sizeof uniforms);
        if (state.isMatrixDirty()) {
            std::memcpy(uniforms.position, state.combinedMatrix().constData(), sizeof uniforms.position);
        }
        if (state.isOpacityDirty()) {
            uniforms.opacity = state.opacity();
        }
        if (material != former) {
            const PlanarDescription &description = static_cast<PlanarMaterial *>(material)->description();
            std::memcpy(uniforms.colors, colorMatrix(description).constData(), sizeof uniforms.colors);
            uniforms.chroma = chromaCoordinates(description);
            const bool isPair = renderer::planesOf(description.frame.format).size() == 2;
            uniforms.crChannel = isPair ? QVector2D(0, 1) : QVector2D(1, 0);
        }
        std::memcpy(state.uniformData()->data(), &uniforms, sizeof uniforms);
        return state.isMatrixDirty() || state.isOpacityDirty() || material != former;
    }

    void updateSampledImage(RenderState &state, int binding, QSGTexture **texture, QSGMaterial *material,
                            QSGMaterial *) override
    {
        *texture = static_cast<PlanarMaterial *>(material)->texture(static_cast<size_t>(binding) - 1);
        (*texture)->commitTextureOperations(state.rhi(), state.resourceUpdateBatch());
    }
};

} // namespace

QMatrix4x4 colorMatrix(const PlanarDescription &description)
{
    struct Weights {
        float red;
        float blue;
    };
    constexpr Weights All[]{{0.299F, 0.114F}, {0.2126F, 0.0722F}, {0.2627F, 0.0593F}};
    const auto [red, blue] = All[static_cast<size_t>(description.colors.matrix)];
    const float green = 1 - red - blue;

    // What is sampled as 1, in steps of eight bits; a step of ten bits is a quarter.
    float sampled = 255;
    float full = 255;
    if (description.frame.format == FrameFormat::I420Ten) {
        sampled = 65535.0F / 4;
        full = 1023.0F / 4;
    } else if (description.frame.format == FrameFormat::P010) {
        sampled = 65535.0F / 256;
        full = 1023.0F / 4;
    }
    const bool isLimited = description.colors.range == FrameRange::Limited;
    const float luma = isLimited ? 219 : full;
    const float chroma = isLimited ? 224 : full;
    const QMatrix4x4 levels(sampled / luma, 0, 0, isLimited ? -16 / luma : 0, //
                            0, sampled / chroma, 0, -128 / chroma,            //
                            0, 0, sampled / chroma, -128 / chroma,            //
                            0, 0, 0, 1);
    const QMatrix4x4 mixture(1, 0, 2 * (1 - red), 0,                                             //
                             1, -2 * blue * (1 - blue) / green, -2 * red * (1 - red) / green, 0, //
                             1, 2 * (1 - blue), 0, 0,                                            //
                             0, 0, 0, 1);
    return mixture * levels;
}

PlanarMaterial::PlanarMaterial(const PlanarDescription &description) : m_description(description)
{
    const size_t planes = renderer::planesOf(description.frame.format).size();
    for (size_t i = 0; i < planes; ++i) {
        m_textures.push_back(std::make_unique<PlaneTexture>(description.frame.format, i));
    }
}

QSGMaterialType *PlanarMaterial::type() const
{
    static QSGMaterialType type;
    return &type;
}

QSGMaterialShader *PlanarMaterial::createShader(QSGRendererInterface::RenderMode) const
{
    return new PlanarShader;
}

int PlanarMaterial::compare(const QSGMaterial *other) const
{
    const qint64 own = texture(0)->comparisonKey();
    const qint64 others = static_cast<const PlanarMaterial *>(other)->texture(0)->comparisonKey();
    return own < others ? -1 : static_cast<int>(own > others);
}

void PlanarMaterial::setFrame(const std::shared_ptr<renderer::Frame> &frame)
{
    for (const auto &plane : m_textures) {
        plane->setFrame(frame);
    }
}

PlaneTexture *PlanarMaterial::texture(size_t index) const
{
    return m_textures[std::min(index, m_textures.size() - 1)].get();
}

PlanarNode::PlanarNode() : m_geometry(QSGGeometry::defaultAttributes_TexturedPoint2D(), 4)
{
    setGeometry(&m_geometry);
}

void PlanarNode::setFrame(const std::shared_ptr<renderer::Frame> &frame)
{
    if (!m_material || m_material->description() != frame->description()) {
        auto material = std::make_unique<PlanarMaterial>(frame->description());
        setMaterial(material.get());
        m_material = std::move(material);
    }
    m_material->setFrame(frame);
    markDirty(DirtyMaterial);
}

void PlanarNode::setRects(const QRectF &target, const QRectF &source)
{
    const QSizeF size = m_material->texture(0)->textureSize();
    const QRectF part(source.x() / size.width(), source.y() / size.height(), source.width() / size.width(),
                      source.height() / size.height());
    QSGGeometry::updateTexturedRectGeometry(&m_geometry, target, part);
    markDirty(DirtyGeometry);
}

} // namespace voro::qml
