// SPDX-License-Identifier: MIT
// Posters of several strips, drawn while other threads draw and cancel. The thread sanitizer runs
// these tests, too.

#include "orvane/orvane.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/MeshFile.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <latch>
#include <thread>

namespace
{

using orvane::Document;

orvane::PictureOptions SeveralStrips()
{
    orvane::PictureOptions options;
    options.size = orvane::Size{1200, 900};
    options.samples = 1;
    return options;
}

// Documents with texts are used by one thread at a time, and here there is one of them.
class PosterThreads : public testing::Test
{
protected:
    PosterThreads()
    {
        const Bytes file = MeshFile(2, Grid(4, 4), 2);
        folder.Write("mesh.3ds", std::string(file.begin(), file.end()));
        meshes.AddMesh(folder.Path("mesh.3ds"));
        text.AddText("Poster");
    }

    std::string Draw(const Document& document, const char* name)
    {
        orvane::WritePicture(document, folder.Path(name), SeveralStrips());
        return folder.Read(name);
    }

    ToolFolder folder;
    Document meshes;
    Document text;
};

TEST_F(PosterThreads, TwoPostersDrawnAtTheSameTimeAreThoseDrawnOneAfterTheOther)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    const std::string textPicture = Draw(text, "text.bmp");
    const std::string meshPicture = Draw(meshes, "mesh.bmp");
    ASSERT_NE(textPicture, meshPicture);
    for (int round = 0; round < 3; ++round)
    {
        std::latch start(2);
        std::string meshPictureNow;
        std::thread other([&] {
            start.arrive_and_wait();
            meshPictureNow = Draw(meshes, "mesh-now.bmp");
        });
        start.arrive_and_wait();
        EXPECT_EQ(Draw(text, "text-now.bmp") == textPicture, true);
        other.join();
        EXPECT_EQ(meshPictureNow == meshPicture, true);
    }
}

TEST_F(PosterThreads, AnotherThreadCancelsAPosterWhileItsStripsAreWritten)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    orvane::PictureOptions options = SeveralStrips();
    orvane::Cancellation cancellation;
    std::latch begun(1);
    std::latch cancelled(1);
    int calls = 0;
    options.cancellation = cancellation;
    options.progress = [&](double share) {
        if (++calls == 1)
        {
            begun.count_down();
        }
        if (share == 1)
        {
            cancelled.wait();  // the drawing was quicker than the other thread
        }
    };
    std::thread other([&] {
        begun.wait();
        cancellation.Cancel();
        cancelled.count_down();
    });
    EXPECT_THROW(orvane::WritePicture(text, folder.Path("cancelled.bmp"), options), orvane::Error);
    other.join();
    EXPECT_FALSE(std::filesystem::exists(folder.Path("cancelled.bmp")));
    // The next picture is whole.
    EXPECT_EQ(Draw(text, "again.bmp") == Draw(text, "once-more.bmp"), true);
}

}  // namespace
