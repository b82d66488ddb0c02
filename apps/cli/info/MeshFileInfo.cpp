// SPDX-License-Identifier: MIT
#include "apps/cli/info/MeshFileInfo.h"

#include "apps/cli/PrintableText.h"
#include "apps/cli/info/ChunkTree.h"
#include "apps/cli/info/Groups.h"
#include "apps/cli/info/InfoText.h"
#include "apps/cli/info/JsonWriter.h"
#include "apps/cli/info/TextTable.h"
#include "document/FileErrors.h"
#include "document/MeshDamage.h"
#include "document/MeshImport.h"
#include "document/OutputFile.h"
#include "document/TextEncoding.h"
#include "host/CFile.h"
#include "import3ds/ChunkTable.h"
#include "import3ds/TriangularMeshObject.h"

#include <filesystem>
#include <sstream>

namespace orvane
{

namespace
{

using SkippedPart = ThreeDStudioObject::SkippedPart;

const std::string& NameOf(const TriangularMeshObject& mesh)
{
    return mesh.name.Text();
}

template <typename Use>
void ForEachMesh(const ThreeDStudioObject& import, Use use)
{
    const DrawingObjectList& meshes = *import.GetChildren();
    for (POSITION position = meshes.GetHeadPosition(); position != nullptr;)
    {
        use(dynamic_cast<const TriangularMeshObject&>(*meshes.GetNext(position)));
    }
}

std::string FlagsText(const TriangularMeshObject& mesh)
{
    std::string flags = mesh.IsHidden() ? ", hidden" : "";
    return flags + (mesh.IsShadow() ? ", shadow" : "");
}

std::string MeshesText(const WatchedImport& import)
{
    TextTable table;
    int index = 0;
    ForEachMesh(import, [&](const TriangularMeshObject& mesh) {
        table.Add({std::to_string(index++), Quoted(ToUtf8(NameOf(mesh).c_str())),
                   CountText(mesh.GetVerticies()->GetSize(), "vertex", "vertices"),
                   CountText(mesh.GetFaces()->GetSize(), "face", "faces") + FlagsText(mesh),
                   mesh.GetVerticies()->GetSize() == 0
                       ? "empty"
                       : Triple(mesh.GetBoundsLocalMinimum()) + " to " +
                             Triple(mesh.GetBoundsLocalMaximum())});
    });
    return "\nMeshes: " + std::to_string(index) + "\n" + table.Text();
}

std::string MaterialsText(const WatchedImport& import)
{
    TextTable table;
    for (int i = 0; i < import.materials.GetSize(); ++i)
    {
        table.Add({std::to_string(i), MaterialText(import.materials.GetAt(i))});
    }
    return "\nMaterials: " + std::to_string(import.materials.GetSize()) + "\n" + table.Text();
}

/// One line for all chunks that have the same name and are skipped for the same reason.
std::string SkippedText(const WatchedImport& import)
{
    struct Total
    {
        int count = 0;
        std::uint64_t bytes = 0;
    };
    Groups<std::pair<std::string, std::string>, Total> groups;  // by name and reason
    for (const SkippedPart& part : import.skipped)
    {
        Total& total = groups.Of({NameOfPart(part), ReasonText(part)});
        ++total.count;
        total.bytes += part.length;
    }
    TextTable table;
    for (const auto& [key, total] : groups.Entries())
    {
        table.Add({CountText(total.count, "chunk", "chunks"), GroupedNumber(total.bytes) + " bytes",
                   key.first, key.second});
    }
    return "\nSkipped: " + std::to_string(import.skipped.size()) + "\n" + table.Text();
}

void WriteMesh(JsonWriter& json, const TriangularMeshObject& mesh)
{
    json.BeginObject(JsonWriter::Layout::OneLine);
    json.Member("name", ToUtf8(NameOf(mesh).c_str()));
    json.Member("vertices", mesh.GetVerticies()->GetSize());
    json.Member("faces", mesh.GetFaces()->GetSize());
    json.Member("hidden", mesh.IsHidden() != 0);
    json.Member("shadow", mesh.IsShadow() != 0);
    if (mesh.GetVerticies()->GetSize() != 0)
    {
        WriteVector(json, "minimum", mesh.GetBoundsLocalMinimum());
        WriteVector(json, "maximum", mesh.GetBoundsLocalMaximum());
    }
    json.EndObject();
}

void WriteSkipped(JsonWriter& json, const SkippedPart& part)
{
    json.BeginObject(JsonWriter::Layout::OneLine);
    json.Member("parent", ChunkIdText(part.parent));
    json.Key("id");
    part.id == 0 ? json.Null() : json.Text(ChunkIdText(part.id));
    json.Member("name", part.id == 0 ? "rest" : KindOfChunk(part.id).name);
    json.Member("offset", part.start);
    json.Member("length", part.length);
    json.Member("why", ReasonText(part));
    json.EndObject();
}

void WriteChunk(JsonWriter& json, const ChunkEntry& chunk)
{
    json.BeginObject(JsonWriter::Layout::OneLine);
    json.Member("depth", chunk.depth);
    json.Member("id", ChunkIdText(chunk.id));
    json.Member("name", KindOfChunk(chunk.id).name);
    json.Member("offset", chunk.start);
    json.Member("length", chunk.length);
    json.Member("whole", chunk.isWhole);
    json.EndObject();
}

std::string ToJson(const std::string& path, std::uint64_t bytes, const WatchedImport& import,
                   const std::vector<ChunkEntry>* chunks)
{
    JsonWriter json;
    const auto array = [&json](const char* key, auto writeElements) {
        json.Key(key);
        json.BeginArray();
        writeElements();
        json.EndArray();
    };
    json.BeginObject();
    json.Member("file", path);
    json.Member("kind", "meshes");
    json.Member("bytes", bytes);
    array("meshes", [&] {
        ForEachMesh(import, [&](const TriangularMeshObject& mesh) { WriteMesh(json, mesh); });
    });
    array("materials", [&] {
        for (int i = 0; i < import.materials.GetSize(); ++i)
        {
            json.BeginObject(JsonWriter::Layout::OneLine);
            WriteMaterial(json, import.materials.GetAt(i));
            json.EndObject();
        }
    });
    array("skipped", [&] {
        for (const SkippedPart& part : import.skipped)
        {
            WriteSkipped(json, part);
        }
    });
    if (chunks != nullptr)
    {
        array("chunks", [&] {
            for (const ChunkEntry& chunk : *chunks)
            {
                WriteChunk(json, chunk);
            }
        });
    }
    json.EndObject();
    return json.Result();
}

}  // namespace

bool IsMeshFile(const std::string& path)
try
{
    CFile file;
    OpenRegularFile(file, path);
    BYTE start[2] = {};
    return file.Read(start, sizeof start) == sizeof start &&
           ((start[0] == 0x4D && start[1] == 0x4D) || (start[0] == 0x3D && start[1] == 0xC2));
}
catch (const Error&)
{
    return false;
}
catch (const CFileException&)
{
    return false;
}

std::string DescribeMeshFile(const std::string& path, InfoFormat format, ChunkListing chunks)
{
    WatchedImport import;
    ImportMeshes(import, path);
    const std::uint64_t bytes = std::filesystem::file_size(path);
    const bool withTree = chunks == ChunkListing::Tree;
    const std::vector<ChunkEntry> tree = withTree ? ReadChunkTree(path) : std::vector<ChunkEntry>();
    if (format == InfoFormat::Json)
    {
        return ToJson(path, bytes, import, withTree ? &tree : nullptr);
    }
    return Quoted(path) + ": a 3D Studio file, " + GroupedNumber(bytes) + " bytes\n" +
           MeshesText(import) + MaterialsText(import) + SkippedText(import) +
           (withTree ? "\nChunks: " + std::to_string(tree.size()) + "\n" + ChunkTreeText(tree)
                     : "");
}

void DumpMeshes(const std::string& path, OutputFile& output)
{
    ThreeDStudioObject import;
    ImportMeshes(import, path);
    ForEachMesh(import, [&](const TriangularMeshObject& mesh) {
        std::ostringstream text;
        text.imbue(std::locale::classic());
        if (import.GetChildCount() > 1)
        {
            text << "M E S H  " << Printable(ToUtf8(NameOf(mesh).c_str())) << "\n\n";
        }
        mesh.WriteVertsAndFaces(text);
        if (import.GetChildCount() > 1)
        {
            text << "\n\n\n";
        }
        output.Write(text.str().data(), text.str().size());
    });
}

}  // namespace orvane
