// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane
{

/// A corner of an edge's cross section.
struct ProfileStep
{
    /// How far the ring lies from the letter's outline: positive outside of the letter, negative
    /// inside. In ems, unless EdgeProfile::reachesMiddle is set.
    double offset = 0;
    /// Where the ring lies, in ems: 0 in the plane of the face, negative behind it.
    double height = 0;

    friend bool operator==(const ProfileStep& a, const ProfileStep& b)
    {
        return a.offset == b.offset && a.height == b.height;
    }
};

/// How a ring goes around a corner of the outline that it moves away from.
enum class ProfileCorners
{
    Mitred,  ///< in a tip, which is cut off where it would reach further than 4 offsets
    Round    ///< in an arc
};

/// The cross section of a letter's edge, from the face to the wall. Every step is a ring around the
/// letter, at one offset and one height; the surface of the edge lies between successive rings.
///
/// The first step lies in the plane of the face, at height 0, and heights never increase. Steps of
/// the same height are a ledge, whose offsets all grow or all shrink; steps of the same offset are
/// a vertical wall. So no cross section crosses itself.
struct EdgeProfile
{
    std::vector<ProfileStep> steps;
    ProfileCorners corners = ProfileCorners::Mitred;
    /// Offsets are multiples of the distance from the outline to the middle of the letter's widest
    /// stroke: a ring at -1 shrinks to a ridge there, and to nothing in all narrower strokes.
    bool reachesMiddle = false;

    friend bool operator==(const EdgeProfile& a, const EdgeProfile& b)
    {
        return a.steps == b.steps && a.corners == b.corners && a.reachesMiddle == b.reachesMiddle;
    }
};

/// The names of the profiles that NamedProfile makes, in the order of the documentation.
ORVANE_API const std::vector<std::string>& ProfileNames();

/// Makes a profile that is as deep as it is wide:
/// - chamfer: a plane at 45 degrees;
/// - round: a quarter of a circle that bulges out;
/// - cove: a quarter of a circle that is hollow;
/// - step: two stairs of half the width;
/// - ogee: a round and a cove of half the width each;
/// - chisel: planes that rise from the outline to the middle of the strokes. The ridge of the
/// widest
///   stroke lies in the plane of the face and the outline \p width behind it. All strokes have the
///   same slope, so narrower ones have lower ridges.
/// \param width in ems, not 0. Positive: the face keeps the letter's outline, and the wall lies \p
/// width outside of it. Negative: the wall keeps the outline, and the face shrinks. Chisel always
/// works inward and takes the size of the width.
/// \param arcSteps how many planes stand for each quarter of a circle, 1 to 16
/// Throws Error for an unknown name, a width that is 0 or beyond limits::maxProfileReach, and
/// another number of steps.
ORVANE_API EdgeProfile NamedProfile(std::string_view name, double width, int arcSteps = 6);

/// Reads a profile from text in one of two forms, each of which may end with "round-corners":
/// - a name of ProfileNames, and the width in ems if it is not \p width: "chamfer", "cove -0.03";
/// - steps, each as offset, comma and height: "0,0 0.02,-0.01 0.04,-0.04".
/// Numbers have a point as decimal separator in every locale. Words are separated by spaces. Throws
/// Error, which names the step, what was found and what was expected.
ORVANE_API EdgeProfile ParseProfile(std::string_view text, double width = 0.03);

/// The text from which ParseProfile makes the same profile, bit for bit. A profile that reaches the
/// middle must be one that NamedProfile makes.
ORVANE_API std::string ProfileText(const EdgeProfile& profile);

/// Throws Error when a profile has no steps or more than limits::maxProfileSteps, a number that is
/// not finite or beyond limits::maxProfileReach, or when it folds back.
ORVANE_API void CheckProfile(const EdgeProfile& profile);

}  // namespace orvane
