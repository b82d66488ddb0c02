// SPDX-License-Identifier: MIT
/// \file
/// The recorder's pixel rectangles and textures. Images are not followed.

// For glWindowPos2i, which is younger than the header's own functions.
#define GL_GLEXT_PROTOTYPES

#include "tests/support/gl/GlCalls.h"

using namespace gl_calls;

GL_CALL(glPixelZoom, (GLfloat x, GLfloat y), x, y);
GL_CALL(glPixelTransferf, (GLenum name, GLfloat value), Enum{name}, value);
GL_CALL(glPixelTransferi, (GLenum name, GLint value), Enum{name}, value);
GL_CALL(glPixelMapfv, (GLenum map, GLsizei size, const GLfloat* values), Enum{map}, size,
        Array(values, size));
GL_CALL(glPixelMapuiv, (GLenum map, GLsizei size, const GLuint* values), Enum{map}, size,
        Array(values, size));
GL_CALL(glPixelMapusv, (GLenum map, GLsizei size, const GLushort* values), Enum{map}, size,
        Array(values, size));
GL_CALL(glBitmap,
        (GLsizei width, GLsizei height, GLfloat x, GLfloat y, GLfloat moveX, GLfloat moveY,
         const GLubyte* bits),
        width, height, x, y, moveX, moveY, Memory{bits});
GL_CALL(glDrawPixels,
        (GLsizei width, GLsizei height, GLenum format, GLenum type, const void* pixels), width,
        height, Enum{format}, Enum{type}, Memory{pixels});
GL_CALL(glCopyPixels, (GLint x, GLint y, GLsizei width, GLsizei height, GLenum type), x, y, width,
        height, Enum{type});
// Leaves the memory as it is.
GL_CALL(glReadPixels,
        (GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type, void* pixels),
        x, y, width, height, Enum{format}, Enum{type}, Memory{pixels});
GL_CALL(glWindowPos2i, (GLint x, GLint y), x, y);

void glGenTextures(GLsizei count, GLuint* textures)
{
    Call("glGenTextures", count);
    for (GLsizei i = 0; i < count; ++i)
    {
        textures[i] = TheState()->nextName++;
    }
}

void glBindTexture(GLenum target, GLuint texture)
{
    Call("glBindTexture", Enum{target}, texture);
    Keep(target == GL_TEXTURE_1D ? GL_TEXTURE_BINDING_1D : GL_TEXTURE_BINDING_2D, texture);
}

GLboolean glIsTexture(GLuint texture)
{
    Call("glIsTexture", texture);
    return texture != 0 && texture < TheState()->nextName ? GL_TRUE : GL_FALSE;
}

GLboolean glAreTexturesResident(GLsizei count, const GLuint* textures, GLboolean* residences)
{
    Call("glAreTexturesResident", count, Array(textures, count), Memory{residences});
    return GL_TRUE;
}

GL_CALL(glDeleteTextures, (GLsizei count, const GLuint* textures), count, Array(textures, count));
GL_CALL(glPrioritizeTextures, (GLsizei count, const GLuint* textures, const GLclampf* priorities),
        count, Array(textures, count), Array(priorities, count));

void glTexImage1D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLint border,
                  GLenum format, GLenum type, const void* pixels)
{
    Call("glTexImage1D", Enum{target}, level, Enum{static_cast<GLenum>(internalFormat)}, width,
         border, Enum{format}, Enum{type}, Memory{pixels});
    TheState()->imageSize[0] = width;
    TheState()->imageSize[1] = 1;
}

void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const void* pixels)
{
    Call("glTexImage2D", Enum{target}, level, Enum{static_cast<GLenum>(internalFormat)}, width,
         height, border, Enum{format}, Enum{type}, Memory{pixels});
    TheState()->imageSize[0] = width;
    TheState()->imageSize[1] = height;
}

GL_CALL(glTexSubImage1D,
        (GLenum target, GLint level, GLint x, GLsizei width, GLenum format, GLenum type,
         const void* pixels),
        Enum{target}, level, x, width, Enum{format}, Enum{type}, Memory{pixels});
GL_CALL(glTexSubImage2D,
        (GLenum target, GLint level, GLint x, GLint y, GLsizei width, GLsizei height, GLenum format,
         GLenum type, const void* pixels),
        Enum{target}, level, x, y, width, height, Enum{format}, Enum{type}, Memory{pixels});
GL_CALL(glCopyTexImage2D,
        (GLenum target, GLint level, GLenum internalFormat, GLint x, GLint y, GLsizei width,
         GLsizei height, GLint border),
        Enum{target}, level, Enum{internalFormat}, x, y, width, height, border);
GL_CALL(glCopyTexSubImage2D,
        (GLenum target, GLint level, GLint offsetX, GLint offsetY, GLint x, GLint y, GLsizei width,
         GLsizei height),
        Enum{target}, level, offsetX, offsetY, x, y, width, height);
// Leaves the memory as it is.
GL_CALL(glGetTexImage, (GLenum target, GLint level, GLenum format, GLenum type, void* pixels),
        Enum{target}, level, Enum{format}, Enum{type}, Memory{pixels});

namespace
{

// Every image fits: the size of the last one.
template <typename Number>
void LevelParameter(GLenum name, Number* value)
{
    const Locked state = TheState();
    *value = static_cast<Number>(name == GL_TEXTURE_WIDTH    ? state.state.imageSize[0]
                                 : name == GL_TEXTURE_HEIGHT ? state.state.imageSize[1]
                                                             : 0);
}

}  // namespace

void glGetTexLevelParameteriv(GLenum target, GLint level, GLenum name, GLint* value)
{
    Call("glGetTexLevelParameteriv", Enum{target}, level, Enum{name});
    LevelParameter(name, value);
}

void glGetTexLevelParameterfv(GLenum target, GLint level, GLenum name, GLfloat* value)
{
    Call("glGetTexLevelParameterfv", Enum{target}, level, Enum{name});
    LevelParameter(name, value);
}
