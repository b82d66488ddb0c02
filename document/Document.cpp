// SPDX-License-Identifier: MIT
#include "document/Colors.h"
#include "document/DocumentState.h"
#include "document/DrawingModes.h"
#include "document/FontChoice.h"
#include "document/KeptContext.h"
#include "document/MeshImport.h"
#include "document/OptionRange.h"
#include "document/OutputFile.h"
#include "document/PictureFormat.h"
#include "document/SceneFraming.h"
#include "document/SceneLights.h"
#include "document/SceneNames.h"
#include "document/ScenePick.h"
#include "document/ScenePictures.h"
#include "document/TextEncoding.h"
#include "document/TextNode.h"
#include "document/outlines/OutlineImport.h"
#include "extrude/OrvFont.h"
#include "orvane/DocumentAccess.h"
#include "orvane/orvane.h"
#include "platform/CodePages.h"
#include "platform/Utf8.h"
#include "scene/DescendentWalk.h"
#include "scene/NamedView.h"
#include "scene/NamedViewList.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "solids/OrvOutlineShape.h"

#include <algorithm>
#include <map>
#include <utility>

namespace orvane
{

namespace
{

/// All characters of a document's texts, in UTF-8.
std::string AllTexts(const SceneDocument& document)
{
    std::string all;
    ForEachText(*document.scene, [&](const OrvFontString& text) {
        all += CodePageToUtf8(static_cast<LPCSTR>(*text.GetTextString()), document.codePage);
    });
    return all;
}

/// Encodes the texts and the names of views in another code page, which must have all characters of
/// the texts. The name of a view ends before the first character that the code page lacks.
void ChangeCodePage(SceneDocument& document, UINT codePage)
{
    if (document.codePage == codePage)
    {
        return;
    }
    const auto inNewPage = [&](const CString& text) {
        const std::string utf8 = CodePageToUtf8(static_cast<LPCSTR>(text), document.codePage);
        return Utf8ToCodePage(utf8, codePage).text;
    };
    // Find all fonts before changing anything: if a font is missing in the new code page, the
    // document must stay as it was.
    std::map<const OrvFont*, OrvFont*> fonts;
    ForEachText(*document.scene, [&](const OrvFontString& text) {
        const OrvFont& font = *text.GetFont();
        const std::string name =
            CodePageToUtf8(static_cast<LPCSTR>(font.GetFullName()), document.codePage);
        fonts[&font] = FontForCodePage(*ChooseFont(name), codePage);
    });
    ForEachText(*document.scene, [&](OrvFontString& text) {
        text.AttachFont(fonts.at(text.GetFont()));
        const std::string bytes = inNewPage(*text.GetTextString());
        text.SetTextString(CString(bytes.data(), static_cast<int>(bytes.size())));
    });
    NamedViewList& views = *document.scene->GetSavedViews();
    for (POSITION position = views.GetHeadPosition(); position != nullptr;)
    {
        NamedView& view = *views.GetNext(position);
        view.SetName(inNewPage(view.GetName()).c_str());
    }
    document.codePage = codePage;
}

std::string EncodedName(const std::string& name, UINT codePage)
{
    CheckName("view", name);
    const CodePageText encoded = Utf8ToCodePage(name, codePage);
    if (!encoded.Fits())
    {
        throw Error("view \"" + name + "\"",
                    "the code page of the document lacks " + Describe(encoded.misfit));
    }
    return encoded.text;
}

Error NoView(const SceneDocument& document, const std::string& name)
{
    return Error(document.path.empty() ? "document" : document.path,
                 "no view \"" + name + "\" is saved in the document");
}

/// The number of characters of a text, of which CR LF is one, as Node::Text counts them.
int CountCharacters(const std::string& utf8)
{
    int count = 0;
    char32_t previous = 0;
    ForEachCharacter(utf8, [&](char32_t character) {
        count += character == '\n' && previous == '\r' ? 0 : 1;
        previous = character;
    });
    return count;
}

/// Sets the index and the characters of a letter that was hit.
/// \param first the letter's first byte
void SetLetter(Hit& hit, OrvFontString& text, std::size_t first)
{
    const std::string string(*text.GetTextString());
    first = std::min(first, string.size());
    hit.index = CountCharacters(ToUtf8(text, string.substr(0, first)));
    hit.letter = ToUtf8(text, string.substr(first, text.LetterEnd(first) - first));
}

}  // namespace

// The state --------------------------------------------------------------------------------------

std::unique_ptr<ViewObject> DocumentState::ViewFor(const Size& size) const
{
    auto view = std::make_unique<ViewObject>(*scene.view);
    if (!FramedSize(*scene.view))
    {
        scene.scene->CalculateBounds();
        FrameScene(*view, CameraOptions(), size);
    }
    SizeView(*view, size);
    return view;
}

SceneObject& SceneOf(const Document& document)
{
    return *DocumentState::Of(document).scene.scene;
}

ViewObject& ViewOf(const Document& document)
{
    return *DocumentState::Of(document).scene.view;
}

unsigned CodePageOf(const Document& document)
{
    return DocumentState::Of(document).scene.codePage;
}

DrawingObject& ObjectOf(const Node& node)
{
    return DocumentState::NodeOf(node);
}

Node HandleOf(const Document& document, DrawingObject& node)
{
    return DocumentState::Of(document).HandleOf(node);
}

// Files ------------------------------------------------------------------------------------------

Document::Document() : state_(std::make_shared<DocumentState>())
{
    SetFirstLights(*state_->scene.scene);
    orvane::SetBackground(*state_->scene.scene, BackgroundOptions());
}

Document::Document(std::shared_ptr<DocumentState> state) : state_(std::move(state)) {}
Document::~Document() = default;
Document::Document(Document&& other) noexcept = default;
Document& Document::operator=(Document&& other) noexcept = default;

Document Document::Open(const std::string& path, const OpenOptions& options)
{
    // The font registry keeps the code page in which it is loaded, and this must be the host's code
    // page. So load the fonts before SceneDocument::Load sets the process's code page to that of
    // the file.
    LoadFonts();
    auto state = std::make_shared<DocumentState>();
    const CodePageScope scope(state->scene.codePage);
    state->scene = SceneDocument::Load(path, {}, options);
    SceneDocument& document = state->scene;
    ForEachText(*document.scene, [&](OrvFontString& text) {
        text.AttachFont(FontForCodePage(*text.GetFont(), document.codePage));
    });
    if (const std::optional<Size> size = orvane::FramedSize(*document.view))
    {
        // A view that was just read has the right aspect ratio, but not yet its size in pixels.
        document.view->SetUnscaledSize(size->width, size->height);
    }
    document.scene->CalculateBounds();
    return Document(std::move(state));
}

void Document::Save(const std::string& path)
{
    OutputFile file(path);
    state_->scene.Save(file);
    state_->scene.path = path;
}

const std::vector<MissingPicture>& Document::MissingPictures() const
{
    return state_->scene.missingPictures;
}

const std::vector<MissingFont>& Document::MissingFonts() const
{
    return state_->scene.missingFonts;
}

std::vector<MissingLetter> Document::MissingLetters() const
{
    return MissingLettersOf(state_->scene);
}

const std::string& Document::Path() const
{
    return state_->scene.path;
}

// Contents ---------------------------------------------------------------------------------------

Node Document::AddText(const std::string& text, const TextOptions& options)
{
    CheckTextOptions(options);
    LoadFonts();
    SceneDocument& document = state_->scene;
    OrvFont& font = *ChooseFont(options.font);
    const std::vector<std::string> lines = SplitLines(text);
    CheckTextLength(lines);
    // If the new text fits into the code page of the other texts, the document keeps that code
    // page.
    const std::string others = AllTexts(document);
    const bool fits = !others.empty() && Utf8ToCodePage(text, document.codePage).Fits();
    const EncodedText chosen =
        fits ? EncodedText{document.codePage, EncodeLinesIn(lines, document.codePage)}
             : EncodeLines(lines, others);
    const UINT codePage = chosen.codePage;
    const CString& encoded = chosen.text;
    const CodePageScope scope(codePage);
    OrvFont* const letters = FontForCodePage(font, codePage);
    CheckCharacters(*letters, encoded);
    std::unique_ptr<DrawingObject> node = MakeTextNode(encoded, letters, options);
    if (options.texture)
    {
        SetTexture(*node, *options.texture);
    }
    node->CalculateBounds();
    ChangeCodePage(document, codePage);
    Node added = state_->Add(std::move(node));
    if (options.texture)
    {
        document.view->SetShowTextures();
    }
    return added;
}

Node Document::AddMesh(const std::string& path, const MeshOptions& options)
{
    const CodePageScope scope(state_->scene.codePage);
    return state_->Add(MakeImport(*state_->scene.scene, path, options));
}

AddedOutlines Document::AddOutlines(const std::string& path, const OutlineOptions& options)
{
    SceneDocument& document = state_->scene;
    const CodePageScope scope(document.codePage);
    OutlineImport made = MakeOutlines(*document.scene, path, options);
    AddedOutlines added = {Node(), std::move(made.notices)};
    added.node = state_->Add(std::move(made.node));
    if (options.texture)
    {
        document.view->SetShowTextures();
    }
    return added;
}

std::vector<Node> Document::Nodes() const
{
    const SceneObject& scene = *state_->scene.scene;
    std::vector<Node> nodes;
    nodes.reserve(static_cast<std::size_t>(scene.GetChildCount()));
    ForEachChild(scene, [&](DrawingObject& node, int) { nodes.push_back(state_->HandleOf(node)); });
    return nodes;
}

void Document::SetBackground(const BackgroundOptions& options)
{
    orvane::SetBackground(*state_->scene.scene, options);
}

void Document::ChangeLights(const LightOptions& options)
{
    orvane::ChangeLights(*state_->scene.scene, options);
}

DrawingMode Document::GetDrawingMode() const
{
    return DrawingModeOf(*state_->scene.view);
}

void Document::SetDrawingMode(DrawingMode mode)
{
    orvane::SetDrawingMode(*state_->scene.view, mode);
}

// The camera -------------------------------------------------------------------------------------

void Document::Frame(const Size& size, const CameraOptions& options)
{
    CheckSize(size);
    CheckCameraOptions(options);
    const CodePageScope scope(state_->scene.codePage);
    state_->scene.scene->CalculateBounds();
    FrameScene(*state_->scene.view, options, size);
}

std::optional<Size> Document::FramedSize() const
{
    return orvane::FramedSize(*state_->scene.view);
}

void Document::SaveView(const std::string& name)
{
    state_->scene.view->SaveCurrentView(EncodedName(name, state_->scene.codePage).c_str());
}

void Document::RestoreView(const std::string& name)
{
    ViewObject& view = *state_->scene.view;
    if (!view.RestoreSavedView(EncodedName(name, state_->scene.codePage).c_str()))
    {
        throw NoView(state_->scene, name);
    }
    view.SaveReferenceAspect();
}

void Document::DeleteView(const std::string& name)
{
    if (!state_->scene.view->DeleteSavedView(EncodedName(name, state_->scene.codePage).c_str()))
    {
        throw NoView(state_->scene, name);
    }
}

std::vector<std::string> Document::ViewNames() const
{
    std::vector<std::string> names;
    const NamedViewList& views = *state_->scene.view->GetSavedViews();
    for (POSITION position = views.GetHeadPosition(); position != nullptr;)
    {
        names.push_back(CodePageToUtf8(static_cast<LPCSTR>(views.GetNext(position)->GetName()),
                                       state_->scene.codePage));
    }
    return names;
}

// Picking ----------------------------------------------------------------------------------------

std::vector<Hit> Document::Pick(const Size& size, int x, int y) const
{
    CheckSize(size);
    if (x < 0 || y < 0 || x >= size.width || y >= size.height)
    {
        throw OptionError("pixel", "a pixel inside of the picture",
                          std::to_string(x) + "," + std::to_string(y));
    }
    state_->scene.CheckLevels();
    const CodePageScope scope(state_->scene.codePage);
    const KeptContext kept;
    std::vector<Hit> hits;
    NodeFinder nodes(*state_->scene.scene);
    for (const PickedPart& part : ScenePicker(*state_->ViewFor(size)).Pick(x, y))
    {
        Hit hit;
        hit.kind = part.kind;
        hit.index = part.index;
        hit.part = part.part;
        hit.depth = part.depth;
        DrawingObject& node = nodes.NodeAt(part.path);
        if (part.kind != HitKind::Light)
        {
            hit.node = state_->HandleOf(node);
        }
        if (auto* const text = dynamic_cast<OrvFontString*>(&node);
            text != nullptr && part.kind == HitKind::Letter)
        {
            SetLetter(hit, *text, static_cast<std::size_t>(part.index));
        }
        hits.push_back(hit);
    }
    return hits;
}

}  // namespace orvane
