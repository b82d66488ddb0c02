// SPDX-License-Identifier: MIT
/// \file
/// The recorder's GLU. A call is recorded, then the real function does its work.

#include "tests/support/gl/GlCalls.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

using namespace gl_calls;

namespace
{

// The function of that name in the library behind this program. Its type is that of the recorder's
// own function, which is declared by the same header.
template <typename Function>
Function* Real(Function*, const char* name)
{
    void* address = dlsym(RTLD_NEXT, name);
    if (address == nullptr)
    {
        // A linker that drops unneeded libraries sees no need: this program defines the names.
        static void* const library = dlopen("libGLU.so.1", RTLD_NOW);
        address = library == nullptr ? nullptr : dlsym(library, name);
    }
    if (address == nullptr)
    {
        std::fprintf(stderr, "recorder: no %s behind the test program\n", name);
        std::abort();
    }
    return reinterpret_cast<Function*>(address);
}

}  // namespace

// Records with the texts given and forwards the arguments.
#define GLU_CALL(result, name, parameters, arguments, ...) \
    result name parameters                                 \
    {                                                      \
        static const auto real = Real(name, #name);        \
        Call(#name __VA_OPT__(, ) __VA_ARGS__);            \
        const InsideGlu inside;                            \
        return real arguments;                             \
    }                                                      \
    static_assert(true)

// Tessellation.

GLU_CALL(GLUtesselator*, gluNewTess, (), ());
GLU_CALL(void, gluDeleteTess, (GLUtesselator * tess), (tess));
GLU_CALL(void, gluBeginPolygon, (GLUtesselator * tess), (tess));
GLU_CALL(void, gluEndPolygon, (GLUtesselator * tess), (tess));
GLU_CALL(void, gluNextContour, (GLUtesselator * tess, GLenum type), (tess, type), Enum{type});
GLU_CALL(void, gluTessBeginPolygon, (GLUtesselator * tess, void* data), (tess, data));
GLU_CALL(void, gluTessEndPolygon, (GLUtesselator * tess), (tess));
GLU_CALL(void, gluTessBeginContour, (GLUtesselator * tess), (tess));
GLU_CALL(void, gluTessEndContour, (GLUtesselator * tess), (tess));
GLU_CALL(void, gluTessVertex, (GLUtesselator * tess, GLdouble* location, void* data),
         (tess, location, data), Array(location, 3));
GLU_CALL(void, gluTessNormal, (GLUtesselator * tess, GLdouble x, GLdouble y, GLdouble z),
         (tess, x, y, z), x, y, z);
GLU_CALL(void, gluTessProperty, (GLUtesselator * tess, GLenum name, GLdouble value),
         (tess, name, value), Enum{name}, value);
GLU_CALL(void, gluGetTessProperty, (GLUtesselator * tess, GLenum name, GLdouble* value),
         (tess, name, value), Enum{name});
// "data" for a function, "null" where one is taken away.
GLU_CALL(void, gluTessCallback, (GLUtesselator * tess, GLenum which, _GLUfuncptr function),
         (tess, which, function), Enum{which}, Memory{reinterpret_cast<const void*>(function)});

// Quadrics.

GLU_CALL(GLUquadric*, gluNewQuadric, (), ());
GLU_CALL(void, gluDeleteQuadric, (GLUquadric * quadric), (quadric));
GLU_CALL(void, gluQuadricDrawStyle, (GLUquadric * quadric, GLenum style), (quadric, style),
         Enum{style});
GLU_CALL(void, gluQuadricNormals, (GLUquadric * quadric, GLenum normals), (quadric, normals),
         Enum{normals});
GLU_CALL(void, gluQuadricOrientation, (GLUquadric * quadric, GLenum orientation),
         (quadric, orientation), Enum{orientation});
GLU_CALL(void, gluQuadricTexture, (GLUquadric * quadric, GLboolean texture), (quadric, texture),
         Boolean{texture});
GLU_CALL(void, gluCylinder,
         (GLUquadric * quadric, GLdouble base, GLdouble top, GLdouble height, GLint slices,
          GLint stacks),
         (quadric, base, top, height, slices, stacks), base, top, height, slices, stacks);
GLU_CALL(void, gluDisk,
         (GLUquadric * quadric, GLdouble inner, GLdouble outer, GLint slices, GLint loops),
         (quadric, inner, outer, slices, loops), inner, outer, slices, loops);
GLU_CALL(void, gluPartialDisk,
         (GLUquadric * quadric, GLdouble inner, GLdouble outer, GLint slices, GLint loops,
          GLdouble start, GLdouble sweep),
         (quadric, inner, outer, slices, loops, start, sweep), inner, outer, slices, loops, start,
         sweep);
GLU_CALL(void, gluSphere, (GLUquadric * quadric, GLdouble radius, GLint slices, GLint stacks),
         (quadric, radius, slices, stacks), radius, slices, stacks);

// Views.

GLU_CALL(void, gluPickMatrix,
         (GLdouble x, GLdouble y, GLdouble width, GLdouble height, GLint* viewport),
         (x, y, width, height, viewport), x, y, width, height, Array(viewport, 4));
GLU_CALL(void, gluPerspective,
         (GLdouble angle, GLdouble aspect, GLdouble nearest, GLdouble farthest),
         (angle, aspect, nearest, farthest), angle, aspect, nearest, farthest);
GLU_CALL(void, gluOrtho2D, (GLdouble left, GLdouble right, GLdouble bottom, GLdouble top),
         (left, right, bottom, top), left, right, bottom, top);
GLU_CALL(void, gluLookAt,
         (GLdouble eyeX, GLdouble eyeY, GLdouble eyeZ, GLdouble centerX, GLdouble centerY,
          GLdouble centerZ, GLdouble upX, GLdouble upY, GLdouble upZ),
         (eyeX, eyeY, eyeZ, centerX, centerY, centerZ, upX, upY, upZ), eyeX, eyeY, eyeZ, centerX,
         centerY, centerZ, upX, upY, upZ);
GLU_CALL(GLint, gluProject,
         (GLdouble x, GLdouble y, GLdouble z, const GLdouble* model, const GLdouble* projection,
          const GLint* viewport, GLdouble* windowX, GLdouble* windowY, GLdouble* windowZ),
         (x, y, z, model, projection, viewport, windowX, windowY, windowZ), x, y, z,
         Array(model, 16), Array(projection, 16), Array(viewport, 4));
GLU_CALL(GLint, gluUnProject,
         (GLdouble x, GLdouble y, GLdouble z, const GLdouble* model, const GLdouble* projection,
          const GLint* viewport, GLdouble* objectX, GLdouble* objectY, GLdouble* objectZ),
         (x, y, z, model, projection, viewport, objectX, objectY, objectZ), x, y, z,
         Array(model, 16), Array(projection, 16), Array(viewport, 4));

// Images and texts.

GLU_CALL(GLint, gluScaleImage,
         (GLenum format, GLsizei widthIn, GLsizei heightIn, GLenum typeIn, const void* dataIn,
          GLsizei widthOut, GLsizei heightOut, GLenum typeOut, void* dataOut),
         (format, widthIn, heightIn, typeIn, dataIn, widthOut, heightOut, typeOut, dataOut),
         Enum{format}, widthIn, heightIn, Enum{typeIn}, Memory{dataIn}, widthOut, heightOut,
         Enum{typeOut}, Memory{dataOut});
GLU_CALL(GLint, gluBuild1DMipmaps,
         (GLenum target, GLint internalFormat, GLsizei width, GLenum format, GLenum type,
          const void* data),
         (target, internalFormat, width, format, type, data), Enum{target},
         Enum{static_cast<GLenum>(internalFormat)}, width, Enum{format}, Enum{type}, Memory{data});
GLU_CALL(GLint, gluBuild2DMipmaps,
         (GLenum target, GLint internalFormat, GLsizei width, GLsizei height, GLenum format,
          GLenum type, const void* data),
         (target, internalFormat, width, height, format, type, data), Enum{target},
         Enum{static_cast<GLenum>(internalFormat)}, width, height, Enum{format}, Enum{type},
         Memory{data});
GLU_CALL(const GLubyte*, gluErrorString, (GLenum error), (error), Enum{error});
GLU_CALL(const GLubyte*, gluGetString, (GLenum name), (name), Enum{name});
