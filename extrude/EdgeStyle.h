// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The named values of a text's edge and alignment settings. The settings themselves are plain
/// ints, in memory and in records, because a record may hold a value that has no name here.

namespace orvane
{

/// How the edge between a face of a letter and its wall is shaped.
enum class EdgeStyle : int
{
    Square = 0,
    Bevel = 1,  ///< cut off at 45 degrees
    Round = 2   ///< a quarter circle
};
/// The number of named styles.
constexpr int edgeStyleCount = 3;

/// Which faces of a letter have a bevelled or rounded edge. The setting has no effect on square
/// edges.
enum class BevelSides : int
{
    Front = 0,
    Back = 1,
    Both = 2
};
/// The number of named values of BevelSides.
constexpr int bevelSidesCount = 3;

/// Which letters of a text with a profile become one solid before their edges are cut.
enum class LetterFusion : int
{
    Separate = 0,  ///< each letter is a solid
    Line = 1,      ///< each line is a solid
    Text = 2       ///< all lines are one solid
};
/// The number of named values of LetterFusion.
constexpr int letterFusionCount = 3;

/// How the lines of a text are placed along x, relative to the text's origin.
enum class Alignment : int
{
    Left = 0,    ///< each line begins at the origin
    Center = 1,  ///< the middle of each line is at the origin
    Right = 2    ///< each line ends at the origin
};

}  // namespace orvane
