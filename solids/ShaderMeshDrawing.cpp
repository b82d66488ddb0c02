// SPDX-License-Identifier: MIT
#include "solids/ShaderMeshDrawing.h"

#include "imaging/TextureMap.h"
#include "imaging/TextureUpload.h"
#include "orvane/Error.h"
#include "solids/MeshTransform.h"
#include "solids/drawing/LightingShaders.h"
#include "solids/drawing/OpenGLFunctions.h"
#include "solids/drawing/ShaderProgram.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace orvane
{

namespace
{

// Names that OpenGL 1.1 does not have.
constexpr GLenum activeTexture = 0x84E0;
constexpr GLenum firstTextureUnit = 0x84C0;
constexpr GLenum blendSourceColor = 0x80C9;
constexpr GLenum blendTargetColor = 0x80C8;

/// What a picture does to the colour of a surface, as the shaders number it.
enum class TextureMode
{
    None,
    Modulate,
    Decal
};

// The numbers of the vertices' attributes, in the order that ShaderProgram is made with.
constexpr unsigned positionAttribute = 0;
constexpr unsigned normalAttribute = 1;
constexpr unsigned textureAttribute = 2;

struct NodeDrawing
{
    MeshTransform transform;
    GLuint texture = 0;  ///< 0 for none
    TextureMode mode = TextureMode::None;
};

/// Consecutive triangles that are drawn with the same state.
struct Range
{
    std::size_t node;
    int material;
    bool isImported;  ///< of a mesh from a file, which is seen from both sides
    std::size_t firstIndex;
    std::size_t indexCount;
};

/// The product of two matrices of 16 numbers, as glMultMatrixd computes it.
std::array<double, 16> Product(const std::array<double, 16>& a, const std::array<double, 16>& b)
{
    std::array<double, 16> product = {};
    for (std::size_t column = 0; column < 4; ++column)
    {
        for (std::size_t row = 0; row < 4; ++row)
        {
            for (std::size_t i = 0; i < 4; ++i)
            {
                product[4 * column + row] += a[4 * i + row] * b[4 * column + i];
            }
        }
    }
    return product;
}

template <std::size_t count>
std::array<float, count> Floats(const std::array<double, count>& numbers)
{
    std::array<float, count> floats;
    std::transform(numbers.begin(), numbers.end(), floats.begin(),
                   [](double number) { return static_cast<float>(number); });
    return floats;
}

std::array<float, 4> NumbersOf(const ColorVector& color)
{
    return {color.red, color.green, color.blue, color.alpha};
}

/// The numbers of ShaderProgram's material, as ApplyMaterial sets them one material after another.
class CurrentMaterial
{
public:
    void Apply(const NamedColor& material)
    {
        const ColorVector emission = material.GetEmissionColor();
        if (emission.red == 0 && emission.green == 0 && emission.blue == 0)
        {
            numbers_[0] = NumbersOf(material.GetAmbientColor());
            numbers_[1] = NumbersOf(material.GetDiffuseColor());
        }
        numbers_[2] = NumbersOf(material.GetSpecularColor());
        numbers_[3] = NumbersOf(emission);
        numbers_[4][0] = material.GetShininess();
    }
    const std::array<float, 4>* Numbers() const { return numbers_; }
    static constexpr int count = 5;

private:
    // OpenGL's initial values of ambient, diffuse, specular, emission and shininess.
    std::array<float, 4> numbers_[count] = {
        {0.2f, 0.2f, 0.2f, 1}, {0.8f, 0.8f, 0.8f, 1}, {0, 0, 0, 1}, {0, 0, 0, 1}, {0, 0, 0, 0}};
};

void SetEnabled(GLenum capability, GLboolean isEnabled)
{
    isEnabled != GL_FALSE ? glEnable(capability) : glDisable(capability);
}

GLint IntegerOf(GLenum name)
{
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

/// The number of the unit that OpenGL's texture functions are for, from 0.
int CurrentTextureUnit()
{
    return IntegerOf(activeTexture) - static_cast<GLint>(firstTextureUnit);
}

/// The state that a drawing changes. Restores it at its end.
class KeptState
{
public:
    KeptState(const ShaderProgram& program, const BufferFunctions& buffers)
        : usage_(program), program_(program), buffers_(buffers)
    {
        program_.SelectTextureUnit(0);
        texture_ = IntegerOf(GL_TEXTURE_BINDING_2D);
        glGetBooleanv(GL_DEPTH_WRITEMASK, &writesDepth_);
    }
    ~KeptState()
    {
        glDepthMask(writesDepth_);
        glBlendFunc(static_cast<GLenum>(blendSource_), static_cast<GLenum>(blendTarget_));
        SetEnabled(GL_BLEND, isBlending_);
        SetEnabled(GL_CULL_FACE, isCulling_);
        glFrontFace(static_cast<GLenum>(frontFace_));
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture_));
        program_.SelectTextureUnit(unit_);
        buffers_.bindVertexArray(static_cast<GLuint>(arrays_));
    }
    KeptState(const KeptState&) = delete;
    KeptState& operator=(const KeptState&) = delete;

    GLboolean IsCulling() const { return isCulling_; }

private:
    const ShaderProgram::Usage usage_;
    const ShaderProgram& program_;
    const BufferFunctions& buffers_;
    GLint arrays_ = IntegerOf(vertexArrayBinding);
    int unit_ = CurrentTextureUnit();
    GLint texture_ = 0;  ///< of the first unit
    GLint frontFace_ = IntegerOf(GL_FRONT_FACE);
    GLint blendSource_ = IntegerOf(blendSourceColor);
    GLint blendTarget_ = IntegerOf(blendTargetColor);
    GLboolean isCulling_ = glIsEnabled(GL_CULL_FACE);
    GLboolean isBlending_ = glIsEnabled(GL_BLEND);
    GLboolean writesDepth_ = GL_TRUE;
};

}  // namespace

struct ShaderMeshDrawing::Contents
{
    Contents() : buffers(FindBufferFunctions()) {}
    ~Contents() { Free(); }
    Contents(const Contents&) = delete;
    Contents& operator=(const Contents&) = delete;

    void Free();
    void StoreTriangles(const SolidMesh& mesh);
    void StoreTexture(const TextureMap& texture, NodeDrawing& node) const;
    void SetView(const ShaderView& view) const;
    void SetNode(const ShaderView& view, const NodeDrawing& node) const;
    void SetMaterial(const Range& range, CurrentMaterial& current) const;

    ShaderProgram program{
        lightingVertexShader, lightingFragmentShader, {"position", "normal", "texturePlace"}};
    std::shared_ptr<const BufferFunctions> buffers;  ///< every context with shaders has them
    GLuint arrays = 0;                               ///< a vertex array object; 0 without a mesh
    GLuint names[2] = {};                            ///< of the buffers of vertices and indices
    std::vector<NodeDrawing> nodes;
    std::vector<NamedColor> materials;
    std::vector<Range> ranges;
};

void ShaderMeshDrawing::Contents::Free()
{
    for (const NodeDrawing& node : nodes)
    {
        glDeleteTextures(node.texture != 0 ? 1 : 0, &node.texture);
    }
    nodes.clear();
    ranges.clear();
    if (arrays != 0)
    {
        buffers->deleteVertexArrays(1, &arrays);
        buffers->deleteBuffers(2, names);
        arrays = 0;
    }
}

void ShaderMeshDrawing::Contents::StoreTriangles(const SolidMesh& mesh)
{
    const GLint previousArrays = IntegerOf(vertexArrayBinding);
    const GLint previousBuffer = IntegerOf(arrayBufferBinding);
    buffers->genVertexArrays(1, &arrays);
    buffers->genBuffers(2, names);
    buffers->bindVertexArray(arrays);
    buffers->bindBuffer(arrayBuffer, names[0]);
    buffers->bufferData(arrayBuffer,
                        static_cast<std::ptrdiff_t>(mesh.vertices.size() * sizeof(MeshVertex)),
                        mesh.vertices.data(), staticDraw);
    constexpr std::size_t stride = sizeof(MeshVertex);
    program.SetAttribute(positionAttribute, 3, stride, offsetof(MeshVertex, position));
    program.SetAttribute(normalAttribute, 3, stride, offsetof(MeshVertex, normal));
    program.SetAttribute(textureAttribute, 2, stride, offsetof(MeshVertex, texture));
    buffers->bindBuffer(elementArrayBuffer, names[1]);
    buffers->bufferData(elementArrayBuffer,
                        static_cast<std::ptrdiff_t>(mesh.indices.size() * sizeof(std::uint32_t)),
                        mesh.indices.data(), staticDraw);
    buffers->bindVertexArray(static_cast<GLuint>(previousArrays));
    buffers->bindBuffer(arrayBuffer, static_cast<GLuint>(previousBuffer));
}

void ShaderMeshDrawing::Contents::StoreTexture(const TextureMap& texture, NodeDrawing& node) const
{
    const int unit = CurrentTextureUnit();
    program.SelectTextureUnit(0);
    const GLint previous = IntegerOf(GL_TEXTURE_BINDING_2D);
    TextureMap copy(texture);  // loading its picture changes it
    glGenTextures(1, &node.texture);
    glBindTexture(GL_TEXTURE_2D, node.texture);
    if (UploadTexture(copy))
    {
        node.mode = copy.modulate != 0 ? TextureMode::Modulate : TextureMode::Decal;
    }
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(previous));
    program.SelectTextureUnit(unit);
}

void ShaderMeshDrawing::Contents::SetView(const ShaderView& view) const
{
    constexpr std::size_t most = ShaderView::maxLights;
    const std::size_t count = std::min(view.lights.size(), most);
    std::array<float, 4> ambient[most] = {};
    std::array<float, 4> diffuse[most] = {};
    std::array<float, 4> specular[most] = {};
    std::array<float, 4> position[most] = {};
    std::array<float, 4> spot[most] = {};  // the direction and the cosine of the cutoff
    float exponent[most] = {};
    for (std::size_t i = 0; i < count; ++i)
    {
        const ShaderLight& light = view.lights[i];
        constexpr float withoutCone = 180;
        constexpr double degree = 3.14159265358979323846 / 180;
        const double cosine =
            light.spotCutoff == withoutCone ? -2 : std::cos(double{light.spotCutoff} * degree);
        ambient[i] = light.ambient;
        diffuse[i] = light.diffuse;
        specular[i] = light.specular;
        position[i] = light.position;
        if (light.position[3] != 0)
        {
            for (float& number : position[i])
            {
                number /= light.position[3];
            }
        }
        const std::array<float, 3>& direction = light.spotDirection;
        spot[i] = {direction[0], direction[1], direction[2], static_cast<float>(cosine)};
        exponent[i] = light.spotExponent;
    }
    program.Set("lightAmbient", ambient, most);
    program.Set("lightDiffuse", diffuse, most);
    program.Set("lightSpecular", specular, most);
    program.Set("lightPosition", position, most);
    program.Set("lightSpot", spot, most);
    program.Set("lightExponent", exponent, most);
    program.Set("lightCount", static_cast<int>(count));
    program.Set("globalAmbient", view.globalAmbient);
    program.Set("hasLocalViewer", view.hasLocalViewer ? 1 : 0);
    program.Set("picture", 0);
}

void ShaderMeshDrawing::Contents::SetNode(const ShaderView& view, const NodeDrawing& node) const
{
    const MeshTransform eye = MeshTransform{view.camera} * node.transform;
    const std::array<double, 16> normals = eye.ForNormals().matrix;
    // A matrix of large or small numbers would give squares that no float can hold.
    double largest = 0;
    for (const double number : normals)
    {
        largest = std::max(largest, std::abs(number));
    }
    std::array<double, 9> unscaled = {};
    for (std::size_t i = 0; i < unscaled.size(); ++i)
    {
        unscaled[i] = normals[4 * (i / 3) + i % 3] / (largest > 0 ? largest : 1);
    }
    program.Set("clipFromObject", Floats(Product(view.projection, eye.matrix)));
    program.Set("eyeFromObject", Floats(eye.matrix));
    program.Set("eyeNormalFromObject", Floats(unscaled));
    program.Set("textureMode", static_cast<int>(node.mode));
    glBindTexture(GL_TEXTURE_2D, node.texture);
}

void ShaderMeshDrawing::Contents::SetMaterial(const Range& range, CurrentMaterial& current) const
{
    const NamedColor& material = materials[static_cast<std::size_t>(range.material)];
    current.Apply(material);
    program.Set("material", current.Numbers(), CurrentMaterial::count);
    if (range.isImported)
    {
        return;  // blending stays as it is, as in immediate mode
    }
    const bool isTransparent = material.IsTransparent() != 0;
    SetEnabled(GL_BLEND, isTransparent ? GL_TRUE : GL_FALSE);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDepthMask(isTransparent ? GL_FALSE : GL_TRUE);
}

ShaderMeshDrawing::ShaderMeshDrawing()
{
    constexpr double oldest = 3.2;
    if (CurrentOpenGLVersion() < oldest)
    {
        const auto* const version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
        throw Error("OpenGL", version != nullptr ? version : "no context",
                    "a context of version 3.2 or newer");
    }
    contents_ = std::make_unique<Contents>();
}

ShaderMeshDrawing::~ShaderMeshDrawing() = default;

void ShaderMeshDrawing::SetMesh(const SolidMesh& mesh)
{
    contents_->Free();
    contents_->materials = mesh.materials;
    for (const MeshNode& node : mesh.nodes)
    {
        NodeDrawing& drawing = contents_->nodes.emplace_back();
        drawing.transform.matrix = node.transform;
        if (node.texture != nullptr)
        {
            contents_->StoreTexture(*node.texture, drawing);
        }
    }
    for (const MeshGroup& group : mesh.groups)
    {
        const Range range = {static_cast<std::size_t>(group.node), group.material,
                             group.part == MeshPart::Surface, group.firstIndex, group.indexCount};
        std::vector<Range>& ranges = contents_->ranges;
        if (!ranges.empty() && ranges.back().node == range.node &&
            ranges.back().material == range.material &&
            ranges.back().isImported == range.isImported)
        {
            ranges.back().indexCount += range.indexCount;
            continue;
        }
        ranges.push_back(range);
    }
    contents_->StoreTriangles(mesh);
}

void ShaderMeshDrawing::Draw(const ShaderView& view) const
{
    const Contents& contents = *contents_;
    if (contents.arrays == 0)
    {
        return;
    }
    const KeptState kept(contents.program, *contents.buffers);
    contents.buffers->bindVertexArray(contents.arrays);
    contents.SetView(view);
    glFrontFace(GL_CCW);
    CurrentMaterial material;
    const Range* last = nullptr;
    for (const Range& range : contents.ranges)
    {
        if (last == nullptr || last->node != range.node)
        {
            contents.SetNode(view, contents.nodes[range.node]);
            SetEnabled(GL_CULL_FACE, range.isImported ? GL_FALSE : kept.IsCulling());
            contents.program.Set("isTwoSided", range.isImported ? 1 : 0);
        }
        contents.SetMaterial(range, material);
        last = &range;
        glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(range.indexCount), GL_UNSIGNED_INT,
                       PlaceInBuffer(range.firstIndex * sizeof(std::uint32_t)));
    }
}

}  // namespace orvane
