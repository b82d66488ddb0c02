// SPDX-License-Identifier: MIT
#include "apps/cli/commands/SceneSource.h"

#include "apps/cli/Errors.h"
#include "apps/cli/Terminal.h"
#include "apps/cli/commands/OptionAdder.h"
#include "document/DrawingModes.h"
#include "document/MeshImport.h"
#include "document/OptionRange.h"
#include "document/SceneFraming.h"
#include "document/SceneLights.h"
#include "document/ScenePictures.h"
#include "document/TextEncoding.h"
#include "document/TextNode.h"
#include "document/outlines/OutlineImport.h"
#include "orvane/orvane.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"
#include "profiles/EdgeProfile.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "solids/OrvOutlineShape.h"

#include <CLI/CLI.hpp>

namespace orvane
{

namespace
{

/// The value of --style for texts with a profile, beside the names of EdgeStyle.
constexpr const char* profileStyle = "profile";

/// The value of --align for lines of one width, beside the names of Alignment.
constexpr const char* justified = "justify";

/// What is wrong with a value of --profile, and with which step; empty when it can be read.
std::string ProblemOfProfile(const std::string& text)
{
    try
    {
        ParseProfile(text);
        return {};
    }
    catch (const Error& error)
    {
        return error.what();
    }
}

/// Sets the document's camera to the saved view of a name (in UTF-8).
void TakeSavedView(const SceneDocument& document, const std::string& name)
{
    CheckName("view", name);
    ViewObject& view = *document.view;
    if (view.RestoreSavedView(Utf8ToCodePage(name, document.codePage).text.c_str()))
    {
        view.SaveReferenceAspect();  // the saved view may have another lens
        return;
    }
    const NamedViewList& views = *view.GetSavedViews();
    std::string problem = "no view \"" + name + "\" is saved; saved views:";
    problem += views.IsEmpty() ? " none" : "";
    for (POSITION position = views.GetHeadPosition(); position != nullptr;)
    {
        problem += " \"" + ToUtf8(views.GetNext(position)->GetName());
        problem += position != nullptr ? "\"," : "\"";
    }
    throw Error(document.path, problem);
}

}  // namespace

void SceneSource::AddTexts()
{
    text_ = std::make_unique<SceneText>(command_);
}

void SceneSource::AddSceneFileAndLook()
{
    OptionAdder add(command_);
    const bool isForPicture = use_ == SceneUse::Picture;
    ofScene_ = add("--scene", sceneFile_, "FILE",
                   std::string(isForPicture ? "Draws" : "Writes") +
                       " the scene in a file that --save has written,\ninstead of a text");
    add("--allow-folder", open_.allowedFolders, "FOLDER",
        "The scene may show pictures from this folder too;\nmay be repeated")
        ->allow_extra_args(false)
        ->check(CLI::ExistingDirectory)
        ->needs(ofScene_);
    command_
        .add_flag("--trust", open_.trust,
                  "The scene may show pictures from anywhere, not only\nfrom its own folder")
        ->needs(ofScene_);
    AddStrictOption(command_, strictness,
                    "Fails and writes nothing when a picture, a font or a\nletter is missing, or a "
                    "part of an SVG file is not\nsupported");
    ofView_ = add("--view", view_, "NAME",
                  isForPicture ? "Draws the scene through a view that is saved in its\nfile"
                               : "The camera of the file is this view, which is saved\nin the "
                                 "scene's file")
                  ->needs(ofScene_);
    text_->AddSettings();
    const std::vector<CLI::Option*> ofLook = AddLook();
    ofText_ = text_->All();
    ofText_.insert(ofText_.end(), ofLook.begin(), ofLook.end());
}

std::vector<CLI::Option*> SceneSource::AddLook()
{
    OptionAdder add(command_);
    TextOptions& text = look_;
    std::vector<std::string> styles = NamesOf<EdgeStyle>();
    styles.emplace_back(profileStyle);
    style_ = NameOf(text.edgeStyle);
    std::vector<std::string> alignments = NamesOf<Alignment>();
    if (SceneText::CanJustify())
    {
        alignments.emplace_back(justified);
    }
    alignment_ = NameOf(text.alignment);
    std::vector<CLI::Option*> look = {
        add("--style", style_, Alternatives(styles) + " [" + style_ + "]",
            "How the edges of the letters are cut; profile makes\nclosed solids")
            ->check(CLI::IsMember(styles)),
        add.Length("--bevel", text.bevelWidth, 0, 100,
                   "Width of bevels and roundings in ems; at most the\n"
                   "depth, or half of it with bevels on both faces"),
        add.Choice("--bevel-on", text.bevelSides, "Which faces have bevels"),
    };
    ofProfile_ = {
        add("--profile", profile_, "NAME|LIST [chamfer]",
            "Cross section of the edges of --style profile: chamfer,\nround, cove, step, ogee, "
            "chisel, with a width if it is\nnot that of --bevel (\"round -0.02\" is inside), or "
            "steps\n(\"0,0 0.02,-0.01 0.04,-0.04\")")
            ->check(CLI::Validator(ProblemOfProfile, "")),
        add.Choice("--profile-on", text.bevelSides, "Which faces have the profile"),
        add.Choice("--fuse", text.fusion, "Which letters of --style profile become one solid"),
    };
    look.insert(look.end(), ofProfile_.begin(), ofProfile_.end());
    const std::vector<CLI::Option*> others = {
        add.Length("--depth", text.depth, 0, 100, "Depth of the letters in ems"),
        add("--align", alignment_, Alternatives(alignments) + " [" + alignment_ + "]",
            "How the lines are aligned")
            ->check(CLI::IsMember(alignments)),
        add.Length("--char-spacing", text.characterSpacing, -100, 100,
                   "Space added between characters, in ems"),
        add.Length("--line-spacing", text.lineSpacing, -100, 100,
                   "Space added between lines, in ems"),
        add.Colour("--face-color", text.faceColor, "COLOR [" + ColorText(text.faceColor) + "]",
                   "Colour of the fronts and backs: a name (gold, navy,\n...), #rgb, #rrggbb or "
                   "#rrggbbaa"),
    };
    ofSides_ = {
        add.Colour("--edge-color", text.edgeColor, "COLOR",
                   "Colour of the sides [half as bright as the face]"),
        add.Colour("--bevel-color", text.bevelColor, "COLOR",
                   "Colour of the bevels [lighter than the face]"),
    };
    const std::vector<CLI::Option*> materials = {
        add("--face", text.faceMaterial, "MATERIAL",
            "Material of the fronts and backs, and of all sides\nwithout a material or colour: "
            "gold, chrome, glass, ...\n(\"orvane materials\" lists them)"),
        add("--edge", text.edgeMaterial, "MATERIAL", "Material of the sides"),
        add("--bevel-material", text.bevelMaterial, "MATERIAL", "Material of the bevels"),
    };
    look.insert(look.end(), others.begin(), others.end());
    look.insert(look.end(), materials.begin(), materials.end());
    look.insert(look.end(), ofSides_.begin(), ofSides_.end());
    return look;
}

bool SceneSource::IsJustified() const
{
    return alignment_ == justified;
}

TextOptions SceneSource::Look() const
{
    TextOptions text = look_;
    if (!IsJustified())
    {
        lexical_cast(alignment_, text.alignment);
    }
    if (style_ == profileStyle)
    {
        text.profile = profile_.empty() ? "chamfer" : profile_;
        return text;
    }
    lexical_cast(style_, text.edgeStyle);
    return text;
}

void SceneSource::SetLook(OutlineOptions& outlines) const
{
    const TextOptions text = Look();
    outlines.depth = text.depth;
    outlines.profileSides = text.bevelSides;
    outlines.alignment = text.alignment;
    outlines.currentColor = text.faceColor;
    outlines.profileWidth = -text.bevelWidth;
    if (text.profile)
    {
        outlines.profile = text.profile;
    }
    else if (text.edgeStyle != EdgeStyle::Square && text.bevelWidth > 0)
    {
        outlines.profile = text.edgeStyle == EdgeStyle::Bevel ? "chamfer" : "round";
    }
}

void SceneSource::AddSurroundings()
{
    outlines_ = std::make_unique<OutlineFileOptions>(command_);
    imports_ = std::make_unique<ImportOptions>(command_);
    surroundings_ = std::make_unique<SceneOptions>(command_, use_);
    ofText_.insert(ofText_.end(), surroundings_->ofTexture.begin(), surroundings_->ofTexture.end());
    ofText_.insert(ofText_.end(), outlines_->all.begin(), outlines_->all.end());
    for (CLI::Option* const option : ofText_)
    {
        option->excludes(ofScene_);
    }
    for (CLI::Option* const option : surroundings_->ofCamera)
    {
        option->excludes(ofView_);
    }
}

SceneSource::Request SceneSource::Check() const
{
    Request request;
    request.hasText = text_->IsGiven();
    request.imports = imports_->Parse();
    request.outlines = outlines_->Parse();
    const bool hasSolids = request.hasText || !request.outlines.empty();
    const bool hasContent = hasSolids || !request.imports.empty();
    if (sceneFile_.empty() != hasContent)
    {
        const std::string command = command_.get_name() + ": ";
        throw UsageError(command +
                         (hasContent ? "--scene cannot be combined with a text, --outline-file or "
                                       "--import"
                                     : std::string("nothing to ") +
                                           (use_ == SceneUse::Picture ? "draw" : "write") +
                                           "; a text, --outline-file, --import or --scene is "
                                           "required"));
    }
    for (const CLI::Option* const option : ofProfile_)
    {
        if (option->count() > 0 && style_ != profileStyle)
        {
            throw UsageError(option->get_name() + ": --style profile is required");
        }
    }
    text_->Check(IsJustified());
    request.camera = surroundings_->Camera();
    request.background = surroundings_->Background();
    request.texture = surroundings_->Texture();
    if (request.texture && sceneFile_.empty() && !hasSolids)
    {
        throw UsageError(
            "--texture: a text or --outline-file is required, on which the texture is "
            "laid");
    }
    for (const CLI::Option* const option : ofSides_)
    {
        if (option->count() > 0 && !request.outlines.empty() && !request.hasText)
        {
            throw UsageError(option->get_name() +
                             ": a text is required; the solids of --outline-file have the colours "
                             "of the file on all sides");
        }
    }
    if (!request.outlines.empty() && look_.depth == 0)
    {
        throw UsageError("--depth: --outline-file needs a depth above 0");
    }
    for (OutlineFile& outlines : request.outlines)
    {
        SetLook(outlines.options);
        outlines.options.texture = request.texture;
    }
    return request;
}

SceneDocument SceneSource::Make(const Request& request, std::optional<Size>& size,
                                bool asOutlines) const
{
    if (IsFile())
    {
        return Load(request, size, asOutlines);
    }
    size = size.value_or(defaultPictureSize);
    return Build(request, *size, asOutlines);
}

void SceneSource::TellUncutSolids(const SceneDocument& document) const
{
    TellMissingParts(document, {MissingKind::TextProfile}, strictness);
    if (IsFile())
    {
        TellMissingParts(document, {MissingKind::OutlineProfile}, strictness);
    }
}

void SceneSource::AddOutlines(SceneDocument& document, const OutlineFile& outlines) const
{
    OutlineImport made = MakeOutlines(*document.scene, outlines.file, outlines.options);
    TellNotices(outlines.file, made.notices, strictness);
    AddNode(*document.scene, std::move(made.node));
    if (outlines.options.texture)
    {
        document.view->SetShowTextures();
    }
}

/// A document with the text and, after it, the imported meshes and the outlines.
SceneDocument SceneSource::Build(const Request& request, const Size& size, bool asOutlines) const
{
    std::unique_ptr<DrawingObject> text =
        request.hasText ? text_->Make(Look(), IsJustified(), strictness) : nullptr;
    SceneDocument document;
    SetFirstLights(*document.scene);
    if (text != nullptr)
    {
        DrawingObject& node = AddNode(*document.scene, std::move(text));
        if (request.texture)
        {
            SetTexture(node, *request.texture);
            document.view->SetShowTextures();
        }
    }
    for (const Import& import : request.imports)
    {
        MeshOptions meshes = import.options;
        if (strictness == Strictness::GoOn)
        {
            meshes.warn = [&import](const std::string& damage) {
                Say(import.file +
                    ": the file is damaged, and only its undamaged parts are drawn: " + damage);
            };
        }
        AddNode(*document.scene, MakeImport(*document.scene, import.file, meshes));
    }
    for (const OutlineFile& outlines : request.outlines)
    {
        AddOutlines(document, outlines);
    }
    SetBackground(*document.scene, request.background.value_or(BackgroundOptions()));
    ChangeLights(*document.scene, surroundings_->Lights());
    if (asOutlines)
    {
        SetDrawingMode(*document.view, DrawingMode::Outline);
    }
    FrameScene(*document.view, request.camera.value_or(CameraOptions()), size);
    TellMissingParts(document, {MissingKind::Letter}, strictness);
    return document;
}

/// A document from a file, changed by the options. Without --size the picture gets the size that
/// the document was framed for.
SceneDocument SceneSource::Load(const Request& request, std::optional<Size>& size,
                                bool asOutlines) const
{
    SceneDocument document = SceneDocument::Load(sceneFile_, FontProgress(), open_);
    document.CheckLevels();
    TellMissingParts(
        document,
        {MissingKind::Picture, MissingKind::Font, MissingKind::Letter, MissingKind::Character},
        strictness);
    SceneObject& scene = *document.scene;
    ViewObject& view = *document.view;
    if (const std::optional<Size> framed = FramedSize(view))
    {
        // A view that was just read has the right aspect ratio, but not yet its size in pixels.
        view.SetUnscaledSize(framed->width, framed->height);
    }
    if (!size)
    {
        size = UnaskedSize(view, sceneFile_);
    }
    if (!view_.empty())
    {
        TakeSavedView(document, view_);
    }
    if (request.background)
    {
        SetBackground(scene, *request.background);
    }
    ChangeLights(scene, surroundings_->Lights());
    if (asOutlines)
    {
        SetDrawingMode(view, DrawingMode::Outline);
    }
    CheckPictures(scene);
    scene.CalculateBounds();
    if (request.camera)
    {
        FrameScene(view, *request.camera, *size);
    }
    return document;
}

}  // namespace orvane
