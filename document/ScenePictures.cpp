// SPDX-License-Identifier: MIT
#include "document/ScenePictures.h"

#include "document/Colors.h"
#include "document/OptionRange.h"
#include "document/PictureFormat.h"
#include "imaging/MemoryMappedDIB.h"
#include "imaging/PictureBitmap.h"
#include "orvane/Error.h"
#include "platform/Errors.h"
#include "platform/Folders.h"
#include "scene/DescendentWalk.h"
#include "scene/SceneObject.h"

#include <algorithm>
#include <system_error>

namespace orvane
{

namespace
{

namespace fs = std::filesystem;

/// Who has named a picture: the user, or a scene file, whose author may be a stranger.
enum class NamedBy
{
    User,
    Scene
};

/// Throws Error unless the file is a picture that can be read.
void CheckPicture(const CString& file, NamedBy namedBy)
{
    MemoryMappedDIB picture;
    const int status = picture.Open(file);
    if (status == MemoryMappedDIB::opened)
    {
        return;
    }
    std::error_code ignored;
    const std::string& name = file.Text();
    if (!fs::exists(name, ignored))
    {
        throw Error(name, "there is no such file");
    }
    if (fs::is_directory(name, ignored))
    {
        throw Error(name, "a folder", "a picture");
    }
    if (status != MemoryMappedDIB::notBitmap)
    {
        throw Error(name, "not a readable BMP picture: " + picture.GetRefusal());
    }
    const std::string refusal = ReadAsBitmap(file, picture);
    if (refusal.empty())
    {
        return;
    }
    if (namedBy == NamedBy::Scene)
    {
        throw Error(name, "not a readable BMP, PNG, JPEG, WebP or TIFF picture");
    }
    throw Error(name, "not a readable picture: " + refusal.substr(name.size() + 2));
}

/// Checks a picture and returns its absolute path, by which a scene finds the picture wherever
/// the scene is saved.
CString CheckedAbsolutePath(const std::string& file)
{
    std::error_code ignored;
    CString path = std::filesystem::absolute(file, ignored).c_str();
    CheckPicture(path, NamedBy::User);
    return path;
}

/// Gives a texture a picture that CheckedAbsolutePath has found to be readable.
void LoadPicture(TextureMap& texture, const CString& path)
{
    texture.Load(path);
    if ((texture.textureFlags & TextureMap::Valid) == 0)
    {
        throw Error(path.Text(), "the picture can no longer be read: " + GetLastErrorText());
    }
}

void CheckNodePicture(const DrawingObject& node)
{
    if (node.GetTexture()->ShouldTexture())
    {
        CheckPicture(node.GetTexture()->filename, NamedBy::Scene);
    }
}

/// An absolute path without ".", ".." and a slash at its end. Links are not followed.
fs::path NormalPath(const fs::path& path)
{
    std::error_code ignored;
    const fs::path normal = fs::absolute(path, ignored).lexically_normal();
    return normal.has_filename() ? normal : normal.parent_path();
}

bool IsInside(const fs::path& path, const fs::path& folder)
{
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first ==
           folder.end();
}

/// The name of a file without its folders. Slash and backslash both end the name of a folder,
/// because the scene may come from another system.
std::string PlainName(const std::string& file)
{
    return file.substr(file.find_last_of("/\\") + 1);
}

/// The pictures in a folder by their names without extension. Of two with the same name, the first
/// in alphabetical order.
std::map<std::string, fs::path> PicturesIn(const fs::path& folder)
{
    std::map<std::string, fs::path> pictures;
    for (const std::string& name : NamesIn(folder.string()))
    {
        const fs::path path = folder / name;
        if (FormatOfName(path))
        {
            fs::path& known = pictures[path.stem()];
            known = known.empty() ? path : std::min(known, path);
        }
    }
    return pictures;
}

}  // namespace

void SetTexture(DrawingObject& node, const TextureOptions& options)
{
    CheckRange("repeat", options.repeat, 0.001, 1000);
    const CString path = CheckedAbsolutePath(options.file);
    TextureMap& texture = *node.GetTexture();
    LoadPicture(texture, path);
    texture.textureFlags |= TextureMap::Textured;
    texture.SetQuality(static_cast<unsigned long>(options.quality));
    texture.SetRepeatRate(options.repeat);
    options.scalesWithText ? texture.SetScaleWithObject() : texture.ClearScaleWithObject();
    node.SetTextureEnabled();
}

void SetBackground(SceneObject& scene, const BackgroundOptions& options)
{
    const CString path = options.file.empty() ? CString() : CheckedAbsolutePath(options.file);
    scene.SetBackgroundColor(ToColorVector(options.color));
    TextureMap& texture = *scene.GetTexture();
    texture.Reset();
    if (!path.IsEmpty())
    {
        LoadPicture(texture, path);
        texture.placement = static_cast<DWORD>(options.placement);
        texture.SetHorizontalLocation(options.x);
        texture.SetVerticalLocation(options.y);
    }
}

bool HasBackgroundPicture(const SceneObject& scene)
{
    return (scene.GetTexture()->textureFlags & TextureMap::Valid) != 0;
}

void CheckPictures(SceneObject& scene)
{
    CheckNodePicture(scene);
    VisitDescendents(scene, [](const DrawingObject& node) {
        CheckNodePicture(node);
        return true;
    });
    if (HasBackgroundPicture(scene))
    {
        CheckPicture(scene.GetTexture()->filename, NamedBy::Scene);
    }
}

PictureLookup::PictureLookup(const std::string& scene, const OpenOptions& options)
    : trust_(options.trust)
{
    AddFolder(NormalPath(scene).parent_path());
    for (const std::string& folder : options.allowedFolders)
    {
        std::error_code error;
        if (!fs::is_directory(folder, error))
        {
            throw OptionError("allowedFolders", "the path of a folder", "\"" + folder + "\"");
        }
        AddFolder(NormalPath(folder));
    }
}

void PictureLookup::AddFolder(const Path& folder)
{
    std::error_code error;
    const Path canonical = fs::canonical(folder, error);
    if (!error)
    {
        folders_.push_back({folder, canonical, {}});
    }
}

void PictureLookup::Find(TextureMap& texture)
{
    const CString name = texture.filename;
    // A name with a null character ends there, as for the operating system.
    const std::string file(static_cast<LPCSTR>(name));
    bool isRefused = false;
    if (!file.empty() && IsTaken(texture, file, isRefused))
    {
        return;
    }
    const std::string plainName = PlainName(file);
    for (Folder& folder : folders_)
    {
        if (IsTakenFrom(folder, texture, plainName, isRefused))
        {
            return;
        }
    }
    if (file.empty())
    {
        texture.Reset();
        return;
    }
    texture.SetFilename(name);
    texture.textureFlags &= ~TextureMap::Valid;
    if (missingNames_.insert(file).second)
    {
        missing_.push_back({file, isRefused ? MissingPicture::Reason::NotAllowed
                                            : MissingPicture::Reason::NotFound});
    }
}

std::string PictureLookup::FindFontFile(const std::string& name)
{
    std::vector<Path> paths = {Whole(name)};
    for (const Folder& folder : folders_)
    {
        paths.push_back(folder.path / PlainName(name));
    }
    const auto found = std::find_if(paths.begin(), paths.end(), [this](const Path& path) {
        std::error_code error;
        return AccessTo(path) == Access::Allowed && fs::is_regular_file(path, error);
    });
    return found != paths.end() ? found->string() : std::string();
}

/// A relative path belongs to the folder of the scene.
fs::path PictureLookup::Whole(const Path& path) const
{
    return path.is_relative() && !folders_.empty() ? folders_.front().path / path : path;
}

/// Whether a texture may be read from a file. A path that does not begin with the path of an
/// allowed folder is refused without a look at the file system, where a look could already start
/// something, such as mounting another machine's disk.
PictureLookup::Access PictureLookup::AccessTo(const Path& path) const
{
    if (trust_)
    {
        return Access::Allowed;
    }
    const Path normal = NormalPath(path);
    if (std::none_of(folders_.begin(), folders_.end(), [&](const Folder& folder) {
            return IsInside(normal, folder.path) || IsInside(normal, folder.canonical);
        }))
    {
        return Access::NotAllowed;
    }
    std::error_code error;
    const Path canonical = fs::canonical(path, error);
    if (error)
    {
        return Access::NotFound;
    }
    return std::any_of(folders_.begin(), folders_.end(),
                       [&](const Folder& folder) { return IsInside(canonical, folder.canonical); })
               ? Access::Allowed
               : Access::NotAllowed;
}

/// Gives the texture a file if the file exists and is allowed.
/// \param isRefused becomes true when the path is not allowed
bool PictureLookup::IsTaken(TextureMap& texture, const Path& path, bool& isRefused) const
{
    const Path whole = Whole(path);
    const Access access = AccessTo(whole);
    isRefused = isRefused || access == Access::NotAllowed;
    if (access != Access::Allowed)
    {
        return false;
    }
    texture.SetFilename(whole.c_str());
    texture.ValidateFile();
    return (texture.textureFlags & TextureMap::Valid) != 0;
}

/// Gives the texture the file of a name in a folder, or a picture with the texture's own name.
bool PictureLookup::IsTakenFrom(Folder& folder, TextureMap& texture, const std::string& file,
                                bool& isRefused) const
{
    if (!file.empty() && IsTaken(texture, folder.path / file, isRefused))
    {
        return true;
    }
    if (!folder.pictures)
    {
        folder.pictures = PicturesIn(folder.path);
    }
    const auto picture = folder.pictures->find(texture.GetName().Text());
    return picture != folder.pictures->end() && IsTaken(texture, picture->second, isRefused);
}

}  // namespace orvane
