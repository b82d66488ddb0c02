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
out vec3 placeInLetter;

void main()
{
    vec4 seen = gl_ModelViewMatrix * gl_Vertex;
    place = seen.xyz / seen.w;
    surfaceNormal = gl_NormalMatrix * gl_Normal;
    texturePlace = (gl_TextureMatrix[0] * gl_MultiTexCoord0).xy;
    placeInLetter = gl_Vertex.xyz;
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
in vec3 placeInLetter;       // in ems

uniform vec4 baseColor;      // linear, with the opacity
uniform vec3 emission;       // linear
uniform float metal;         // 0 or 1
uniform float roughness;
uniform int pattern;         // 0: none, 1: wood, 2: marble
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

float Chance(vec3 cell)
{
    return fract(sin(dot(cell, vec3(12.9898, 78.233, 37.719))) * 43758.5453);
}

// Smooth noise from 0 to 1.
float Noise(vec3 at)
{
    vec3 cell = floor(at);
    vec3 t = at - cell;
    t = t * t * (3.0 - 2.0 * t);
    float sum = 0.0;
    for (int i = 0; i < 8; ++i)
    {
        vec3 corner = vec3(float(i & 1), float((i >> 1) & 1), float(i >> 2));
        vec3 share = mix(1.0 - t, t, corner);
        sum += share.x * share.y * share.z * Chance(cell + corner);
    }
    return sum;
}

float Clouds(vec3 at)
{
    return (Noise(at) + 0.5 * Noise(at * 2.1 + 7.0) + 0.25 * Noise(at * 4.3 + 19.0)) / 1.75;
}

// How bright the material is at this place.
vec3 Pattern()
{
    if (pattern == 1)
    {
        // Rings around an axis far below, which the letter's height cuts lengthwise, and fibres.
        vec3 at = vec3(placeInLetter.x * 0.35, placeInLetter.y * 1.5, placeInLetter.z * 1.5);
        float rings = length(at.yz + vec2(1.3, 2.2)) * 9.0 + 1.6 * Clouds(at * vec3(2.0, 3.0, 3.0));
        float ring = fract(rings);
        float late = smoothstep(0.35, 0.95, ring) * (1.0 - smoothstep(0.95, 1.0, ring));
        float fibre = Noise(placeInLetter * vec3(14.0, 160.0, 160.0));
        return mix(vec3(1.25, 1.2, 1.15), vec3(0.62, 0.5, 0.42), late) * (0.86 + 0.28 * fibre);
    }
    if (pattern == 2)
    {
        // Veins lie where noise has its middle value, wide and narrow ones, bent by other noise.
        vec3 at = placeInLetter + 0.35 * vec3(Clouds(placeInLetter * 3.0 + 31.0),
                                              Clouds(placeInLetter * 3.0 + 57.0), 0.0);
        float wide = 1.0 - smoothstep(0.0, 0.10, abs(Clouds(at * vec3(1.6, 2.6, 1.6)) - 0.5));
        float narrow = 1.0 - smoothstep(0.0, 0.025, abs(Clouds(at * vec3(3.1, 5.0, 3.1) + 9.0) - 0.5));
        float clouds = Clouds(at * 5.0 + 3.0);
        float dark = clamp(0.42 * wide * wide * clouds + 0.5 * narrow * clouds, 0.0, 1.0);
        return mix(vec3(1.05), vec3(0.36, 0.38, 0.42), dark) * (0.95 + 0.08 * clouds);
    }
    return vec3(1.0);
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
    base.rgb *= Pattern();
    vec3 body = base.rgb * (1.0 - metal);
    vec3 mirror = mix(vec3(0.04), base.rgb, metal);
    float alpha = roughness * roughness;
    float alpha2 = alpha * alpha;

    vec3 bodyLight = emission;  // what a transparent body lets through dims this
    vec3 mirrored = vec3(0.0);  // this not
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
        bodyLight += facing * share * gl_LightSource[i].diffuse.rgb * body * (1.0 - fresnel);
        mirrored += facing * share * gl_LightSource[i].specular.rgb * fresnel * (facets * visible);
    }

    vec4 r = roughness * vec4(-1.0, -0.0275, -0.572, 0.022) + vec4(1.0, 0.0425, 1.04, -0.04);
    float a = min(r.x * r.x, exp2(-9.28 * seen)) * r.x + r.y;
    vec2 weights = vec2(-1.04, 1.04) * a + r.zw;
    vec3 reflected = mirror * weights.x + weights.y;
    bodyLight += Falling(n) * ambient * body * (1.0 - reflected);
    mirrored += Mirrored(reflect(-toViewer, n)) * reflected;

    // Light goes a longer way through the material where it is seen from the side.
    float bodyOpacity = 1.0 - (1.0 - base.a) * mix(1.0, 0.35, pow(1.0 - seen, 2.0));
    float mirrorOpacity = min(max(mirrored.r, max(mirrored.g, mirrored.b)) * exposure, 1.0);
    float opacity = bodyOpacity + (1.0 - bodyOpacity) * mirrorOpacity;
    vec3 light = (bodyLight * bodyOpacity + mirrored) / max(opacity, 0.001);
    gl_FragColor = vec4(ToScreen(clamp(Compressed(light * exposure), 0.0, 1.0)), opacity);
}
)";

}  // namespace orvane
