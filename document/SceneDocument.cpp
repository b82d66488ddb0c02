// SPDX-License-Identifier: MIT
#include "document/SceneDocument.h"

#include "document/FileErrors.h"
#include "document/FontChoice.h"
#include "document/OutputFile.h"
#include "document/SceneFraming.h"
#include "document/SceneNames.h"
#include "document/ScenePictures.h"
#include "document/TextEncoding.h"
#include "extrude/OrvFont.h"
#include "host/CArchive.h"
#include "host/CFile.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"
#include "platform/Limits.h"
#include "scene/DescendentWalk.h"
#include "scene/FontObserver.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace orvane
{

namespace
{

/// Reads the number of a code page from the last four bytes of a file. If the number is not that of
/// a code page on offer, returns the code page of the process.
UINT ReadCodePage(CFile& file)
{
    DWORD last = 0;
    if (file.GetLength() >= sizeof last)
    {
        file.Seek(-static_cast<std::int64_t>(sizeof last), CFile::end);
        file.Read(&last, sizeof last);
        file.SeekToBegin();
    }
    const bool isOffered =
        std::find(offeredCodePages.begin(), offeredCodePages.end(), last) != offeredCodePages.end();
    return isOffered ? last : GetACP();
}

/// Throws Error unless the file begins with FF FF, the archive's mark of a new class, as every
/// scene file does. An empty file, or the single byte FF, passes, because the archive itself
/// refuses both.
void CheckMark(const std::string& path, CFile& file)
{
    constexpr WORD newClass = 0xFFFF;
    constexpr WORD nodeRecordVersion = 3;  // begins a node that is stored without its class
    WORD mark = newClass;
    file.Read(&mark, sizeof mark);
    file.SeekToBegin();
    if (mark != newClass)
    {
        const char* const hint = mark == nodeRecordVersion
                                     ? "; a scene is stored with CArchive::WriteObject, not with "
                                       "its own Serialize"
                                     : "";
        throw Error(path + ": byte 0",
                    FileStart(file) + ", expected FF FF, with which scene files begin" + hint);
    }
}

bool IsAtEnd(CArchive& archive, CFile& file)
{
    archive.Flush();  // moves the file's position back to the first byte that was not read yet
    return file.GetPosition() == file.GetLength();
}

void ReadObjects(CArchive& archive, CFile& file, SceneDocument& document)
{
    document.scene.reset(
        static_cast<SceneObject*>(archive.ReadNewObject(RUNTIME_CLASS(SceneObject))));
    if (IsAtEnd(archive, file))
    {
        document.view->AttachScene(document.scene.get());
        document.scene->CalculateBounds();
        FrameScene(*document.view, CameraOptions(), defaultPictureSize);
        return;
    }
    document.view.reset(static_cast<ViewObject*>(archive.ReadNewObject(RUNTIME_CLASS(ViewObject))));
    document.view->AttachScene(document.scene.get());

    DWORD codePage = 0;
    const UINT count = archive.Read(&codePage, sizeof codePage);
    BYTE more = 0;
    if (count != 0 && (codePage != GetACP() || archive.Read(&more, sizeof more) != 0))
    {
        archive.Fail(CArchiveException::generic,
                     "the bytes after the view are not the number of a code page");
    }
}

/// Throws Error when a text below a node is longer than limits::maxTextBytes.
/// \param path of the node in the scene
void CheckTexts(const std::string& file, const DrawingObject& node, NodePath& path)
{
    const auto* const text = dynamic_cast<const OrvString*>(&node);
    if (text != nullptr && text->GetTextString()->Text().size() > limits::maxTextBytes)
    {
        throw Error(file + ": node " + PathText(path),
                    "a text of " + std::to_string(text->GetTextString()->Text().size()) + " bytes",
                    "at most " + std::to_string(limits::maxTextBytes) + " bytes");
    }
    ForEachChild(node, [&](const DrawingObject& child, int index) {
        path.push_back(index);
        CheckTexts(file, child, path);
        path.pop_back();
    });
}

/// The levels of nodes that are drawn, as limits::maxDrawnLevels counts them.
int LevelsOf(const DrawingObject& node)
{
    if (node.IsDeleted())
    {
        return 0;
    }
    const auto* const text = dynamic_cast<const OrvFontString*>(&node);
    int below = text != nullptr && text->GetFont() != nullptr ? 1 : 0;
    ForEachChild(node, [&below](const DrawingObject& child, int) {
        below = std::max(below, LevelsOf(child));
    });
    return 1 + below;
}

/// The full name of a text's font; empty when the text has none.
CString FontNameOf(const OrvFontString& text)
{
    return text.GetFont() != nullptr ? text.GetFont()->GetFullName() : CString();
}

}  // namespace

/// The fonts that texts name in their file and that are not installed.
struct KeptFonts
{
    struct Font
    {
        FontRecord record;
        CString used;  // the font that the text got instead; empty for none
    };

    UINT codePage = 0;  // of the names
    std::map<const DrawingObject*, Font> ofTexts;
};

namespace
{

/// Collects such fonts while a document is loaded. While it is stored, stores them again with each
/// text that still has the font that it got instead.
class FontKeeper : public FontObserver
{
public:
    FontKeeper(KeptFonts& fonts, UINT codePage) : fonts_(fonts), codePage_(codePage) {}

    void Loaded(const OrvFontString& text, const FontRecord& record) override
    {
        const CString used = FontNameOf(text);
        if (record.name.IsEmpty() || record.name == used)
        {
            return;
        }
        fonts_.ofTexts[&text] = {record, used};
        const std::string name = ToUtf8(record.name);
        if (names_.insert(name).second)
        {
            missing_.push_back({name, ToUtf8(used)});
        }
    }
    const FontRecord* ToStore(const OrvFontString& text) override
    {
        const auto found = fonts_.ofTexts.find(&text);
        const bool isKept = found != fonts_.ofTexts.end() && codePage_ == fonts_.codePage &&
                            found->second.used == FontNameOf(text);
        return isKept ? &found->second.record : nullptr;
    }
    const std::vector<MissingFont>& Missing() const { return missing_; }

private:
    KeptFonts& fonts_;
    UINT codePage_;
    std::vector<MissingFont> missing_;
    std::set<std::string> names_;
};

}  // namespace

SceneDocument::SceneDocument()
    : codePage(GetACP()),
      scene(std::make_unique<SceneObject>()),
      view(std::make_unique<ViewObject>()),
      keptFonts_(std::make_unique<KeptFonts>())
{
    view->AttachScene(scene.get());
}

SceneDocument::~SceneDocument() = default;
SceneDocument::SceneDocument(SceneDocument&& other) noexcept = default;
SceneDocument& SceneDocument::operator=(SceneDocument&& other) noexcept = default;

SceneDocument SceneDocument::Load(const std::string& path,
                                  const std::function<void(const std::string&)>& progress,
                                  const OpenOptions& options)
{
    SceneDocument document;
    document.path = path;
    CFile file;
    OpenRegularFile(file, path);
    document.bytes = file.GetLength();
    CheckMark(path, file);
    document.codePage = ReadCodePage(file);
    SetProcessCodePage(document.codePage);
    LoadFonts(progress);  // after SetProcessCodePage, because fonts keep the code page

    PictureLookup pictures(path, options);
    document.keptFonts_->codePage = document.codePage;
    FontKeeper fonts(*document.keptFonts_, document.codePage);
    CArchive archive(&file, CArchive::load);
    archive.ObserveVersions([&document](const CRuntimeClass* recordClass, DWORD version) {
        ++document.records[{recordClass->m_lpszClassName, version}];
    });
    try
    {
        ReadObjects(archive, file, document);
        document.missingPictures = pictures.Missing();
        document.missingFonts = fonts.Missing();
    }
    catch (const CException& error)
    {
        const std::string knownName = file.GetFilePath().Text();
        if (std::string_view(error.what()).starts_with(knownName + ": "))
        {
            throw FileError(path, knownName, error);
        }
        archive.Flush();  // moves the file's position back to the byte where reading stopped
        throw FileError(path + ": byte " + std::to_string(file.GetPosition()), knownName, error);
    }
    NodePath root;
    CheckTexts(path, *document.scene, root);
    return document;
}

int SceneDocument::Levels() const
{
    return LevelsOf(*scene);
}

void SceneDocument::CheckLevels() const
{
    const int levels = Levels();
    if (levels > limits::maxDrawnLevels)
    {
        throw Error(path.empty() ? "document" : path,
                    "nodes that nest " + std::to_string(levels) + " levels deep",
                    "at most " + std::to_string(limits::maxDrawnLevels) + ", as OpenGL draws them");
    }
}

void SceneDocument::ForgetFonts(const DrawingObject& node)
{
    const auto forget = [this](const DrawingObject& forgotten) {
        keptFonts_->ofTexts.erase(&forgotten);
        return true;
    };
    forget(node);
    VisitDescendents(node, forget);
}

std::string SceneDocument::Bytes() const
{
    FontKeeper fonts(*keptFonts_, codePage);
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive.WriteObject(scene.get());
    archive.WriteObject(view.get());
    archive << DWORD{codePage};
    archive.Close();
    return {file.Bytes().begin(), file.Bytes().end()};
}

void SceneDocument::Save(OutputFile& file) const
{
    const std::string content = Bytes();
    file.Write(content.data(), content.size());
    file.Commit();
}

}  // namespace orvane
