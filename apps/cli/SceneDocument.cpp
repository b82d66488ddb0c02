// SPDX-License-Identifier: MIT
#include "apps/cli/SceneDocument.h"

#include "apps/cli/Arguments.h"
#include "apps/cli/Errors.h"
#include "apps/cli/FontChoice.h"
#include "apps/cli/OutputFile.h"
#include "apps/cli/info/InfoText.h"
#include "host/CArchive.h"
#include "host/CFile.h"
#include "imaging/TextureMapList.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace
{

/// The code page in the file's last bytes; the process's when they are something else.
UINT ReadCodePage(CFile& file)
{
    DWORD last = 0;
    if (file.GetLength() >= sizeof last)
    {
        file.Seek(-static_cast<std::int64_t>(sizeof last), CFile::end);
        file.Read(&last, sizeof last);
        file.SeekToBegin();
    }
    const bool offered =
        std::find(offeredCodePages.begin(), offeredCodePages.end(), last) != offeredCodePages.end();
    return offered ? last : GetACP();
}

/// Every scene begins with the mark of a new class. Throws Failure for any other file that has two
/// bytes.
void CheckMark(const std::string& path, CFile& file)
{
    constexpr WORD newClass = 0xFFFF;
    WORD mark = newClass;
    file.Read(&mark, sizeof mark);
    file.SeekToBegin();
    if (mark != newClass)
    {
        throw Failure(path + ": byte 0: " + FoundText(file) + ", expected FF FF as scenes begin");
    }
}

/// A failed reader's words, after the file as the user names it and where reading stopped.
std::string Account(const std::string& path, CFile& file, CArchive& archive,
                    const CException& error)
{
    std::string text = error.what();
    const std::string known = std::string(file.GetFilePath()) + ": ";
    if (text.starts_with(known))
    {
        return path + ": " + text.substr(known.size());
    }
    archive.Flush();  // sets the file back to the first unread byte
    return path + ": byte " + std::to_string(file.GetPosition()) + ": " + text;
}

void ReadObjects(CArchive& archive, SceneDocument& document)
{
    document.scene.reset(
        static_cast<SceneObject*>(archive.ReadNewObject(RUNTIME_CLASS(SceneObject))));
    document.view.reset(static_cast<ViewObject*>(archive.ReadNewObject(RUNTIME_CLASS(ViewObject))));
    document.view->AttachScene(document.scene.get());

    DWORD codePage = 0;
    const UINT count = archive.Read(&codePage, sizeof codePage);
    BYTE more = 0;
    if (count != 0 && (codePage != GetACP() || archive.Read(&more, sizeof more) != 0))
    {
        archive.Fail(CArchiveException::generic, "other bytes behind the view than a code page");
    }
}

/// The pictures in a folder, which loaded nodes look through for textures that are gone, as long as
/// it lives.
class NearbyTextures
{
public:
    explicit NearbyTextures(const std::filesystem::path& folder)
    {
        std::error_code ignored;
        for (const auto& entry : std::filesystem::directory_iterator(folder, ignored))
        {
            if (HasEnding(entry.path(), ".bmp"))
            {
                textures_.push_back(std::make_unique<TextureMap>(entry.path().c_str()));
                list_.AddTail(textures_.back().get());
            }
        }
        DrawingObject::SetTextureList(&list_);
    }
    ~NearbyTextures() { DrawingObject::SetTextureList(nullptr); }
    NearbyTextures(const NearbyTextures&) = delete;
    NearbyTextures& operator=(const NearbyTextures&) = delete;

private:
    std::vector<std::unique_ptr<TextureMap>> textures_;
    TextureMapList list_;
};

}  // namespace

SceneDocument::SceneDocument()
    : scene(std::make_unique<SceneObject>()), view(std::make_unique<ViewObject>())
{
    view->AttachScene(scene.get());
}

SceneDocument::~SceneDocument() = default;
SceneDocument::SceneDocument(SceneDocument&& other) noexcept = default;
SceneDocument& SceneDocument::operator=(SceneDocument&& other) noexcept = default;

SceneDocument SceneDocument::Load(const std::string& path)
{
    SceneDocument document;
    document.path = path;
    CFile file;
    CFileException refused;
    if (!file.Open(path.c_str(), CFile::modeRead, &refused))
    {
        throw Failure(refused.what());
    }
    document.bytes = file.GetLength();
    CheckMark(path, file);
    SetProcessCodePage(ReadCodePage(file));  // before the fonts take it over
    LoadFonts();

    std::error_code ignored;
    const NearbyTextures textures(std::filesystem::absolute(path, ignored).parent_path());
    CArchive archive(&file, CArchive::load);
    archive.ObserveVersions([&document](const CRuntimeClass* recordClass, DWORD version) {
        ++document.records[{recordClass->m_lpszClassName, version}];
    });
    try
    {
        ReadObjects(archive, document);
    }
    catch (const CException& error)
    {
        throw Failure(Account(path, file, archive, error));
    }
    return document;
}

std::string SceneDocument::Bytes() const
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive.WriteObject(scene.get());
    archive.WriteObject(view.get());
    archive << DWORD{GetACP()};
    archive.Close();
    return {file.Bytes().begin(), file.Bytes().end()};
}

void SceneDocument::Save(OutputFile& file) const
{
    const std::string content = Bytes();
    file.Write(content.data(), content.size());
    file.Commit();
}
