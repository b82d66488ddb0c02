// SPDX-License-Identifier: MIT
#include "host/RecordVersion.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "platform/Utf8.h"
#include "scene/FontObserver.h"
#include "scene/TextureFinder.h"
#include "shapedtext/EmbeddedFont.h"
#include "shapedtext/LaidText.h"
#include "shapedtext/OrvShapedString.h"
#include "shapedtext/SettingsRecord.h"

#include <algorithm>
#include <string>
#include <utility>

// The record of an OrvShapedString.

namespace orvane
{

IMPLEMENT_SERIAL(OrvShapedString, OrvProfileString, 2 | VERSIONABLE_SCHEMA)

namespace
{

/// The file that a text may read where its record names one. A document decides that; a text that
/// is read without a document reads any file.
std::string FindFontFile(const std::string& name)
{
    TextureFinder* const finder = TextureFinder::Current();
    return finder != nullptr ? finder->FindFontFile(name) : name;
}

/// Puts a face that a text uses into its settings and fonts. Throws Error when that is not
/// possible.
void EmbedFace(const std::shared_ptr<const ShapingFace>& face, ShapedTextSettings& settings,
               TextFonts& fonts)
{
    const auto known = std::find(fonts.faces.begin(), fonts.faces.end(), face);
    const auto index = static_cast<std::size_t>(known - fonts.faces.begin());
    const bool isNamed = known != fonts.faces.end();
    if (isNamed && (settings.fonts[index].embedded != nullptr ||
                    settings.fonts[index].face.fullName != face->FullName()))
    {
        return;  // it is in the text, or in place of a missing font
    }
    const std::string place = "font \"" + face->FullName() + "\"";
    if (!MayBeEmbedded(*face))
    {
        throw Error(place, "its licence bits do not allow it to be in documents that are changed");
    }
    std::shared_ptr<const EmbeddedFont> file = EmbeddedFont::OfFile(face->File().file);
    if (file == nullptr)
    {
        throw Error(place, "its file cannot be read, or has more than " +
                               std::to_string(limits::maxEmbeddedFontBytes) + " bytes");
    }
    if (!isNamed)
    {
        if (settings.fonts.size() == limits::maxTextFonts)
        {
            throw Error(place,
                        "a text names " + std::to_string(limits::maxTextFonts) + " fonts at most");
        }
        ShapedFont& added = settings.fonts.emplace_back();
        added.query.name = face->FullName();
        added.face = IdentityOf(*face);
        fonts.faces.push_back(face);
        settings.style.fonts.push_back(index);
        for (ShapedSpan& span : settings.spans)
        {
            if (!span.style.fonts.empty() && span.style.fonts.size() < limits::maxTextFonts)
            {
                span.style.fonts.push_back(index);
            }
        }
    }
    settings.fonts[index].embedded = std::move(file);
}

}  // namespace

std::vector<std::string> OrvShapedString::EmbedFonts()
{
    ShapedTextSettings settings = settings_;
    TextFonts fonts = *fonts_;
    std::vector<std::string> notices;
    for (const SubstitutedFont& font : fonts.substituted)
    {
        notices.push_back("font \"" + font.name + "\" is not installed");
    }
    // The layout may go while settings change.
    const std::vector<std::shared_ptr<const ShapingFace>> used = CurrentLayout().layout.faces;
    for (const std::shared_ptr<const ShapingFace>& face : used)
    {
        try
        {
            EmbedFace(face, settings, fonts);
        }
        catch (const Error& error)
        {
            notices.push_back(error.what());
        }
    }
    SetText(std::string(textString.Text()), std::move(settings), std::move(fonts));
    return notices;
}

void OrvShapedString::Serialize(CArchive& archive)
{
    if (archive.IsStoring())
    {
        // What the base class's functions have set must be readable again.
        CurrentLayout();
        textString = CString(ValidUtf8(textString.Text()));
    }
    // The record has no font of the registry, which is in those of the classes between.
    OrvString::Serialize(archive);  // NOLINT(bugprone-parent-virtual-call)
    if (archive.IsLoading())
    {
        ReadVersionedRecord(archive, *this, &OrvShapedString::DeserializeVersion1,
                            &OrvShapedString::DeserializeVersion2);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(OrvShapedString));
    StoreProfile(archive);
    archive << DWORD{hasProfile_};
    ShapedTextSettings stored = settings_;
    for (std::size_t i = 0; i < stored.fonts.size(); ++i)
    {
        // A font that is not there keeps the record of the face that the author had.
        if (stored.fonts[i].face.checksum == 0 && fonts_->substituted.empty())
        {
            stored.fonts[i].face.checksum = ChecksumOf(fonts_->faces[i]->File().file);
        }
    }
    WriteSettings(archive, stored);
}

void OrvShapedString::DeserializeVersion1(CArchive& archive)
{
    Deserialize(archive, 1);
}

void OrvShapedString::DeserializeVersion2(CArchive& archive)
{
    Deserialize(archive, 2);
}

void OrvShapedString::Deserialize(CArchive& archive, DWORD version)
{
    hasProfile_ = false;  // the profile of the record must not replace its bevels
    OrvProfileString::DeserializeVersion1(archive);
    try
    {
        DWORD hasProfile = 0;
        archive >> hasProfile;
        if (hasProfile > 1)
        {
            throw Error("whether a text has a profile", std::to_string(hasProfile), "0 or 1");
        }
        const ShapedTextSettings settings = ReadSettings(archive, version);
        CheckSettings(settings);
        SetText(std::string(textString.Text()), settings,
                OpenStoredFonts(settings.fonts, FindFontFile));
        SetHasProfile(hasProfile != 0);
    }
    catch (const Error& error)
    {
        AfxThrowArchiveException(CArchiveException::generic, error.what());
    }
    if (FontObserver* const observer = FontObserver::Current())
    {
        for (const SubstitutedFont& font : GetSubstitutedFonts())
        {
            FontRecord record;
            record.name = CString(font.name);
            observer->Loaded(*this, record);
        }
    }
}

}  // namespace orvane
