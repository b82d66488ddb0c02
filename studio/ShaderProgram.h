// SPDX-License-Identifier: MIT
#pragma once

#include "platform/OpenGL.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace orvane
{

struct ShaderFunctions;

/// A vertex shader and a fragment shader of the current OpenGL context. The destructor and all
/// functions need the same context.
class ShaderProgram
{
public:
    /// Throws Error when the context has no shaders of GLSL 1.30 (OpenGL 3.0), or refuses these.
    ShaderProgram(const char* vertexShader, const char* fragmentShader);
    ~ShaderProgram();
    ShaderProgram(const ShaderProgram&) = delete;
    ShaderProgram& operator=(const ShaderProgram&) = delete;

    /// The uniform variables of the shaders, for the program that is in use. A name that the
    /// shaders do not use is ignored.
    void Set(const char* name, int value) const;
    void Set(const char* name, float value) const;
    void Set(const char* name, const std::array<float, 4>& value) const;
    void Set(const char* name, const std::array<float, 3>& value) const;
    /// An array of vectors.
    void Set(const char* name, const std::array<float, 3>* values, int count) const;

    /// As long as it lives, OpenGL draws with the program. Afterwards it draws as before.
    class Usage
    {
    public:
        explicit Usage(const ShaderProgram& program);
        ~Usage();
        Usage(const Usage&) = delete;
        Usage& operator=(const Usage&) = delete;

    private:
        const ShaderProgram& program_;
        GLint previous_ = 0;
    };

    /// Makes texture unit 0 or 1 the one that OpenGL's texture functions are for.
    void SelectTextureUnit(int unit) const;

private:
    GLint PlaceOf(const char* name) const;

    std::unique_ptr<const ShaderFunctions> functions_;
    GLuint program_ = 0;
};

}  // namespace orvane
