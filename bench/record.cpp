// SPDX-License-Identifier: MIT
// orvane_record CHARACTERS STYLE | showcase: writes the OpenGL calls of one draw, of a text or of
// the showcase in its view, to standard output (CallStream.h).

#include "bench/CallStream.h"
#include "bench/Scenes.h"
#include "orvane.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace
{

std::vector<std::uint32_t> words;

void Put(const void* data, std::size_t bytes)
{
    const std::size_t at = words.size();
    words.resize(at + bytes / sizeof(std::uint32_t));
    std::memcpy(words.data() + at, data, bytes);
}

template <typename... Arguments>
void Record(Call call, Arguments... arguments)
{
    words.push_back(static_cast<std::uint32_t>(call));
    (Put(&arguments, sizeof arguments), ...);
}

template <typename Value>
void RecordArray(const Value* values, int count)
{
    Put(values, sizeof(Value) * static_cast<std::size_t>(count));
}

}  // namespace

extern "C"
{
    void glBegin(GLenum mode)
    {
        Record(Call::Begin, mode);
    }
    void glEnd()
    {
        Record(Call::End);
    }
    void glNormal3f(GLfloat x, GLfloat y, GLfloat z)
    {
        Record(Call::Normal3f, x, y, z);
    }
    void glVertex3f(GLfloat x, GLfloat y, GLfloat z)
    {
        Record(Call::Vertex3f, x, y, z);
    }
    void glTexCoord2fv(const GLfloat* v)
    {
        Record(Call::TexCoord2fv, v[0], v[1]);
    }
    void glFrontFace(GLenum mode)
    {
        Record(Call::FrontFace, mode);
    }
    void glPushMatrix()
    {
        Record(Call::PushMatrix);
    }
    void glPopMatrix()
    {
        Record(Call::PopMatrix);
    }
    void glTranslated(GLdouble x, GLdouble y, GLdouble z)
    {
        Record(Call::Translated, x, y, z);
    }
    void glMultMatrixd(const GLdouble* m)
    {
        Record(Call::MultMatrixd);
        RecordArray(m, 16);
    }
    void glMaterialfv(GLenum face, GLenum part, const GLfloat* v)
    {
        Record(Call::Materialfv, face, part);
        RecordArray(v, 4);
    }
    void glMaterialf(GLenum face, GLenum part, GLfloat v)
    {
        Record(Call::Materialf, face, part, v);
    }
    void glColor4fv(const GLfloat* v)
    {
        Record(Call::Color4fv);
        RecordArray(v, 4);
    }
    void glEnable(GLenum capability)
    {
        Record(Call::Enable, capability);
    }
    void glDisable(GLenum capability)
    {
        Record(Call::Disable, capability);
    }
    GLboolean glIsEnabled(GLenum capability)
    {
        Record(Call::IsEnabled, capability);
        return GL_FALSE;
    }
    void glDepthMask(GLboolean flag)
    {
        Record(Call::DepthMask, std::uint32_t{flag});
    }
    void glBlendFunc(GLenum source, GLenum destination)
    {
        Record(Call::BlendFunc, source, destination);
    }
    void glGetIntegerv(GLenum name, GLint* values)
    {
        Record(Call::GetIntegerv, name);
        *values = 32;
    }
    GLenum glGetError()
    {
        Record(Call::GetError);
        return GL_NO_ERROR;
    }
    void glFlush()
    {
        Record(Call::Flush);
    }
    void glLightfv(GLenum light, GLenum name, const GLfloat* v)
    {
        Record(Call::Lightfv, light, name);
        RecordArray(v, 4);
    }
    void glLightf(GLenum light, GLenum name, GLfloat v)
    {
        Record(Call::Lightf, light, name, v);
    }
    void glLightModelfv(GLenum name, const GLfloat* v)
    {
        Record(Call::LightModelfv, name);
        RecordArray(v, 4);
    }
    void glLightModeli(GLenum name, GLint v)
    {
        Record(Call::LightModeli, name, v);
    }
    void glShadeModel(GLenum mode)
    {
        Record(Call::ShadeModel, mode);
    }
    void glClear(GLbitfield buffers)
    {
        Record(Call::Clear, buffers);
    }
    void glClearColor(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha)
    {
        Record(Call::ClearColor, red, green, blue, alpha);
    }
}

namespace
{

int RecordDraw(DrawingObject& node)
{
    DrawingParameters parameters = SolidDraw();
    node.Draw(&parameters);  // builds what is not built yet
    words.clear();
    node.Draw(&parameters);
    const std::size_t written = std::fwrite(words.data(), sizeof words[0], words.size(), stdout);
    return written == words.size() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::strcmp(argv[1], "showcase") == 0)
    {
        Showcase showcase(1, 1);
        return RecordDraw(showcase.view);
    }
    if (argc == 3)
    {
        return RecordDraw(*MakeText(std::atoi(argv[1]), std::atoi(argv[2])));
    }
    std::fprintf(stderr, "usage: orvane_record CHARACTERS STYLE | showcase\n");
    return 2;
}
