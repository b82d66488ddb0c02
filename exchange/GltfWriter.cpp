// SPDX-License-Identifier: MIT
#include "exchange/Formats.h"
#include "exchange/MeshParts.h"
#include "exchange/TexturePng.h"
#include "imaging/TextureMap.h"
#include "material/MetallicRoughness.h"
#include "orvane/Error.h"
#include "orvane/version.h"
#include "solids/NodeTransform.h"

#include <tiny_gltf.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>
#include <ostream>
#include <streambuf>
#include <utility>

namespace orvane
{

namespace
{

constexpr double degree = std::numbers::pi / 180;

/// A stream that hands its bytes to a sink.
class SinkBuffer : public std::streambuf
{
public:
    explicit SinkBuffer(ByteSink& sink) : sink_(sink) {}

private:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override
    {
        sink_.Write(bytes, static_cast<std::size_t>(count));
        return count;
    }
    int_type overflow(int_type byte) override
    {
        const char character = traits_type::to_char_type(byte);
        sink_.Write(&character, 1);
        return traits_type::not_eof(byte);
    }

    ByteSink& sink_;
};

/// Whether a transform can stay with its node: glTF allows only scaling, turning and moving, so the
/// three axes must stay perpendicular to each other and must not vanish. A mirrored node would be
/// allowed, but some programs then take the insides of its triangles for the outsides.
bool CanStayWithNode(const std::array<double, 16>& m)
{
    constexpr double tolerance = 1e-6;
    const MeshPoint axes[3] = {{m[0], m[1], m[2]}, {m[4], m[5], m[6]}, {m[8], m[9], m[10]}};
    double lengths[3];
    for (std::size_t i = 0; i < 3; ++i)
    {
        lengths[i] = std::sqrt(Dot(axes[i], axes[i]));
        if (!(lengths[i] > 1e-6 && lengths[i] < 1e6))
        {
            return false;
        }
    }
    const auto arePerpendicular = [&](std::size_t i, std::size_t j) {
        return std::abs(Dot(axes[i], axes[j])) <= tolerance * lengths[i] * lengths[j];
    };
    return arePerpendicular(0, 1) && arePerpendicular(1, 2) && arePerpendicular(2, 0) &&
           !NodeTransform(m).IsMirrored();
}

/// Fills tinygltf's model.
class GltfBuilder
{
public:
    GltfBuilder(const MeshScene& scene, const MeshFileOptions& options)
        : scene_(scene), mesh_(scene.mesh), looks_(scene.mesh), cutter_(scene.mesh)
    {
        model.asset.version = "2.0";
        model.asset.generator = "Orvane " ORVANE_VERSION;
        model.scenes.resize(1);
        model.scenes[0].name = options.name;
        model.defaultScene = 0;
        model.buffers.resize(1);
        AddTextures();
        AddMaterials();
        AddNodes();
        AddCamera();
        AddLights();
        if (model.buffers[0].data.empty())
        {
            model.buffers.clear();
        }
    }

    tinygltf::Model model;

private:
    std::vector<unsigned char>& Data() { return model.buffers[0].data; }

    /// Makes a view of the bytes that were added to the buffer from an offset on.
    int AddView(std::size_t offset, int target)
    {
        tinygltf::BufferView& view = model.bufferViews.emplace_back();
        view.buffer = 0;
        view.byteOffset = offset;
        view.byteLength = Data().size() - offset;
        view.target = target;
        Data().resize((Data().size() + 3) / 4 * 4);  // every view begins at a multiple of 4
        return static_cast<int>(model.bufferViews.size() - 1);
    }

    /// Room for bytes at the end of the buffer. Valid until the buffer grows.
    unsigned char* AddRoom(std::size_t bytes)
    {
        Data().resize(Data().size() + bytes);
        return Data().data() + Data().size() - bytes;
    }

    /// Stores a number, and moves \p place behind it.
    template <typename Number>
    static void Store(Number number, unsigned char*& place)
    {
        std::memcpy(place, &number, sizeof(Number));
        if constexpr (std::endian::native == std::endian::big)
        {
            std::reverse(place, place + sizeof(Number));
        }
        place += sizeof(Number);
    }

    int AddAccessor(std::size_t offset, int target, int type, int componentType, std::size_t count)
    {
        const int view = AddView(offset, target);
        tinygltf::Accessor& accessor = model.accessors.emplace_back();
        accessor.bufferView = view;
        accessor.type = type;
        accessor.componentType = componentType;
        accessor.count = count;
        return static_cast<int>(model.accessors.size() - 1);
    }

    void AddTextures();
    void AddMaterials();
    void AddNodes();
    void AddCamera();
    void AddLights();
    int AddMesh(const std::vector<const MeshGroup*>& groups, const std::string& name,
                const NodeTransform& transform);
    tinygltf::Primitive MakePrimitive(const std::vector<const MeshGroup*>& groups,
                                      const NodeTransform& transform);
    int AddPositions(const MeshPiece& piece, const NodeTransform& transform);
    int AddNormals(const MeshPiece& piece, const NodeTransform& transform);
    int AddTextureCoordinates(const MeshPiece& piece);
    int AddIndices(const MeshPiece& piece);
    tinygltf::Node& AddNode(const std::string& name, const std::array<double, 16>& transform);

    const MeshScene& scene_;
    const SolidMesh& mesh_;
    MeshLooks looks_;
    MeshCutter cutter_;
};

void GltfBuilder::AddTextures()
{
    for (const TextureMap* const texture : looks_.Textures())
    {
        const std::vector<unsigned char> png = EncodeAsPng(*texture);
        const std::size_t offset = Data().size();
        Data().insert(Data().end(), png.begin(), png.end());
        tinygltf::Image& image = model.images.emplace_back();
        image.bufferView = AddView(offset, 0);
        image.mimeType = "image/png";
        tinygltf::Sampler& sampler = model.samplers.emplace_back();
        const auto quality = static_cast<TextureQuality>(texture->GetQuality());
        sampler.magFilter = quality == TextureQuality::Nearest ? TINYGLTF_TEXTURE_FILTER_NEAREST
                                                               : TINYGLTF_TEXTURE_FILTER_LINEAR;
        sampler.minFilter = quality == TextureQuality::Mipmap
                                ? TINYGLTF_TEXTURE_FILTER_LINEAR_MIPMAP_LINEAR
                                : sampler.magFilter;
        tinygltf::Texture& entry = model.textures.emplace_back();
        entry.source = static_cast<int>(model.images.size() - 1);
        entry.sampler = static_cast<int>(model.samplers.size() - 1);
    }
}

void GltfBuilder::AddMaterials()
{
    const std::vector<const TextureMap*> textures = looks_.Textures();
    for (const MeshLook& look : looks_.All())
    {
        const NamedColor& color = mesh_.materials[static_cast<std::size_t>(look.material)];
        const MetallicRoughness converted = ToMetallicRoughness(color);
        tinygltf::Material& material = model.materials.emplace_back();
        material.name = NameOfMaterial(color);
        tinygltf::PbrMetallicRoughness& surface = material.pbrMetallicRoughness;
        surface.baseColorFactor.assign(converted.baseColor.begin(), converted.baseColor.end());
        surface.metallicFactor = converted.isMetal ? 1 : 0;
        surface.roughnessFactor = converted.roughness;
        material.emissiveFactor.assign(converted.emission.begin(), converted.emission.end());
        material.alphaMode = converted.baseColor[3] < 1 ? "BLEND" : "OPAQUE";
        material.doubleSided = look.isTwoSided;
        if (look.texture != nullptr)
        {
            surface.baseColorTexture.index = static_cast<int>(
                std::find(textures.begin(), textures.end(), look.texture) - textures.begin());
            if (look.texture->modulate == 0)
            {
                // The picture replaces the colour, and white leaves the picture as it is.
                std::fill_n(surface.baseColorFactor.begin(), 3, 1.0);
            }
        }
    }
}

tinygltf::Node& GltfBuilder::AddNode(const std::string& name,
                                     const std::array<double, 16>& transform)
{
    model.scenes[0].nodes.push_back(static_cast<int>(model.nodes.size()));
    tinygltf::Node& node = model.nodes.emplace_back();
    node.name = name;
    if (transform != MeshNode().transform)
    {
        node.matrix.assign(transform.begin(), transform.end());
        node.matrix[3] = node.matrix[7] = node.matrix[11] = 0;
        node.matrix[15] = 1;
    }
    return node;
}

void GltfBuilder::AddNodes()
{
    const std::vector<std::vector<const MeshGroup*>> groups = GroupsByNode(mesh_);
    for (std::size_t i = 0; i < mesh_.nodes.size(); ++i)
    {
        if (groups[i].empty())
        {
            continue;
        }
        const MeshNode& node = mesh_.nodes[i];
        const std::array<double, 16> identity = MeshNode().transform;
        const bool stays = CanStayWithNode(node.transform);
        const int mesh =
            AddMesh(groups[i], node.name, NodeTransform(stays ? identity : node.transform));
        AddNode(node.name, stays ? node.transform : identity).mesh = mesh;
    }
}

int GltfBuilder::AddMesh(const std::vector<const MeshGroup*>& groups, const std::string& name,
                         const NodeTransform& transform)
{
    // One primitive for each part and look, in the order of their first groups.
    std::vector<std::pair<std::pair<MeshPart, std::size_t>, std::vector<const MeshGroup*>>> parts;
    for (const MeshGroup* const group : groups)
    {
        const std::pair key(group->part, looks_.IndexOf(*group));
        auto part = std::find_if(parts.begin(), parts.end(),
                                 [&key](const auto& each) { return each.first == key; });
        if (part == parts.end())
        {
            part = parts.insert(parts.end(), {key, {}});
        }
        part->second.push_back(group);
    }
    std::vector<tinygltf::Primitive> primitives;
    primitives.reserve(parts.size());
    for (const auto& part : parts)
    {
        primitives.push_back(MakePrimitive(part.second, transform));
    }
    tinygltf::Mesh& mesh = model.meshes.emplace_back();
    mesh.name = name;
    mesh.primitives = std::move(primitives);
    return static_cast<int>(model.meshes.size() - 1);
}

tinygltf::Primitive GltfBuilder::MakePrimitive(const std::vector<const MeshGroup*>& groups,
                                               const NodeTransform& transform)
{
    const MeshPiece piece = cutter_.Cut(groups, transform.IsMirrored());
    const std::size_t look = looks_.IndexOf(*groups.front());
    tinygltf::Primitive primitive;
    primitive.mode = TINYGLTF_MODE_TRIANGLES;
    primitive.material = static_cast<int>(look);
    primitive.attributes["POSITION"] = AddPositions(piece, transform);
    primitive.attributes["NORMAL"] = AddNormals(piece, transform);
    if (looks_.All()[look].texture != nullptr)
    {
        primitive.attributes["TEXCOORD_0"] = AddTextureCoordinates(piece);
    }
    primitive.indices = AddIndices(piece);
    return primitive;
}

int GltfBuilder::AddPositions(const MeshPiece& piece, const NodeTransform& transform)
{
    const std::size_t offset = Data().size();
    unsigned char* place = AddRoom(3 * sizeof(float) * piece.vertices.size());
    MeshBounds bounds;
    for (const std::uint32_t vertex : piece.vertices)
    {
        const MeshPoint world = transform.PositionInWorld(mesh_.vertices[vertex].position);
        const float stored[3] = {static_cast<float>(world[0]), static_cast<float>(world[1]),
                                 static_cast<float>(world[2])};
        bounds.Include(stored);
        for (const float number : stored)
        {
            Store(number, place);
        }
    }
    const int index = AddAccessor(offset, TINYGLTF_TARGET_ARRAY_BUFFER, TINYGLTF_TYPE_VEC3,
                                  TINYGLTF_COMPONENT_TYPE_FLOAT, piece.vertices.size());
    tinygltf::Accessor& accessor = model.accessors.back();
    accessor.minValues.assign(bounds.minimum.begin(), bounds.minimum.end());
    accessor.maxValues.assign(bounds.maximum.begin(), bounds.maximum.end());
    return index;
}

int GltfBuilder::AddNormals(const MeshPiece& piece, const NodeTransform& transform)
{
    const std::size_t offset = Data().size();
    unsigned char* place = AddRoom(3 * sizeof(float) * piece.vertices.size());
    for (const std::uint32_t vertex : piece.vertices)
    {
        MeshPoint normal = transform.NormalInWorld(mesh_.vertices[vertex].normal);
        if (normal == MeshPoint{0, 0, 0})
        {
            normal = {0, 0, 1};  // every normal of a glTF file has the length 1
        }
        for (const double number : normal)
        {
            Store(static_cast<float>(number), place);
        }
    }
    return AddAccessor(offset, TINYGLTF_TARGET_ARRAY_BUFFER, TINYGLTF_TYPE_VEC3,
                       TINYGLTF_COMPONENT_TYPE_FLOAT, piece.vertices.size());
}

int GltfBuilder::AddTextureCoordinates(const MeshPiece& piece)
{
    const std::size_t offset = Data().size();
    unsigned char* place = AddRoom(2 * sizeof(float) * piece.vertices.size());
    for (const std::uint32_t vertex : piece.vertices)
    {
        const float(&texture)[2] = mesh_.vertices[vertex].texture;
        Store(texture[0], place);
        Store(1 - texture[1], place);  // in glTF v points down
    }
    return AddAccessor(offset, TINYGLTF_TARGET_ARRAY_BUFFER, TINYGLTF_TYPE_VEC2,
                       TINYGLTF_COMPONENT_TYPE_FLOAT, piece.vertices.size());
}

int GltfBuilder::AddIndices(const MeshPiece& piece)
{
    // The largest number of each size means a new strip of triangles, not a vertex.
    const bool areShort = piece.vertices.size() <= std::numeric_limits<std::uint16_t>::max();
    const std::size_t offset = Data().size();
    unsigned char* place =
        AddRoom((areShort ? sizeof(std::uint16_t) : sizeof(std::uint32_t)) * piece.indices.size());
    for (const std::uint32_t index : piece.indices)
    {
        areShort ? Store(static_cast<std::uint16_t>(index), place) : Store(index, place);
    }
    return AddAccessor(
        offset, TINYGLTF_TARGET_ELEMENT_ARRAY_BUFFER, TINYGLTF_TYPE_SCALAR,
        areShort ? TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT : TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT,
        piece.indices.size());
}

void GltfBuilder::AddCamera()
{
    if (!scene_.camera)
    {
        return;
    }
    const MeshCamera& from = *scene_.camera;
    tinygltf::Camera& camera = model.cameras.emplace_back();
    if (from.isOrthographic)
    {
        camera.type = "orthographic";
        camera.orthographic.xmag = from.width / 2;
        camera.orthographic.ymag = from.height / 2;
        camera.orthographic.znear = from.nearest;
        camera.orthographic.zfar = from.farthest;
    }
    else
    {
        camera.type = "perspective";
        camera.perspective.yfov = from.fieldOfView * degree;
        camera.perspective.aspectRatio = from.aspect;
        camera.perspective.znear = from.nearest;
        camera.perspective.zfar = from.farthest;
    }
    AddNode("camera", from.transform).camera = 0;
}

void GltfBuilder::AddLights()
{
    for (const MeshLight& from : scene_.lights)
    {
        tinygltf::Light& light = model.lights.emplace_back();
        light.name = from.name;
        for (const float each : from.color)
        {
            light.color.push_back(LinearFromScreen(each));
        }
        // A light of OpenGL shows a white surface that it falls on at right angles in its own
        // colour. A diffuse surface of glTF needs an illumination of pi for that.
        light.intensity = std::numbers::pi;
        light.type = "directional";
        if (from.kind != MeshLight::Kind::Directional)
        {
            // Lights of OpenGL do not grow weaker with the distance, and those of glTF do.
            light.intensity *= from.distance * from.distance;
            light.type = from.kind == MeshLight::Kind::Spot ? "spot" : "point";
            light.spot.outerConeAngle = from.coneAngle * degree;
        }
        tinygltf::Node& node = AddNode(from.name, from.transform);
        tinygltf::Value::Object reference;
        reference["light"] = tinygltf::Value(static_cast<int>(model.lights.size() - 1));
        node.extensions["KHR_lights_punctual"] = tinygltf::Value(reference);
    }
}

}  // namespace

void WriteGltf(const MeshScene& scene, const MeshFileOptions& options, const MeshFileTarget& target,
               bool isBinary)
{
    GltfBuilder builder(scene, options);
    // The lengths in a binary file are 32 bits. The JSON text is far below the rest.
    constexpr std::size_t most = 4'000'000'000;
    const std::size_t bytes =
        builder.model.buffers.empty() ? 0 : builder.model.buffers[0].data.size();
    if (bytes > most)
    {
        throw Error("glTF file", std::to_string(bytes) + " bytes of vertices and pictures",
                    "at most " + std::to_string(most));
    }
    SinkBuffer buffer(target.main);
    std::ostream stream(&buffer);
    stream.exceptions(std::ios::badbit);  // so that errors of the sink are thrown again
    tinygltf::TinyGLTF writer;
    writer.SetImageWriter(nullptr, nullptr);  // the pictures are in the buffer already
    if (!writer.WriteGltfSceneToStream(&builder.model, stream, true, isBinary))
    {
        throw Error("glTF file", "it cannot be written");
    }
}

}  // namespace orvane
