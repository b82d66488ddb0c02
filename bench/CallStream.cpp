// SPDX-License-Identifier: MIT
#include "bench/CallStream.h"

#include "platform/OpenGL.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

std::vector<std::uint32_t> RecordStream(const std::string& what)
{
    const std::string command = ORVANE_RECORD " " + what;
    std::vector<std::uint32_t> words;
    std::FILE* const pipe = popen(command.c_str(), "r");
    std::uint32_t part[4096];
    for (std::size_t count; pipe != nullptr && (count = std::fread(part, 4, 4096, pipe)) > 0;)
    {
        words.insert(words.end(), part, part + count);
    }
    if (pipe == nullptr || pclose(pipe) != 0 || words.empty())
    {
        std::fprintf(stderr, "bench: %s recorded nothing\n", command.c_str());
        std::exit(1);
    }
    return words;
}

namespace
{

template <typename Value, int count>
const std::uint32_t* Take(const std::uint32_t* at, Value (&values)[count])
{
    std::memcpy(values, at, sizeof values);
    return at + count * (sizeof(Value) / sizeof(std::uint32_t));
}

}  // namespace

void Replay(const std::vector<std::uint32_t>& words)
{
    const std::uint32_t* at = words.data();
    const std::uint32_t* const end = at + words.size();
    GLfloat f[4];
    GLdouble d[16];
    GLdouble t[3];
    GLfloat v[3];
    GLint integers[16];
    while (at != end)
    {
        switch (static_cast<Call>(*at++))
        {
            case Call::Begin:
                glBegin(*at++);
                break;
            case Call::End:
                glEnd();
                break;
            case Call::Normal3f:
                at = Take(at, v);
                glNormal3f(v[0], v[1], v[2]);
                break;
            case Call::Vertex3f:
                at = Take(at, v);
                glVertex3f(v[0], v[1], v[2]);
                break;
            case Call::TexCoord2fv: {
                GLfloat c[2];
                at = Take(at, c);
                glTexCoord2fv(c);
                break;
            }
            case Call::FrontFace:
                glFrontFace(*at++);
                break;
            case Call::PushMatrix:
                glPushMatrix();
                break;
            case Call::PopMatrix:
                glPopMatrix();
                break;
            case Call::Translated:
                at = Take(at, t);
                glTranslated(t[0], t[1], t[2]);
                break;
            case Call::MultMatrixd:
                at = Take(at, d);
                glMultMatrixd(d);
                break;
            case Call::Materialfv: {
                const std::uint32_t* const a = at;
                at = Take(at + 2, f);
                glMaterialfv(a[0], a[1], f);
                break;
            }
            case Call::Materialf: {
                GLfloat s[1];
                const std::uint32_t* const a = at;
                at = Take(at + 2, s);
                glMaterialf(a[0], a[1], s[0]);
                break;
            }
            case Call::Color4fv:
                at = Take(at, f);
                glColor4fv(f);
                break;
            case Call::Enable:
                glEnable(*at++);
                break;
            case Call::Disable:
                glDisable(*at++);
                break;
            case Call::IsEnabled:
                glIsEnabled(*at++);
                break;
            case Call::DepthMask:
                glDepthMask(static_cast<GLboolean>(*at++));
                break;
            case Call::BlendFunc:
                glBlendFunc(at[0], at[1]);
                at += 2;
                break;
            case Call::GetIntegerv:
                glGetIntegerv(*at++, integers);
                break;
            case Call::GetError:
                glGetError();
                break;
            case Call::Flush:
                glFlush();
                break;
            case Call::Lightfv: {
                const std::uint32_t* const a = at;
                at = Take(at + 2, f);
                glLightfv(a[0], a[1], f);
                break;
            }
            case Call::Lightf: {
                GLfloat s[1];
                const std::uint32_t* const a = at;
                at = Take(at + 2, s);
                glLightf(a[0], a[1], s[0]);
                break;
            }
            case Call::LightModelfv: {
                const std::uint32_t* const a = at;
                at = Take(at + 1, f);
                glLightModelfv(a[0], f);
                break;
            }
            case Call::LightModeli:
                glLightModeli(at[0], static_cast<GLint>(at[1]));
                at += 2;
                break;
            case Call::ShadeModel:
                glShadeModel(*at++);
                break;
            case Call::Clear:
                glClear(*at++);
                break;
            case Call::ClearColor:
                at = Take(at, f);
                glClearColor(f[0], f[1], f[2], f[3]);
                break;
            default:
                std::fprintf(stderr, "bench: a broken recording\n");
                std::exit(1);
        }
    }
}
