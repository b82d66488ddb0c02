// SPDX-License-Identifier: MIT
#include "apps/cli/Renderer.h"

#include "apps/cli/Errors.h"
#include "geometry/DVector.h"
#include "platform/Bitmaps.h"
#include "platform/DeviceContexts.h"
#include "platform/Errors.h"
#include "platform/OpenGL.h"
#include "platform/Rendering.h"
#include "scene/DrawingObject.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvString.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace
{

constexpr double fieldOfView = 20;  // degrees, vertical: long enough a lens to keep letters calm
constexpr double margin = 0.08;     // of the picture, kept free on each side
constexpr double wiresPerPicture = 480;  // a wire's width goes that often into the picture
constexpr int bandLimit = 2048;          // pixels, what every OpenGL draws in one piece

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
            const std::string reason = GetLastErrorText();
            Release();
            throw Failure("OpenGL: no off-screen context" +
                          (reason.empty() ? reason : ": " + reason));
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

/// Adds the corners of the boxes of all nodes without children, placed by the transforms on the
/// way.
void CollectCorners(const DrawingObject& node, std::vector<DVector>& corners)
{
    const std::size_t first = corners.size();
    if (node.HasChildren())
    {
        for (int i = 0; i < node.GetChildCount(); ++i)
        {
            CollectCorners(*node.GetChildByIndex(i), corners);
        }
    }
    else
    {
        const Vector low = node.GetBoundsLocalMinimum();
        const Vector high = node.GetBoundsLocalMaximum();
        for (int i = 0; i < 8; ++i)
        {
            corners.emplace_back((i & 1) != 0 ? high.x : low.x, (i & 2) != 0 ? high.y : low.y,
                                 (i & 4) != 0 ? high.z : low.z);
        }
    }
    const double* const m = node.GetTransform()->GetCompositeMatrix();
    for (std::size_t i = first; i < corners.size(); ++i)
    {
        const DVector p = corners[i];
        corners[i] = DVector(m[0] * p.x + m[4] * p.y + m[8] * p.z + m[12],
                             m[1] * p.x + m[5] * p.y + m[9] * p.z + m[13],
                             m[2] * p.x + m[6] * p.y + m[10] * p.z + m[14]);
    }
}

/// Puts the camera where all points, seen in perspective, fill the picture but for the margin.
Camera FramePoints(const std::vector<DVector>& points, double aspect)
{
    Camera camera;
    camera.tangentY = std::tan(fieldOfView / 2 * std::numbers::pi / 180);
    camera.tangentX = camera.tangentY * aspect;
    const double slopeX = camera.tangentX * (1 - 2 * margin);
    const double slopeY = camera.tangentY * (1 - 2 * margin);

    double front = -1e30, back = 1e30;
    for (const DVector& point : points)
    {
        front = std::max(front, point.z);
        back = std::min(back, point.z);
    }
    // Through each point go four planes of the view pyramid; the outermost of each side hold all.
    double left = 1e30, right = -1e30, bottom = 1e30, top = -1e30;
    for (const DVector& point : points)
    {
        const double depth = front - point.z;
        left = std::min(left, point.x + depth * slopeX);
        right = std::max(right, point.x - depth * slopeX);
        bottom = std::min(bottom, point.y + depth * slopeY);
        top = std::max(top, point.y - depth * slopeY);
    }
    const double distance =
        std::max({(right - left) / 2 / slopeX, (top - bottom) / 2 / slopeY, 1e-3});
    camera.x = (left + right) / 2;
    camera.y = (bottom + top) / 2;
    camera.z = front + distance;
    camera.nearZ = distance * 0.5;
    camera.farZ = (distance + front - back) * 1.5;

    // The direction that has room to spare is centred as it appears, by halving what is off.
    const auto centre = [&](double DVector::*axis, double& position) {
        double low = 1e30, high = -1e30;
        for (const DVector& point : points)
        {
            const double seen = (point.*axis - position) / (camera.z - point.z);
            low = std::min(low, seen);
            high = std::max(high, seen);
        }
        position += distance * (low + high) / 2;
    };
    constexpr int rounds = 12;
    for (int i = 0; i < rounds; ++i)
    {
        centre(&DVector::x, camera.x);
        centre(&DVector::y, camera.y);
    }
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
        Light{{0.9f, -0.15f, 0.35f, 0}, {0.31f, 0.32f, 0.36f, 1}, {0.25f, 0.28f, 0.34f, 1}},
    };
    const std::array<float, 4> ambient = {0.34f, 0.35f, 0.38f, 1};
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

struct OpaqueText
{
    OrvString* text;
    NamedColor colors[3];  // as they were
};

/// Makes the transparent texts of the tree opaque.
void MakeOpaque(DrawingObject& node, std::vector<OpaqueText>& texts)
{
    for (int i = 0; i < node.GetChildCount(); ++i)
    {
        MakeOpaque(*node.GetChildByIndex(i), texts);
    }
    auto* const text = dynamic_cast<OrvString*>(&node);
    if (text == nullptr || !text->IsTransparent())
    {
        return;
    }
    texts.push_back({text, {text->GetFaceColor(), text->GetEdgeColor(), text->GetBevelColor()}});
    for (int which = 0; which < 3; ++which)
    {
        NamedColor opaque = texts.back().colors[which];
        ColorVector diffuse = opaque.GetDiffuseColor();
        diffuse.alpha = 1;
        opaque.SetDiffuseColor(diffuse);
        text->SetSurfaceColor(opaque, which);
    }
}

/// Transparent surfaces leave no depth behind and would show through each other in the order of
/// drawing. With the depth of all of them there first, only the foremost ones are seen.
void DrawDepthOfTransparentTexts(DrawingObject& root)
{
    std::vector<OpaqueText> texts;
    MakeOpaque(root, texts);
    if (texts.empty())
    {
        return;
    }
    DrawingParameters parameters;
    parameters.SetRender();
    parameters.SetShowObject();
    parameters.SetShowChildren();
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    root.Draw(&parameters);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthFunc(GL_LEQUAL);
    for (const OpaqueText& each : texts)
    {
        for (int which = 0; which < 3; ++which)
        {
            each.text->SetSurfaceColor(each.colors[which], which);
        }
    }
}

void DrawBand(DrawingObject& root, const Camera& camera, const PictureSettings& settings, double x0,
              double y0, double x1, double y1, int width, int height, float wire)
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
    if (settings.outline)
    {
        glLineWidth(wire);
    }
    else
    {
        SetUpLights();
    }
    glTranslated(-camera.x, -camera.y, -camera.z);

    if (!settings.outline)
    {
        DrawDepthOfTransparentTexts(root);
    }
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
    root.CalculateBounds();
    std::vector<DVector> corners;
    CollectCorners(root, corners);
    const Camera camera = FramePoints(corners, double(settings.width) / settings.height);
    const Canvas canvas(bandWidth, bandHeight);

    const auto wire = static_cast<float>(
        samples * std::max(1.0, std::min(settings.width, settings.height) / wiresPerPicture));

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
                     double(top + height) / settings.height, width * samples, height * samples,
                     wire);
            CopyBand(canvas.Bits(), bandWidth, samples, picture, left, top, width, height);
            if (settings.progress)
            {
                settings.progress(double(top + height) / settings.height);
            }
        }
    }
    return picture;
}
