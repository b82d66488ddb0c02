// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

/// The largest inputs that the library takes, in one place. A file from a stranger may name any
/// number; a number above its limit here is refused with an error that names the limit, unless the
/// limit says otherwise. Each limit gives its unit and its reason. docs/reliability.md names the
/// tests at each limit and beyond it.
///
/// Two kinds of limits stand elsewhere: what a file format itself can hold, such as 1,073,741,822
/// numbered objects in an archive and 80 bytes of a name in a 3D Studio file, stands where the
/// format is read, and the ranges of options stand in orvane/Options.h.
namespace orvane::limits
{

/// The number of bytes that a program may use for a file of \p fileBytes bytes: 64 MiB, and 20
/// bytes for each byte of the file. A small file that asks for more is refused.
constexpr std::uint64_t MemoryForFile(std::uint64_t fileBytes)
{
    return (std::uint64_t{64} << 20) + 20 * fileBytes;
}

/// Pixels: the largest width and the largest height of a picture, whoever asks for it: options, a
/// scene's stored size or a host. At 300 dots per inch this is 8.5 metres. The most pixels of a
/// picture are the square of it, 10 thousand million.
constexpr int maxPictureSide = 100'000;

/// Bytes of UTF-8: the longest text of a node, its line ends included. Each letter is drawn in
/// every band of a picture, so this many take seconds even in a small one.
constexpr std::size_t maxTextBytes = 65'536;

/// Combining marks in a row in a text that is shaped. Letters of living languages have up to 4,
/// and no serious text has more than 30 (Unicode Standard Annex #15, stream-safe texts).
constexpr std::size_t maxClusterMarks = 100;

/// Layers of a coloured glyph. Each becomes a solid of its own; drawn letters have fewer than 100.
constexpr std::size_t maxColorLayers = 255;

/// Glyphs that a font may make of a text of so many characters. Fonts replace a character by a few
/// glyphs, for a letter with its marks or for a word; a damaged font can make thousands of it.
constexpr std::size_t MaxGlyphs(std::size_t characters)
{
    return 64 + 16 * characters;
}

/// Bytes of UTF-8: the longest name of a font or of a view that is looked for. An unknown name is
/// compared with every known name, letter by letter. Fonts have names of at most 63 bytes.
constexpr std::size_t maxNameBytes = 1'024;

/// Pixels: the largest width and the largest height of a picture that is handed to OpenGL or GLU as
/// a texture. A larger picture is scaled first. No common OpenGL driver has larger textures, and
/// GLU, which computes with ints, crashes with millions of pixels in a row or a column.
constexpr int maxTextureSide = 16'384;

/// Pixels: the most pixels of a picture that is handed to OpenGL or GLU as a texture, 16 Mi. A
/// larger picture is scaled first. The texture itself has far fewer in the end.
constexpr std::uint64_t maxTexturePixels = std::uint64_t{16} << 20;

/// Bytes: the most pixels of a bitmap, 4 GiB - 1. The header of a BMP file states this number in 32
/// bits.
constexpr std::uint64_t maxBitmapBytes = 0xFFFFFFFF;

/// Bytes: the memory that each pixel of a picture takes until it is a texture. Red, green and blue
/// take 3 bytes, the copies that GLU and OpenGL make take up to 17.
constexpr unsigned textureBytesPerPixel = 20;

/// The most pixels that a picture from a file of \p fileBytes bytes may have as a texture. A larger
/// picture is scaled first. A picture of 8 bits or more a pixel may always have maxTexturePixels;
/// only one of fewer bits, or a run-length coded one, has so many pixels in a smaller file.
constexpr std::uint64_t MaxTexturePixels(std::uint64_t fileBytes)
{
    const std::uint64_t affordable = MemoryForFile(fileBytes) / textureBytesPerPixel;
    return affordable < maxTexturePixels ? affordable : maxTexturePixels;
}

/// Bytes: the most unpacked pixels of a run-length coded picture whose code takes \p codeBytes
/// bytes. 64 MiB are always allowed. Above that there are 256 for each byte of the code, about
/// twice what runs of equal pixels reach (255 bytes in 2).
constexpr std::uint64_t MaxUnpackedBytes(std::uint64_t codeBytes)
{
    constexpr std::uint64_t always = std::uint64_t{64} << 20;
    return 256 * codeBytes > always ? 256 * codeBytes : always;
}

/// Pixels: the longest row of a run-length coded picture, 16 Mi. One row is decoded at a time, into
/// one byte a pixel, and a row of a few bytes must not take much memory.
constexpr int maxPackedRowPixels = 16 << 20;

/// Levels of nodes in a scene that is drawn: the scene is one level, each child is one more, and
/// the letters of a text are one more. OpenGL promises 32 matrices on its stack; the camera takes
/// two of them. Scenes are read up to maxObjectNesting levels.
constexpr int maxDrawnLevels = 30;

/// Levels of objects inside each other in an archive. Each level takes a few stack frames of the
/// readers of its classes, a few kilobytes at most, so this many fit into the smallest usual stack.
/// Storing has the same limit, so that everything stored can be loaded.
constexpr int maxObjectNesting = 512;

/// Bytes: the longest name of a class in an archive. A damaged record can make a reader take no
/// more memory than this for a name.
constexpr std::size_t maxClassNameBytes = 255;

/// Pixels: the largest height of a font, and the largest em square at which an outline is read. A
/// larger one is reduced to it. It is the largest em square that fonts have, so that every font can
/// be used at one pixel per design unit, and coordinates still fit 16 bits.
constexpr int maxFontHeight = 16'384;

/// Design units: the largest coordinate of an outline that the library has made, 16 Mi. A larger
/// one is reduced to it, so that 64 times a coordinate fits 32 bits.
constexpr int maxOutlineCoordinate = 1 << 24;

/// Vertices of an outline in which meeting edges are counted. The search keeps the number of an
/// edge in 16 bits. An outline with more vertices counts as one with too many meetings.
constexpr std::size_t maxOutlineVertices = 65'535;

/// Comparisons of two edges of an outline. Searches for meeting edges give up after this many, so
/// that no outline, however large, holds the program up for more than a fraction of a second. The
/// outline then counts as one with too many meetings.
constexpr std::int64_t maxEdgeComparisons = 20'000'000;

/// Meetings of edges in an outline. An outline with more is no letter: it is handed over as it is,
/// because filling or repairing it could add a vertex for every meeting and would take too long.
constexpr int maxEdgeMeetings = 20'000;

/// Steps of an edge profile. Each is a ring around every letter that has the profile.
constexpr std::size_t maxProfileSteps = 64;

/// Ems: the largest offset and the largest height of a step of an edge profile.
constexpr double maxProfileReach = 10;

/// Ems: how far a region with profiled edges may reach from the origin. Its points lie on a grid of
/// 512 units per em at the least.
constexpr double maxRegionSide = 16'000;

/// Steps of building the solid of an area, or all solids of joined letters of a text: for each
/// corner, the edges at its height, times the rings of the profile. The union and the offsets of
/// contours take about as many; this many take about ten seconds. A solid that would take more has
/// square edges, and one that would take more even so is left out.
constexpr std::int64_t maxSolidSteps = 500'000'000;

/// Bytes: the largest SVG file, 16 MiB. A million line segments, which is another limit, take about
/// as many. The tree that the file becomes takes up to 20 times the memory.
constexpr std::size_t maxSvgBytes = std::size_t{16} << 20;

/// Levels of elements inside each other in an SVG file, those that a use element puts there
/// included. Each level takes a few stack frames of the reader, about a kilobyte each.
constexpr int maxSvgNesting = 256;

/// Elements that an SVG file draws, those that use elements put there counted each time. A few use
/// elements that refer to groups of each other could ask for millions.
constexpr int maxSvgElements = 200'000;

/// Notices about an SVG file, because a file may have any number of unknown elements.
constexpr std::size_t maxSvgNotices = 100;

/// Dashes and gaps in the pattern of a stroke. Every element inside inherits the pattern.
constexpr std::size_t maxSvgDashes = 1'000;

/// Colours of an SVG file, and areas of a node that is made of one. Each is a solid with a material
/// of its own.
constexpr std::size_t maxShapeColors = 1'000;

/// Line segments of the areas in a file, after curves, strokes and repeated elements are cut into
/// lines. Each takes some hundred bytes while it is read. A single path has at most as many
/// commands.
constexpr int maxShapeSegments = 1'000'000;

/// Ems: the largest coordinate in a file of areas. Farther points would leave too few bits for
/// the details of the picture.
constexpr double maxShapeCoordinate = 1e6;

/// Steps of the work on a file of areas. Bytes of attributes and texts are steps of its reader, so
/// that elements which are used again and again end it. Comparisons of edges are steps of the
/// search for crossings, which counts anew. As many edges as maxShapeSegments allows take nearly
/// all of them when each crosses one or two others. Either takes a few seconds until it gives up.
constexpr std::int64_t maxShapeSteps = 1'000'000'000;

/// Bytes of UTF-8: the longest text with markup, 1 MiB. Its text alone has maxTextBytes at most.
constexpr std::size_t maxMarkupBytes = std::size_t{1} << 20;

/// Elements inside each other in a text with markup. Each copies the style around it.
constexpr std::size_t maxMarkupNesting = 64;

/// Parts of a text that differ in style. Each holds its style, up to about 5 kilobytes.
constexpr std::size_t maxTextSpans = 10'000;

/// OpenType features, and axes of variable fonts, that the style of a part of a text can set. Fonts
/// have up to some dozens of each.
constexpr std::size_t maxSpanSettings = 64;

/// Pixels of a picture of all directions (.hdr): 128 Mi. Reading that many takes some seconds.
constexpr std::int64_t maxEnvironmentPixels = std::int64_t{128} << 20;

/// Fonts that the styles of one text may name. Each is looked for among the installed fonts, which
/// takes some milliseconds.
constexpr std::size_t maxTextFonts = 64;

/// Tab stops of a text.
constexpr std::size_t maxTabStops = 1'000;

/// Bytes: the largest font file in a document, 32 MiB. The largest common fonts, those of Chinese,
/// Japanese and Korean together, have 20 MiB.
constexpr std::size_t maxEmbeddedFontBytes = std::size_t{32} << 20;

/// Bytes: the most built glyphs that texts of any language keep together, 64 MiB. The glyphs that
/// were used last stay; the others are built again when they are needed. The glyph that is in use
/// stays even if it is larger.
constexpr std::size_t maxKeptGlyphBytes = std::size_t{64} << 20;

/// Bytes: the largest ICC colour profile that is read, 16 MiB. Profiles of printing presses have up
/// to some millions.
constexpr std::size_t maxProfileBytes = std::size_t{16} << 20;

/// Seconds: the shortest time to which a drawing or a command can be limited. A shorter one would
/// always be over.
constexpr double minSeconds = 0.001;

/// Seconds: the longest time to which a command can be limited, about 30 years. A clock can count
/// that many.
constexpr double maxSeconds = 1e9;

/// MiB: the most memory to which a command can be limited, about a petabyte. In bytes it fits 64
/// bits.
constexpr std::int64_t maxMebibytes = 1'000'000'000;

}  // namespace orvane::limits
