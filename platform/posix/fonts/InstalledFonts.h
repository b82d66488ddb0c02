// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The fonts of the machine, as fontconfig lists them. No font file is opened here.

#include "platform/ShapingFace.h"

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
    Cubic,     ///< cubic outlines in a CFF table, which are converted
    Other,     ///< outlines of another kind, such as Type 1
    Bitmap
};

/// One face of one font file. Names are in UTF-8; of names in several languages, the English name
/// is taken.
struct InstalledFace
{
    std::string file;
    int index = 0;           ///< bits 0 to 15: the face in its file; from 16 on: its named
                             ///< instance, from 1, or 0
    std::string family;      ///< name id 1, shared by regular, bold, italic and bold italic
    std::string style;       ///< name id 2
    std::string full;        ///< name id 4
    std::string postScript;  ///< name id 6, may be empty
    int weight = 400;        ///< 1 to 1000, as in OS/2
    int width = 100;         ///< percent of the normal width
    bool italic = false;     ///< italic or oblique
    bool monospaced = false;
    OutlineKind kind = OutlineKind::Other;
    /// For a variable font, the values of all its axes in their order, or none for those of
    /// \c index.
    std::vector<orvane::AxisValue> axes;

    /// The measures, once the file has been read. Only FontFace.cpp uses it, under its lock.
    mutable std::shared_ptr<const DesignMetrics> design;
    /// The outlines handed over so far. Only FontFace.cpp uses it, under its lock.
    mutable std::shared_ptr<orvane::contours::FaceOutlines> outlines;
};

/// Lists every installed face, in no particular order. The default instance and every named
/// instance of a variable font are faces of their own. Each call reads the font configuration
/// again.
std::vector<std::shared_ptr<const InstalledFace>> ListInstalledFaces();

/// Whether fonts or the configuration have changed since ListInstalledFaces. This is several times
/// faster than listing again. A change within the same second as ListInstalledFaces may go
/// unnoticed.
bool InstalledFacesChanged();

/// The installed faces, as file and index, from the best substitute for a description to the worst.
/// It uses the configuration that the last ListInstalledFaces has read.
/// \param family in UTF-8; may be empty
std::vector<std::pair<std::string, int>> SubstitutesFor(std::string_view family, int weight,
                                                        bool italic);

}  // namespace posix
