// SPDX-License-Identifier: MIT
#include "document/ScenePick.h"

#include "document/DrawingModes.h"
#include "document/poster/PictureState.h"
#include "extrude/EdgeStyle.h"
#include "extrude/OrvFont.h"
#include "imaging/GLMemoryDIB.h"
#include "import3ds/TriangularMeshObject.h"
#include "platform/Errors.h"
#include "platform/OpenGL.h"
#include "scene/DescendentWalk.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "solids/OrvOutlineShape.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace orvane
{

namespace
{

// In OpenGL's selection mode each drawn thing has names, which are numbers. The name of a node's
// child is the child's index. The parts of a character have the names 0 face, 1 edge and 2 bevel.
// The names of sizing handles follow those of the scene's children, and the names of lights follow
// those of sizing handles.
constexpr GLuint partNameCount = 3;
constexpr GLuint handleNameCount = 4;

constexpr std::size_t maxBufferSize = 1u << 26;  // numbers of 4 bytes: 256 MiB

/// OpenGL's record of one picked thing.
struct SelectionHit
{
    std::vector<GLuint> names;  ///< from the scene's child (or light) down to the part that was hit
    GLuint depth;               ///< of the nearest point, from 0 to 0xFFFFFFFF
};

/// Draws in selection mode, with a larger buffer each time, until the hits fit into it. Throws
/// Error if they do not fit into maxBufferSize numbers.
std::vector<SelectionHit> CollectHits(const std::function<int()>& draw)
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
            throw Error("OpenGL", "the nodes are nested too deeply to be picked");
        }
        if (count < 0 && buffer.size() < maxBufferSize)
        {
            buffer.resize(buffer.size() * 4);
            continue;
        }
        if (count < 0)
        {
            throw Error("OpenGL", "too many parts lie under the pixel");
        }
        std::vector<SelectionHit> hits;
        const GLuint* record = buffer.data();
        for (GLint i = 0; i < count; ++i)
        {
            hits.push_back({{record + 3, record + 3 + record[0]}, record[1]});
            record += 3 + record[0];
        }
        return hits;
    }
}

/// A small square of a picture. OpenGL picks everything that is in it.
class PickWindow
{
public:
    /// A window around the centre of a pixel.
    /// \param steps how many windows, side by side, are as wide as a pixel
    /// \param wide makes the window five times as wide and high
    PickWindow(ViewObject& view, int x, int y, int steps, bool wide) : view_(view)
    {
        // A step is 1/steps of a pixel. The lens shows a square of 2 x 2 steps around the pixel's
        // centre. OpenGL's picking window has the same middle and is one step wide, or five steps
        // if \p wide.
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

    /// Finds everything in the scene that is in the window.
    std::vector<SelectionHit> Pick()
    {
        return CollectHits([this] { return view_.Draw(&parameters_); });
    }

    /// Finds those characters of a text that are in the window. The names of such a hit are the
    /// character's index and its part.
    /// \param way the nodes from the scene down to the text
    std::vector<SelectionHit> PickCharacters(const std::vector<const DrawingObject*>& way,
                                             OrvFontString& text)
    {
        // Draw is called only for the projection that it sets; with ClearAndReturn it draws no
        // nodes.
        parameters_.SetClearAndReturn();
        view_.Draw(&parameters_);
        parameters_.ClearClearAndReturn();
        glLoadMatrixd(view_.GetCompositeMatrix());
        for (const DrawingObject* const node : way)
        {
            glMultMatrixd(node->GetCompositeMatrix());
        }
        return CollectHits([&] { return text.DrawNamedCharacters(&parameters_); });
    }

private:
    ViewObject& view_;
    ProjectionData lens_;
    DrawingParameters parameters_;
};

Error UnpickableNode(const DrawingObject& node, const NodePath& path, const std::string& reason)
{
    const std::string name = NameOfNode(node);
    return Error("the scene cannot be picked",
                 "node " + PathText(path) + ", " + node.GetRuntimeClass()->m_lpszClassName +
                     (name.empty() ? name : " \"" + name + "\"") + ", " + reason);
}

bool DrawsSolids(const ViewObject& view)
{
    return (view.GetDrawingMode() & DrawingParameters::renderBit) != 0;
}

/// Finds the part of the scene that the names of a hit mean. Names alone do not suffice for texts:
/// the three parts of a character have the same names as the text's first three children, and no
/// name tells which character was hit.
class PartFinder
{
public:
    PartFinder(const ViewObject& view, PickWindow& window)
        : scene_(*view.GetScene()), view_(view), window_(window), nodes_(scene_)
    {}

    std::vector<PickedPart> Find()
    {
        for (const SelectionHit& hit : window_.Pick())
        {
            FollowNames(hit);
        }
        for (const TextHit& hit : texts_)
        {
            AddCharacters(hit);
        }
        // If two things have the same depth, a picture shows the thing that is drawn first. The
        // stable sort keeps that thing in front.
        std::stable_sort(found_.begin(), found_.end(),
                         [](const auto& a, const auto& b) { return a.depth < b.depth; });
        return found_;
    }

private:
    /// A text that has something in the window.
    struct TextHit
    {
        NodePath path;
        std::vector<SelectionHit> characters;               ///< see PickWindow::PickCharacters
        std::set<std::pair<GLuint, GLuint>> partsAtDepths;  ///< of the characters
    };

    void Add(HitKind kind, const NodePath& path, GLuint index, LetterPart part, GLuint depth)
    {
        constexpr double largestDepth = 4294967295.0;
        const double share = depth / largestDepth;
        const auto [place, isNew] = places_.try_emplace({kind, path, index, part}, found_.size());
        if (isNew)
        {
            found_.push_back({kind, path, static_cast<int>(index), part, share});
        }
        PickedPart& known = found_[place->second];
        known.depth = std::min(known.depth, share);
    }

    void FollowNames(const SelectionHit& hit)
    {
        NodePath path;
        std::vector<const DrawingObject*> way = {&scene_};
        DrawingObject* node = &scene_;
        for (std::size_t level = 0; level < hit.names.size(); ++level)
        {
            const GLuint name = hit.names[level];
            const bool isLast = level + 1 == hit.names.size();
            auto* const text = dynamic_cast<OrvFontString*>(node);
            if (isLast && text != nullptr && name < partNameCount)
            {
                // A child of the text may have the same name. The text's own characters tell
                // whether the text itself was hit.
                const bool isOfText = IsOfText(*text, path, way, hit);
                if (name >= static_cast<GLuint>(node->GetChildCount()) || isOfText)
                {
                    return;
                }
            }
            auto* const outlines = dynamic_cast<OrvOutlineShape*>(node);
            if (outlines != nullptr && name >= static_cast<GLuint>(node->GetChildCount()))
            {
                AddArea(path, name - static_cast<GLuint>(node->GetChildCount()), hit);
                return;
            }
            if (name < static_cast<GLuint>(node->GetChildCount()))
            {
                node = &nodes_.ChildAt(*node, static_cast<int>(name));
                path.push_back(static_cast<int>(name));
                way.push_back(node);
            }
            else if (node == &scene_)
            {
                FollowLight(name, hit.depth);
                return;
            }
            else if (isLast && dynamic_cast<TriangularMeshObject*>(node) != nullptr)
            {
                Add(HitKind::Triangle, path, name, LetterPart::Face, hit.depth);
                return;
            }
            else
            {
                throw UnpickableNode(*node, path, "has an unknown edge style");
            }
        }
        if (node != &scene_)
        {
            Add(HitKind::Node, path, 0, LetterPart::Face, hit.depth);
        }
    }

    void FollowLight(GLuint name, GLuint depth)
    {
        // Picking always draws the lights, but a picture draws them only when the view shows them.
        const GLuint first = static_cast<GLuint>(scene_.GetChildCount()) + handleNameCount;
        if (view_.ShouldShowLightsMode() && name >= first)
        {
            Add(HitKind::Light, {}, name - first, LetterPart::Face, depth);
        }
    }

    /// \param hit ends with the number of the area's part
    void AddArea(const NodePath& path, GLuint area, const SelectionHit& hit)
    {
        const LetterPart part =
            DrawsSolids(view_) ? static_cast<LetterPart>(hit.names.back()) : LetterPart::Outline;
        Add(HitKind::Area, path, area, part, hit.depth);
    }

    /// Whether a hit is one of the text's own characters. Picks these when the text is met first.
    bool IsOfText(OrvFontString& text, const NodePath& path,
                  const std::vector<const DrawingObject*>& way, const SelectionHit& hit)
    {
        const auto [place, isNew] = textPlaces_.try_emplace(&text, texts_.size());
        if (isNew)
        {
            TextHit& added = texts_.emplace_back();
            added.path = path;
            if (text.GetFont() != nullptr)
            {
                added.characters = window_.PickCharacters(way, text);
            }
            for (const SelectionHit& each : added.characters)
            {
                added.partsAtDepths.emplace(each.names.back(), each.depth);
            }
        }
        return texts_[place->second].partsAtDepths.count({hit.names.back(), hit.depth}) != 0;
    }

    void AddCharacters(const TextHit& text)
    {
        for (const SelectionHit& each : text.characters)
        {
            const LetterPart part = DrawsSolids(view_) ? static_cast<LetterPart>(each.names.back())
                                                       : LetterPart::Outline;
            Add(HitKind::Letter, text.path, each.names.front(), part, each.depth);
        }
    }

    SceneObject& scene_;
    const ViewObject& view_;
    PickWindow& window_;
    NodeFinder nodes_;
    std::vector<TextHit> texts_;
    std::unordered_map<const OrvFontString*, std::size_t> textPlaces_;  ///< in texts_
    std::vector<PickedPart> found_;
    /// In found_.
    std::map<std::tuple<HitKind, NodePath, GLuint, LetterPart>, std::size_t> places_;
};

/// Throws Error for a text with an unknown edge style. Drawing such a text leaves a name on
/// OpenGL's stack, so that all later hits would have wrong names.
void CheckStyles(const DrawingObject& node, NodePath& path)
{
    const auto* const text = dynamic_cast<const OrvString*>(&node);
    if (text != nullptr && (text->GetBevelStyle() < 0 || text->GetBevelStyle() >= edgeStyleCount))
    {
        throw UnpickableNode(node, path,
                             "has the edge style " + std::to_string(text->GetBevelStyle()) +
                                 " where 0 to " + std::to_string(edgeStyleCount - 1) +
                                 " are known");
    }
    ForEachChild(node, [&path](const DrawingObject& child, int index) {
        path.push_back(index);
        CheckStyles(child, path);
        path.pop_back();
    });
}

/// The bitmap and the context that the thread's picks draw into. They are kept until the thread
/// ends, because the first draw in a new context takes about 40 ms of processor time and a pick
/// less than 1 ms.
thread_local std::unique_ptr<GLMemoryDIB> pickTarget;

/// Throws Error when there is no context.
void MakePickTargetCurrent()
{
    if (pickTarget != nullptr &&
        wglMakeCurrent(pickTarget->GetMemoryDC(), pickTarget->renderingContext))
    {
        return;
    }
    pickTarget.reset();
    // Selection draws no pixels, so the bitmap can be small.
    ProjectionData small;
    small.SetUnscaledSize(2, 2);
    auto made = std::make_unique<GLMemoryDIB>();
    if (!made->Create(small, 24))
    {
        throw Error("OpenGL", "no off-screen context: " + GetLastErrorText());
    }
    pickTarget = std::move(made);
}

}  // namespace

ScenePicker::ScenePicker(const ViewObject& view) : view_(std::make_unique<ViewObject>(view))
{
    NodePath root;
    CheckStyles(*view_->GetScene(), root);
    MakePickTargetCurrent();
}

ScenePicker::~ScenePicker() = default;

std::vector<PickedPart> ScenePicker::Pick(int x, int y)
{
    struct Attempt
    {
        int steps;
        bool wide;
    };
    constexpr int pointSteps = 64;  // a window of 1/64 pixel is practically a point
    std::vector<Attempt> attempts = {{pointSteps, false}, {1, false}};
    if (DrawingModeOf(*view_) == DrawingMode::Outline)
    {
        attempts.push_back({1, true});
    }
    MakePickTargetCurrent();
    std::vector<PickedPart> found;
    try
    {
        const KeptState kept;  // so that one pick's state does not change the next
        for (std::size_t i = 0; i < attempts.size() && found.empty(); ++i)
        {
            PickWindow window(*view_, x, y, attempts[i].steps, attempts[i].wide);
            found = PartFinder(*view_, window).Find();
        }
    }
    catch (...)
    {
        pickTarget.reset();  // its matrix stacks may not be balanced
        throw;
    }
    return found;
}

}  // namespace orvane
