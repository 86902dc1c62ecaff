#include "imagerendernode.h"

#include "roundedimagenode.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QVector4D>

namespace component_imagerender {

namespace {

// A crop that cuts no more than a hundredth off is no crop: the picture is stretched by that sliver instead.
// Distances to the corners are measured in item pixels, so corners are circles.
const char fragmentShaderText[] = R"(
uniform lowp float qt_Opacity;
uniform lowp sampler2D tex_bg;
uniform lowp sampler2D tex_src;
uniform lowp float radiusTopLeft;
uniform lowp float radiusTopRight;
uniform lowp float radiusBottomLeft;
uniform lowp float radiusBottomRight;
uniform lowp vec4 area_bg;
uniform lowp vec4 area_src;
uniform lowp vec4 area_display_bg;
uniform lowp vec4 area_display_src;
uniform lowp vec2 viewSize;
varying highp vec2 vTexCoord;
float udRoundBox(vec2 p, vec2 b, float r) {
    return length(max(abs(p)-b+r,0.0))-r;
}
vec2 texturePos(vec4 display, vec4 source, vec2 pos) {
    if (pos.x < display.s || pos.y < display.t ||
        pos.x > display.s + display.p || pos.y > display.t + display.q) {
        return vec2(-1.0, -1.0);
    } else {
        if (source.x > 0.01 || source.y > 0.01) {
            return vec2(pos.x * source.p + source.s, pos.y * source.q + source.t);
        } else {
            return vec2((pos.x - display.x) / display.p, (pos.y - display.y) / display.q);
        }
    }
}
void main() {
    vec2 pos = texturePos(area_display_bg, area_bg, vTexCoord);
    vec4 pixel_bg = vec4(0.0, 0.0, 0.0, 0.0);
    if (pos.x >= 0.0 && pos.y >= 0.0) {
        pixel_bg = texture2D(tex_bg, pos);
    }
    pos = texturePos(area_display_src, area_src, vTexCoord);
    vec4 pixel_src = vec4(0.0, 0.0, 0.0, 0.0);
    if (pos.x >= 0.0 && pos.y >= 0.0) {
        pixel_src = texture2D(tex_src, pos);
    }
    lowp vec4 pixel = vec4(pixel_bg.rgb * (1.0 - pixel_src.a) + pixel_src.rgb * pixel_src.a,
                           max(pixel_bg.a, pixel_src.a));
    float r = 0.0;
    if (vTexCoord.x < 0.5 && vTexCoord.y < 0.5) {
        r = radiusTopLeft;
    } else if (vTexCoord.x > 0.5 && vTexCoord.y < 0.5) {
        r = radiusTopRight;
    } else if (vTexCoord.x < 0.5 && vTexCoord.y > 0.5) {
        r = radiusBottomLeft;
    } else if (vTexCoord.x > 0.5 && vTexCoord.y > 0.5) {
        r = radiusBottomRight;
    }
    if (r < 0.001) {
        gl_FragColor = pixel * qt_Opacity;
    } else {
        lowp vec2 pos = (vTexCoord.xy - 0.5) * viewSize;
        float b = udRoundBox(pos, vec2(0.5 * viewSize.x, 0.5 * viewSize.y), r);
        vec4 c = mix(pixel, vec4(0.0, 0.0, 0.0, 0.0), smoothstep(-1.0, 1.0, b));
        gl_FragColor = c * qt_Opacity;
    }
}
)";

constexpr int backgroundUnit = 0;
constexpr int sourceUnit = 1;

QVector4D toVector(const QRectF &area)
{
    return QVector4D(float(area.x()), float(area.y()), float(area.width()), float(area.height()));
}

void bindAt(int unit, QSGTexture *texture)
{
    QOpenGLContext::currentContext()->functions()->glActiveTexture(GLenum(GL_TEXTURE0 + unit));
    if (texture)
        texture->bind();
}

class ImageRenderBlendShader : public QSGSimpleMaterialShader<ImageRenderState>
{
public:
    [[nodiscard]] static QSGMaterialShader *create() { return new ImageRenderBlendShader; }

    [[nodiscard]] const char *vertexShader() const override { return roundedimage::vertexShaderText; }
    [[nodiscard]] const char *fragmentShader() const override { return fragmentShaderText; }

    void updateState(const ImageRenderState *state, const ImageRenderState *) override
    {
        QOpenGLShaderProgram *shader = program();
        shader->setUniformValue(topLeftId, state->radiusTopLeft);
        shader->setUniformValue(topRightId, state->radiusTopRight);
        shader->setUniformValue(bottomLeftId, state->radiusBottomLeft);
        shader->setUniformValue(bottomRightId, state->radiusBottomRight);
        shader->setUniformValue(areaBackgroundId, toVector(state->areaBackground));
        shader->setUniformValue(areaSourceId, toVector(state->areaSource));
        shader->setUniformValue(areaDisplayBackgroundId, toVector(state->areaDisplayBackground));
        shader->setUniformValue(areaDisplaySourceId, toVector(state->areaDisplaySource));
        shader->setUniformValue(viewSizeId, state->viewSize);
        // Unit 0 last: the scene graph expects it to be the active one.
        bindAt(sourceUnit, state->textureSource);
        bindAt(backgroundUnit, state->textureBackground);
    }

    void resolveUniforms() override
    {
        QOpenGLShaderProgram *shader = program();
        topLeftId = shader->uniformLocation("radiusTopLeft");
        topRightId = shader->uniformLocation("radiusTopRight");
        bottomLeftId = shader->uniformLocation("radiusBottomLeft");
        bottomRightId = shader->uniformLocation("radiusBottomRight");
        areaBackgroundId = shader->uniformLocation("area_bg");
        areaSourceId = shader->uniformLocation("area_src");
        areaDisplayBackgroundId = shader->uniformLocation("area_display_bg");
        areaDisplaySourceId = shader->uniformLocation("area_display_src");
        viewSizeId = shader->uniformLocation("viewSize");
        shader->setUniformValue("tex_bg", backgroundUnit);
        shader->setUniformValue("tex_src", sourceUnit);
    }

    [[nodiscard]] QList<QByteArray> attributes() const override
    {
        return {QByteArrayLiteral("aVertex"), QByteArrayLiteral("aTexCoord")};
    }

private:
    int topLeftId = -1;
    int topRightId = -1;
    int bottomLeftId = -1;
    int bottomRightId = -1;
    int areaBackgroundId = -1;
    int areaSourceId = -1;
    int areaDisplayBackgroundId = -1;
    int areaDisplaySourceId = -1;
    int viewSizeId = -1;
};

constexpr int vertices = 4;

QSGSimpleMaterial<ImageRenderState> *createMaterial()
{
    // Qt 5.15 warns that the class ends with Qt 5. So does the OpenGL renderer that the shader is made for.
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return new QSGSimpleMaterial<ImageRenderState>(ImageRenderBlendShader::create);
    QT_WARNING_POP
}

void replace(QSGTexture *&stored, QSGTexture *texture)
{
    delete stored;
    stored = texture;
    if (texture)
        texture->setFiltering(QSGTexture::Linear);
}

} // namespace

ImageRenderState::~ImageRenderState()
{
    delete textureBackground;
    delete textureSource;
}

ImageRenderNode::ImageRenderNode()
    : geometry(QSGGeometry::defaultAttributes_TexturedPoint2D(), vertices, 0, GL_UNSIGNED_SHORT)
    , material(createMaterial())
{
    material->setFlag(QSGMaterial::Blending, true);
    setMaterial(material);
    setFlag(QSGNode::OwnsMaterial, true);
    setGeometry(&geometry);
}

ImageRenderState *ImageRenderNode::state()
{
    return material->state();
}

void ImageRenderNode::setBackgroundTexture(QSGTexture *texture)
{
    replace(material->state()->textureBackground, texture);
}

void ImageRenderNode::setSourceTexture(QSGTexture *texture)
{
    replace(material->state()->textureSource, texture);
}

void ImageRenderNode::setRect(const QRectF &rect)
{
    QSGGeometry::updateTexturedRectGeometry(&geometry, rect, QRectF(0, 0, 1, 1));
}

void ImageRenderNode::markChanged()
{
    markDirty(QSGNode::DirtyGeometry | QSGNode::DirtyMaterial);
}

} // namespace component_imagerender
