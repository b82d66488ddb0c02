// SPDX-License-Identifier: MIT
#pragma once

namespace orvane
{

/// The shaders of StudioDrawer in GLSL 1.30. They read OpenGL's fixed state: matrices, lights and
/// their model.
inline constexpr char studioVertexShader[] = R"(#version 130
out vec3 place;       // seen from the camera
out vec3 surfaceNormal;
out vec2 texturePlace;

void main()
{
    vec4 seen = gl_ModelViewMatrix * gl_Vertex;
    place = seen.xyz / seen.w;
    surfaceNormal = gl_NormalMatrix * gl_Normal;
    texturePlace = (gl_TextureMatrix[0] * gl_MultiTexCoord0).xy;
    gl_Position = ftransform();
}
)";

/// The highlight of a lamp is that of Bruce Walter et al. (GGX, 2007) with the visibility of Smith
/// and the colour of Schlick. The mirrored environment is weighted as Brian Karis found it
/// (Physically Based Shading on Mobile, 2014). Bright light is compressed by the tone mapping
/// "PBR Neutral" of the Khronos group, which leaves the colours of materials as they are.
inline constexpr char studioFragmentShader[] = R"(#version 130
in vec3 place;
in vec3 surfaceNormal;
in vec2 texturePlace;

uniform vec4 baseColor;      // linear, with the opacity
uniform vec3 emission;       // linear
uniform float metal;         // 0 or 1
uniform float roughness;
uniform int lamps;           // bit i: lamp i is on
uniform int textureUse;      // 0: none, 1: multiplies the base colour, 2: replaces it
uniform sampler2D surfacePicture;
uniform sampler2D environment;
uniform float lastMap;       // the map of the roughness 1
uniform float environmentTurnX;  // the cosine of its turn
uniform float environmentTurnY;  // the sine
uniform vec3 falling[9];     // Environment::Falling
uniform vec3 ambient;        // how bright the environment is on surfaces that are not mirrors
uniform bool isPerspective;
uniform float exposure;

const float pi = 3.14159265;

vec3 FromScreen(vec3 color)
{
    return mix(color / 12.92, pow((color + 0.055) / 1.055, vec3(2.4)),
               step(vec3(0.04045), color));
}

vec3 ToScreen(vec3 light)
{
    return mix(light * 12.92, 1.055 * pow(light, vec3(1.0 / 2.4)) - 0.055,
               step(vec3(0.0031308), light));
}

vec3 Compressed(vec3 light)
{
    const float start = 0.8 - 0.04;
    const float desaturation = 0.15;
    float least = min(light.r, min(light.g, light.b));
    float offset = least < 0.08 ? least - 6.25 * least * least : 0.04;
    light -= offset;
    float most = max(light.r, max(light.g, light.b));
    if (most < start)
    {
        return light;
    }
    const float d = 1.0 - start;
    float peak = 1.0 - d * d / (most + d - start);
    light *= peak / most;
    float share = 1.0 - 1.0 / (desaturation * (most - peak) + 1.0);
    return mix(light, vec3(peak), share);
}

vec3 Turned(vec3 direction)
{
    return vec3(environmentTurnX * direction.x - environmentTurnY * direction.z, direction.y,
                environmentTurnY * direction.x + environmentTurnX * direction.z);
}

vec3 Mirrored(vec3 direction)
{
    direction = Turned(direction);
    vec2 at = vec2(atan(direction.x, -direction.z) / (2.0 * pi) + 0.5,
                   acos(clamp(direction.y, -1.0, 1.0)) / pi);
    return textureLod(environment, at, roughness * lastMap).rgb;
}

vec3 Falling(vec3 n)
{
    n = Turned(n);
    return max(falling[0] + falling[1] * n.y + falling[2] * n.z + falling[3] * n.x
                   + falling[4] * (n.x * n.y) + falling[5] * (n.y * n.z)
                   + falling[6] * (3.0 * n.z * n.z - 1.0) + falling[7] * (n.x * n.z)
                   + falling[8] * (n.x * n.x - n.y * n.y),
               vec3(0.0));
}

// The share of a lamp's light that comes to this place, and the direction to the lamp.
float LightOfLamp(int i, out vec3 direction)
{
    vec4 position = gl_LightSource[i].position;
    if (position.w == 0.0)
    {
        direction = normalize(position.xyz);
        return 1.0;
    }
    vec3 way = position.xyz / position.w - place;
    float far = length(way);
    direction = way / max(far, 1e-6);
    float light = 1.0 / (gl_LightSource[i].constantAttenuation
                         + gl_LightSource[i].linearAttenuation * far
                         + gl_LightSource[i].quadraticAttenuation * far * far);
    if (gl_LightSource[i].spotCutoff <= 90.0)
    {
        float along = dot(-direction, normalize(gl_LightSource[i].spotDirection));
        light *= along < gl_LightSource[i].spotCosCutoff
                     ? 0.0
                     : pow(max(along, 1e-6), gl_LightSource[i].spotExponent);
    }
    return light;
}

void main()
{
    vec3 toViewer = isPerspective ? normalize(-place) : vec3(0.0, 0.0, 1.0);
    vec3 n = normalize(surfaceNormal);
    // The normals of imported meshes point inward, and back faces of open meshes are seen as well.
    vec3 flat_ = cross(dFdx(place), dFdy(place));
    flat_ = dot(flat_, toViewer) < 0.0 ? -flat_ : flat_;
    n = dot(n, flat_) < 0.0 ? -n : n;
    float seen = max(dot(n, toViewer), 0.02);

    vec4 base = baseColor;
    if (textureUse != 0)
    {
        vec4 picture = texture(surfacePicture, texturePlace);
        vec3 color = FromScreen(picture.rgb);
        base.rgb = textureUse == 1 ? base.rgb * color : color;
    }
    vec3 body = base.rgb * (1.0 - metal);
    vec3 mirror = mix(vec3(0.04), base.rgb, metal);
    float alpha = roughness * roughness;
    float alpha2 = alpha * alpha;

    vec3 light = emission;
    for (int i = 0; i < 8; ++i)
    {
        if ((lamps & (1 << i)) == 0)
        {
            continue;
        }
        vec3 toLamp;
        float share = LightOfLamp(i, toLamp);
        float facing = dot(n, toLamp);
        if (facing <= 0.0 || share <= 0.0)
        {
            continue;
        }
        vec3 middle = normalize(toLamp + toViewer);
        float peak = max(dot(n, middle), 0.0);
        float falloff = peak * peak * (alpha2 - 1.0) + 1.0;
        float facets = alpha2 / (falloff * falloff);  // times pi
        float visible = 0.5 / mix(2.0 * facing * seen, facing + seen, alpha);
        float grazing = pow(1.0 - max(dot(middle, toViewer), 0.0), 5.0);
        vec3 fresnel = mirror + (1.0 - mirror) * grazing;
        light += facing * share
                 * (gl_LightSource[i].diffuse.rgb * body * (1.0 - fresnel)
                    + gl_LightSource[i].specular.rgb * fresnel * (facets * visible));
    }

    vec4 r = roughness * vec4(-1.0, -0.0275, -0.572, 0.022) + vec4(1.0, 0.0425, 1.04, -0.04);
    float a = min(r.x * r.x, exp2(-9.28 * seen)) * r.x + r.y;
    vec2 weights = vec2(-1.04, 1.04) * a + r.zw;
    vec3 reflected = mirror * weights.x + weights.y;
    light += Falling(n) * ambient * body * (1.0 - reflected);
    light += Mirrored(reflect(-toViewer, n)) * reflected;

    // What a transparent surface mirrors is as bright as on an opaque one.
    float opacity = base.a + (1.0 - base.a) * max(reflected.r, max(reflected.g, reflected.b));
    gl_FragColor = vec4(ToScreen(clamp(Compressed(light * exposure), 0.0, 1.0)), opacity);
}
)";

}  // namespace orvane
