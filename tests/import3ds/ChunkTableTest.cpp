// SPDX-License-Identifier: MIT
// The table of chunks against the reader that it describes and the document that lists it.
#include "import3ds/ChunkTable.h"

#include "tests/support/Chunks.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

namespace
{

using orvane::AllChunkKinds;
using orvane::ChunkId;
using orvane::ChunkIdText;
using orvane::ChunkKind;
using orvane::KindOfChunk;

TEST(ChunkTable, IdsAscendSoThatEachHasOneRow)
{
    WORD previous = 0;
    for (const ChunkKind& kind : AllChunkKinds())
    {
        EXPECT_GT(kind.id, previous) << ChunkIdText(kind.id);
        previous = kind.id;
    }
}

TEST(ChunkTable, EveryIdIsFoundAndAnyOtherIsUnknown)
{
    for (const ChunkKind& kind : AllChunkKinds())
    {
        EXPECT_EQ(&KindOfChunk(kind.id), &kind);
    }
    for (const WORD id : {0x0000, 0x0001, 0x1234, 0x4D4E, 0xFFFF})
    {
        EXPECT_STREQ(KindOfChunk(id).name, "unknown");
        EXPECT_STREQ(KindOfChunk(id).whySkipped, "the meaning of this id is not known");
    }
    EXPECT_STREQ(KindOfChunk(0x4110).name, "vertices");
}

TEST(ChunkTable, IdsAreShownInFourHexadecimalDigits)
{
    EXPECT_EQ(ChunkIdText(0x4D4D), "0x4D4D");
    EXPECT_EQ(ChunkIdText(0x0002), "0x0002");
}

TEST(ChunkTable, AChunkThatIsReadNowhereHasAReason)
{
    for (const ChunkKind& kind : AllChunkKinds())
    {
        EXPECT_TRUE(kind.readIn[0] != ChunkId::None || kind.whySkipped != nullptr)
            << ChunkIdText(kind.id);
    }
}

/// An import that remembers which chunks it skipped because nothing reads them where they are.
class SkippedAsNotUsed : public ThreeDStudioObject
{
public:
    bool Has(WORD parent, WORD id) const { return parts_.count({parent, id}) != 0; }

protected:
    void OnSkipped(const SkippedPart& part) override
    {
        if (part.why == SkipReason::NotUsed)
        {
            parts_.emplace(part.parent, part.id);
        }
    }

private:
    std::set<std::pair<WORD, WORD>> parts_;
};

/// A file in which an empty chunk is directly inside a parent, behind all that must come before it.
Bytes FileWithChunkIn(ChunkId parent, WORD id)
{
    const RecordBytes chunk = ChunkOf(id);
    const WORD parentId = static_cast<WORD>(parent);
    switch (parent)
    {
        case ChunkId::Main:
        case ChunkId::Project:
            return ChunkOf(parentId, {chunk});
        case ChunkId::EditorData:
            return FileOf({chunk});
        case ChunkId::MaterialEntry:
            return FileOf({ChunkOf(parentId, {chunk})});
        case ChunkId::NamedObject:
            return FileOf({ObjectChunk("a", {ChunkOf(0x4100), chunk})});
        case ChunkId::TriangleMesh:
            return FileOf({ObjectChunk("a", {ChunkOf(parentId, {chunk})})});
        case ChunkId::FaceList:
            return FileOf({ObjectChunk("a", {ChunkOf(0x4100, {FaceChunk({}, {chunk})})})});
        default:  // colours and percentages of a material
            return FileOf({MaterialChunk("m", {ChunkOf(parentId, {chunk})})});
    }
}

TEST(ChunkTable, TheReaderReadsAChunkExactlyWhereTheTableSaysSo)
{
    std::set<ChunkId> parents;
    for (const ChunkKind& kind : AllChunkKinds())
    {
        parents.insert(kind.readIn.begin(), kind.readIn.end());
    }
    parents.erase(ChunkId::None);
    parents.erase(ChunkId::File);
    EXPECT_EQ(parents.size(), 12u);
    for (const ChunkId parent : parents)
    {
        for (const ChunkKind& kind : AllChunkKinds())
        {
            const TemporaryFile file(FileWithChunkIn(parent, kind.id));
            SkippedAsNotUsed node;
            ASSERT_EQ(node.CreateFromFile(file.Path()), 1);
            EXPECT_EQ(node.Has(static_cast<WORD>(parent), kind.id), !kind.IsReadIn(parent))
                << ChunkIdText(kind.id) << " in " << ChunkIdText(static_cast<WORD>(parent));
        }
    }
}

TEST(ChunkTable, TheReaderTakesExactlyTheRootsOfTheTable)
{
    for (const ChunkKind& kind : AllChunkKinds())
    {
        const Imported node(ChunkOf(kind.id));
        EXPECT_EQ(node.result, kind.IsReadIn(ChunkId::File) ? 1 : 0) << ChunkIdText(kind.id);
    }
}

/// What docs/3ds.md says of a chunk that is read.
struct Documented
{
    std::string name;
    std::set<std::string> parents;

    bool operator==(const Documented&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Documented& row)
{
    out << row.name << " in";
    for (const std::string& parent : row.parents)
    {
        out << " " << parent;
    }
    return out;
}

/// The text of a cell of a Markdown table without backquotes and commas.
std::string WithoutMarks(std::string cell)
{
    std::erase_if(cell, [](char character) { return character == '`' || character == ','; });
    return cell;
}

TEST(ChunkTable, TheDocumentListsTheChunksThatAreReadWithTheirNamesAndPlaces)
{
    std::map<std::string, Documented> documented;
    std::ifstream document(ORVANE_TEST_DATA "/../../docs/3ds.md");
    ASSERT_TRUE(document.is_open());
    for (std::string line; std::getline(document, line);)
    {
        // A row of the table: | `0x4110` | its name | `0x4100`, `0x...` | ...
        if (line.starts_with("| `0x"))
        {
            std::istringstream row(line);
            std::string cells[4];
            for (std::string& cell : cells)
            {
                std::getline(row, cell, '|');
            }
            std::istringstream ids(WithoutMarks(cells[1]));
            std::string id;
            ids >> id;
            std::istringstream places(WithoutMarks(cells[3]));
            const std::string name = cells[2].substr(1, cells[2].size() - 2);
            documented[id] = {name, {std::istream_iterator<std::string>(places), {}}};
        }
    }
    std::map<std::string, Documented> expected;
    for (const ChunkKind& kind : AllChunkKinds())
    {
        std::set<std::string> parents;
        for (const ChunkId parent : kind.readIn)
        {
            if (parent != ChunkId::None)
            {
                parents.insert(parent == ChunkId::File ? "file"
                                                       : ChunkIdText(static_cast<WORD>(parent)));
            }
        }
        if (!parents.empty())
        {
            expected[ChunkIdText(kind.id)] = {kind.name, parents};
        }
    }
    EXPECT_EQ(documented, expected);
}

}  // namespace
