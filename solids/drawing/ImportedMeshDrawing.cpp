// SPDX-License-Identifier: MIT
#include "solids/drawing/ImportedMeshDrawing.h"

#include "geometry/SurfaceRecorder.h"
#include "import3ds/TriangularMeshObject.h"
#include "material/NamedColorArray.h"
#include "scene/DrawingParameters.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace orvane
{

namespace
{

/// Copies values one after another into an array that has the values of last time, and notes
/// whether one of them is different.
template <typename Value>
class Comparison
{
public:
    explicit Comparison(std::vector<Value>& values) : values_(values) {}

    void Next(Value value)
    {
        isDifferent_ =
            isDifferent_ || std::bit_cast<Bits>(values_[next_]) != std::bit_cast<Bits>(value);
        values_[next_++] = value;
    }
    bool IsDifferent() const { return isDifferent_; }

private:
    // Floats are compared bit by bit, so that a number that is no number is equal to itself.
    using Bits = std::conditional_t<sizeof(Value) == 2, std::uint16_t, std::uint32_t>;

    std::vector<Value>& values_;
    std::size_t next_ = 0;
    bool isDifferent_ = false;
};

/// The most bytes that the triangle of a face takes: three vertices and their indices.
constexpr std::size_t bytesPerFace =
    3 * (MeshBuffers::FloatsPerVertex(false) * sizeof(float) + sizeof(std::uint32_t));

}  // namespace

bool ImportedMeshDrawing::Inputs::Update(const TriangularMeshObject& mesh)
{
    const VectorArray* const arrays[] = {mesh.GetVerticies(), mesh.GetFaceNormals(),
                                         mesh.GetVertexNormals()};
    bool isDifferent =
        std::exchange(smoothingThreshold, mesh.smoothingThreshold) != mesh.smoothingThreshold ||
        std::exchange(materialCount, mesh.materialColors->GetSize()) !=
            mesh.materialColors->GetSize();
    const TriangularFaceArray& faceArray = *mesh.GetFaces();
    std::size_t total = 0;
    for (std::size_t i = 0; i < 4; ++i)
    {
        const auto count =
            static_cast<std::size_t>(i == 0 ? faceArray.GetSize() : arrays[i - 1]->GetSize());
        isDifferent = std::exchange(counts[i], count) != count || isDifferent;
        total += i == 0 ? 0 : 3 * count;
    }
    faces.resize(4 * counts[0]);
    vectors.resize(total);

    Comparison<WORD> faceNumbers(faces);
    for (int i = 0; i < faceArray.GetSize(); ++i)
    {
        const TriangularFace& face = *faceArray.GetElement(i);
        faceNumbers.Next(face.a);
        faceNumbers.Next(face.b);
        faceNumbers.Next(face.c);
        faceNumbers.Next(face.material);
    }
    Comparison<float> vectorNumbers(vectors);
    for (const VectorArray* const array : arrays)
    {
        for (int i = 0; i < array->GetSize(); ++i)
        {
            const Vector& vector = *array->GetElement(i);
            vectorNumbers.Next(vector.x);
            vectorNumbers.Next(vector.y);
            vectorNumbers.Next(vector.z);
        }
    }
    return isDifferent || faceNumbers.IsDifferent() || vectorNumbers.IsDifferent();
}

SolidDrawing ImportedMeshDrawing::Draw(TriangularMeshObject& mesh, DrawingParameters& parameters,
                                       std::size_t room)
{
    if (mesh.ShouldTerminateDrawing(&parameters))
    {
        return SolidDrawing::Stopped;
    }
    NamedColorArray* const colors = mesh.materialColors;
    const auto faceCount = static_cast<std::size_t>(mesh.GetFaces()->GetSize());
    if (colors == nullptr || colors->GetSize() == 0 || mesh.GetVerticies()->GetSize() == 0 ||
        faceCount == 0 || faceCount * bytesPerFace > room)
    {
        buffers.Free();
        inputs_ = {};
        return SolidDrawing::NotDrawn;
    }
    if (inputs_.Update(mesh))
    {
        Build(mesh);
    }
    glDisable(GL_CULL_FACE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
    glFrontFace(GL_CW);
    const SolidDrawing result = DrawRanges(mesh, parameters, [&mesh](int material) {
        mesh.PrepareMaterialColors(*mesh.materialColors->GetElement(material));
    });
    SetCurrentAttributes(lastVertex, false);
    glFrontFace(GL_CCW);
    glEnable(GL_CULL_FACE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 0);
    return result;
}

void ImportedMeshDrawing::Build(const TriangularMeshObject& mesh)
{
    SurfaceRecorder recorder;
    mesh.RecordSurface(recorder);
    std::vector<float> numbers;
    numbers.reserve(recorder.Vertices().size() * MeshBuffers::FloatsPerVertex(false));
    for (MeshVertex vertex : recorder.Vertices())
    {
        // Drawing uses the normals that point into the solid, with clockwise front faces.
        for (float& number : vertex.normal)
        {
            number = -number;
        }
        AppendVertex(vertex, false, numbers);
    }
    lastVertex = recorder.Vertices()[recorder.Indices().back()];
    for (float& number : lastVertex.normal)
    {
        number = -number;
    }
    ranges.clear();
    for (const SurfaceRecorder::Run& run : recorder.Runs())
    {
        const auto material = static_cast<int>(run.material - mesh.materialColors->GetElement(0));
        ranges.push_back({material, run.firstIndex, run.indexCount});
    }
    buffers.Set(numbers, false, recorder.Indices());
}

std::size_t ImportedMeshDrawing::Bytes() const
{
    return RangedMeshDrawing::Bytes() + inputs_.faces.size() * sizeof(WORD) +
           inputs_.vectors.size() * sizeof(float);
}

}  // namespace orvane
