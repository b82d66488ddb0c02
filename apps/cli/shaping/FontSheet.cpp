// SPDX-License-Identifier: MIT
#include "apps/cli/shaping/FontSheet.h"

#include "apps/cli/Terminal.h"
#include "document/SceneDocument.h"
#include "document/SceneFraming.h"
#include "document/SceneLights.h"
#include "document/ScenePictures.h"
#include "document/poster/PosterTarget.h"
#include "document/texts/ShapedTextNode.h"
#include "geometry/CoordinateTransform.h"
#include "platform/Utf8.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace orvane
{

namespace
{

// The grid, in ems of the largest samples. A cell has a sample and, below it, its label.
constexpr double cellWidth = 8.5;
constexpr double cellHeight = 2.3;
constexpr double widestText = 7.7;
constexpr double labelSize = 0.3;
constexpr double labelBelow = 0.85;  // from baseline to baseline
constexpr double pixelsPerEm = 40;
constexpr int marginPixels = 56;
constexpr std::size_t mostColumns = 4;

const Color paper = Rgb(0xFAF8F4);
const Color ink = Rgb(0x1B2130);
const Color pale = Rgb(0x4E535E);

bool HasAllOf(const ShapingFace& face, const std::string& text)
{
    bool hasAll = true;
    ForEachCharacter(text, [&](char32_t character) {
        hasAll = hasAll && (character == ' ' || face.GlyphOf(character) != 0);
    });
    return hasAll;
}

/// The names of languages in their own scripts.
constexpr const char* ownNames[] = {
    "العربية", "עברית",   "हिन्दी",   "বাংলা",  "தமிழ்",     "తెలుగు",   "ಕನ್ನಡ",    "മലയാളം",
    "ગુજરાતી",  "ਪੰਜਾਬੀ",   "ଓଡ଼ିଆ",     "සිංහල",   "ไทย",      "ລາວ",     "ខ្មែរ",    "မြန်မာ",
    "བོད་སྐད",   "ქართული", "Հայերեն", "አማርኛ",   "Ελληνικά", "Русский", "日本語",  "中文",
    "한국어",  "ᏣᎳᎩ",     "ދިވެހި",     "ܣܘܪܝܝܐ", "ᠮᠣᠩᠭᠣᠯ",   "ᐃᓄᒃᑎᑐᑦ",  "ⵜⴰⵎⴰⵣⵉⵖⵜ"};

/// A text that a face can set: a name of a language in the script that the face has the most
/// characters of, else some of these characters, else symbols.
std::string SampleOf(const ShapingFace& face)
{
    constexpr int count = 7;
    constexpr char32_t firstSymbol = 0x2190;
    const std::vector<CoveredScript> scripts = ScriptsOf(face);
    const auto isOfScript = [&scripts](char32_t character) {
        return !scripts.empty() && ScriptOf(character) == scripts.front().script;
    };
    for (const char* const name : ownNames)
    {
        bool isFitting = false;
        ForEachCharacter(
            name, [&](char32_t character) { isFitting = isFitting || isOfScript(character); });
        if (isFitting && HasAllOf(face, name))
        {
            return name;
        }
    }
    std::string letters;
    int found = 0;
    for (const char32_t character : face.Characters())
    {
        const bool isWanted = scripts.empty() ? character >= firstSymbol
                                              : isOfScript(character) && !IsMark(character);
        if (isWanted && found < count)
        {
            letters += Utf8Of(character);
            ++found;
        }
    }
    return letters;
}

/// Adds a text whose line begins at a place, made smaller where it is too wide.
void AddText(SceneObject& scene, const std::string& text, const ShapedOptions& options, double x,
             double baseline, double size)
{
    std::unique_ptr<OrvShapedString> node = MakeShapedText(text, options);
    node->CalculateBounds();
    const double width = node->GetScaledDimensions().x;
    const double scale = width * size > widestText ? widestText / width : size;
    node->SetScale(DVector(scale, scale, options.look.depth));
    node->CalculateBounds();
    const double below = node->GetScaledDimensions().y / 2 - double{node->GetFirstLineOffset()};
    node->SetTranslation(DVector(x, baseline - below, 0.0));
    AddNode(scene, std::move(node));
}

TextOptions Flat(const Color& color)
{
    TextOptions look;
    look.edgeStyle = EdgeStyle::Square;
    look.depth = 0.01;
    look.alignment = Alignment::Left;
    look.faceColor = color;
    look.edgeColor = color;
    return look;
}

void AddFamily(SceneObject& scene, const FontFamily& family, double x, double baseline)
{
    ShapedOptions sample;
    sample.look = Flat(ink);
    sample.usesInstalledFonts = false;
    FontQuery& query = sample.fonts.emplace_back();
    query.file = family.face->File().file;
    query.index = family.face->File().index & 0xFFFF;
    query.axes = family.face->AxisValues();
    AddText(scene, HasAllOf(*family.face, family.name) ? family.name : SampleOf(*family.face),
            sample, x, baseline, 1);

    ShapedOptions label;
    label.look = Flat(pale);
    const std::size_t styles = family.styles.size();
    AddText(scene,
            ValidUtf8(family.name) + (styles > 1 ? "  " + std::to_string(styles) + " styles" : ""),
            label, x, baseline - labelBelow, labelSize);
}

/// Looks at a scene from the front, in a picture that it fills but for the margins. Returns the
/// size of the picture.
Size FrameSheet(const SceneDocument& document)
{
    SceneObject& scene = *document.scene;
    ViewObject& view = *document.view;
    scene.CalculateBounds();
    const Vector least = scene.GetBoundsGlobalMinimum();
    const Vector most = scene.GetBoundsGlobalMaximum();
    const auto pixels = [](float from, float to) {
        return static_cast<int>(std::lround(double{to - from} * pixelsPerEm) + 2 * marginPixels);
    };
    const Size size = {pixels(least.x, most.x), pixels(least.y, most.y)};
    CameraOptions camera;
    camera.turn = {0, 0, 0};
    camera.orthographic = true;
    FrameScene(view, camera, size);
    const double em = view.GetTransform()->GetCompositeMatrix()[0];
    view.SetProjectionOrthographicWidth(size.width / pixelsPerEm * em);
    view.SaveReferenceAspect();
    return size;
}

}  // namespace

void DrawFontSheet(const std::vector<FontFamily>& families, const std::string& output)
{
    const std::size_t count = std::min(families.size(), mostSheetFamilies);
    if (count == 0)
    {
        throw Error("fonts", "no family to show");
    }
    if (count < families.size())
    {
        Say("the first " + std::to_string(count) + " of " + std::to_string(families.size()) +
            " families are shown");
    }
    const std::size_t columns = std::min(count, mostColumns);
    PosterSettings settings(output, PictureOptions(), defaultPictureSize);
    CheckPoster(settings);  // before the fonts are read, which may take long
    const SceneDocument document;
    for (std::size_t n = 0; n < count; ++n)
    {
        const std::size_t row = n / columns;
        AddFamily(*document.scene, families[n], static_cast<double>(n % columns) * cellWidth,
                  -static_cast<double>(row) * cellHeight);
    }
    SetFirstLights(*document.scene);
    LightOptions lights;
    lights.ambient = Rgb(0xFFFFFF);
    ChangeLights(*document.scene, lights);
    BackgroundOptions background;
    background.color = paper;
    SetBackground(*document.scene, background);
    settings.size = FrameSheet(document);
    CheckPoster(settings);
    const std::unique_ptr<PosterTarget> target = MakeTarget(settings);
    ProgressBar progress("Drawing");
    settings.options.progress = [&progress](double share) { progress.Show(share); };
    DrawPoster(*document.view, settings, *target);
}

}  // namespace orvane
