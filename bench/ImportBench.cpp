// SPDX-License-Identifier: MIT
// Imports large 3D Studio files, each time in a new process. The time and memory are compared with
// those of assimp and lib3ds, where they are installed, and with the time of reading the bytes.

#include "bench/ScratchFile.h"
#include "bench/Summary.h"
#include "tests/support/MeshFile.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>

namespace
{

constexpr int turns = 7;  // measurements of each reader

/// A file on disk that is removed with this object.
class GeneratedFile
{
public:
    explicit GeneratedFile(const Bytes& bytes) : size_(bytes.size())
    {
        std::ofstream out(file_.Path(), std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    }

    const char* Path() const { return file_.Path(); }
    double MiB() const { return static_cast<double>(size_) / 1048576.0; }

private:
    ScratchFile file_{".3ds"};
    std::size_t size_;
};

struct Import
{
    double milliseconds = 0.0;
    // All memory is in MiB.
    double peak = 0.0;     ///< by how much the process's own memory grew at most
    double program = 0.0;  ///< code and tables of the program that were mapped in meanwhile
    double arrays = 0.0;   ///< vertices, faces and normals
    double nodes = 0.0;
};

/// Returns false if orvane_import was built without the reader.
bool RunOnce(const std::string& reader, const GeneratedFile& file, Import* import)
{
    const std::string command = std::string(ORVANE_IMPORT " ") + reader + " " + file.Path();
    std::FILE* const pipe = popen(command.c_str(), "r");
    const int values =
        pipe == nullptr
            ? 0
            : std::fscanf(pipe, "%lf %lf %lf %lf %lf", &import->milliseconds, &import->peak,
                          &import->program, &import->arrays, &import->nodes);
    if (pipe != nullptr)
    {
        pclose(pipe);
    }
    for (double* const size : {&import->peak, &import->program, &import->arrays, &import->nodes})
    {
        *size /= 1024.0;
    }
    return values == 5;
}

/// The median time and the largest peak of each reader. The readers take turns, so that a change in
/// the load of the machine affects all of them.
std::map<std::string, Import> Measure(const GeneratedFile& file,
                                      const std::vector<std::string>& readers)
{
    std::map<std::string, std::vector<double>> times;
    std::map<std::string, Import> imports;
    for (int turn = 0; turn < turns; ++turn)
    {
        for (const std::string& reader : readers)
        {
            Import import;
            if (RunOnce(reader, file, &import))
            {
                times[reader].push_back(import.milliseconds);
                import.peak = std::max(import.peak, imports[reader].peak);
                imports[reader] = import;
            }
        }
    }
    for (auto& [reader, import] : imports)
    {
        import.milliseconds = Median(times[reader]);
    }
    return imports;
}

template <typename... Values>
void Add(const std::string& what, const char* format, Values... values)
{
    char figure[200];
    std::snprintf(figure, sizeof figure, format, values...);
    AddSummary(what, figure);
}

void Compare(const std::string& what, const Bytes& bytes)
{
    const GeneratedFile file(bytes);
    std::map<std::string, Import> imports = Measure(file, {"orvane", "assimp", "lib3ds", "bytes"});
    const Import& ours = imports["orvane"];
    Add("import " + what,
        "%.1f ms, peak %.1f MiB, %.2f x the arrays' %.1f; nodes %.1f, program %.1f",
        ours.milliseconds, ours.peak, ours.peak / ours.arrays, ours.arrays, ours.nodes,
        ours.program);
    for (const char* const other : {"assimp", "lib3ds"})
    {
        const auto found = imports.find(other);
        if (found == imports.end())
        {
            AddSummary(std::string("  against ") + other, "not installed");
            continue;
        }
        const Import& theirs = found->second;
        Add(std::string("  against ") + other, "%.2f x its %.1f ms, %.2f x its peak of %.1f MiB",
            ours.milliseconds / theirs.milliseconds, theirs.milliseconds, ours.peak / theirs.peak,
            theirs.peak);
    }
    const double alone = imports["bytes"].milliseconds;
    Add("  against reading the bytes", "%.1f x the %.1f ms of %.1f MiB", ours.milliseconds / alone,
        alone, file.MiB());
}

/// Adds how many times as long the import of a larger file takes: the median over all turns.
void AddGrowth(const std::string& what, const char* sizes, const Bytes& more, const Bytes& less)
{
    const GeneratedFile moreFile(more);
    const GeneratedFile lessFile(less);
    std::vector<double> ratios;
    for (int turn = 0; turn < turns; ++turn)
    {
        Import moreImport;
        Import lessImport;
        if (RunOnce("orvane", lessFile, &lessImport) && RunOnce("orvane", moreFile, &moreImport))
        {
            ratios.push_back(moreImport.milliseconds / lessImport.milliseconds);
        }
    }
    Add(what, "%.1f x as long (%s)", ratios.empty() ? 0.0 : Median(ratios), sizes);
}

void MeasureGrowth()
{
    AddGrowth("import, 4 x as many meshes", "20,000 against 5,000 boxes", MeshFile(20000, Box(), 1),
              MeshFile(5000, Box(), 1));
    AddGrowth("import, 4 x as many vertices", "32 meshes of 65,280 against 16,320",
              MeshFile(32, Grid(255, 256), 8), MeshFile(32, Grid(255, 64), 8));
}

void MeasureImports()
{
    Compare("16 meshes of 65,535 vertices", MeshFile(16, Grid(255, 257), 8));
    Compare("20,000 boxes", MeshFile(20000, Box(), 1));
    MeasureGrowth();
}
const SummaryPart part("import", MeasureImports);

}  // namespace
