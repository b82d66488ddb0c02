// SPDX-License-Identifier: MIT
#pragma once

#include "platform/OpenGL.h"

#include <array>
#include <cstddef>
#include <initializer_list>
#include <memory>

namespace orvane
{

struct ShaderFunctions;

/// A vertex shader and a fragment shader of the current OpenGL context. The destructor and all
/// functions need the same context.
class ShaderProgram
{
public:
    /// Throws Error when the context has no shaders of GLSL 1.30 (OpenGL 3.0), or refuses these.
    /// \param attributes the vertex shader's own inputs, which get the numbers 0, 1, ...
    ShaderProgram(const char* vertexShader, const char* fragmentShader,
                  std::initializer_list<const char*> attributes = {});
    ~ShaderProgram();
    ShaderProgram(const ShaderProgram&) = delete;
    ShaderProgram& operator=(const ShaderProgram&) = delete;

    /// The uniform variables of the shaders, for the program that is in use. A name that the
    /// shaders do not use is ignored.
    void Set(const char* name, int value) const;
    void Set(const char* name, float value) const;
    void Set(const char* name, const std::array<float, 4>& value) const;
    void Set(const char* name, const std::array<float, 3>& value) const;
    /// Arrays.
    void Set(const char* name, const float* values, int count) const;
    void Set(const char* name, const std::array<float, 3>* values, int count) const;
    void Set(const char* name, const std::array<float, 4>* values, int count) const;
    /// Matrices of 3 x 3 and 4 x 4 numbers, column by column.
    void Set(const char* name, const std::array<float, 9>& matrix) const;
    void Set(const char* name, const std::array<float, 16>& matrix) const;

    /// Makes the bound vertex array object take an attribute of \p count floats from the bound
    /// buffer, the first at byte \p offset and the next ones \p stride bytes apart.
    void SetAttribute(unsigned number, int count, std::size_t stride, std::size_t offset) const;

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
