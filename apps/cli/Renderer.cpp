// SPDX-License-Identifier: MIT
#include "apps/cli/Renderer.h"

#include "apps/cli/Errors.h"
#include "platform/Bitmaps.h"
#include "platform/DeviceContexts.h"
#include "platform/OpenGL.h"
#include "platform/Rendering.h"
#include "scene/DrawingObject.h"
#include "scene/DrawingParameters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace
{

constexpr double fieldOfView = 20;  // degrees, vertical: long enough a lens to keep letters calm
constexpr double margin = 0.09;     // of the picture, kept free on each side
constexpr int bandLimit = 2048;     // pixels, what every OpenGL draws in one piece

/// The part of the view plane that a picture shows, and where the camera stands.
struct Camera
{
    double x = 0;  // position; it looks along -z
    double y = 0;
    double z = 1;
    double tangentX = 1;  // half the picture's extent at distance 1
    double tangentY = 1;
    double nearZ = 0.1;
    double farZ = 10;
};

/// A bitmap in memory with a context that draws into it.
class Canvas
{
public:
    Canvas(int width, int height) : dc_(CreateCompatibleDC(nullptr))
    {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
        previous_ = bitmap_ != nullptr ? SelectObject(dc_, bitmap_) : nullptr;

        PIXELFORMATDESCRIPTOR format{};
        format.nSize = sizeof format;
        format.nVersion = 1;
        format.dwFlags = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_OPENGL;
        format.iPixelType = PFD_TYPE_RGBA;
        format.cColorBits = 32;
        format.cDepthBits = 24;
        const int index = ChoosePixelFormat(dc_, &format);
        if (index != 0 && SetPixelFormat(dc_, index, &format))
        {
            context_ = wglCreateContext(dc_);
        }
        if (context_ == nullptr || !wglMakeCurrent(dc_, context_))
        {
            Release();
            throw Failure(
                "OpenGL: no off-screen context can be made here (is Mesa's EGL installed?)");
        }
    }
    ~Canvas() { Release(); }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    /// Rows from the bottom, each pixel blue, green, red, unused.
    const std::uint8_t* Bits() const
    {
        GdiFlush();
        return static_cast<const std::uint8_t*>(bits_);
    }

private:
    void Release()
    {
        wglMakeCurrent(nullptr, nullptr);
        if (context_ != nullptr)
        {
            wglDeleteContext(context_);
        }
        if (previous_ != nullptr)
        {
            SelectObject(dc_, previous_);
        }
        if (bitmap_ != nullptr)
        {
            DeleteObject(bitmap_);
        }
        DeleteDC(dc_);
    }

    HDC dc_;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ previous_ = nullptr;
    void* bits_ = nullptr;
    HGLRC context_ = nullptr;
};

/// Puts the camera where the whole box, seen in perspective, fills the picture but for the margin.
Camera FrameBox(DrawingObject& root, double aspect)
{
    Camera camera;
    camera.tangentY = std::tan(fieldOfView / 2 * std::numbers::pi / 180);
    camera.tangentX = camera.tangentY * aspect;
    const double slopeX = camera.tangentX * (1 - 2 * margin);
    const double slopeY = camera.tangentY * (1 - 2 * margin);

    root.CalculateBounds();
    if (!root.bounds.GetGlobalSphere().IsDefined())
    {
        return camera;
    }
    const Vector minimum = root.GetBoundsGlobalMinimum();
    const Vector maximum = root.GetBoundsGlobalMaximum();
    const Vector* const corners = root.bounds.GetGlobalBoundingBox();

    // Through each corner go four planes of the view pyramid; the outermost of each side hold the
    // box.
    double left = 1e30, right = -1e30, bottom = 1e30, top = -1e30;
    for (int i = 0; i < 8; ++i)
    {
        const double depth = double{maximum.z} - corners[i].z;
        left = std::min(left, corners[i].x + depth * slopeX);
        right = std::max(right, corners[i].x - depth * slopeX);
        bottom = std::min(bottom, corners[i].y + depth * slopeY);
        top = std::max(top, corners[i].y - depth * slopeY);
    }
    const double distance =
        std::max({(right - left) / 2 / slopeX, (top - bottom) / 2 / slopeY, 1e-3});
    camera.x = (left + right) / 2;
    camera.y = (bottom + top) / 2;
    camera.z = maximum.z + distance;
    camera.nearZ = distance * 0.5;
    camera.farZ = (distance + maximum.z - minimum.z) * 1.5;
    return camera;
}

/// Two lights over the camera's shoulders: a warm, strong one from the upper left, a cool, weak one
/// from the right that keeps the shaded sides readable.
void SetUpLights()
{
    struct Light
    {
        std::array<float, 4> direction;
        std::array<float, 4> diffuse;
        std::array<float, 4> specular;
    };
    static const std::array lights = {
        Light{{-0.35f, 0.75f, 1.0f, 0}, {0.76f, 0.75f, 0.72f, 1}, {0.7f, 0.69f, 0.66f, 1}},
        Light{{0.9f, -0.15f, 0.35f, 0}, {0.20f, 0.23f, 0.30f, 1}, {0.25f, 0.28f, 0.34f, 1}},
    };
    const std::array<float, 4> ambient = {0.40f, 0.41f, 0.44f, 1};
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient.data());
    for (std::size_t i = 0; i < lights.size(); ++i)
    {
        const GLenum light = GL_LIGHT0 + static_cast<GLenum>(i);
        glLightfv(light, GL_POSITION, lights[i].direction.data());
        glLightfv(light, GL_DIFFUSE, lights[i].diffuse.data());
        glLightfv(light, GL_SPECULAR, lights[i].specular.data());
        glEnable(light);
    }
    glEnable(GL_LIGHTING);
}

void DrawBand(DrawingObject& root, const Camera& camera, const PictureSettings& settings, double x0,
              double y0, double x1, double y1, int width, int height)
{
    // x0..x1 and y0..y1: the band's place in the picture, 0 to 1, y from the top.
    const double extentX = camera.nearZ * camera.tangentX;
    const double extentY = camera.nearZ * camera.tangentY;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glFrustum(extentX * (2 * x0 - 1), extentX * (2 * x1 - 1), extentY * (1 - 2 * y1),
              extentY * (1 - 2 * y0), camera.nearZ, camera.farZ);
    glViewport(0, 0, width, height);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();

    const ColorVector& background = settings.background;
    glClearColor(background.red, background.green, background.blue, 1);
    glDepthMask(GL_TRUE);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    glEnable(GL_NORMALIZE);
    if (!settings.outline)
    {
        SetUpLights();
    }
    glTranslated(-camera.x, -camera.y, -camera.z);

    DrawingParameters parameters;
    settings.outline ? parameters.SetOutline() : parameters.SetRender();
    parameters.SetShowObject();
    parameters.SetShowChildren();
    root.Draw(&parameters);
    glFinish();
}

int ChooseSamples(const PictureSettings& settings)
{
    const double megapixels = 1e-6 * settings.width * settings.height;
    return settings.samples != 0 ? settings.samples
           : megapixels <= 4     ? 4
           : megapixels <= 32    ? 2
                                 : 1;
}

/// Averages squares of samples by samples pixels into the picture.
void CopyBand(const std::uint8_t* bits, int bandWidth, int samples, Picture& picture, int left,
              int top, int width, int height)
{
    const int area = samples * samples;
    for (int y = 0; y < height; ++y)
    {
        std::uint8_t* out = picture.Row(top + y) + std::size_t{3} * left;
        for (int x = 0; x < width; ++x, out += 3)
        {
            std::array<int, 3> sum{};
            for (int sy = 0; sy < samples; ++sy)
            {
                const int line = (height - 1 - y) * samples + sy;
                const std::uint8_t* in =
                    bits + (std::size_t{4} * bandWidth) * line + std::size_t{4} * x * samples;
                for (int sx = 0; sx < samples; ++sx, in += 4)
                {
                    sum[0] += in[2];
                    sum[1] += in[1];
                    sum[2] += in[0];
                }
            }
            for (int i = 0; i < 3; ++i)
            {
                out[i] = static_cast<std::uint8_t>((sum[i] + area / 2) / area);
            }
        }
    }
}

}  // namespace

Picture RenderPicture(DrawingObject& root, const PictureSettings& settings)
{
    const int samples = ChooseSamples(settings);
    const int tile = bandLimit / samples;
    const int bandWidth = std::min(settings.width, tile) * samples;
    const int bandHeight = std::min(settings.height, tile) * samples;
    const Camera camera = FrameBox(root, double(settings.width) / settings.height);
    const Canvas canvas(bandWidth, bandHeight);

    Picture picture{settings.width, settings.height, {}};
    picture.pixels.resize(std::size_t{3} * settings.width * settings.height);
    for (int top = 0; top < settings.height; top += tile)
    {
        for (int left = 0; left < settings.width; left += tile)
        {
            const int width = std::min(tile, settings.width - left);
            const int height = std::min(tile, settings.height - top);
            DrawBand(root, camera, settings, double(left) / settings.width,
                     double(top) / settings.height, double(left + width) / settings.width,
                     double(top + height) / settings.height, width * samples, height * samples);
            CopyBand(canvas.Bits(), bandWidth, samples, picture, left, top, width, height);
            if (settings.progress)
            {
                settings.progress(double(top + height) / settings.height);
            }
        }
    }
    return picture;
}
