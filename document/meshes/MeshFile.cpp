// SPDX-License-Identifier: MIT
#include "document/meshes/MeshFile.h"

#include "document/DocumentState.h"
#include "document/KeptContext.h"
#include "document/PictureFormat.h"
#include "document/SceneFraming.h"
#include "document/TextEncoding.h"
#include "document/meshes/SceneMesh.h"
#include "document/meshes/SolidNotes.h"
#include "orvane/Error.h"
#include "orvane/orvane.h"
#include "scene/ViewObject.h"

#include <filesystem>
#include <utility>

namespace orvane
{

namespace
{

struct Ending
{
    const char* text;
    MeshFormat format;
};

constexpr Ending endings[] = {
    {".glb", MeshFormat::Glb},     {".gltf", MeshFormat::Gltf}, {".stl", MeshFormat::Stl},
    {".3mf", MeshFormat::ThreeMf}, {".obj", MeshFormat::Obj},   {".ply", MeshFormat::Ply},
};

}  // namespace

class MeshFile::Output : public ByteSink
{
public:
    explicit Output(const std::string& path) : file(path) {}
    void Write(const void* bytes, std::size_t count) override { file.Write(bytes, count); }

    OutputFile file;
};

MeshFormat FormatOfMesh(const std::string& path, const MeshFileOptions& options)
{
    std::optional<MeshFormat> format = options.format;
    for (const Ending& ending : endings)
    {
        if (!format && HasExtension(path, ending.text))
        {
            format = ending.format;
        }
    }
    if (!format)
    {
        throw OptionError("output",
                          path == "-" ? "expected a format for standard output"
                                      : "expected a name that ends in .glb, .gltf, .stl, .3mf, "
                                        ".obj or .ply",
                          "\"" + path + "\"");
    }
    CheckFormat(*format);
    return *format;
}

MeshFile::MeshFile(const std::string& path, const MeshFileOptions& options)
    : path_(path), options_(options), format_(FormatOfMesh(path, options))
{
    outputs_.push_back(std::make_unique<Output>(path));
    if (options_.name.empty() && path != "-")
    {
        options_.name = std::filesystem::path(path).stem();
    }
}

MeshFile::~MeshFile() = default;

ByteSink& MeshFile::OpenBeside(const std::string& name)
{
    const std::filesystem::path folder = std::filesystem::path(path_).parent_path();
    return *outputs_.emplace_back(std::make_unique<Output>(folder / name));
}

void MeshFile::Write(const MeshScene& scene)
{
    Output& main = *outputs_.front();
    MeshFileTarget target = {main, std::filesystem::path(path_).stem(), nullptr};
    if (main.file.IsRegular())
    {
        target.openBeside = [this](const std::string& name) -> ByteSink& {
            return OpenBeside(name);
        };
    }
    WriteMeshFile(scene, format_, options_, target);
}

void MeshFile::Commit()
{
    // The main file last, because it names the others.
    std::vector<OutputFile*> files;
    for (auto output = outputs_.rbegin(); output != outputs_.rend(); ++output)
    {
        files.push_back(&(*output)->file);
    }
    OutputFile::CommitAll(files);
}

void WriteMesh(const Document& document, const std::string& path, const MeshFileOptions& options)
{
    const DocumentState& state = DocumentState::Of(document);
    MeshFile file(path, options);
    const CodePageScope scope(state.scene.codePage);
    const std::unique_ptr<ViewObject> view =
        state.ViewFor(UnaskedSize(*state.scene.view, state.scene.path));
    MeshScene scene = MakeMeshScene(*view, file.Format(), options);
    TellSolidNotes(scene.mesh, options, path);
    PlaceScene(scene, file.Format(), options);
    file.Write(scene);
    file.Commit();
}

}  // namespace orvane
