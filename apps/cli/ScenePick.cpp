// SPDX-License-Identifier: MIT
#include "apps/cli/ScenePick.h"

#include "apps/cli/Errors.h"
#include "apps/cli/SceneBuilder.h"
#include "apps/cli/SceneDocument.h"
#include "extrude/OrvFont.h"
#include "imaging/GLMemoryDIB.h"
#include "import3ds/TriangularMeshObject.h"
#include "platform/Errors.h"
#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace
{

constexpr int partNames = 3;                 // faces, walls and bevels of a character
constexpr int namesOfHandles = 4;            // between those of the children and of the lights
constexpr std::size_t mostNames = 1u << 26;  // of all hits, 256 MiB

/// What OpenGL says of one picked thing.
struct Hit
{
    std::vector<GLuint> names;
    GLuint depth;
};

/// Draws in selection mode until the hits fit.
std::vector<Hit> CollectHits(const std::function<int()>& draw)
{
    std::vector<GLuint> buffer(1u << 14);
    while (true)
    {
        while (glGetError() != GL_NO_ERROR)
        {}
        glSelectBuffer(static_cast<GLsizei>(buffer.size()), buffer.data());
        glRenderMode(GL_SELECT);
        glInitNames();
        const int drawn = draw();
        const GLenum error = glGetError();
        const GLint count = glRenderMode(GL_RENDER);
        if (drawn == 0 || error != GL_NO_ERROR)
        {
            throw Failure("OpenGL: the nodes nest too deep to be picked");
        }
        if (count < 0 && buffer.size() < mostNames)
        {
            buffer.resize(buffer.size() * 4);
            continue;
        }
        std::vector<Hit> hits;
        const GLuint* record = buffer.data();
        for (GLint i = 0; i < count; ++i)
        {
            hits.push_back({{record + 3, record + 3 + record[0]}, record[1]});
            record += 3 + record[0];
        }
        return hits;
    }
}

/// The small square of a picture that is looked into, as a picking window.
class PickWindow
{
public:
    /// \param steps into which a pixel is divided; the window is one of them, around its middle.
    PickWindow(ViewObject& view, int x, int y, int steps, bool wide) : view_(view)
    {
        // A sub-window of two by two steps with the wanted one in its middle.
        lens_ = view.GetProjection();
        lens_.SetScale(steps, steps);
        lens_.SetViewSize(2, 2);
        lens_.SetViewOffset((x + 0.5) * steps - 1, (y + 0.5) * steps - 1);
        view.SetSelectionPoint({1, 1});

        parameters_.SetFlags(view.GetDrawingMode());
        parameters_.SetShowObject();
        parameters_.SetShowChildren();
        parameters_.SetApplyProjection();
        parameters_.SetSelecting();
        if (!wide)
        {
            parameters_.SetAccurateSelection();
        }
        parameters_.SetProjection(&lens_);
    }

    /// What of the whole scene is in the window.
    std::vector<Hit> Pick()
    {
        return CollectHits([this] { return view_.Draw(&parameters_); });
    }

    /// What of some characters of a text is; the names are the part's alone.
    std::vector<Hit> Pick(const std::vector<const DrawingObject*>& way, OrvFontString& text,
                          std::size_t first, std::size_t end)
    {
        // The projection, from a draw that does nothing else.
        parameters_.SetClearAndReturn();
        view_.Draw(&parameters_);
        parameters_.ClearClearAndReturn();
        glLoadMatrixd(view_.GetCompositeMatrix());
        for (const DrawingObject* const node : way)
        {
            glMultMatrixd(node->GetCompositeMatrix());
        }
        return CollectHits(
            [&] { return text.GetFont()->DrawCharacters(&text, &parameters_, first, end); });
    }

private:
    ViewObject& view_;
    ProjectionData lens_;
    DrawingParameters parameters_;
};

std::string PartName(GLuint name, bool solid)
{
    static const char* const names[partNames] = {"face", "edge", "bevel"};
    return solid ? names[name] : "outline";
}

/// Finds what names mean. The library names children by their indices and, on the same level, the
/// three parts of a text's characters alike; which character it was it does not say.
class PartFinder
{
public:
    PartFinder(SceneDocument& document, PickWindow& window)
        : scene_(*document.scene), view_(*document.view), window_(window)
    {}

    std::vector<PickedPart> Find()
    {
        for (const Hit& hit : window_.Pick())
        {
            FollowNames(hit);
        }
        for (const TextHit& hit : texts_)
        {
            SplitCharacters(hit, 0, hit.text->GetTextString()->Text().size());
        }
        // As drawing does it: of two at the same depth the one that was drawn first is in front.
        std::stable_sort(found_.begin(), found_.end(),
                         [](const auto& a, const auto& b) { return a.depth < b.depth; });
        return found_;
    }

private:
    /// A text that has something in the window.
    struct TextHit
    {
        OrvFontString* text;
        NodePath path;
        std::vector<const DrawingObject*> way;  // from the scene to the text
    };

    void Add(PickedPart::Kind kind, const NodePath& path, GLuint index, const std::string& part,
             GLuint depth)
    {
        constexpr double largest = 4294967295.0;
        const double share = depth / largest;
        for (PickedPart& known : found_)
        {
            if (known.kind == kind && known.path == path &&
                known.index == static_cast<int>(index) && known.part == part)
            {
                known.depth = std::min(known.depth, share);
                return;
            }
        }
        found_.push_back({kind, path, static_cast<int>(index), part, share});
    }

    void FollowNames(const Hit& hit)
    {
        TextHit at{nullptr, {}, {&scene_}};
        DrawingObject* node = &scene_;
        for (std::size_t level = 0; level < hit.names.size(); ++level)
        {
            const GLuint name = hit.names[level];
            const bool isLast = level + 1 == hit.names.size();
            at.text = dynamic_cast<OrvFontString*>(node);
            if (isLast && at.text != nullptr && name < partNames)
            {
                // A child of that index says as much: the text itself is asked which it was.
                NoteText(at);
                if (name >= static_cast<GLuint>(node->GetChildCount()) || IsOfText(at, hit))
                {
                    return;
                }
            }
            if (name < static_cast<GLuint>(node->GetChildCount()))
            {
                node = node->GetChildByIndex(static_cast<int>(name));
                at.path.push_back(static_cast<int>(name));
                at.way.push_back(node);
            }
            else if (node == &scene_)
            {
                FollowLight(name, hit.depth);
                return;
            }
            else if (isLast && dynamic_cast<TriangularMeshObject*>(node) != nullptr)
            {
                Add(PickedPart::triangle, at.path, name, "", hit.depth);
                return;
            }
            else
            {
                throw Failure("the scene cannot be picked: node " + PathText(at.path) + ", " +
                              TitleOf(*node) + ", has an edge style that is not known");
            }
        }
        if (node != &scene_)
        {
            Add(PickedPart::node, at.path, 0, "", hit.depth);
        }
    }

    void FollowLight(GLuint name, GLuint depth)
    {
        // In picking lights are always drawn, in pictures only when the view shows them.
        const auto first = static_cast<GLuint>(scene_.GetChildCount() + namesOfHandles);
        if (view_.ShouldShowLightsMode() && name >= first)
        {
            Add(PickedPart::light, {}, name - first, "", depth);
        }
    }

    void NoteText(const TextHit& hit)
    {
        const bool known = std::any_of(texts_.begin(), texts_.end(), [&hit](const TextHit& other) {
            return other.text == hit.text;
        });
        if (!known && hit.text->GetFont() != nullptr)
        {
            texts_.push_back(hit);
        }
    }

    bool IsOfText(const TextHit& text, const Hit& hit)
    {
        const std::size_t all = text.text->GetTextString()->Text().size();
        const std::vector<Hit> own = window_.Pick(text.way, *text.text, 0, all);
        return std::any_of(own.begin(), own.end(), [&hit](const Hit& each) {
            return each.names.back() == hit.names.back() && each.depth == hit.depth;
        });
    }

    /// Halves a range of characters until each hit is of one.
    void SplitCharacters(const TextHit& hit, std::size_t first, std::size_t end)
    {
        const std::vector<Hit> hits = window_.Pick(hit.way, *hit.text, first, end);
        if (hits.empty())
        {
            return;
        }
        if (end - first > 1)
        {
            const std::size_t middle = first + (end - first) / 2;
            SplitCharacters(hit, first, middle);
            SplitCharacters(hit, middle, end);
            return;
        }
        const bool solid = (view_.GetDrawingMode() & 1) != 0;
        for (const Hit& each : hits)
        {
            Add(PickedPart::character, hit.path, static_cast<GLuint>(first),
                PartName(each.names.back(), solid), each.depth);
        }
    }

    SceneObject& scene_;
    ViewObject& view_;
    PickWindow& window_;
    std::vector<TextHit> texts_;
    std::vector<PickedPart> found_;
};

/// Throws Failure for a text whose drawing leaves names behind, which would mislead.
void CheckStyles(const DrawingObject& node, const NodePath& path)
{
    const auto* const text = dynamic_cast<const OrvString*>(&node);
    if (text != nullptr && (text->GetBevelStyle() < 0 || text->GetBevelStyle() > 2))
    {
        throw Failure("the scene cannot be picked: node " + PathText(path) + ", " + TitleOf(node) +
                      ", has the edge style " + std::to_string(text->GetBevelStyle()) +
                      " where 0 to 2 are known");
    }
    for (int i = 0; i < node.GetChildCount(); ++i)
    {
        NodePath below = path;
        below.push_back(i);
        CheckStyles(*node.GetChildByIndex(i), below);
    }
}

}  // namespace

ScenePicker::ScenePicker(SceneDocument& document, int width, int height)
    : document_(document), target_(std::make_unique<GLMemoryDIB>())
{
    CheckStyles(*document.scene, {});
    SizeView(*document.view, width, height);

    // As pictures are drawn, but small: nothing goes into it.
    ProjectionData small;
    small.SetUnscaledSize(2, 2);
    if (!target_->Create(small, 24))
    {
        throw Failure("OpenGL: no off-screen context: " + GetLastErrorText());
    }
}

ScenePicker::~ScenePicker() = default;

std::vector<PickedPart> ScenePicker::Pick(int x, int y)
{
    struct Attempt
    {
        int steps;
        bool wide;
    };
    constexpr int middle = 64;  // steps to a pixel: as good as a point
    std::vector<Attempt> attempts = {{middle, false}, {1, false}};
    constexpr unsigned int outlineMode = 2;
    if ((document_.view->GetDrawingMode() & outlineMode) != 0)
    {
        attempts.push_back({1, true});
    }
    std::vector<PickedPart> found;
    for (std::size_t i = 0; i < attempts.size() && found.empty(); ++i)
    {
        PickWindow window(*document_.view, x, y, attempts[i].steps, attempts[i].wide);
        found = PartFinder(document_, window).Find();
    }
    return found;
}
