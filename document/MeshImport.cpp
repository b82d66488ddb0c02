// SPDX-License-Identifier: MIT
#include "document/MeshImport.h"

#include "document/FileErrors.h"
#include "document/MeshDamage.h"
#include "document/OptionRange.h"
#include "document/SceneFraming.h"
#include "host/CFile.h"
#include "import3ds/TriangularMeshObject.h"
#include "orvane/Error.h"
#include "scene/DescendentWalk.h"
#include "scene/SceneObject.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvane
{

namespace
{

constexpr double gap = 0.5;  // ems, between things that stand side by side

DVector ToDVector(const Vector& vector)
{
    return DVector(vector.x, vector.y, vector.z);
}

/// Half the width of a node's bounds along x, and their middle, in the coordinates of the node's
/// parent.
struct Extent
{
    double half;
    DVector middle;
};

Extent ExtentOf(const DrawingObject& node)
{
    const DVector low = ToDVector(node.GetBoundsGlobalMinimum());
    const DVector high = ToDVector(node.GetBoundsGlobalMaximum());
    return {(high.x - low.x) / 2, (low + high) / 2.0};
}

/// The place for a node to the right of everything in the scene.
DVector NextPlace(SceneObject& scene, const Extent& next)
{
    if (!scene.HasChildren() || !scene.CalculateBounds())
    {
        return DVector();
    }
    const DVector low = ToDVector(scene.GetBoundsLocalMinimum());
    const DVector high = ToDVector(scene.GetBoundsLocalMaximum());
    return DVector(high.x + gap + next.half, (low.y + high.y) / 2, (low.z + high.z) / 2);
}

/// Bounds do not tell, because a mesh whose first vertex is not a number has none.
bool AreVerticesFinite(const DrawingObject& import)
{
    bool areFinite = true;
    VisitDescendents(import, [&areFinite](const DrawingObject& node) {
        const auto* const mesh = dynamic_cast<const TriangularMeshObject*>(&node);
        for (int i = 0; mesh != nullptr && areFinite && i < mesh->GetVerticies()->GetSize(); ++i)
        {
            const Vector& vertex = *mesh->GetVerticies()->GetElement(i);
            areFinite =
                std::isfinite(vertex.x) && std::isfinite(vertex.y) && std::isfinite(vertex.z);
        }
        return areFinite;
    });
    return areFinite;
}

void CheckMeshOptions(const MeshOptions& options)
{
    constexpr double largest = std::numeric_limits<double>::max();
    CheckRange("size", options.size, 0, 1e6);
    for (const double angle : {options.turn.x, options.turn.y, options.turn.z})
    {
        CheckRange("turn", angle, -largest, largest);
    }
}

}  // namespace

void PlaceInScene(SceneObject& scene, DrawingObject& node, const std::optional<Vector3>& at)
{
    const Extent extent = ExtentOf(node);
    const DVector place = at ? DVector(at->x, at->y, at->z) : NextPlace(scene, extent);
    node.SetTranslation(place - extent.middle);
    node.CalculateBounds();
}

void ImportMeshes(ThreeDStudioObject& node, const std::string& path)
{
    CFile file;
    OpenRegularFile(file, path);
    if (!node.CreateFromFile(path.c_str()))
    {
        throw Error(path + ": byte 0", FileStart(file) +
                                           ", expected 4D 4D or 3D C2 and a length of 4 bytes, "
                                           "with which 3D Studio files begin");
    }
}

std::unique_ptr<DrawingObject> MakeImport(SceneObject& scene, const std::string& path,
                                          const MeshOptions& options)
{
    CheckMeshOptions(options);
    auto node = std::make_unique<WatchedImport>();
    ImportMeshes(*node, path);
    const std::string damage = DamageText(node->skipped);
    if (!node->HasChildren())
    {
        throw Error(path, "the file contains no mesh" + (damage.empty() ? damage : ": " + damage));
    }
    if (!damage.empty() && !options.warn)
    {
        throw Error(path, damage);
    }
    node->Rotate(options.turn.z, DVector(0.0, 0.0, 1.0));
    node->Rotate(options.turn.y, DVector(0.0, 1.0, 0.0));
    node->Rotate(options.turn.x, DVector(1.0, 0.0, 0.0));
    node->CalculateBounds();
    const Vector low = node->GetBoundsLocalMinimum();
    const Vector high = node->GetBoundsLocalMaximum();
    const double longest = std::max({high.x - low.x, high.y - low.y, high.z - low.z});
    if (!std::isfinite(longest) || !AreVerticesFinite(*node))
    {
        throw Error(path, "a vertex of the file has a coordinate that is infinite or not a number");
    }
    if (options.size > 0 && longest > 0)
    {
        const double factor = options.size / longest;
        node->GetTransform()->SetScale(DVector(factor, factor, factor));
        node->CalculateBounds();
    }
    PlaceInScene(scene, *node, options.at);
    if (!damage.empty())
    {
        options.warn(damage);
    }
    return node;
}

}  // namespace orvane
