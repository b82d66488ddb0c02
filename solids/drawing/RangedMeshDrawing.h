// SPDX-License-Identifier: MIT
#pragma once

#include "scene/DrawingParameters.h"
#include "solids/drawing/MeshDrawing.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orvane
{

/// Triangles that are drawn in one order, each range of them with a material of the node.
class RangedMeshDrawing : public MeshDrawing
{
public:
    using MeshDrawing::MeshDrawing;

    std::size_t Bytes() const override { return buffers.Bytes() + ranges.size() * sizeof(Range); }

protected:
    /// Consecutive triangles of one material.
    struct Range
    {
        int material;  ///< an index of the node's materials
        std::size_t firstIndex;
        std::size_t indexCount;
    };

    /// \param useMaterial is called with the material of each range before the range is drawn
    template <typename Node, typename UseMaterial>
    SolidDrawing DrawRanges(const Node& node, DrawingParameters& parameters,
                            UseMaterial useMaterial) const
    {
        // The indices that are drawn between two checks for a cancelled drawing.
        constexpr std::size_t indicesPerCheck = 60000;

        const MeshBuffers::Binding binding(buffers);
        for (const Range& range : ranges)
        {
            for (std::size_t done = 0; done == 0 || done < range.indexCount;
                 done += indicesPerCheck)
            {
                if (node.ShouldTerminateDrawing(&parameters))
                {
                    return SolidDrawing::Stopped;
                }
                if (done == 0)
                {
                    useMaterial(range.material);
                }
                if (range.indexCount > 0)
                {
                    binding.DrawTriangles(range.firstIndex + done,
                                          std::min(indicesPerCheck, range.indexCount - done));
                }
            }
        }
        return SolidDrawing::Drawn;
    }

    std::vector<Range> ranges;
    MeshVertex lastVertex = {};  ///< the last one that immediate mode emits
};

}  // namespace orvane
