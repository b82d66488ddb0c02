// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/CString.h"

class MemoryMappedDIB;

/// A scene file that is offered to users as a starting point: the path of the file, a display name
/// by which templates are sorted, and an optional preview picture. Save stores a template in the
/// application's profile.
///
/// A stored record has version 2, but loading accepts only version 1, so a template cannot be
/// loaded from an archive that it was stored in. This is required; see the test
/// ItsOwnRecordCannotBeReadBack.
class ORVANE_API SceneTemplate : public CObject
{
    DECLARE_SERIAL(SceneTemplate)

public:
    SceneTemplate() = default;
    /// Calls Load.
    explicit SceneTemplate(const CString& newFilename);
    /// A copy has no preview.
    SceneTemplate(const SceneTemplate& other);
    /// Copies path, tag and name. Deletes this template's preview and does not copy the other's.
    SceneTemplate& operator=(const SceneTemplate& other);
    ~SceneTemplate() override;

    const char* GetFilename() const { return filename; }
    void SetFilename(const char* newFilename) { filename = newFilename; }
    const char* GetName() const { return name; }
    void SetName(const char* newName) { name = newName; }
    /// The preview picture, which this template owns; null if the template has no preview.
    MemoryMappedDIB* GetPreview() const { return preview; }
    /// Whether the template has both a preview and a name.
    int IsDefined() const { return preview != nullptr && !name.IsEmpty(); }

    /// Stores the path. Load does not read the scene file; the caller reads it. Always returns 1.
    int Load(const CString& newFilename);
    /// Writes the path to the profile, as the entry "Filename" of "<section>\<name>". Always
    /// returns 1.
    int Save(const CString& section) const;

    // The operators compare only the names, byte by byte, with bytes as unsigned numbers.
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

    LONG templateTag = 0;  ///< for the application; the library only copies and stores it
    MemoryMappedDIB* preview = nullptr;  ///< owned

protected:
    CString filename;
    CString name;

private:
    int CompareNameWith(const SceneTemplate& other) const;
};
