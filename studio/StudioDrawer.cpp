// SPDX-License-Identifier: MIT
#include "studio/StudioDrawer.h"

#include "document/OptionRange.h"
#include "document/SceneLights.h"
#include "host/AsciiCase.h"
#include "material/MetallicRoughness.h"
#include "material/NamedColor.h"
#include "platform/OpenGL.h"
#include "solids/drawing/ShaderProgram.h"
#include "studio/Environment.h"
#include "studio/StudioShaders.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace orvane
{

namespace
{

// Names that OpenGL 1.1 does not have.
constexpr GLint halfFloatColor = 0x881B;  // GL_RGB16F
constexpr GLenum maxTextureLevel = 0x813D;

/// OpenGL's smoothest material, of the shininess 128, has this roughness by its highlight. Here it
/// is drawn as a mirror, and the others become smoother in proportion. A still smoother one would
/// show the pixels of the environment.
constexpr float roughnessOfSmoothest = 0.352f;
constexpr float leastRoughness = 0.1f;

float DrawnRoughness(double roughness)
{
    const auto share =
        (static_cast<float>(roughness) - roughnessOfSmoothest) / (1 - roughnessOfSmoothest);
    return leastRoughness + std::max(share, 0.0f) * (1 - leastRoughness);
}

/// What the fragment shader draws into a material, by the words of its name.
int PatternOf(const std::string& name)
{
    const std::string lower = LowerAscii(name);
    return lower.find("wood") != std::string::npos     ? 1
           : lower.find("marble") != std::string::npos ? 2
                                                       : 0;
}

/// Lets ApplyMaterial tell an observer of materials as long as it lives.
class Observation
{
public:
    explicit Observation(MaterialObserver& observer) : previous_(ObserveMaterials(&observer)) {}
    ~Observation() { ObserveMaterials(previous_); }
    Observation(const Observation&) = delete;
    Observation& operator=(const Observation&) = delete;

private:
    MaterialObserver* previous_;
};

int LampsThatAreOn()
{
    int lamps = 0;
    for (int i = 0; i < 8; ++i)
    {
        lamps |= glIsEnabled(static_cast<GLenum>(GL_LIGHT0 + i)) != 0 ? 1 << i : 0;
    }
    return lamps;
}

/// As the fragment shader names it.
int TextureUse()
{
    if (glIsEnabled(GL_TEXTURE_2D) == 0)
    {
        return 0;
    }
    GLint mode = GL_MODULATE;
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
    return mode == GL_MODULATE ? 1 : 2;
}

/// The scene's ambient light as a multiple of that of a new scene.
std::array<float, 3> AmbientLight()
{
    std::array<float, 4> ambient = {};
    glGetFloatv(GL_LIGHT_MODEL_AMBIENT, ambient.data());
    const Color& usual = firstAmbientColor;
    return {ambient[0] / usual.red, ambient[1] / usual.green, ambient[2] / usual.blue};
}

bool IsPerspective()
{
    std::array<float, 16> projection = {};
    glGetFloatv(GL_PROJECTION_MATRIX, projection.data());
    return projection[15] == 0;
}

}  // namespace

void CheckStudioOptions(const StudioOptions& options)
{
    CheckRange("environmentTurn", options.environmentTurn, -360, 360);
    CheckRange("exposure", options.exposure, 0.01, 100);
}

StudioDrawer::StudioDrawer(const StudioOptions& options)
    : options_(options),
      program_(std::make_unique<ShaderProgram>(studioVertexShader, studioFragmentShader))
{
    cache_.UseWithShaders();
    UploadEnvironment(MakeEnvironment(options.environment));
}

StudioDrawer::~StudioDrawer()
{
    const GLuint texture = environment_;
    glDeleteTextures(1, &texture);
}

void StudioDrawer::UploadEnvironment(const Environment& environment)
{
    GLuint texture = 0;
    glGenTextures(1, &texture);
    environment_ = texture;
    GLint previous = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &previous);
    glBindTexture(GL_TEXTURE_2D, texture);
    const std::vector<LightMap>& maps = environment.Mirrored();
    const auto last = static_cast<GLint>(maps.size()) - 1;
    glTexParameteri(GL_TEXTURE_2D, maxTextureLevel, last);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    constexpr GLint clampToEdge = 0x812F;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, clampToEdge);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    for (GLint level = 0; level <= last; ++level)
    {
        const LightMap& map = maps[static_cast<std::size_t>(level)];
        glTexImage2D(GL_TEXTURE_2D, level, halfFloatColor, map.width, map.height, 0, GL_RGB,
                     GL_FLOAT, map.pixels.data());
    }
    glPopClientAttrib();
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(previous));

    const ShaderProgram::Usage usage(*program_);
    const double turn = options_.environmentTurn * std::numbers::pi / 180;
    program_->Set("surfacePicture", 0);
    program_->Set("environment", 1);
    program_->Set("lastMap", static_cast<float>(last));
    program_->Set("environmentTurnX", static_cast<float>(std::cos(turn)));
    program_->Set("environmentTurnY", static_cast<float>(std::sin(turn)));
    program_->Set("falling", environment.Falling().data(),
                  static_cast<int>(environment.Falling().size()));
    program_->Set("exposure", static_cast<float>(options_.exposure));
}

SolidDrawing StudioDrawer::DrawLetters(OrvFontString& text, DrawingParameters& parameters)
{
    return Draw([&] { return cache_.DrawLetters(text, parameters); });
}

SolidDrawing StudioDrawer::DrawOutlines(OrvOutlineShape& outlines, DrawingParameters& parameters)
{
    return Draw([&] { return cache_.DrawOutlines(outlines, parameters); });
}

SolidDrawing StudioDrawer::DrawSurface(TriangularMeshObject& mesh, DrawingParameters& parameters)
{
    return Draw([&] { return cache_.DrawSurface(mesh, parameters); });
}

template <typename DrawNode>
SolidDrawing StudioDrawer::Draw(const DrawNode& drawNode)
{
    const ShaderProgram::Usage usage(*program_);
    program_->Set("lamps", LampsThatAreOn());
    program_->Set("textureUse", TextureUse());
    program_->Set("ambient", AmbientLight());
    program_->Set("isPerspective", IsPerspective() ? 1 : 0);
    program_->SelectTextureUnit(1);
    GLint previous = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &previous);
    glBindTexture(GL_TEXTURE_2D, environment_);
    program_->SelectTextureUnit(0);
    SolidDrawing drawn;
    {
        const Observation observation(*this);
        drawn = drawNode();
    }
    program_->SelectTextureUnit(1);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(previous));
    program_->SelectTextureUnit(0);
    return drawn;
}

void StudioDrawer::UseMaterial(const ::Color& material)
{
    const auto* const named = dynamic_cast<const NamedColor*>(&material);
    const MetallicRoughness look =
        ToMetallicRoughness(named != nullptr ? *named : NamedColor(material, ""));
    std::array<float, 4> base;
    std::copy(look.baseColor.begin(), look.baseColor.end(), base.begin());
    std::array<float, 3> emission;
    std::copy(look.emission.begin(), look.emission.end(), emission.begin());
    program_->Set("baseColor", base);
    program_->Set("emission", emission);
    program_->Set("metal", look.isMetal ? 1.0f : 0.0f);
    program_->Set("roughness", DrawnRoughness(look.roughness));
    program_->Set("pattern", named != nullptr ? PatternOf(named->GetName()) : 0);
}

}  // namespace orvane
