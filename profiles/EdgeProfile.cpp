// SPDX-License-Identifier: MIT
#include "profiles/EdgeProfile.h"

#include "orvane/Error.h"
#include "platform/Limits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <optional>
#include <span>

namespace orvane
{

namespace
{

constexpr std::string_view roundCorners = "round-corners";
constexpr std::string_view chisel = "chisel";

std::string TextOf(double number)
{
    char digits[32];
    const auto result = std::to_chars(digits, digits + sizeof digits, number);
    return std::string(digits, result.ptr);
}

std::optional<double> NumberIn(std::string_view text)
{
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end)
    {
        return std::nullopt;
    }
    return number;
}

std::string PlaceOfStep(std::size_t index)
{
    return "profile, step " + std::to_string(index + 1);
}

std::string TextOf(const ProfileStep& step)
{
    return TextOf(step.offset) + ',' + TextOf(step.height);
}

/// The corners of a named cross section: x from 0 at the face to 1 at the wall, and y from 0 to 1,
/// the depth behind the face.
struct Corner
{
    double x;
    double y;
};

/// Adds a quarter of a circle: from the last corner, \p size across and down, first along the face
/// and then down when it bulges out, first down and then across when it is hollow.
void AddArc(std::vector<Corner>& corners, double size, bool isHollow, int steps)
{
    const Corner from = corners.back();
    for (int i = 1; i <= steps; ++i)
    {
        const double angle = std::numbers::pi / 2 * i / steps;
        const double slow = i == steps ? 1 : 1 - std::cos(angle);
        const double fast = i == steps ? 1 : std::sin(angle);
        corners.push_back(
            {from.x + size * (isHollow ? slow : fast), from.y + size * (isHollow ? fast : slow)});
    }
}

std::vector<Corner> CornersOf(std::string_view name, int arcSteps)
{
    std::vector<Corner> corners = {{0, 0}};
    if (name == "chamfer" || name == chisel)
    {
        corners.push_back({1, 1});
    }
    else if (name == "round" || name == "cove")
    {
        AddArc(corners, 1, name == "cove", arcSteps);
    }
    else if (name == "step")
    {
        corners.insert(corners.end(), {{0, 0.5}, {0.5, 0.5}, {0.5, 1}, {1, 1}});
    }
    else if (name == "ogee")
    {
        AddArc(corners, 0.5, false, arcSteps);
        AddArc(corners, 0.5, true, arcSteps);
    }
    return corners;
}

bool IsName(std::string_view word)
{
    const std::vector<std::string>& names = ProfileNames();
    return std::find(names.begin(), names.end(), word) != names.end();
}

std::string ListOfNames()
{
    std::string list;
    for (const std::string& name : ProfileNames())
    {
        list += (list.empty() ? "" : ", ") + name;
    }
    return list;
}

std::vector<std::string_view> WordsOf(std::string_view text)
{
    std::vector<std::string_view> words;
    std::size_t at = 0;
    while ((at = text.find_first_not_of(' ', at)) != std::string_view::npos)
    {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        words.push_back(text.substr(at, end - at));
        at = end;
    }
    return words;
}

EdgeProfile ParseNamed(std::span<const std::string_view> words, double width)
{
    if (words.size() > 2)
    {
        throw Error("profile " + std::string(words[0]), '"' + std::string(words[2]) + '"',
                    "nothing after the width");
    }
    if (words.size() == 2)
    {
        const std::optional<double> number = NumberIn(words[1]);
        if (!number)
        {
            throw Error("profile " + std::string(words[0]), '"' + std::string(words[1]) + '"',
                        "a width in ems");
        }
        width = *number;
    }
    return NamedProfile(words[0], width);
}

ProfileStep ParseStep(std::string_view word, std::size_t index)
{
    const std::size_t comma = word.find(',');
    if (comma != std::string_view::npos)
    {
        const std::optional<double> offset = NumberIn(word.substr(0, comma));
        const std::optional<double> height = NumberIn(word.substr(comma + 1));
        if (offset && height)
        {
            return {*offset, *height};
        }
    }
    throw Error(PlaceOfStep(index), '"' + std::string(word) + '"',
                index == 0
                    ? "an offset and a height, such as 0.02,-0.01, or one of " + ListOfNames()
                    : std::string("an offset and a height, such as 0.02,-0.01"));
}

void CheckReach(const std::string& place, const std::string& found, double number)
{
    // A number that is not a number fails the comparison.
    if (!(std::abs(number) <= limits::maxProfileReach))
    {
        throw Error(place, found,
                    "numbers from " + TextOf(-limits::maxProfileReach) + " to " +
                        TextOf(limits::maxProfileReach));
    }
}

}  // namespace

const std::vector<std::string>& ProfileNames()
{
    static const std::vector<std::string> names = {"chamfer", "round", "cove",
                                                   "step",    "ogee",  "chisel"};
    return names;
}

EdgeProfile NamedProfile(std::string_view name, double width, int arcSteps)
{
    if (!IsName(name))
    {
        throw Error("profile", '"' + std::string(name) + '"', "one of " + ListOfNames());
    }
    const std::string place = "profile " + std::string(name);
    CheckReach(place + ": width", TextOf(width), width);
    if (width == 0)
    {
        throw Error(place + ": width", "0", "a width that is not 0");
    }
    constexpr int maxArcSteps = 16;
    if (arcSteps < 1 || arcSteps > maxArcSteps)
    {
        throw Error(place + ": steps of an arc", std::to_string(arcSteps), "1 to 16");
    }

    EdgeProfile profile;
    profile.reachesMiddle = name == chisel;
    const double size = std::abs(width);
    for (const Corner& corner : CornersOf(name, arcSteps))
    {
        const double inward = corner.x - 1;
        const double offset = profile.reachesMiddle ? inward
                              : width < 0           ? inward * size
                                                    : corner.x * size;
        // The sum with 0 makes 0 of -0.
        profile.steps.push_back({offset + 0.0, 0.0 - corner.y * size});
    }
    return profile;
}

EdgeProfile ParseProfile(std::string_view text, double width)
{
    std::vector<std::string_view> words = WordsOf(text);
    EdgeProfile profile;
    const bool isRound = !words.empty() && words.back() == roundCorners;
    if (isRound)
    {
        words.pop_back();
    }
    if (!words.empty() && IsName(words[0]))
    {
        profile = ParseNamed(words, width);
    }
    else
    {
        // The check comes before the loop, so that a long text costs nothing.
        if (words.size() > limits::maxProfileSteps)
        {
            throw Error("profile", std::to_string(words.size()) + " steps",
                        "at most " + std::to_string(limits::maxProfileSteps));
        }
        for (std::size_t i = 0; i < words.size(); ++i)
        {
            profile.steps.push_back(ParseStep(words[i], i));
        }
    }
    profile.corners = isRound ? ProfileCorners::Round : ProfileCorners::Mitred;
    CheckProfile(profile);
    return profile;
}

std::string ProfileText(const EdgeProfile& profile)
{
    std::string text;
    if (profile.reachesMiddle)
    {
        text = std::string(chisel) + ' ' + TextOf(-profile.steps.back().height);
    }
    else
    {
        for (const ProfileStep& step : profile.steps)
        {
            text += (text.empty() ? "" : " ") + TextOf(step);
        }
    }
    if (profile.corners == ProfileCorners::Round)
    {
        text += ' ' + std::string(roundCorners);
    }
    return text;
}

void CheckProfile(const EdgeProfile& profile)
{
    const std::vector<ProfileStep>& steps = profile.steps;
    if (steps.empty() || steps.size() > limits::maxProfileSteps)
    {
        throw Error("profile", std::to_string(steps.size()) + " steps",
                    "1 to " + std::to_string(limits::maxProfileSteps));
    }
    double direction = 0;  // of the ledge that the last step belongs to
    for (std::size_t i = 0; i < steps.size(); ++i)
    {
        const ProfileStep& step = steps[i];
        const std::string place = PlaceOfStep(i);
        CheckReach(place, TextOf(step), step.offset);
        CheckReach(place, TextOf(step), step.height);
        if (i == 0)
        {
            if (step.height != 0)
            {
                throw Error(place, "height " + TextOf(step.height),
                            "height 0, the plane of the face");
            }
            continue;
        }
        const ProfileStep& last = steps[i - 1];
        if (step.height > last.height)
        {
            throw Error(place, "height " + TextOf(step.height),
                        "at most " + TextOf(last.height) + ", the height of the step before");
        }
        const double change = step.offset - last.offset;
        const bool isLedge = step.height == last.height;
        if (isLedge && (change == 0 || change * direction < 0))
        {
            throw Error(place, TextOf(step),
                        change == 0 ? std::string("another place than the step before")
                                    : "an offset beyond " + TextOf(last.offset) +
                                          ", or a height below " + TextOf(last.height));
        }
        direction = isLedge ? change : 0;
    }
}

}  // namespace orvane
