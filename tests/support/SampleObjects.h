// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Small classes with records, for tests of archives and lists. Each counts its living objects, so
/// that a test sees what was deleted.

#include "host/CArchive.h"

#include <memory>
#include <vector>

/// One number. Its class is not versionable.
class SampleLeaf : public CObject
{
    DECLARE_SERIAL(SampleLeaf)

public:
    explicit SampleLeaf(LONG initial = 0) : value(initial) { ++alive; }
    ~SampleLeaf() override { --alive; }

    void Serialize(CArchive& archive) override
    {
        if (archive.IsStoring())
        {
            archive << value;
        }
        else
        {
            archive >> value;
        }
    }

    LONG value;
    static int alive;
};

/// A kind of leaf with the same record.
class SampleBud : public SampleLeaf
{
    DECLARE_SERIAL(SampleBud)
};

/// A tree: its record is the count of the children, each child, and a reference to any object.
/// Versionable, version 3.
class SampleNode : public CObject
{
    DECLARE_SERIAL(SampleNode)

public:
    SampleNode() { ++alive; }
    ~SampleNode() override { --alive; }

    void Serialize(CArchive& archive) override
    {
        if (archive.IsStoring())
        {
            archive.WriteCount(static_cast<DWORD>(children.size()));
            for (const auto& child : children)
            {
                archive << child.get();
            }
            archive << link;
            return;
        }
        for (DWORD count = archive.ReadCount(); count > 0; --count)
        {
            SampleNode* child = nullptr;
            archive >> child;
            children.emplace_back(child);
        }
        archive >> link;
        schema = archive.GetObjectSchema();
        schemaAgain = archive.GetObjectSchema();
    }

    SampleNode* AddChild() { return children.emplace_back(std::make_unique<SampleNode>()).get(); }

    std::vector<std::unique_ptr<SampleNode>> children;
    CObject* link = nullptr;  ///< borrowed
    UINT schema = 0;          ///< what GetObjectSchema gave at the end of loading
    UINT schemaAgain = 0;     ///< what it gave when asked once more
    static int alive;
};

/// Known by name but not creatable.
class SampleAbstract : public CObject
{
    DECLARE_DYNAMIC(SampleAbstract)
};
