// SPDX-License-Identifier: MIT
/// \file
/// The recorder's state, matrices, stacks, names, lighting and queries.

#include "tests/support/gl/GlCalls.h"

using namespace gl_calls;

namespace
{

// The bit of glPushAttrib that saves what a query answers, of those that the recorder keeps.
GLbitfield SavingBits(GLenum name)
{
    switch (name)
    {
        case GL_CURRENT_COLOR:
        case GL_CURRENT_NORMAL:
        case GL_CURRENT_TEXTURE_COORDS:
        case GL_CURRENT_RASTER_POSITION:
            return GL_CURRENT_BIT;
        case GL_FRONT_FACE:
        case GL_CULL_FACE_MODE:
        case GL_POLYGON_MODE:
            return GL_POLYGON_BIT;
        case GL_CULL_FACE:
            return GL_POLYGON_BIT | GL_ENABLE_BIT;
        case GL_SHADE_MODEL:
        case GL_LIGHT_MODEL_AMBIENT:
            return GL_LIGHTING_BIT;
        case GL_LIGHTING:
        case GL_COLOR_MATERIAL:
        case GL_LIGHT0:
        case GL_LIGHT1:
        case GL_LIGHT2:
        case GL_LIGHT3:
        case GL_LIGHT4:
        case GL_LIGHT5:
        case GL_LIGHT6:
        case GL_LIGHT7:
            return GL_LIGHTING_BIT | GL_ENABLE_BIT;
        case GL_DEPTH_WRITEMASK:
        case GL_DEPTH_FUNC:
        case GL_DEPTH_CLEAR_VALUE:
            return GL_DEPTH_BUFFER_BIT;
        case GL_DEPTH_TEST:
            return GL_DEPTH_BUFFER_BIT | GL_ENABLE_BIT;
        case GL_COLOR_CLEAR_VALUE:
        case GL_COLOR_WRITEMASK:
        case GL_BLEND_SRC:
        case GL_BLEND_DST:
        case GL_DRAW_BUFFER:
            return GL_COLOR_BUFFER_BIT;
        case GL_BLEND:
        case GL_DITHER:
        case GL_ALPHA_TEST:
        case GL_COLOR_LOGIC_OP:
            return GL_COLOR_BUFFER_BIT | GL_ENABLE_BIT;
        case GL_MATRIX_MODE:
            return GL_TRANSFORM_BIT;
        case GL_NORMALIZE:
            return GL_TRANSFORM_BIT | GL_ENABLE_BIT;
        case GL_VIEWPORT:
        case GL_DEPTH_RANGE:
            return GL_VIEWPORT_BIT;
        case GL_SCISSOR_BOX:
            return GL_SCISSOR_BIT;
        case GL_SCISSOR_TEST:
            return GL_SCISSOR_BIT | GL_ENABLE_BIT;
        case GL_TEXTURE_BINDING_2D:
            return GL_TEXTURE_BIT;
        case GL_TEXTURE_1D:
        case GL_TEXTURE_2D:
            return GL_TEXTURE_BIT | GL_ENABLE_BIT;
        case GL_FOG:
            return GL_FOG_BIT | GL_ENABLE_BIT;
        case GL_STENCIL_TEST:
            return GL_STENCIL_BUFFER_BIT | GL_ENABLE_BIT;
        case GL_LINE_WIDTH:
            return GL_LINE_BIT;
        default:
            return 0;
    }
}

GLbitfield ClientSavingBits(GLenum name)
{
    const bool isPixelStore = (name >= GL_UNPACK_SWAP_BYTES && name <= GL_UNPACK_ALIGNMENT) ||
                              (name >= GL_PACK_SWAP_BYTES && name <= GL_PACK_ALIGNMENT);
    return isPixelStore ? GL_CLIENT_PIXEL_STORE_BIT : 0;
}

void Save(std::vector<SavedAttributes>& stack, GLbitfield mask, GLenum depthName, GLenum limitName)
{
    Locked state = TheState();
    const double depth = Answer(depthName);
    PushStack(depthName, limitName);
    if (Answer(depthName) > depth)
    {
        stack.push_back({mask, state->answers});
    }
}

void Restore(std::vector<SavedAttributes>& stack, GLenum depthName, GLbitfield (*saving)(GLenum))
{
    Locked state = TheState();
    PopStack(depthName, 0);
    if (stack.empty())
    {
        return;
    }
    const SavedAttributes saved = std::move(stack.back());
    stack.pop_back();
    std::erase_if(state->answers,
                  [&](const auto& answer) { return (saving(answer.first) & saved.mask) != 0; });
    for (const auto& [name, values] : saved.answers)
    {
        if ((saving(name) & saved.mask) != 0)
        {
            state->answers[name] = values;
        }
    }
}

// The answer to a query; a name that nothing is known of gets a single 0.
template <typename Number>
void Query(const char* function, GLenum name, Number* values)
{
    Call(function, Enum{name});
    Locked state = TheState();
    values[0] = 0;
    const auto found = state->answers.find(name);
    if (found == state->answers.end())
    {
        return;
    }
    for (std::size_t i = 0; i < found->second.size(); ++i)
    {
        values[i] = static_cast<Number>(found->second[i]);
    }
}

// A query of what the recorder doesn't keep: zeros.
template <typename Number>
void ZeroParameters(GLenum name, Number* values)
{
    for (int i = 0; i < ParameterCount(name); ++i)
    {
        values[i] = 0;
    }
}

void ChangeMatrix()
{
    if (TheState()->insideBegin)
    {
        TheState()->errors.push_back(GL_INVALID_OPERATION);
    }
}

}  // namespace

// Capabilities and attributes.

void glEnable(GLenum capability)
{
    Call("glEnable", Enum{capability});
    Keep(capability, 1);
}

void glDisable(GLenum capability)
{
    Call("glDisable", Enum{capability});
    Keep(capability, 0);
}

GLboolean glIsEnabled(GLenum capability)
{
    Call("glIsEnabled", Enum{capability});
    return Answer(capability) != 0 ? GL_TRUE : GL_FALSE;
}

void glPushAttrib(GLbitfield mask)
{
    Call("glPushAttrib", Bits{mask});
    Save(TheState()->attributes, mask, GL_ATTRIB_STACK_DEPTH, GL_MAX_ATTRIB_STACK_DEPTH);
}

void glPopAttrib()
{
    Call("glPopAttrib");
    Restore(TheState()->attributes, GL_ATTRIB_STACK_DEPTH, SavingBits);
}

void glPushClientAttrib(GLbitfield mask)
{
    Call("glPushClientAttrib", ClientBits{mask});
    Save(TheState()->clientAttributes, mask, GL_CLIENT_ATTRIB_STACK_DEPTH,
         GL_MAX_CLIENT_ATTRIB_STACK_DEPTH);
}

void glPopClientAttrib()
{
    Call("glPopClientAttrib");
    Restore(TheState()->clientAttributes, GL_CLIENT_ATTRIB_STACK_DEPTH, ClientSavingBits);
}

// A function whose arguments are what the query of a name answers from then on.
#define GL_KEPT(function, parameters, name, texts, ...) \
    void function parameters                            \
    {                                                   \
        Call texts;                                     \
        Keep(name, __VA_ARGS__);                        \
    }                                                   \
    static_assert(true)

GL_KEPT(glClearColor, (GLclampf r, GLclampf g, GLclampf b, GLclampf a), GL_COLOR_CLEAR_VALUE,
        ("glClearColor", r, g, b, a), r, g, b, a);
GL_KEPT(glColorMask, (GLboolean r, GLboolean g, GLboolean b, GLboolean a), GL_COLOR_WRITEMASK,
        ("glColorMask", Boolean{r}, Boolean{g}, Boolean{b}, Boolean{a}), r, g, b, a);
GL_KEPT(glCullFace, (GLenum mode), GL_CULL_FACE_MODE, ("glCullFace", Enum{mode}), mode);
GL_KEPT(glFrontFace, (GLenum mode), GL_FRONT_FACE, ("glFrontFace", Enum{mode}), mode);
GL_KEPT(glPolygonMode, (GLenum face, GLenum mode), GL_POLYGON_MODE,
        ("glPolygonMode", Enum{face}, Enum{mode}), mode, mode);
GL_KEPT(glShadeModel, (GLenum mode), GL_SHADE_MODEL, ("glShadeModel", Enum{mode}), mode);
GL_KEPT(glDepthFunc, (GLenum function), GL_DEPTH_FUNC, ("glDepthFunc", Enum{function}), function);
GL_KEPT(glDepthMask, (GLboolean flag), GL_DEPTH_WRITEMASK, ("glDepthMask", Boolean{flag}), flag);
GL_KEPT(glDepthRange, (GLclampd nearest, GLclampd farthest), GL_DEPTH_RANGE,
        ("glDepthRange", nearest, farthest), nearest, farthest);
GL_KEPT(glClearDepth, (GLclampd depth), GL_DEPTH_CLEAR_VALUE, ("glClearDepth", depth), depth);
GL_KEPT(glLineWidth, (GLfloat width), GL_LINE_WIDTH, ("glLineWidth", width), width);
GL_KEPT(glPointSize, (GLfloat size), GL_POINT_SIZE, ("glPointSize", size), size);
GL_KEPT(glDrawBuffer, (GLenum mode), GL_DRAW_BUFFER, ("glDrawBuffer", Enum{mode}), mode);
GL_KEPT(glReadBuffer, (GLenum mode), GL_READ_BUFFER, ("glReadBuffer", Enum{mode}), mode);
GL_KEPT(glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), GL_VIEWPORT,
        ("glViewport", x, y, width, height), x, y, width, height);
GL_KEPT(glScissor, (GLint x, GLint y, GLsizei width, GLsizei height), GL_SCISSOR_BOX,
        ("glScissor", x, y, width, height), x, y, width, height);
GL_KEPT(glMatrixMode, (GLenum mode), GL_MATRIX_MODE, ("glMatrixMode", Enum{mode}), mode);
GL_KEPT(glListBase, (GLuint base), GL_LIST_BASE, ("glListBase", base), base);
GL_KEPT(glPixelStorei, (GLenum name, GLint value), name, ("glPixelStorei", Enum{name}, value),
        value);
GL_KEPT(glPixelStoref, (GLenum name, GLfloat value), name, ("glPixelStoref", Enum{name}, value),
        value);

void glBlendFunc(GLenum source, GLenum destination)
{
    Call("glBlendFunc", BlendFactor{source}, BlendFactor{destination});
    Keep(GL_BLEND_SRC, source);
    Keep(GL_BLEND_DST, destination);
}

GL_CALL(glClear, (GLbitfield mask), Bits{mask});
GL_CALL(glClearAccum, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), r, g, b, a);
GL_CALL(glClearStencil, (GLint value), value);
GL_CALL(glAccum, (GLenum operation, GLfloat value), Enum{operation}, value);
GL_CALL(glAlphaFunc, (GLenum function, GLclampf reference), Enum{function}, reference);
GL_CALL(glLogicOp, (GLenum operation), Enum{operation});
GL_CALL(glLineStipple, (GLint factor, GLushort pattern), factor, pattern);
GL_CALL(glPolygonOffset, (GLfloat factor, GLfloat units), factor, units);
GL_CALL(glPolygonStipple, (const GLubyte* mask), Memory{mask});
GL_CALL(glStencilFunc, (GLenum function, GLint reference, GLuint mask), Enum{function}, reference,
        mask);
GL_CALL(glStencilMask, (GLuint mask), mask);
GL_CALL(glStencilOp, (GLenum fail, GLenum depthFail, GLenum pass), BlendFactor{fail},
        BlendFactor{depthFail}, BlendFactor{pass});
GL_CALL(glClipPlane, (GLenum plane, const GLdouble* equation), Enum{plane}, Array(equation, 4));
GL_CALL(glHint, (GLenum target, GLenum mode), Enum{target}, Enum{mode});
GL_CALL(glFlush, ());
GL_CALL(glFinish, ());

// Matrices.

void glPushMatrix()
{
    Call("glPushMatrix");
    const GLenum mode = static_cast<GLenum>(Answer(GL_MATRIX_MODE));
    PushStack(DepthName(mode), DepthLimitName(mode));
}

void glPopMatrix()
{
    Call("glPopMatrix");
    PopStack(DepthName(static_cast<GLenum>(Answer(GL_MATRIX_MODE))), 1);
}

#define GL_MATRIX_CALL(name, parameters, ...)   \
    void name parameters                        \
    {                                           \
        Call(#name __VA_OPT__(, ) __VA_ARGS__); \
        ChangeMatrix();                         \
    }                                           \
    static_assert(true)

GL_MATRIX_CALL(glLoadIdentity, ());
GL_MATRIX_CALL(glLoadMatrixd, (const GLdouble* matrix), Array(matrix, 16));
GL_MATRIX_CALL(glLoadMatrixf, (const GLfloat* matrix), Array(matrix, 16));
GL_MATRIX_CALL(glMultMatrixd, (const GLdouble* matrix), Array(matrix, 16));
GL_MATRIX_CALL(glMultMatrixf, (const GLfloat* matrix), Array(matrix, 16));
GL_MATRIX_CALL(glRotated, (GLdouble angle, GLdouble x, GLdouble y, GLdouble z), angle, x, y, z);
GL_MATRIX_CALL(glRotatef, (GLfloat angle, GLfloat x, GLfloat y, GLfloat z), angle, x, y, z);
GL_MATRIX_CALL(glScaled, (GLdouble x, GLdouble y, GLdouble z), x, y, z);
GL_MATRIX_CALL(glScalef, (GLfloat x, GLfloat y, GLfloat z), x, y, z);
GL_MATRIX_CALL(glTranslated, (GLdouble x, GLdouble y, GLdouble z), x, y, z);
GL_MATRIX_CALL(glTranslatef, (GLfloat x, GLfloat y, GLfloat z), x, y, z);
GL_MATRIX_CALL(glOrtho,
               (GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble nearest,
                GLdouble farthest),
               left, right, bottom, top, nearest, farthest);
GL_MATRIX_CALL(glFrustum,
               (GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble nearest,
                GLdouble farthest),
               left, right, bottom, top, nearest, farthest);

// Selection and display lists.

GLint glRenderMode(GLenum mode)
{
    Call("glRenderMode", Enum{mode});
    const bool wasRendering = Answer(GL_RENDER_MODE) == GL_RENDER;
    Keep(GL_RENDER_MODE, mode);
    return wasRendering ? 0 : TheState()->hits;
}

void glInitNames()
{
    Call("glInitNames");
    Keep(GL_NAME_STACK_DEPTH, 0);
}

void glPushName(GLuint name)
{
    Call("glPushName", name);
    PushStack(GL_NAME_STACK_DEPTH, GL_MAX_NAME_STACK_DEPTH);
}

void glPopName()
{
    Call("glPopName");
    PopStack(GL_NAME_STACK_DEPTH, 0);
}

GL_CALL(glLoadName, (GLuint name), name);
GL_CALL(glSelectBuffer, (GLsizei size, GLuint* buffer), size, Memory{buffer});
GL_CALL(glFeedbackBuffer, (GLsizei size, GLenum type, GLfloat* buffer), size, Enum{type},
        Memory{buffer});
GL_CALL(glPassThrough, (GLfloat token), token);

GLuint glGenLists(GLsizei range)
{
    Call("glGenLists", range);
    Locked state = TheState();
    const GLuint first = state->nextName;
    state->nextName += static_cast<GLuint>(range);
    return first;
}

GL_CALL(glNewList, (GLuint list, GLenum mode), list, Enum{mode});
GL_CALL(glEndList, ());
GL_CALL(glCallList, (GLuint list), list);
GL_CALL(glCallLists, (GLsizei count, GLenum type, const void* lists), count, Enum{type},
        Memory{lists});
GL_CALL(glDeleteLists, (GLuint list, GLsizei range), list, range);

GLboolean glIsList(GLuint list)
{
    Call("glIsList", list);
    return list != 0 && list < TheState()->nextName ? GL_TRUE : GL_FALSE;
}

// Lights, materials and fog.

// The four functions of a parameter: one value or an array, float or integer.
#define GL_PARAMETER_CALLS(stem, first, text)                                      \
    GL_CALL(stem##f, (first GLenum name, GLfloat value), text Enum{name},          \
            (Parameters<GLfloat>{name, &value}));                                  \
    GL_CALL(stem##i, (first GLenum name, GLint value), text Enum{name},            \
            (Parameters<GLint>{name, &value}));                                    \
    GL_CALL(stem##fv, (first GLenum name, const GLfloat* values), text Enum{name}, \
            (Parameters<GLfloat>{name, values}));                                  \
    GL_CALL(stem##iv, (first GLenum name, const GLint* values), text Enum{name},   \
            (Parameters<GLint>{name, values}))
#define COMMA ,
#define GL_TARGET_PARAMETER_CALLS(stem) \
    GL_PARAMETER_CALLS(stem, GLenum target COMMA, Enum{target} COMMA)

GL_PARAMETER_CALLS(glLightModel, , );
GL_PARAMETER_CALLS(glFog, , );
GL_TARGET_PARAMETER_CALLS(glLight);
GL_TARGET_PARAMETER_CALLS(glMaterial);
GL_TARGET_PARAMETER_CALLS(glTexEnv);
GL_TARGET_PARAMETER_CALLS(glTexParameter);
GL_TARGET_PARAMETER_CALLS(glTexGen);
GL_CALL(glTexGend, (GLenum target, GLenum name, GLdouble value), Enum{target}, Enum{name},
        (Parameters<GLdouble>{name, &value}));
GL_CALL(glTexGendv, (GLenum target, GLenum name, const GLdouble* values), Enum{target}, Enum{name},
        (Parameters<GLdouble>{name, values}));
GL_CALL(glColorMaterial, (GLenum face, GLenum mode), Enum{face}, Enum{mode});

#define GL_PARAMETER_QUERY(function, type)                  \
    void function(GLenum target, GLenum name, type* values) \
    {                                                       \
        Call(#function, Enum{target}, Enum{name});          \
        ZeroParameters(name, values);                       \
    }                                                       \
    static_assert(true)

GL_PARAMETER_QUERY(glGetLightfv, GLfloat);
GL_PARAMETER_QUERY(glGetLightiv, GLint);
GL_PARAMETER_QUERY(glGetMaterialfv, GLfloat);
GL_PARAMETER_QUERY(glGetMaterialiv, GLint);
GL_PARAMETER_QUERY(glGetTexEnvfv, GLfloat);
GL_PARAMETER_QUERY(glGetTexEnviv, GLint);
GL_PARAMETER_QUERY(glGetTexParameterfv, GLfloat);
GL_PARAMETER_QUERY(glGetTexParameteriv, GLint);
GL_PARAMETER_QUERY(glGetTexGendv, GLdouble);
GL_PARAMETER_QUERY(glGetTexGenfv, GLfloat);
GL_PARAMETER_QUERY(glGetTexGeniv, GLint);

// Queries.

void glGetBooleanv(GLenum name, GLboolean* values)
{
    Query("glGetBooleanv", name, values);
}

void glGetIntegerv(GLenum name, GLint* values)
{
    Query("glGetIntegerv", name, values);
}

void glGetFloatv(GLenum name, GLfloat* values)
{
    Query("glGetFloatv", name, values);
}

void glGetDoublev(GLenum name, GLdouble* values)
{
    Query("glGetDoublev", name, values);
}

GLenum glGetError()
{
    Call("glGetError");
    Locked state = TheState();
    if (state->errors.empty())
    {
        return GL_NO_ERROR;
    }
    const GLenum error = state->errors.front();
    state->errors.pop_front();
    return error;
}

const GLubyte* glGetString(GLenum name)
{
    Call("glGetString", Enum{name});
    const char* const text = name == GL_VERSION      ? "1.1 recorder"
                             : name == GL_EXTENSIONS ? ""
                                                     : "recorder";
    return reinterpret_cast<const GLubyte*>(text);
}
