// SPDX-License-Identifier: MIT
// orvane_record CHARACTERS STYLE: writes the OpenGL calls of one draw to standard output
// (CallStream.h).

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
}

int main(int argc, char** argv)
{
    if (argc != 3)
    {
        std::fprintf(stderr, "usage: orvane_record CHARACTERS STYLE\n");
        return 2;
    }
    const auto text = MakeText(std::atoi(argv[1]), std::atoi(argv[2]));
    DrawingParameters parameters = SolidDraw();
    text->Draw(&parameters);  // builds what is not built yet
    words.clear();
    text->Draw(&parameters);
    const std::size_t written = std::fwrite(words.data(), sizeof words[0], words.size(), stdout);
    return written == words.size() ? 0 : 1;
}
