// SPDX-License-Identifier: MIT
// Destructors must not fail, so none of them may need memory. Each test ends objects while `new`
// fails; a destructor that asks for memory ends the test program.

#include "document/BmpFile.h"
#include "document/OutputFile.h"
#include "geometry/CoordinateTransform.h"
#include "host/CArchive.h"
#include "host/CFile.h"
#include "host/CObList.h"
#include "host/CWinApp.h"
#include "imaging/MemoryMappedDIB.h"
#include "imaging/TextureMap.h"
#include "imaging/TextureMapList.h"
#include "pictures/PictureWriter.h"
#include "platform/Bitmaps.h"
#include "platform/DeviceContexts.h"
#include "platform/Files.h"
#include "platform/FolderLock.h"
#include "platform/Memory.h"
#include "platform/Storage.h"
#include "platform/Sync.h"
#include "scene/DrawingObject.h"
#include "scene/DrawingObjectStack.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/Allocations.h"
#include "tests/support/TemporaryFile.h"
#include "tests/support/TestNodes.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{

TEST(Destructors, HandlesAreClosedWithoutMemory)
{
    const TemporaryFile file("closed.bin", std::string(100, 'x'));
    const HANDLE unused = CreateMutexA(nullptr, FALSE, nullptr);
    const HANDLE used = CreateMutexA(nullptr, FALSE, nullptr);
    EXPECT_EQ(WaitForSingleObject(used, INFINITE), WAIT_OBJECT_0);
    const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    const HANDLE opened =
        CreateFileA(file.Path(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const HANDLE mapping = CreateFileMappingA(opened, nullptr, PAGE_READONLY, 0, 0, nullptr);
    const LPVOID view = MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0);
    const HGLOBAL block = GlobalAlloc(GMEM_ZEROINIT, 10);
    const HDC dc = CreateCompatibleDC(nullptr);
    int closed = 0;
    int requests = 0;
    {
        const NoMemory none;
        closed += UnmapViewOfFile(view) + (GlobalFree(block) == nullptr) + DeleteDC(dc);
        for (const HANDLE handle : {unused, used, event, opened, mapping})
        {
            closed += CloseHandle(handle);
        }
        EXPECT_FALSE(CloseHandle(unused));
        requests = none.Requests();
    }
    EXPECT_EQ(closed, 8);
    EXPECT_EQ(requests, 0);
}

TEST(Destructors, FilesEndWithoutMemory)
{
    ToolFolder folder;
    const std::string path = folder.Path("x");
    folder.Write("x.bmp", "old");
    auto output = std::make_unique<orvane::OutputFile>(path);
    output->Write("new", 3);
    EXPECT_EQ(RequestsOfEnding(std::move(output)), 0);
    auto finished = std::make_unique<orvane::OutputFile>(path);
    finished->Finish();
    EXPECT_EQ(RequestsOfEnding(std::move(finished)), 0);
    auto bmp = std::make_unique<orvane::BmpFile>(folder.Path("x.bmp"), 8, 8, 24, 0);
    bmp->Open(nullptr);
    EXPECT_EQ(RequestsOfEnding(std::move(bmp)), 0);
    orvane::PictureFileSettings picture;
    picture.width = 8;
    picture.height = 8;
    orvane::OutputFile png(folder.Path("x.png"));
    EXPECT_EQ(
        RequestsOfEnding(MakePictureWriter(orvane::PictureFormat::Png, picture, png, "x.png")), 0);
    EXPECT_EQ(RequestsOfEnding(std::make_unique<orvane::FolderLock>(folder.Path("."))), 0);
    EXPECT_EQ(RequestsOfEnding(
                  std::make_unique<CFile>(path.c_str(), CFile::modeCreate | CFile::modeReadWrite)),
              0);
    EXPECT_EQ(RequestsOfEnding(std::make_unique<CFile>(path.c_str(), CFile::modeRead)), 0);
}

TEST(Destructors, ApplicationsEndWithoutMemory)
{
    const TemporaryName profile("destructors.ini");
    auto app = std::make_unique<CWinApp>();
    app->SetProfilePath(profile.Path());
    EXPECT_TRUE(app->WriteProfileInt("A", "a", 1));
    EXPECT_EQ(RequestsOfEnding(std::move(app)), 0);
}

TEST(Destructors, TextureMapsEndWithoutMemory)
{
    EXPECT_EQ(RequestsOfEnding(std::make_unique<TextureMap>()), 0);
    auto used = std::make_unique<TextureMap>();
    EXPECT_NE(used->GetOwnership(), nullptr);
    EXPECT_EQ(RequestsOfEnding(std::move(used)), 0);
    EXPECT_EQ(RequestsOfEnding(std::make_unique<MemoryMappedDIB>()), 0);
}

TEST(Destructors, NodesEndWithoutMemory)
{
    auto text = std::make_unique<OrvFontString>();
    text->SetTextString("text");
    auto scene = std::make_unique<SceneObject>();
    auto view = std::make_unique<ViewObject>();
    view->AttachScene(scene.get());
    EXPECT_EQ(RequestsOfEnding(std::make_unique<DrawingObject>()), 0);
    EXPECT_EQ(RequestsOfEnding(std::move(text)), 0);
    EXPECT_EQ(RequestsOfEnding(std::move(view)), 0);
    scene.reset();
}

TEST(Destructors, NodesAreDeletedInTheSameOrderWithAndWithoutMemory)
{
    LoggingNode::Log logs[2];
    for (const bool hasMemory : {true, false})
    {
        LoggingNode::Log& log = logs[hasMemory ? 0 : 1];
        log.reserve(10);
        DrawingObjectStack undoStack;
        auto root = std::make_unique<DrawingObject>();
        auto* const a = new LoggingNode("a", log);
        auto* const b = new LoggingNode("b", log);
        root->AddChild(a);
        root->AddChild(b);
        a->AddChild(new LoggingNode("c", log));
        a->AddChild(new LoggingNode("d", log));
        b->AddChild(new LoggingNode("e", log));
        b->AttachExternalUndoStack(&undoStack);
        undoStack.Push(b);
        EXPECT_FALSE(undoStack.IsEmpty());
        if (hasMemory)
        {
            root.reset();
        }
        else
        {
            EXPECT_GT(RequestsOfEnding(std::move(root)), 0);
        }
        EXPECT_TRUE(undoStack.IsEmpty());
    }
    EXPECT_EQ(logs[0], (LoggingNode::Log{"end c", "end d", "end a", "end e", "end b"}));
    EXPECT_EQ(logs[1], logs[0]);
}

}  // namespace
