// SPDX-License-Identifier: MIT
// Drawing texts against replaying the same OpenGL calls, computed beforehand: the least that any
// program that makes these calls can take.

#include "bench/CallStream.h"
#include "bench/Scenes.h"
#include "bench/Summary.h"
#include "orvane.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{

constexpr const char* styles[] = {"square", "bevel", "round"};

/// An off-screen context that is current for as long as this lives.
class Canvas
{
public:
    Canvas() : dc_(CreateCompatibleDC(nullptr))
    {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, 640, 360, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, nullptr, nullptr, 0);
        previous_ = SelectObject(dc_, bitmap_);
        PIXELFORMATDESCRIPTOR format{};
        format.nSize = sizeof format;
        format.nVersion = 1;
        format.dwFlags = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_OPENGL;
        format.cColorBits = 32;
        SetPixelFormat(dc_, ChoosePixelFormat(dc_, &format), &format);
        context_ = wglCreateContext(dc_);
        if (!wglMakeCurrent(dc_, context_))
        {
            std::fprintf(stderr, "bench: no OpenGL context: %s\n", GetLastErrorText().c_str());
            std::exit(1);
        }
        glMatrixMode(GL_PROJECTION);
        glFrustum(-0.16, 0.16, -0.09, 0.09, 0.2, 100);
        glMatrixMode(GL_MODELVIEW);
        glTranslated(0, 0, -20);
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_CULL_FACE);
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
    }
    ~Canvas()
    {
        wglMakeCurrent(nullptr, nullptr);
        wglDeleteContext(context_);
        SelectObject(dc_, previous_);
        DeleteObject(bitmap_);
        DeleteDC(dc_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

private:
    HDC dc_;
    HBITMAP bitmap_;
    HGDIOBJ previous_;
    HGLRC context_;
};

std::vector<std::uint32_t> RecordStream(int characters, int style)
{
    const std::string command =
        ORVANE_RECORD " " + std::to_string(characters) + " " + std::to_string(style);
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

template <typename Value, int count>
const std::uint32_t* Take(const std::uint32_t* at, Value (&values)[count])
{
    std::memcpy(values, at, sizeof values);
    return at + count * (sizeof(Value) / sizeof(std::uint32_t));
}

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
            default:
                std::fprintf(stderr, "bench: a broken recording\n");
                std::exit(1);
        }
    }
}

void Frame(const std::function<void()>& draw)
{
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    draw();
    glFinish();
}

void DrawText(benchmark::State& state)
{
    const Canvas canvas;
    const auto text = MakeText(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    DrawingParameters parameters = SolidDraw();
    for (auto _ : state)
    {
        Frame([&] { text->Draw(&parameters); });
    }
    state.SetLabel(styles[state.range(1)]);
}
BENCHMARK(DrawText)->ArgsProduct({{40, 1000}, {0, 1, 2}})->Unit(benchmark::kMillisecond);

void Measure()
{
    const Canvas canvas;
    for (const int characters : {40, 1000})
    {
        for (int style = 0; style < 3; ++style)
        {
            const auto text = MakeText(characters, style);
            const std::vector<std::uint32_t> words = RecordStream(characters, style);
            DrawingParameters parameters = SolidDraw();
            const Paired times = TimeInTurns(
                characters > 100 ? 41 : 301, [&] { Frame([&] { text->Draw(&parameters); }); },
                [&] { Frame([&] { Replay(words); }); });
            char figure[120];
            std::snprintf(figure, sizeof figure, "%.3f ms, %.2f x the replayed calls (%.3f ms)",
                          times.ours * 1e3, times.ratio, times.floor * 1e3);
            AddSummary("draw " + std::to_string(characters) + " characters, " + styles[style],
                       figure);
        }
    }
}
const SummaryPart part(Measure);

}  // namespace
