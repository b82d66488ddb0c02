// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/CString.h"

class MemoryMappedDIB;

/// A scene file offered as a starting point: its path, a name to show, by which templates are
/// ordered, and perhaps a preview. Templates are kept in the application's profile (Save).
///
/// The record that it stores has version 2 while only version 1 is read, so what an archive stores
/// cannot be loaded from one: that is meant, see ItsOwnRecordCannotBeReadBack.
class ORVANE_API SceneTemplate : public CObject
{
    DECLARE_SERIAL(SceneTemplate)

public:
    SceneTemplate() = default;
    /// Loads it.
    explicit SceneTemplate(const CString& newFilename);
    /// A copy has no preview.
    SceneTemplate(const SceneTemplate& other);
    /// Deletes the preview that this one has and takes none over.
    SceneTemplate& operator=(const SceneTemplate& other);
    ~SceneTemplate() override;

    const char* GetFilename() const { return filename; }
    void SetFilename(const char* newFilename) { filename = newFilename; }
    const char* GetName() const { return name; }
    void SetName(const char* newName) { name = newName; }
    /// Borrowed; null for none.
    MemoryMappedDIB* GetPreview() const { return preview; }
    /// Whether it has a preview and a name.
    int IsDefined() const { return preview != nullptr && !name.IsEmpty(); }

    /// Stores the path, and nothing more: the scene is the caller's to read. Always 1.
    int Load(const CString& newFilename);
    /// Writes the path to the profile, as the entry "Filename" of "<section>\<name>". Always 1.
    int Save(const CString& section) const;

    // By name, bytes as unsigned.
    bool operator==(const SceneTemplate* other) const { return CompareNameWith(*other) == 0; }
    bool operator==(const SceneTemplate& other) const { return CompareNameWith(other) == 0; }
    bool operator<(const SceneTemplate* other) const { return CompareNameWith(*other) < 0; }
    bool operator<(const SceneTemplate& other) const { return CompareNameWith(other) < 0; }
    bool operator<=(const SceneTemplate* other) const { return CompareNameWith(*other) <= 0; }
    bool operator<=(const SceneTemplate& other) const { return CompareNameWith(other) <= 0; }
    bool operator>(const SceneTemplate* other) const { return CompareNameWith(*other) > 0; }
    bool operator>(const SceneTemplate& other) const { return CompareNameWith(other) > 0; }
    bool operator>=(const SceneTemplate* other) const { return CompareNameWith(*other) >= 0; }
    bool operator>=(const SceneTemplate& other) const { return CompareNameWith(other) >= 0; }

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    LONG templateTag = 0;                ///< the application's; only copied and stored
    MemoryMappedDIB* preview = nullptr;  ///< owned

protected:
    CString filename;
    CString name;

private:
    int CompareNameWith(const SceneTemplate& other) const;
};
