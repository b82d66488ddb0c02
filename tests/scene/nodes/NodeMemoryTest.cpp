// SPDX-License-Identifier: MIT
// Which operations give a node its Details, the block of memory for rarely used fields.

#include "import3ds/TriangularMeshObject.h"
#include "scene/DrawingObject.h"
#include "scene/SceneObject.h"
#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <array>
#include <memory>
#include <thread>

namespace
{

class Probe : public DrawingObject
{
public:
    using DrawingObject::CurrentDetails;
    using DrawingObject::DrawingObject;
    using DrawingObject::HasDetails;
};

/// A mesh of eight corners and twelve faces, as an import leaves it.
class BoxMesh : public TriangularMeshObject
{
public:
    BoxMesh()
    {
        vertices.SetSize(8);
        for (int i = 0; i < 8; ++i)
        {
            vertices.SetAt(i, Vector(static_cast<float>(i & 1), static_cast<float>(i & 2),
                                     static_cast<float>(i & 4)));
        }
        faces.SetSize(12);
        for (int i = 0; i < 12; ++i)
        {
            faces[i].a = static_cast<WORD>(i % 8);
            faces[i].b = static_cast<WORD>((i + 1) % 8);
            faces[i].c = static_cast<WORD>((i + 3) % 8);
        }
        CalculateFaceNormals();
        CalculateVertexNormals();
        CalculateBounds();
    }
};

std::unique_ptr<SceneObject> BuildScene(int meshCount)
{
    auto scene = std::make_unique<SceneObject>();
    for (int i = 0; i < meshCount; ++i)
    {
        scene->AddChild(new BoxMesh);
    }
    return scene;
}

/// Bytes that the program has allocated.
std::size_t AllocatedBytes()
{
    return mallinfo2().uordblks;
}

}  // namespace

TEST(NodeMemory, QuestionsGiveANodeNoDetails)
{
    Probe probe;
    const Probe& node = probe;
    node.GetScale();
    node.GetScaledDimensions();
    node.GetUnscaledDimensions();
    node.GetLocalSizingHandleCenter(3);
    node.GetGlobalSizingHandleCenter(3);
    EXPECT_EQ(node.localSizingHandles[7].x, 0.0);
    EXPECT_TRUE(node.GetTexture()->GetName().IsEmpty());
    EXPECT_EQ(node.GetExternalUndoStack(), nullptr);
    EXPECT_EQ(node.bounds.GetLocalBoundingBox()[6].x, 0.0f);
    node.AccumulateTransformations(1, 0, nullptr);
    Stored(probe);
    probe.CalculateBounds();
    probe.AttachExternalUndoStack(nullptr);
    EXPECT_FALSE(node.HasDetails());
}

TEST(NodeMemory, CopiesOfANodeWithoutDetailsHaveNone)
{
    Probe original;
    const Probe copy(original);
    Probe assigned;
    assigned = original;
    EXPECT_FALSE(copy.HasDetails());
    EXPECT_FALSE(assigned.HasDetails());
}

TEST(NodeMemory, ANodeWhoseRecordHasInitialValuesLoadsWithoutDetails)
{
    Probe withDetails;
    withDetails.SetScale(DVector(1, 1, 1));
    ASSERT_TRUE(withDetails.HasDetails());
    Probe loaded;
    LoadRecord(loaded, Stored(withDetails));
    EXPECT_FALSE(loaded.HasDetails());
}

TEST(NodeMemory, EveryOtherValueOfARecordLoadsIntoDetails)
{
    const std::array<void (*)(DrawingObject&), 6> changes = {
        [](DrawingObject& node) { node.SetScale(DVector(1, 1, 2)); },
        [](DrawingObject& node) { node.SetScaledDimensions(DVector(0, -0.0, 1)); },
        [](DrawingObject& node) { node.SetUnscaledDimensions(DVector(1, 0, 0)); },
        [](DrawingObject& node) { node.localSizingHandles[7].z = -0.0; },
        [](DrawingObject& node) { node.globalSizingHandles[0].x = 1.0; },
        [](DrawingObject& node) { node.GetTexture()->SetRepeatRate(2.0); },
    };
    for (const auto& change : changes)
    {
        Probe changed;
        change(changed);
        Probe loaded;
        LoadRecord(loaded, Stored(changed));
        EXPECT_TRUE(loaded.HasDetails()) << &change - changes.data();
    }
}

TEST(NodeMemory, TwoThreadsThatReachForANewNodesTextureGetTheSame)
{
    for (int round = 0; round < 200; ++round)
    {
        DrawingObject node;
        TextureMap* other = nullptr;
        std::thread thread([&] { other = node.GetTexture(); });
        TextureMap* const own = node.GetTexture();
        thread.join();
        ASSERT_EQ(own, other);
    }
}

TEST(NodeMemory, ALoadedSceneOfMeshesTakesNoMoreMemoryThanTheOneThatWasSaved)
{
    // The allocator counts the pieces that it keeps ready as allocated. Building and deleting the
    // scene once makes it keep as many before the first measurement as before the second.
    BuildScene(500).reset();

    const std::size_t beforeBuilding = AllocatedBytes();
    std::unique_ptr<SceneObject> built = BuildScene(500);
    const std::size_t builtBytes = AllocatedBytes() - beforeBuilding;
    const Bytes record = Stored(*built);
    built.reset();

    const std::size_t beforeLoading = AllocatedBytes();
    SceneObject loaded;
    LoadRecord(loaded, record);
    EXPECT_EQ(loaded.GetChildCount(), 500);
    // Three per cent are left for the allocator, which hands out larger pieces that it happens to
    // have. Meshes with Details would take over twenty per cent more.
    EXPECT_LE(AllocatedBytes() - beforeLoading, builtBytes + builtBytes * 3 / 100);
}
