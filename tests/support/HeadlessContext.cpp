// SPDX-License-Identifier: MIT
#include "tests/support/HeadlessContext.h"

#include "platform/Bitmaps.h"
#include "platform/Errors.h"
#include "platform/Rendering.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>

std::ostream& operator<<(std::ostream& stream, const Rgb& color)
{
    return stream << '(' << color.red << ", " << color.green << ", " << color.blue << ')';
}

Rgb Picture::At(int x, int y) const
{
    if (x < 0 || y < 0 || x >= width || y >= height)
    {
        return {0, 0, 0};
    }
    const GLubyte* const pixel =
        bytes.data() + 3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                            static_cast<std::size_t>(x));
    return {pixel[0], pixel[1], pixel[2]};
}

int Picture::CountOther(const Rgb& color) const
{
    int count = 0;
    for (int y = 0; y < height; ++y)
    {
        for (int x = 0; x < width; ++x)
        {
            count += At(x, y) == color ? 0 : 1;
        }
    }
    return count;
}

bool Picture::Save(const std::string& path) const
{
    std::ofstream file(path, std::ios::binary);
    file << "P6\n" << width << ' ' << height << "\n255\n";
    const std::streamsize rowBytes = 3 * static_cast<std::streamsize>(width);
    for (int y = height - 1; y >= 0; --y)
    {
        file.write(reinterpret_cast<const char*>(bytes.data()) + rowBytes * y, rowBytes);
    }
    file.close();
    return file.good();
}

Picture Picture::Load(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string magic;
    Picture picture;
    int largest = 0;
    file >> magic >> picture.width >> picture.height >> largest;
    file.get();
    constexpr int most = 16384;
    if (!file || magic != "P6" || largest != 255 || picture.width <= 0 || picture.width > most ||
        picture.height <= 0 || picture.height > most)
    {
        return {};
    }
    const std::streamsize rowBytes = 3 * static_cast<std::streamsize>(picture.width);
    picture.bytes.resize(static_cast<std::size_t>(rowBytes) *
                         static_cast<std::size_t>(picture.height));
    for (int y = picture.height - 1; y >= 0; --y)
    {
        file.read(reinterpret_cast<char*>(picture.bytes.data()) + rowBytes * y, rowBytes);
    }
    return file ? picture : Picture{};
}

testing::AssertionResult PicturesMatch(const Picture& expected, const Picture& actual,
                                       const std::string& name, int tolerance, int allowedPixels)
{
    const std::string folder = std::string(ORVANE_BINARY_DIR) + "/differences/";
    const auto save = [&](const Picture& picture, const char* suffix) {
        std::filesystem::create_directories(folder);
        picture.Save(folder + name + suffix);
    };
    if (expected.width != actual.width || expected.height != actual.height)
    {
        save(actual, "-actual.ppm");
        return testing::AssertionFailure()
               << name << " is " << actual.width << " x " << actual.height << " pixels, expected "
               << expected.width << " x " << expected.height;
    }
    Picture difference = expected;
    int wrongPixels = 0;
    int largest = 0;
    for (std::size_t i = 0; i < expected.bytes.size(); i += 3)
    {
        int worst = 0;
        for (std::size_t channel = i; channel < i + 3; ++channel)
        {
            const int distance = std::abs(expected.bytes[channel] - actual.bytes[channel]);
            difference.bytes[channel] = static_cast<GLubyte>(std::min(255, 8 * distance));
            worst = std::max(worst, distance);
        }
        wrongPixels += worst > tolerance ? 1 : 0;
        largest = std::max(largest, worst);
    }
    if (wrongPixels <= allowedPixels)
    {
        return testing::AssertionSuccess();
    }
    save(expected, "-expected.ppm");
    save(actual, "-actual.ppm");
    save(difference, "-difference.ppm");
    return testing::AssertionFailure()
           << name << ": " << wrongPixels << " pixels differ by more than " << tolerance
           << ", the worst by " << largest << "; see " << folder << name << "-difference.ppm";
}

int CountDifferentOffEdges(const Picture& expected, const Picture& actual)
{
    constexpr int aboutTheSame = 4;
    const auto distance = [](const Rgb& a, const Rgb& b) {
        return std::max(
            {std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue)});
    };
    const auto isOnEdge = [&](int x, int y) {
        for (int nearY = std::max(y - 1, 0); nearY <= std::min(y + 1, expected.height - 1); ++nearY)
        {
            for (int nearX = std::max(x - 1, 0); nearX <= std::min(x + 1, expected.width - 1);
                 ++nearX)
            {
                if (distance(expected.At(nearX, nearY), expected.At(x, y)) > aboutTheSame)
                {
                    return true;
                }
            }
        }
        return false;
    };
    int count = 0;
    for (int y = 0; y < expected.height; ++y)
    {
        for (int x = 0; x < expected.width; ++x)
        {
            count += distance(expected.At(x, y), actual.At(x, y)) > 1 && !isOnEdge(x, y);
        }
    }
    return count;
}

struct HeadlessContext::State
{
    int width;
    int height;
    HDC previousDc = wglGetCurrentDC();
    HGLRC previousContext = wglGetCurrentContext();
    HDC dc = CreateCompatibleDC(nullptr);
    HBITMAP bitmap = nullptr;
    HGLRC context = nullptr;
    bool isCurrent = false;
    std::string reason = {};
};

HeadlessContext::HeadlessContext(int width, int height, Functions functions)
    : state_(std::make_unique<State>(State{width, height}))
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    PIXELFORMATDESCRIPTOR format{};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_OPENGL;
    format.cColorBits = 32;
    format.cDepthBits = 24;

    state_->bitmap = CreateDIBSection(state_->dc, &info, DIB_RGB_COLORS, nullptr, nullptr, 0);
    SelectObject(state_->dc, state_->bitmap);
    SetPixelFormat(state_->dc, ChoosePixelFormat(state_->dc, &format), &format);
    state_->context = functions == Functions::OnlyCore ? CreateCoreContext(state_->dc)
                                                       : wglCreateContext(state_->dc);
    state_->isCurrent =
        state_->context != nullptr && wglMakeCurrent(state_->dc, state_->context) != FALSE;
    if (!state_->isCurrent)
    {
        state_->reason = GetLastErrorText();
    }
}

HeadlessContext::~HeadlessContext()
{
    if (state_->context != nullptr)
    {
        wglMakeCurrent(state_->previousDc, state_->previousContext);
        wglDeleteContext(state_->context);
    }
    DeleteDC(state_->dc);
    DeleteObject(state_->bitmap);
}

bool HeadlessContext::IsValid() const
{
    return state_->isCurrent;
}

const std::string& HeadlessContext::Reason() const
{
    return state_->reason;
}

Rgb HeadlessContext::Pixel(int x, int y) const
{
    GLubyte pixel[4] = {};
    glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    return {pixel[0], pixel[1], pixel[2]};
}

Picture HeadlessContext::ReadPixels() const
{
    Picture picture;
    picture.width = state_->width;
    picture.height = state_->height;
    picture.bytes.resize(3 * static_cast<std::size_t>(picture.width) *
                         static_cast<std::size_t>(picture.height));
    GLint alignment = 4;
    glGetIntegerv(GL_PACK_ALIGNMENT, &alignment);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, picture.width, picture.height, GL_RGB, GL_UNSIGNED_BYTE,
                 picture.bytes.data());
    glPixelStorei(GL_PACK_ALIGNMENT, alignment);
    return picture;
}

float HeadlessContext::Depth(int x, int y) const
{
    GLfloat depth = 0;
    glReadPixels(x, y, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    return depth;
}
