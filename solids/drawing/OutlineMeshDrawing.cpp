// SPDX-License-Identifier: MIT
#include "solids/drawing/OutlineMeshDrawing.h"

#include "extrude/LetterDrawing.h"
#include "geometry/SurfaceRecorder.h"
#include "imaging/TextureMap.h"
#include "scene/DrawingParameters.h"
#include "solids/OrvOutlineShape.h"
#include "solids/SolidSurface.h"

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
    const SolidDrawing result = DrawAreas(outlines, parameters);
    if (borders_.back() > 0)
    {
        SetCurrentAttributes(lastVertex_, inputs_->isTextured);
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
    borders_ = {0};
    std::vector<float> numbers;
    std::vector<std::uint32_t> indices;
    SurfaceRecorder recorder;
    for (int area = 0; area < outlines.AreaCount(); ++area)
    {
        recorder.Clear();
        outlines.RecordSolid(area, recorder);
        const std::size_t first = numbers.size() / MeshBuffers::FloatsPerVertex(inputs.isTextured);
        for (const MeshVertex& vertex : recorder.Vertices())
        {
            AppendVertex(vertex, inputs.isTextured, numbers);
        }
        for (const std::uint32_t vertex : recorder.RenderedIndices())
        {
            indices.push_back(static_cast<std::uint32_t>(first) + vertex);
        }
        borders_.push_back(indices.size());
        if (!recorder.RenderedIndices().empty())
        {
            lastVertex_ = recorder.Vertices()[recorder.RenderedIndices().back()];
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

SolidDrawing OutlineMeshDrawing::DrawAreas(const OrvOutlineShape& outlines,
                                           DrawingParameters& parameters) const
{
    const LetterDrawing state(parameters);
    const MeshBuffers::Binding binding(buffers);
    glFrontFace(GL_CCW);
    for (int area = 0; area < outlines.AreaCount(); ++area)
    {
        if (outlines.ShouldTerminateDrawing(&parameters))
        {
            return SolidDrawing::Stopped;
        }
        state.UseMaterial(outlines.Material(area));
        const std::size_t first = borders_[static_cast<std::size_t>(area)];
        const std::size_t end = borders_[static_cast<std::size_t>(area) + 1];
        if (end > first)
        {
            binding.DrawTriangles(first, end - first);
        }
    }
    return SolidDrawing::Drawn;
}

std::size_t OutlineMeshDrawing::Bytes() const
{
    return buffers.Bytes() + borders_.size() * sizeof(std::size_t);
}

}  // namespace orvane
