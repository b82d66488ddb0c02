// SPDX-License-Identifier: MIT
#include "fuzz/DocumentUse.h"

#include "fuzz/Check.h"
#include "orvane.h"
#include "orvane/DocumentAccess.h"

#include <fstream>
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

}  // namespace

void UseDocument(orvane::Document& document, const std::string& folder)
{
    AskForBounds(document.Nodes());
    MoveAndUndo(orvane::SceneOf(document));

    const std::string picture = folder + "/picture.bmp";
    orvane::PictureOptions options;
    options.size = pictureSize;
    options.samples = 1;
    try
    {
        orvane::WritePicture(document, picture, options);
        document.Pick(pictureSize, pictureSize.width / 2, pictureSize.height / 2);
    }
    catch (const orvane::Error&)
    {
        // Nodes may be nested too deep to be drawn, for example.
    }

    const std::string saved = folder + "/saved.orv";
    const std::string savedAgain = folder + "/saved-again.orv";
    document.Save(saved);
    orvane::Document opened = orvane::Document::Open(saved);
    opened.Save(savedAgain);
    Check(ContentOf(saved) == ContentOf(savedAgain), "an opened document is saved as it was");
}
