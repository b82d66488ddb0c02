// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

/// The calls of a recorded drawing: for each a Call and its arguments as 32-bit words (a double
/// takes two).
enum class Call : std::uint32_t
{
    Begin,
    End,
    Normal3f,
    Vertex3f,
    TexCoord2fv,
    FrontFace,
    PushMatrix,
    PopMatrix,
    Translated,
    MultMatrixd,
    Materialfv,
    Materialf,
    Color4fv,
    Enable,
    Disable,
    IsEnabled,
    DepthMask,
    BlendFunc,
    GetIntegerv,
    GetError,
    Flush,
    Lightfv,
    Lightf,
    LightModelfv,
    LightModeli,
    ShadeModel,
    Clear,
    ClearColor,
    Count
};

/// The name of each Call, in order, and a letter for each argument: u an unsigned number of 32 bits
/// (enumerators, bit sets and booleans too), i a signed one, f a float, d a double.
struct CallForm
{
    const char* name;
    const char* arguments;
};
constexpr CallForm callForms[] = {
    {"glBegin", "u"},
    {"glEnd", ""},
    {"glNormal3f", "fff"},
    {"glVertex3f", "fff"},
    {"glTexCoord2fv", "ff"},
    {"glFrontFace", "u"},
    {"glPushMatrix", ""},
    {"glPopMatrix", ""},
    {"glTranslated", "ddd"},
    {"glMultMatrixd", "dddddddddddddddd"},
    {"glMaterialfv", "uuffff"},
    {"glMaterialf", "uuf"},
    {"glColor4fv", "ffff"},
    {"glEnable", "u"},
    {"glDisable", "u"},
    {"glIsEnabled", "u"},
    {"glDepthMask", "u"},
    {"glBlendFunc", "uu"},
    {"glGetIntegerv", "u"},
    {"glGetError", ""},
    {"glFlush", ""},
    {"glLightfv", "uuffff"},
    {"glLightf", "uuf"},
    {"glLightModelfv", "uffff"},
    {"glLightModeli", "ui"},
    {"glShadeModel", "u"},
    {"glClear", "u"},
    {"glClearColor", "ffff"},
};
static_assert(std::size(callForms) == static_cast<std::size_t>(Call::Count));

/// The calls of one drawing. The program ends when nothing was recorded.
/// \param what orvane_record's arguments
std::vector<std::uint32_t> RecordStream(const std::string& what);

/// Makes the calls again.
void Replay(const std::vector<std::uint32_t>& words);
