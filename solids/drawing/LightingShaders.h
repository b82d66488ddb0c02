// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Shaders that light vertices as OpenGL's fixed functions do.

namespace orvane
{

/// Gives each vertex the colours that the chapter "Lighting" of OpenGL's specification gives its
/// front and back. Normals are scaled to length 1, as with GL_NORMALIZE.
inline constexpr const char* lightingVertexShader = R"(#version 150
const int maxLights = 8;
uniform mat4 clipFromObject;
uniform mat4 eyeFromObject;
uniform mat3 eyeNormalFromObject;
uniform vec4 globalAmbient;
uniform int hasLocalViewer;
uniform int lightCount;
uniform vec4 lightAmbient[maxLights];
uniform vec4 lightDiffuse[maxLights];
uniform vec4 lightSpecular[maxLights];
uniform vec4 lightPosition[maxLights];
uniform vec4 lightSpot[maxLights];       // the direction and the cutoff's cosine; -2 without a cone
uniform float lightExponent[maxLights];
uniform vec4 material[5];                // ambient, diffuse, specular, emission; shininess, 0, 0, 0

in vec3 position;
in vec3 normal;
in vec2 texturePlace;
out vec4 frontColor;
out vec4 backColor;
out vec2 picturePlace;

// OpenGL takes a number to the power of 0 for 1, even 0, which is undefined in GLSL.
float Power(float base, float exponent)
{
    return exponent == 0.0 ? 1.0 : base > 0.0 ? pow(base, exponent) : 0.0;
}

vec4 Lit(vec3 unitNormal, vec3 eyePosition)
{
    vec3 color = material[3].rgb + material[0].rgb * globalAmbient.rgb;
    for (int i = 0; i < lightCount; ++i)
    {
        bool hasPlace = lightPosition[i].w != 0.0;
        vec3 toLight = normalize(hasPlace ? lightPosition[i].xyz - eyePosition : lightPosition[i].xyz);
        float spot = 1.0;
        if (hasPlace && lightSpot[i].w > -1.5)
        {
            float along = dot(-toLight, lightSpot[i].xyz);
            spot = along < lightSpot[i].w ? 0.0 : Power(along, lightExponent[i]);
        }
        float facing = dot(unitNormal, toLight);
        vec3 light = lightAmbient[i].rgb * material[0].rgb;
        if (facing > 0.0)
        {
            vec3 toEye = hasLocalViewer != 0 ? normalize(-eyePosition) : vec3(0.0, 0.0, 1.0);
            float shine = max(dot(unitNormal, normalize(toLight + toEye)), 0.0);
            light += facing * lightDiffuse[i].rgb * material[1].rgb +
                     Power(shine, material[4].x) * lightSpecular[i].rgb * material[2].rgb;
        }
        color += spot * light;
    }
    return vec4(clamp(color, 0.0, 1.0), clamp(material[1].a, 0.0, 1.0));
}

void main()
{
    gl_Position = clipFromObject * vec4(position, 1.0);
    vec3 eyePosition = (eyeFromObject * vec4(position, 1.0)).xyz;
    vec3 unitNormal = normalize(eyeNormalFromObject * normal);
    frontColor = Lit(unitNormal, eyePosition);
    backColor = Lit(-unitNormal, eyePosition);
    picturePlace = texturePlace;
}
)";

inline constexpr const char* lightingFragmentShader = R"(#version 150
uniform int isTwoSided;
uniform int textureMode;                 // 0 none, 1 GL_MODULATE, 2 GL_DECAL
uniform sampler2D picture;

in vec4 frontColor;
in vec4 backColor;
in vec2 picturePlace;
out vec4 color;

void main()
{
    color = isTwoSided != 0 && !gl_FrontFacing ? backColor : frontColor;
    if (textureMode != 0)
    {
        vec3 seen = texture(picture, picturePlace).rgb;
        color.rgb = textureMode == 1 ? color.rgb * seen : seen;
    }
}
)";

}  // namespace orvane
