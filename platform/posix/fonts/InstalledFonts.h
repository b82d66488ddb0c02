// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What fontconfig knows about the machine's fonts; no font file is opened here.

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane::contours
{
class FaceOutlines;
}

namespace posix
{

struct DesignMetrics;

enum class OutlineKind
{
    TrueType,  ///< quadratic outlines in a glyf table
    Cubic,     ///< compact outlines (CFF), which can be made quadratic
    Other,     ///< other outlines: Type 1
    Bitmap
};

/// One face of one font file. Names are in UTF-8, the English ones where there are several.
struct InstalledFace
{
    std::string file;
    int index = 0;           ///< of the face in its file; above 16 bits, its named instance from 1
    std::string family;      ///< name id 1: at most regular, bold, italic and bold italic share it
    std::string style;       ///< name id 2
    std::string full;        ///< name id 4
    std::string postScript;  ///< name id 6, may be empty
    int weight = 400;        ///< 1 to 1000, as in OS/2
    int width = 100;         ///< percent of the normal width
    bool italic = false;     ///< italic or oblique
    bool monospaced = false;
    OutlineKind kind = OutlineKind::Other;

    /// What the file says, once it has been read. FontFace.cpp's alone, under its lock.
    mutable std::shared_ptr<const DesignMetrics> design;
    /// The outlines handed over so far. FontFace.cpp's alone, under its lock.
    mutable std::shared_ptr<orvane::contours::FaceOutlines> outlines;
};

/// Every installed face, in no particular order. Of a variable font, the default instance and every
/// named one are faces of their own. Reads the user's font configuration anew at each call.
std::vector<std::shared_ptr<const InstalledFace>> ListInstalledFaces();

/// Whether fonts or the configuration have changed since ListInstalledFaces: a few times cheaper
/// than asking it again. What changes within the second of that call may go unnoticed.
bool InstalledFacesChanged();

/// The installed faces from the best substitute for the description on, as the configuration that
/// the last ListInstalledFaces read has it: file and index.
/// \param family in UTF-8; may be empty
std::vector<std::pair<std::string, int>> SubstitutesFor(std::string_view family, int weight,
                                                        bool italic);

}  // namespace posix
