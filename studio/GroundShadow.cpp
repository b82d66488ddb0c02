// SPDX-License-Identifier: MIT
#include "studio/GroundShadow.h"

#include "platform/OpenGL.h"
#include "scene/DrawingObject.h"
#include "solids/MeshBuilder.h"
#include "solids/NodeTransform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>

namespace orvane
{

namespace
{

constexpr int longSide = 640;  ///< pixels of the map along its longer side
constexpr int mostLamps = 64;
constexpr int fewestLamps = 12;
/// Triangles that are drawn for all lamps together, which takes about a second.
constexpr std::size_t mostTriangles = 12'000'000;
/// The darkest ground, without any light of the lamp.
constexpr float darkness = 0.62f;

/// A place in the plane, in pixels.
struct MapPoint
{
    double x;
    double y;
};

/// From a place of the ground to a part of the lamp: x and z for each unit of y.
struct LampPart
{
    double x;
    double z;
};

/// Parts of the lamp, a disk, spread over it like the seeds of a sunflower.
std::vector<LampPart> PartsOfLamp(std::size_t triangles)
{
    const auto count = static_cast<int>(std::clamp<std::size_t>(
        mostTriangles / std::max<std::size_t>(triangles, 1), fewestLamps, mostLamps));
    constexpr LampPart middle = {-0.28, 0.34};
    constexpr double radius = 0.42;
    const double goldenAngle = std::numbers::pi * (3 - std::sqrt(5.0));
    std::vector<LampPart> parts;
    for (int i = 0; i < count; ++i)
    {
        const double far = radius * std::sqrt((i + 0.5) / count);
        parts.push_back({middle.x + far * std::cos(i * goldenAngle),
                         middle.z + far * std::sin(i * goldenAngle)});
    }
    return parts;
}

/// The pixels that the shadows of triangles cover.
class ShadowPixels
{
public:
    ShadowPixels(int columns, int rows)
        : columns_(columns),
          rows_(rows),
          last_(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)),
          counts_(last_.size())
    {}

    /// Begins the shadow of another part of the lamp.
    void Begin() { ++part_; }
    void Cover(const std::array<MapPoint, 3>& corners);
    /// The counts, each 255 when all parts of the lamp are hidden.
    std::vector<unsigned char> Take() const;

private:
    int columns_;
    int rows_;
    unsigned short part_ = 0;
    std::vector<unsigned short> last_;    ///< the last part of the lamp whose shadow covers it
    std::vector<unsigned short> counts_;  ///< of such parts
};

/// The middles of pixels between two places, from the first one to that behind the last one.
std::pair<int, int> MiddlesBetween(double low, double high, int end)
{
    const double first = std::clamp(std::ceil(low - 0.5), 0.0, static_cast<double>(end));
    const double last = std::clamp(std::ceil(high - 0.5), 0.0, static_cast<double>(end));
    return {static_cast<int>(first), static_cast<int>(last)};
}

void ShadowPixels::Cover(const std::array<MapPoint, 3>& corners)
{
    const auto [low, high] =
        std::minmax_element(corners.begin(), corners.end(),
                            [](const MapPoint& a, const MapPoint& b) { return a.y < b.y; });
    const auto [firstRow, endRow] = MiddlesBetween(low->y, high->y, rows_);
    for (int row = firstRow; row < endRow; ++row)
    {
        const double y = row + 0.5;
        double left = std::numeric_limits<double>::infinity();
        double right = -left;
        for (std::size_t i = 0; i < corners.size(); ++i)
        {
            const MapPoint& a = corners[i];
            const MapPoint& b = corners[(i + 1) % corners.size()];
            if ((a.y <= y) != (b.y <= y))
            {
                const double x = a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y);
                left = std::min(left, x);
                right = std::max(right, x);
            }
        }
        if (!(left <= right))
        {
            continue;
        }
        const auto [first, end] = MiddlesBetween(left, right, columns_);
        const std::size_t start =
            static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_);
        for (int column = first; column < end; ++column)
        {
            const std::size_t pixel = start + static_cast<std::size_t>(column);
            counts_[pixel] = static_cast<unsigned short>(counts_[pixel] + (last_[pixel] != part_));
            last_[pixel] = part_;
        }
    }
}

std::vector<unsigned char> ShadowPixels::Take() const
{
    std::vector<unsigned char> pixels(counts_.size());
    std::transform(counts_.begin(), counts_.end(), pixels.begin(), [this](unsigned short count) {
        return static_cast<unsigned char>((count * 255 + part_ / 2) / std::max<int>(part_, 1));
    });
    return pixels;
}

/// Each pixel becomes the mean of those within \p radius in its row.
void BlurRows(std::vector<unsigned char>& pixels, int columns, int rows, int radius)
{
    std::vector<unsigned char> before(static_cast<std::size_t>(columns));
    for (int row = 0; row < rows; ++row)
    {
        const auto line = pixels.begin() + std::ptrdiff_t{row} * columns;
        std::copy(line, line + columns, before.begin());
        for (int column = 0; column < columns; ++column)
        {
            int sum = radius;
            for (int i = column - radius; i <= column + radius; ++i)
            {
                sum += i >= 0 && i < columns ? before[static_cast<std::size_t>(i)] : 0;
            }
            line[column] = static_cast<unsigned char>(sum / (2 * radius + 1));
        }
    }
}

std::vector<unsigned char> Transposed(const std::vector<unsigned char>& pixels, int columns,
                                      int rows)
{
    std::vector<unsigned char> turned(pixels.size());
    for (int row = 0; row < rows; ++row)
    {
        for (int column = 0; column < columns; ++column)
        {
            turned[static_cast<std::size_t>(column) * static_cast<std::size_t>(rows) +
                   static_cast<std::size_t>(row)] =
                pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                       static_cast<std::size_t>(column)];
        }
    }
    return turned;
}

/// The triangles of all solids below a scene, in its own coordinates.
TriangleCorners TrianglesOf(DrawingObject& scene)
{
    MeshBuildOptions options;
    options.inWorldCoordinates = false;
    const SolidMesh mesh = BuildMesh(scene, options);
    std::vector<MeshTransform> transforms;
    for (const MeshNode& node : mesh.nodes)
    {
        MeshTransform& transform = transforms.emplace_back();
        for (const DrawingObject* each = node.object; each != nullptr && each != &scene;
             each = each->GetParent())
        {
            transform = TransformOf(*each) * transform;
        }
    }
    TriangleCorners corners;
    corners.reserve(mesh.indices.size() * 3);
    for (const MeshGroup& group : mesh.groups)
    {
        const MeshTransform& transform = transforms[static_cast<std::size_t>(group.node)];
        for (std::size_t i = group.firstIndex; i < group.firstIndex + group.indexCount; ++i)
        {
            const float(&position)[3] = mesh.vertices[mesh.indices[i]].position;
            for (const double number : transform.Apply({position[0], position[1], position[2]}))
            {
                corners.push_back(static_cast<float>(number));
            }
        }
    }
    return corners;
}

}  // namespace

ShadowMap MakeShadow(const TriangleCorners& triangles, double ground)
{
    constexpr std::size_t numbersPerTriangle = 9;
    ShadowMap map;
    const std::vector<LampPart> lamp = PartsOfLamp(triangles.size() / numbersPerTriangle);
    double low[2] = {std::numeric_limits<double>::infinity(),
                     std::numeric_limits<double>::infinity()};
    double high[2] = {-low[0], -low[1]};
    const auto shadowOf = [&](std::size_t corner, const LampPart& part) {
        const double above = triangles[corner + 1] - ground;
        return MapPoint{triangles[corner] - part.x * above, triangles[corner + 2] - part.z * above};
    };
    for (std::size_t corner = 0; corner + 2 < triangles.size(); corner += 3)
    {
        for (const LampPart& part : lamp)
        {
            const MapPoint at = shadowOf(corner, part);
            low[0] = std::min(low[0], at.x);
            high[0] = std::max(high[0], at.x);
            low[1] = std::min(low[1], at.y);
            high[1] = std::max(high[1], at.y);
        }
    }
    const double longest = std::max(high[0] - low[0], high[1] - low[1]);
    if (!(longest > 0) || !std::isfinite(longest))
    {
        return map;
    }
    constexpr int border = 4;  // pixels that stay free for the blur
    const double pixel = longest / (longSide - 2 * border);
    map.columns = static_cast<int>(std::ceil((high[0] - low[0]) / pixel)) + 2 * border;
    map.rows = static_cast<int>(std::ceil((high[1] - low[1]) / pixel)) + 2 * border;
    map.left = low[0] - border * pixel;
    map.far = low[1] - border * pixel;
    map.width = map.columns * pixel;
    map.height = map.rows * pixel;

    ShadowPixels pixels(map.columns, map.rows);
    for (const LampPart& part : lamp)
    {
        pixels.Begin();
        for (std::size_t first = 0; first + numbersPerTriangle <= triangles.size();
             first += numbersPerTriangle)
        {
            std::array<MapPoint, 3> corners;
            for (std::size_t i = 0; i < corners.size(); ++i)
            {
                const MapPoint at = shadowOf(first + 3 * i, part);
                corners[i] = {(at.x - map.left) / pixel, (at.y - map.far) / pixel};
            }
            pixels.Cover(corners);
        }
    }
    map.pixels = pixels.Take();
    // The shadows of single parts of the lamp have sharp borders.
    constexpr int radius = 2;
    BlurRows(map.pixels, map.columns, map.rows, radius);
    map.pixels = Transposed(map.pixels, map.columns, map.rows);
    BlurRows(map.pixels, map.rows, map.columns, radius);
    map.pixels = Transposed(map.pixels, map.rows, map.columns);
    return map;
}

GroundShadow::GroundShadow(DrawingObject& scene) : scene_(scene)
{
    const TriangleCorners triangles = TrianglesOf(scene);
    ground_ = std::numeric_limits<double>::infinity();
    for (std::size_t i = 1; i < triangles.size(); i += 3)
    {
        ground_ = std::min<double>(ground_, triangles[i]);
    }
    if (!std::isfinite(ground_))
    {
        return;
    }
    map_ = MakeShadow(triangles, ground_);
    if (map_.pixels.empty())
    {
        return;
    }
    GLuint texture = 0;
    glGenTextures(1, &texture);
    texture_ = texture;
    GLint previous = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &previous);
    glBindTexture(GL_TEXTURE_2D, texture);
    constexpr GLint clampToEdge = 0x812F;  // OpenGL 1.2
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, clampToEdge);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, clampToEdge);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, map_.columns, map_.rows, 0, GL_ALPHA,
                 GL_UNSIGNED_BYTE, map_.pixels.data());
    glPopClientAttrib();
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(previous));
    map_.pixels = {};
}

GroundShadow::~GroundShadow()
{
    if (texture_ != 0)
    {
        const GLuint texture = texture_;
        glDeleteTextures(1, &texture);
    }
}

void GroundShadow::Draw() const
{
    if (texture_ == 0)
    {
        return;
    }
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT |
                 GL_TEXTURE_BIT | GL_POLYGON_BIT);
    glMatrixMode(GL_TEXTURE);
    glPushMatrix();
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glMultMatrixd(TransformOf(scene_).matrix.data());
    glDisable(GL_LIGHTING);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture_);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDepthMask(GL_FALSE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glEnable(GL_CULL_FACE);
    glFrontFace(GL_CCW);
    glCullFace(GL_BACK);
    glColor4f(0, 0, 0, darkness);
    const double right = map_.left + map_.width;
    const double near = map_.far + map_.height;
    glBegin(GL_QUADS);
    glTexCoord2d(0, 1);
    glVertex3d(map_.left, ground_, near);
    glTexCoord2d(1, 1);
    glVertex3d(right, ground_, near);
    glTexCoord2d(1, 0);
    glVertex3d(right, ground_, map_.far);
    glTexCoord2d(0, 0);
    glVertex3d(map_.left, ground_, map_.far);
    glEnd();
    glPopMatrix();
    glMatrixMode(GL_TEXTURE);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopAttrib();
}

}  // namespace orvane
