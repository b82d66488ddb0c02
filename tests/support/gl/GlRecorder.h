// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The OpenGL recorder of the stream tests and of the benchmark of drawing. Their programs define
/// the gl... and glu... functions themselves, so the library's calls arrive here, become one line
/// of text each, and draw nothing. No context is needed.
///
/// A line is the function's name and its arguments, set apart by one space:
///
///     glBegin GL_QUADS
///     glVertex3f 0 1 -0.5
///     glMaterialfv GL_FRONT_AND_BACK GL_DIFFUSE 1 0 0 1
///
/// Numbers are in the shortest form that reads back as the same value, floats as floats (so 0.1f is
/// 0.1 and a double 0.1f is 0.10000000149011612); negative zero is -0. Enumerators are named;
/// booleans are GL_TRUE and GL_FALSE; bit sets are joined with |. An array gives all its values,
/// image data and other memory the word data (null if there is none). Handles of tessellators and
/// quadrics and the user data of vertices are left out.
///
/// Recorded is OpenGL 1.1 without evaluators and colour indices; display lists and vertex arrays
/// are recorded as calls, their contents not.
///
/// GLU does its work as ever. What it calls itself (a cylinder's vertices, say) counts as inner:
/// AllLines has it, indented by two spaces, Lines has not.

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

/// A vertex with what was in force when it was emitted.
struct GlVertex
{
    GLenum primitive;    ///< of the glBegin around it
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

/// Records from its construction to its end, starting with OpenGL's initial state. One at a time.
/// Calls from all threads are recorded.
class GlRecording
{
public:
    GlRecording();
    ~GlRecording();
    GlRecording(const GlRecording&) = delete;
    GlRecording& operator=(const GlRecording&) = delete;

    using Names = std::initializer_list<std::string_view>;

    /// The library's own calls.
    std::vector<std::string> Lines() const;
    /// The same, as numbers.
    std::vector<GlCall> Calls() const;
    /// With those that GLU made inside, indented.
    std::vector<std::string> AllLines() const;
    /// The lines of these functions alone.
    std::vector<std::string> Only(Names names) const;
    std::vector<std::string> Without(Names names) const;
    /// How many of the library's own calls were of this function.
    int Count(std::string_view name) const;
    /// The lines, each with a line feed behind it.
    std::string Text() const;
    /// The vertices of the library's own calls (glVertex*), in order.
    std::vector<GlVertex> Vertices() const;
    /// Forgets lines and vertices; the state stays.
    void Clear();

    // What the queries answer. Calls that set a state also change its answer, as they do in OpenGL:
    // glEnable, glMatrixMode, glViewport, glPixelStorei, glPushMatrix and so on. Matrices are not
    // computed: they are identities until they are set here.

    void SetInteger(GLenum name, const std::vector<GLint>& values);
    void SetDouble(GLenum name, const std::vector<double>& values);
    void SetEnabled(GLenum capability, bool enabled);
    /// What glRenderMode returns when the mode that it ends is not GL_RENDER.
    void SetHits(GLint hits);

    /// The next glGetError returns this. Further ones queue up.
    void AddError(GLenum error);
    /// Adds the error after the function has been called \p calls more times.
    void AddErrorAfter(std::string_view function, GLenum error, int calls = 1);

    /// Entries on a matrix stack, 1 at the start; the current one's also shows unbalanced code:
    /// pushing past the depth of GL_MAX_..._STACK_DEPTH or popping the last entry changes nothing
    /// and adds the error that it adds in OpenGL.
    int MatrixDepth(GLenum mode = GL_MODELVIEW) const;
    int NameDepth() const;
    int AttribDepth() const;
    /// Whether glBegin waits for its glEnd.
    bool IsInsideBegin() const;
    /// Every stack is as at the start and no glBegin is open.
    bool IsBalanced() const;
};
