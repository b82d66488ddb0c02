// SPDX-License-Identifier: MIT
#include "solids/drawing/OutlineMeshDrawing.h"

#include "extrude/LetterDrawing.h"
#include "geometry/SurfaceRecorder.h"
#include "imaging/TextureMap.h"
#include "scene/DrawingParameters.h"
#include "solids/OrvOutlineShape.h"
#include "solids/SolidSurface.h"

#include <algorithm>
#include <utility>

namespace orvane
{

OutlineMeshDrawing::Inputs::Inputs(const OrvOutlineShape& shape) : outlines(shape.CurrentSettings())
{
    const SurfaceTexture texture(*shape.GetTexture(), shape.GetScale());
    isTextured = texture.isUsed;
    textureRepeat = texture.repeat;
}

bool OutlineMeshDrawing::Inputs::operator==(const Inputs& other) const
{
    return outlines == other.outlines && isTextured == other.isTextured &&
           textureRepeat.x == other.textureRepeat.x && textureRepeat.y == other.textureRepeat.y;
}

SolidDrawing OutlineMeshDrawing::Draw(OrvOutlineShape& outlines, DrawingParameters& parameters,
                                      std::size_t room)
{
    if (!Update(outlines, room))
    {
        return SolidDrawing::NotDrawn;
    }
    const LetterDrawing state(parameters);
    glFrontFace(GL_CCW);
    const SolidDrawing result = DrawRanges(
        outlines, parameters, [&](int area) { state.UseMaterial(outlines.Material(area)); });
    const bool hasTriangles = std::any_of(ranges.begin(), ranges.end(),
                                          [](const Range& range) { return range.indexCount > 0; });
    if (hasTriangles)
    {
        SetCurrentAttributes(lastVertex, inputs_->isTextured);
    }
    return result;
}

bool OutlineMeshDrawing::Update(OrvOutlineShape& outlines, std::size_t room)
{
    Inputs inputs(outlines);
    if (inputs_ == inputs)
    {
        return true;
    }
    inputs_.reset();
    buffers.Free();
    ranges.clear();
    std::vector<float> numbers;
    std::vector<std::uint32_t> indices;
    SurfaceRecorder recorder;
    for (int area = 0; area < outlines.AreaCount(); ++area)
    {
        recorder.Clear();
        outlines.RecordSolid(area, recorder);
        const std::size_t first = numbers.size() / MeshBuffers::FloatsPerVertex(inputs.isTextured);
        ranges.push_back({area, indices.size(), recorder.RenderedIndices().size()});
        for (const MeshVertex& vertex : recorder.Vertices())
        {
            AppendVertex(vertex, inputs.isTextured, numbers);
        }
        for (const std::uint32_t vertex : recorder.RenderedIndices())
        {
            indices.push_back(static_cast<std::uint32_t>(first) + vertex);
        }
        if (!recorder.RenderedIndices().empty())
        {
            lastVertex = recorder.Vertices()[recorder.RenderedIndices().back()];
        }
        if (numbers.size() * sizeof(float) + indices.size() * sizeof(std::uint32_t) > room)
        {
            return false;
        }
    }
    buffers.Set(numbers, inputs.isTextured, indices);
    inputs_ = std::move(inputs);
    return true;
}

}  // namespace orvane
