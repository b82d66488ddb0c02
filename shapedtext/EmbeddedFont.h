// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "platform/MemoryFile.h"
#include "platform/ShapingFace.h"
#include "shapedtext/ShapedTextSettings.h"

#include <memory>
#include <string>

namespace orvane
{

/// The file of a font inside of a document. Texts with the same file share an object, so that a
/// document has it once.
///
/// Its record is the version, the number of bytes, and the bytes.
class EmbeddedFont : public CObject, public std::enable_shared_from_this<EmbeddedFont>
{
    DECLARE_SERIAL(EmbeddedFont)

public:
    /// Reads a reference to an object, which may be null. Throws what the archive throws.
    static std::shared_ptr<const EmbeddedFont> Read(CArchive& archive);
    /// The object of a file, the same while a text has it. Null when the file cannot be read or is
    /// larger than limits::maxEmbeddedFontBytes.
    static std::shared_ptr<const EmbeddedFont> OfFile(const std::string& file);

    const std::string& Bytes() const { return bytes_; }
    /// Opens a face of the file. Null when that fails. The face may be used as long as this object
    /// lives.
    std::shared_ptr<const ShapingFace> Open(const FaceIdentity& face) const;

    void Serialize(CArchive& archive) override;

private:
    EmbeddedFont() = default;

    std::string bytes_;
    mutable std::unique_ptr<MemoryFile> file_;  ///< null until a face is opened
};

/// Whether the licence bits of a face (OpenType, fsType in the table "OS/2") allow it to be kept in
/// documents that are changed: "installable" and "editable" embedding do.
bool MayBeEmbedded(const ShapingFace& face);

}  // namespace orvane
