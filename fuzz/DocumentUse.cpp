// SPDX-License-Identifier: MIT
#include "fuzz/DocumentUse.h"

#include "fuzz/Check.h"
#include "orvane.h"
#include "orvane/DocumentAccess.h"
#include "platform/OpenGL.h"

#include <fstream>
#include <functional>
#include <iterator>
#include <string>

namespace
{

constexpr orvane::Size pictureSize{48, 40};

void MoveAndUndo(DrawingObject& node)
{
    node.SaveToUndo();
    node.Translate(DVector(1, 2, 3));
    node.RestoreFromUndo();
    const DrawingObjectList& children = *node.GetChildren();
    for (POSITION position = children.GetHeadPosition(); position != nullptr;)
    {
        MoveAndUndo(*children.GetNext(position));
    }
}

void AskForBounds(const std::vector<orvane::Node>& nodes)
{
    for (const orvane::Node& node : nodes)
    {
        node.Bounds();
        node.Text();
        node.Name();
        AskForBounds(node.Children());
    }
}

std::string ContentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// Makes a context of pictureSize current. It is kept for all inputs, because the first drawing in
/// a new context takes ten times as long as later ones.
void MakeContextCurrent()
{
    static GLMemoryDIB* const target = [] {
        ProjectionData projection;
        projection.SetUnscaledSize(pictureSize.width, pictureSize.height);
        auto* const made = new GLMemoryDIB;
        Check(made->Create(projection, 24) != 0, "there is a context");
        return made;
    }();
    Check(wglMakeCurrent(target->GetMemoryDC(), target->renderingContext) != FALSE,
          "a context is current");
    glViewport(0, 0, pictureSize.width, pictureSize.height);
}

/// Calls a function that may refuse the document: nodes may be nested too deep to be drawn, for
/// example.
void Try(const std::function<void()>& use)
{
    try
    {
        use();
    }
    catch (const orvane::Error&)
    {}
}

}  // namespace

void UseDocument(orvane::Document& document, const InputFile& input)
{
    AskForBounds(document.Nodes());
    MoveAndUndo(orvane::SceneOf(document));

    MakeContextCurrent();
    Try([&] { orvane::Draw(document); });
    // A picture in a file has a context of its own and takes as long as everything else together.
    // Mesa 22.3 keeps the memory of each pick.
    constexpr std::size_t documentsForOneFile = 8;
    if (input.Hash() % documentsForOneFile == 0)
    {
        Try([&] { document.Pick(pictureSize, pictureSize.width / 2, pictureSize.height / 2); });
        orvane::PictureOptions options;
        options.size = pictureSize;
        options.samples = 1;
        Try([&] { orvane::WritePicture(document, input.Folder() + "/picture.bmp", options); });
    }

    const std::string saved = input.Folder() + "/saved.orv";
    const std::string savedAgain = input.Folder() + "/saved-again.orv";
    document.Save(saved);
    orvane::Document opened = orvane::Document::Open(saved);
    // A mesh stores whether its bounds are known. Those of deleted nodes are calculated only here.
    AskForBounds(opened.Nodes());
    opened.Save(savedAgain);
    Check(ContentOf(saved) == ContentOf(savedAgain), "an opened document is saved as it was");
}
