#include "roundedimagenode.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>

namespace roundedimage {

const char vertexShaderText[] = R"(
attribute highp vec4 aVertex;
attribute highp vec2 aTexCoord;
uniform highp mat4 qt_Matrix;
varying highp vec2 vTexCoord;
void main() {
    gl_Position = qt_Matrix * aVertex;
    vTexCoord = aTexCoord;
}
)";

namespace {

// The picture is the unit square, so a radius given as a fraction of the shorter side makes elliptical
// corners in an item that is not square. Texels are premultiplied: mixing towards zero fades colour and alpha
// alike.
const char fragmentShaderText[] = R"(
uniform lowp float qt_Opacity;
uniform lowp sampler2D photo;
uniform lowp float radius;
uniform lowp float radiusTopLeft;
uniform lowp float radiusTopRight;
uniform lowp float radiusBottomLeft;
uniform lowp float radiusBottomRight;
varying highp vec2 vTexCoord;
float udRoundBox(vec2 p, vec2 b, float r) {
    return length(max(abs(p)-b+r,0.0))-r;
}
void main() {
    lowp vec4 pixel = texture2D(photo, vTexCoord);
    if (radius < 0.001) {
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
            lowp vec2 pos = vTexCoord.xy - 0.5;
            float b = udRoundBox(pos, vec2(0.5, 0.5), r);
            vec4 c = mix(pixel, vec4(0.0, 0.0, 0.0, 0.0), smoothstep(-0.01, 0.01, b));
            gl_FragColor = c * qt_Opacity;
        }
    } else {
        lowp vec2 pos = vTexCoord.xy - 0.5;
        float b = udRoundBox(pos, vec2(0.5, 0.5), radius);
        vec4 c = mix(pixel, vec4(0.0, 0.0, 0.0, 0.0), smoothstep(-0.01, 0.01, b));
        gl_FragColor = c * qt_Opacity;
    }
}
)";

class RoundedImageBlendShader : public QSGSimpleMaterialShader<RoundedImageState>
{
public:
    [[nodiscard]] static QSGMaterialShader *create() { return new RoundedImageBlendShader; }

    [[nodiscard]] const char *vertexShader() const override { return vertexShaderText; }
    [[nodiscard]] const char *fragmentShader() const override { return fragmentShaderText; }

    void updateState(const RoundedImageState *state, const RoundedImageState *) override
    {
        QOpenGLShaderProgram *shader = program();
        shader->setUniformValue(radiusId, state->radius);
        shader->setUniformValue(topLeftId, state->radiusTopLeft);
        shader->setUniformValue(topRightId, state->radiusTopRight);
        shader->setUniformValue(bottomLeftId, state->radiusBottomLeft);
        shader->setUniformValue(bottomRightId, state->radiusBottomRight);
        QOpenGLContext::currentContext()->functions()->glActiveTexture(GL_TEXTURE0);
        if (state->texture)
            state->texture->bind();
    }

    void resolveUniforms() override
    {
        QOpenGLShaderProgram *shader = program();
        radiusId = shader->uniformLocation("radius");
        topLeftId = shader->uniformLocation("radiusTopLeft");
        topRightId = shader->uniformLocation("radiusTopRight");
        bottomLeftId = shader->uniformLocation("radiusBottomLeft");
        bottomRightId = shader->uniformLocation("radiusBottomRight");
        shader->setUniformValue("photo", 0); // the unit that updateState() binds
    }

    [[nodiscard]] QList<QByteArray> attributes() const override
    {
        return {QByteArrayLiteral("aVertex"), QByteArrayLiteral("aTexCoord")};
    }

private:
    int radiusId = -1;
    int topLeftId = -1;
    int topRightId = -1;
    int bottomLeftId = -1;
    int bottomRightId = -1;
};

constexpr int vertices = 4;

QSGSimpleMaterial<RoundedImageState> *createMaterial()
{
    // Qt 5.15 warns that the class ends with Qt 5. So does the OpenGL renderer that the shader is made for.
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return new QSGSimpleMaterial<RoundedImageState>(RoundedImageBlendShader::create);
    QT_WARNING_POP
}

} // namespace

RoundedImageState::~RoundedImageState()
{
    delete texture;
}

RoundedImageNode::RoundedImageNode()
    : geometry(QSGGeometry::defaultAttributes_TexturedPoint2D(), vertices, 0, GL_UNSIGNED_SHORT)
    , material(createMaterial())
{
    material->setFlag(QSGMaterial::Blending, true);
    setMaterial(material);
    setFlag(QSGNode::OwnsMaterial, true);
    setGeometry(&geometry);
}

RoundedImageState *RoundedImageNode::state()
{
    return material->state();
}

void RoundedImageNode::setTexture(QSGTexture *texture)
{
    RoundedImageState *values = material->state();
    delete values->texture;
    values->texture = texture;
    if (texture)
        texture->setFiltering(QSGTexture::Linear);
}

void RoundedImageNode::setRect(const QRectF &rect)
{
    QSGGeometry::updateTexturedRectGeometry(&geometry, rect, QRectF(0, 0, 1, 1));
    markDirty(QSGNode::DirtyGeometry | QSGNode::DirtyMaterial);
}

} // namespace roundedimage
