// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The calls of a recorded drawing: for each a Call and its arguments as 32-bit words (a double
/// takes two).
enum class Call : std::uint32_t
{
    Begin,         // mode
    End,           //
    Normal3f,      // 3 floats
    Vertex3f,      // 3 floats
    TexCoord2fv,   // 2 floats
    FrontFace,     // mode
    PushMatrix,    //
    PopMatrix,     //
    Translated,    // 3 doubles
    MultMatrixd,   // 16 doubles
    Materialfv,    // face, part, 4 floats
    Materialf,     // face, part, float
    Color4fv,      // 4 floats
    Enable,        // capability
    Disable,       // capability
    IsEnabled,     // capability
    DepthMask,     // flag
    BlendFunc,     // source, destination
    GetIntegerv,   // name
    GetError,      //
    Flush,         //
    Lightfv,       // light, name, 4 floats
    Lightf,        // light, name, float
    LightModelfv,  // name, 4 floats
    LightModeli,   // name, value
    ShadeModel,    // mode
    Clear,         // buffers
    ClearColor,    // 4 floats
    Count
};

/// The calls of one drawing. \param what orvane_record's arguments. The program ends when nothing
/// was recorded.
std::vector<std::uint32_t> RecordStream(const std::string& what);

/// Makes the calls again.
void Replay(const std::vector<std::uint32_t>& words);
