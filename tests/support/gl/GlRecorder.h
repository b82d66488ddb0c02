// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The OpenGL recorder of the stream tests and of the benchmark of drawing. Their programs define
/// the gl... and glu... functions themselves, so the library's calls arrive here, become one line
/// of text each, and draw nothing. No context is needed.
///
/// A line is the function's name and its arguments, separated by single spaces:
///
///     glBegin GL_QUADS
///     glVertex3f 0 1 -0.5
///     glMaterialfv GL_FRONT_AND_BACK GL_DIFFUSE 1 0 0 1
///
/// Numbers are written in the shortest form that reads back as the same value. Floats are written
/// as floats, so the float 0.1f becomes 0.1, and a double with the value of 0.1f becomes
/// 0.10000000149011612. Negative zero is -0. Enumerators are written by name, booleans as GL_TRUE
/// and GL_FALSE, and the bits of a bit set by name, joined with |. An array is written as all its
/// values. Image data and other memory is written as the word data, or null if there is none.
/// Handles of tessellators and quadrics and the user data of vertices are left out.
///
/// The recorder covers OpenGL 1.1 without evaluators and colour indices. It records the calls for
/// display lists and vertex arrays, but not their contents.
///
/// GLU works as usual. The calls that GLU itself makes, for example for the vertices of a cylinder,
/// are inner calls: AllLines has them, indented by two spaces, and Lines leaves them out.

#include "platform/OpenGL.h"

#include <array>
#include <charconv>
#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

/// The number as the recorder writes it.
template <typename Number>
requires std::integral<Number> || std::floating_point<Number> std::string GlNumber(Number value)
{
    char text[40];
    const std::to_chars_result result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}

/// A line as the recorder writes it: GlLine("glVertex3f", 0.0f, 1.0f, -0.5f). Enumerators are given
/// as texts.
template <typename... Arguments>
std::string GlLine(std::string_view name, const Arguments&... arguments)
{
    const auto text = [](const auto& value) {
        if constexpr (std::convertible_to<decltype(value), std::string_view>)
        {
            return std::string(value);
        }
        else
        {
            return GlNumber(value);
        }
    };
    std::string line(name);
    ((line += ' ', line += text(arguments)), ...);
    return line;
}

/// A vertex with the state in force when it was emitted.
struct GlVertex
{
    GLenum primitive;    ///< the argument of the glBegin around the vertex
    int primitiveIndex;  ///< 0 for the first glBegin of the recording
    std::array<double, 3> position;
    std::array<double, 3> normal;
    std::array<double, 2> texCoord;
    std::array<double, 4> color;

    bool operator==(const GlVertex&) const = default;
};

/// A call as numbers. Enumerators, bit sets and booleans are their values, and arrays stand one
/// value after the other; memory is left out. Floats and doubles are exact.
struct GlCall
{
    const char* name;
    std::vector<double> arguments;
};

/// Records the calls of all threads from its construction to its destruction, starting with
/// OpenGL's initial state. Only one object may exist at a time.
class GlRecording
{
public:
    GlRecording();
    ~GlRecording();
    GlRecording(const GlRecording&) = delete;
    GlRecording& operator=(const GlRecording&) = delete;

    using Names = std::initializer_list<std::string_view>;

    /// The library's own calls, without the inner calls of GLU.
    std::vector<std::string> Lines() const;
    /// The same calls as Lines, as numbers.
    std::vector<GlCall> Calls() const;
    /// The library's own calls and the inner calls of GLU, which are indented.
    std::vector<std::string> AllLines() const;
    /// Only: the lines of the given functions. Without: all other lines.
    std::vector<std::string> Only(Names names) const;
    std::vector<std::string> Without(Names names) const;
    /// How many of the library's own calls called this function.
    int Count(std::string_view name) const;
    /// The lines, each followed by a line feed.
    std::string Text() const;
    /// The vertices of the library's own calls (glVertex*), in order.
    std::vector<GlVertex> Vertices() const;
    /// Forgets lines and vertices and keeps the state.
    void Clear();

    // The functions below set the values that OpenGL's queries return. Calls that set a state also
    // change these values, as they do in OpenGL: glEnable, glMatrixMode, glViewport, glPixelStorei,
    // glPushMatrix and so on. Matrices are not computed; they are identities until a test sets them
    // here.

    void SetInteger(GLenum name, const std::vector<GLint>& values);
    void SetDouble(GLenum name, const std::vector<double>& values);
    void SetEnabled(GLenum capability, bool enabled);
    /// Sets the number that glRenderMode returns when it ends the selection or feedback mode.
    void SetHits(GLint hits);

    /// Makes the next glGetError return this error. Further errors queue up.
    void AddError(GLenum error);
    /// Adds the error when the function has been called \p calls more times.
    void AddErrorAfter(std::string_view function, GLenum error, int calls = 1);

    /// The number of entries on a matrix stack; 1 at the start. As in OpenGL, a push beyond
    /// GL_MAX_..._STACK_DEPTH and a pop of the last entry change nothing and add an error.
    int MatrixDepth(GLenum mode = GL_MODELVIEW) const;
    int NameDepth() const;
    int AttribDepth() const;
    /// Whether a glBegin has not yet got its glEnd.
    bool IsInsideBegin() const;
    /// Whether every stack is as deep as at the start and every glBegin has its glEnd.
    bool IsBalanced() const;
};
