// SPDX-License-Identifier: MIT
/// \file
/// The recorder's glBegin, glEnd, vertices and what belongs to them, and vertex arrays.

#include "tests/support/gl/GlCalls.h"

namespace
{

using namespace gl_calls;

// What a call does besides being recorded.

template <typename Number>
void OnVertex(std::span<const Number> values)
{
    Locked state = TheState();
    if (IsInsideGlu())
    {
        return;
    }
    GlVertex vertex{};
    vertex.primitive = state->primitive;
    vertex.primitiveIndex = state->primitives - 1;
    const auto copy = [](const auto& source, auto& target) {
        for (std::size_t i = 0; i < target.size() && i < source.size(); ++i)
        {
            target[i] = static_cast<double>(source[i]);
        }
    };
    copy(values, vertex.position);
    copy(state->answers[GL_CURRENT_NORMAL], vertex.normal);
    copy(state->answers[GL_CURRENT_TEXTURE_COORDS], vertex.texCoord);
    copy(state->answers[GL_CURRENT_COLOR], vertex.color);
    state->vertices.push_back(vertex);
}

// Keeps a current value: the elements given, then those of 0 0 0 1. Integers stand for fractions of
// their range (\p scale).
template <typename Number>
void KeepCurrent(GLenum name, std::size_t size, std::span<const Number> values, double scale = 1)
{
    std::vector<double> all = {0, 0, 0, 1};
    all.resize(size);
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        all[i] = static_cast<double>(values[i]) / scale;
    }
    TheState()->answers[name] = all;
}

template <typename Number>
double Scale()
{
    return std::floating_point<Number> ? 1
                                       : static_cast<double>(std::numeric_limits<Number>::max());
}

template <typename Number>
void OnNormal(std::span<const Number> values)
{
    KeepCurrent(GL_CURRENT_NORMAL, 3, values, Scale<Number>());
}

template <typename Number>
void OnTexCoord(std::span<const Number> values)
{
    KeepCurrent(GL_CURRENT_TEXTURE_COORDS, 4, values);
}

template <typename Number>
void OnColor(std::span<const Number> values)
{
    KeepCurrent(GL_CURRENT_COLOR, 4, values, Scale<Number>());
}

template <typename Number>
void OnRasterPos(std::span<const Number> values)
{
    KeepCurrent(GL_CURRENT_RASTER_POSITION, 4, values);
}

template <typename Number, std::size_t count>
void CallWith(const char* name, const Number (&values)[count],
              void (*effect)(std::span<const Number>))
{
    const std::span<const Number> all(values);
    Call(name, all);
    effect(all);
}

template <typename Number>
void CallWith(const char* name, const Number* values, int count,
              void (*effect)(std::span<const Number>))
{
    Call(name, Array(values, count));
    effect(Array(values, count));
}

}  // namespace

// A function that takes its values one by one, and the one that takes an array of them.
#define PAIR(stem, count, suffix, type, effect, values, ...)          \
    void stem##count##suffix(__VA_ARGS__)                             \
    {                                                                 \
        const type all[] = values;                                    \
        CallWith(#stem #count #suffix, all, effect<type>);            \
    }                                                                 \
    void stem##count##suffix##v(const type* all)                      \
    {                                                                 \
        CallWith(#stem #count #suffix "v", all, count, effect<type>); \
    }                                                                 \
    static_assert(true)
#define LIST(...)   \
    {               \
        __VA_ARGS__ \
    }
#define PAIR_1(stem, suffix, type, effect) PAIR(stem, 1, suffix, type, effect, LIST(x), type x)
#define PAIR_2(stem, suffix, type, effect) \
    PAIR(stem, 2, suffix, type, effect, LIST(x, y), type x, type y)
#define PAIR_3(stem, suffix, type, effect) \
    PAIR(stem, 3, suffix, type, effect, LIST(x, y, z), type x, type y, type z)
#define PAIR_4(stem, suffix, type, effect) \
    PAIR(stem, 4, suffix, type, effect, LIST(x, y, z, w), type x, type y, type z, type w)
// One pair for each of the number types that every such family has.
#define TYPES(pair, stem, effect)    \
    pair(stem, d, GLdouble, effect); \
    pair(stem, f, GLfloat, effect);  \
    pair(stem, i, GLint, effect);    \
    pair(stem, s, GLshort, effect)
#define COLOR_TYPES(pair, stem, effect) \
    TYPES(pair, stem, effect);          \
    pair(stem, b, GLbyte, effect);      \
    pair(stem, ub, GLubyte, effect);    \
    pair(stem, us, GLushort, effect);   \
    pair(stem, ui, GLuint, effect)

TYPES(PAIR_2, glVertex, OnVertex);
TYPES(PAIR_3, glVertex, OnVertex);
TYPES(PAIR_4, glVertex, OnVertex);
TYPES(PAIR_3, glNormal, OnNormal);
PAIR_3(glNormal, b, GLbyte, OnNormal);
TYPES(PAIR_1, glTexCoord, OnTexCoord);
TYPES(PAIR_2, glTexCoord, OnTexCoord);
TYPES(PAIR_3, glTexCoord, OnTexCoord);
TYPES(PAIR_4, glTexCoord, OnTexCoord);
COLOR_TYPES(PAIR_3, glColor, OnColor);
COLOR_TYPES(PAIR_4, glColor, OnColor);
TYPES(PAIR_2, glRasterPos, OnRasterPos);
TYPES(PAIR_3, glRasterPos, OnRasterPos);
TYPES(PAIR_4, glRasterPos, OnRasterPos);

#define RECT(suffix, type)                                                         \
    GL_CALL(glRect##suffix, (type x1, type y1, type x2, type y2), x1, y1, x2, y2); \
    GL_CALL(glRect##suffix##v, (const type* a, const type* b), a[0], a[1], b[0], b[1])
RECT(d, GLdouble);
RECT(f, GLfloat);
RECT(i, GLint);
RECT(s, GLshort);

void glBegin(GLenum mode)
{
    Call("glBegin", Primitive{mode});
    Locked state = TheState();
    if (state->insideBegin)
    {
        state->errors.push_back(GL_INVALID_OPERATION);
        return;
    }
    state->insideBegin = true;
    state->primitive = mode;
    state->primitives += IsInsideGlu() ? 0 : 1;
}

void glEnd()
{
    Call("glEnd");
    Locked state = TheState();
    if (!state->insideBegin)
    {
        state->errors.push_back(GL_INVALID_OPERATION);
    }
    state->insideBegin = false;
}

GL_CALL(glEdgeFlag, (GLboolean flag), Boolean{flag});
GL_CALL(glEdgeFlagv, (const GLboolean* flag), Boolean{*flag});

// Vertex arrays: the calls alone; the arrays are not followed.
GL_CALL(glEnableClientState, (GLenum array), Enum{array});
GL_CALL(glDisableClientState, (GLenum array), Enum{array});
GL_CALL(glVertexPointer, (GLint size, GLenum type, GLsizei stride, const void* data), size,
        Enum{type}, stride, Memory{data});
GL_CALL(glTexCoordPointer, (GLint size, GLenum type, GLsizei stride, const void* data), size,
        Enum{type}, stride, Memory{data});
GL_CALL(glColorPointer, (GLint size, GLenum type, GLsizei stride, const void* data), size,
        Enum{type}, stride, Memory{data});
GL_CALL(glNormalPointer, (GLenum type, GLsizei stride, const void* data), Enum{type}, stride,
        Memory{data});
GL_CALL(glIndexPointer, (GLenum type, GLsizei stride, const void* data), Enum{type}, stride,
        Memory{data});
GL_CALL(glEdgeFlagPointer, (GLsizei stride, const void* data), stride, Memory{data});
GL_CALL(glInterleavedArrays, (GLenum format, GLsizei stride, const void* data), Enum{format},
        stride, Memory{data});
GL_CALL(glArrayElement, (GLint index), index);
GL_CALL(glDrawArrays, (GLenum mode, GLint first, GLsizei count), Primitive{mode}, first, count);
GL_CALL(glDrawElements, (GLenum mode, GLsizei count, GLenum type, const void* indices),
        Primitive{mode}, count, Enum{type}, Memory{indices});
