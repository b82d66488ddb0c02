// SPDX-License-Identifier: MIT
#include "apps/cli/MeshImport.h"

#include "apps/cli/Errors.h"
#include "apps/cli/SceneBuilder.h"
#include "apps/cli/SkippedParts.h"
#include "apps/cli/info/InfoText.h"
#include "scene/SceneObject.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr double gap = 0.5;  // between what stands side by side

DVector Widened(const Vector& vector)
{
    return DVector(vector.x, vector.y, vector.z);
}

/// Half the extent of a node along x, and its middle, in its parent.
struct Extent
{
    double half;
    DVector middle;
};

Extent ExtentOf(const DrawingObject& node)
{
    const DVector low = Widened(node.GetBoundsGlobalMinimum());
    const DVector high = Widened(node.GetBoundsGlobalMaximum());
    return {(high.x - low.x) / 2, (low + high) / 2.0};
}

/// Where a node stands that comes next to what is there.
DVector NextPlace(SceneObject& scene, const Extent& next)
{
    if (!scene.HasChildren() || !scene.CalculateBounds())
    {
        return DVector();
    }
    const DVector low = Widened(scene.GetBoundsLocalMinimum());
    const DVector high = Widened(scene.GetBoundsLocalMaximum());
    return DVector(high.x + gap + next.half, (low.y + high.y) / 2, (low.z + high.z) / 2);
}

}  // namespace

void ImportMeshes(ThreeDStudioObject& node, const std::string& path)
{
    CFile file;
    CFileException error;
    if (!file.Open(path.c_str(), CFile::modeRead, &error))
    {
        throw Failure(error.what());
    }
    if (!node.CreateFromFile(path.c_str()))
    {
        throw Failure(path + ": is no 3D Studio file: byte 0: " + FoundText(file) +
                      ", expected 4D 4D or 3D C2 and a chunk's length");
    }
}

std::string AddImport(SceneObject& scene, const ImportLook& look)
{
    auto node = std::make_unique<WatchedImport>();
    ImportMeshes(*node, look.file);
    std::string damage = DamageText(node->skipped);
    if (!node->HasChildren())
    {
        throw Failure(look.file + ": there is no mesh in it" +
                      (damage.empty() ? "; \"orvane info\" tells what is" : ": " + damage));
    }
    node->Rotate(look.turn[2], DVector(0.0, 0.0, 1.0));
    node->Rotate(look.turn[1], DVector(0.0, 1.0, 0.0));
    node->Rotate(look.turn[0], DVector(1.0, 0.0, 0.0));
    node->CalculateBounds();
    const Vector low = node->GetBoundsLocalMinimum();
    const Vector high = node->GetBoundsLocalMaximum();
    const double longest = std::max({high.x - low.x, high.y - low.y, high.z - low.z});
    if (!std::isfinite(longest))
    {
        throw Failure(look.file + ": its vertices are not all numbers");
    }
    if (look.size > 0 && longest > 0)
    {
        const double factor = look.size / longest;
        node->GetTransform()->SetScale(DVector(factor, factor, factor));
        node->CalculateBounds();
    }
    const Extent extent = ExtentOf(*node);
    const DVector place =
        look.at ? DVector((*look.at)[0], (*look.at)[1], (*look.at)[2]) : NextPlace(scene, extent);
    node->SetTranslation(place - extent.middle);
    node->CalculateBounds();
    AddNode(scene, std::move(node));
    return damage;
}
