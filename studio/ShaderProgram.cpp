// SPDX-License-Identifier: MIT
#include "studio/ShaderProgram.h"

#include "orvane/Error.h"
#include "platform/Rendering.h"
#include "solids/MeshBuffers.h"

#include <type_traits>

#if !defined(APIENTRY)
#define APIENTRY
#endif

namespace orvane
{

namespace
{
// Names that OpenGL 1.1 does not have.
constexpr GLenum fragmentShaderType = 0x8B30;
constexpr GLenum vertexShaderType = 0x8B31;
constexpr GLenum compileStatus = 0x8B81;
constexpr GLenum linkStatus = 0x8B82;
constexpr GLenum currentProgram = 0x8B8D;
constexpr GLenum firstTextureUnit = 0x84C0;
}  // namespace

struct ShaderFunctions
{
    GLuint(APIENTRY* createShader)(GLenum);
    void(APIENTRY* shaderSource)(GLuint, GLsizei, const char* const*, const GLint*);
    void(APIENTRY* compileShader)(GLuint);
    void(APIENTRY* getShader)(GLuint, GLenum, GLint*);
    void(APIENTRY* getShaderLog)(GLuint, GLsizei, GLsizei*, char*);
    void(APIENTRY* deleteShader)(GLuint);
    GLuint(APIENTRY* createProgram)();
    void(APIENTRY* attachShader)(GLuint, GLuint);
    void(APIENTRY* linkProgram)(GLuint);
    void(APIENTRY* getProgram)(GLuint, GLenum, GLint*);
    void(APIENTRY* getProgramLog)(GLuint, GLsizei, GLsizei*, char*);
    void(APIENTRY* deleteProgram)(GLuint);
    void(APIENTRY* useProgram)(GLuint);
    GLint(APIENTRY* getUniformLocation)(GLuint, const char*);
    void(APIENTRY* uniform1i)(GLint, GLint);
    void(APIENTRY* uniform1f)(GLint, GLfloat);
    void(APIENTRY* uniform3fv)(GLint, GLsizei, const GLfloat*);
    void(APIENTRY* uniform4fv)(GLint, GLsizei, const GLfloat*);
    void(APIENTRY* activeTexture)(GLenum);
};

namespace
{

std::unique_ptr<const ShaderFunctions> FindFunctions()
{
    constexpr double leastVersion = 3.0;
    if (CurrentOpenGLVersion() < leastVersion)
    {
        throw Error("OpenGL", "a context without shaders of GLSL 1.30", "OpenGL 3.0 or later");
    }
    auto found = std::make_unique<ShaderFunctions>();
    const auto find = [](auto& function, const char* name) {
        function =
            reinterpret_cast<std::remove_reference_t<decltype(function)>>(GetOpenGLFunction(name));
        if (function == nullptr)
        {
            throw Error("OpenGL", std::string("no function ") + name, "OpenGL 3.0 or later");
        }
    };
    find(found->createShader, "glCreateShader");
    find(found->shaderSource, "glShaderSource");
    find(found->compileShader, "glCompileShader");
    find(found->getShader, "glGetShaderiv");
    find(found->getShaderLog, "glGetShaderInfoLog");
    find(found->deleteShader, "glDeleteShader");
    find(found->createProgram, "glCreateProgram");
    find(found->attachShader, "glAttachShader");
    find(found->linkProgram, "glLinkProgram");
    find(found->getProgram, "glGetProgramiv");
    find(found->getProgramLog, "glGetProgramInfoLog");
    find(found->deleteProgram, "glDeleteProgram");
    find(found->useProgram, "glUseProgram");
    find(found->getUniformLocation, "glGetUniformLocation");
    find(found->uniform1i, "glUniform1i");
    find(found->uniform1f, "glUniform1f");
    find(found->uniform3fv, "glUniform3fv");
    find(found->uniform4fv, "glUniform4fv");
    find(found->activeTexture, "glActiveTexture");
    return found;
}

using StatusFunction = void(APIENTRY*)(GLuint, GLenum, GLint*);
using LogFunction = void(APIENTRY*)(GLuint, GLsizei, GLsizei*, char*);

/// Throws Error with OpenGL's message when a shader or program is not as it should be.
void Check(GLuint object, StatusFunction status, GLenum which, LogFunction log)
{
    GLint isDone = 0;
    status(object, which, &isDone);
    if (isDone == 0)
    {
        std::string text(2000, '\0');
        GLsizei length = 0;
        log(object, static_cast<GLsizei>(text.size()), &length, text.data());
        text.resize(static_cast<std::size_t>(length));
        throw Error("OpenGL", "the shaders of the studio renderer are refused: " + text);
    }
}

void AddShader(const ShaderFunctions& functions, GLuint program, GLenum type, const char* text)
{
    const GLuint shader = functions.createShader(type);
    functions.shaderSource(shader, 1, &text, nullptr);
    functions.compileShader(shader);
    functions.attachShader(program, shader);
    functions.deleteShader(shader);  // the program keeps it
    Check(shader, functions.getShader, compileStatus, functions.getShaderLog);
}

}  // namespace

ShaderProgram::ShaderProgram(const char* vertexShader, const char* fragmentShader)
    : functions_(FindFunctions()), program_(functions_->createProgram())
{
    try
    {
        AddShader(*functions_, program_, vertexShaderType, vertexShader);
        AddShader(*functions_, program_, fragmentShaderType, fragmentShader);
        functions_->linkProgram(program_);
        Check(program_, functions_->getProgram, linkStatus, functions_->getProgramLog);
    }
    catch (const Error&)
    {
        functions_->deleteProgram(program_);
        throw;
    }
}

ShaderProgram::~ShaderProgram()
{
    functions_->deleteProgram(program_);
}

GLint ShaderProgram::PlaceOf(const char* name) const
{
    return functions_->getUniformLocation(program_, name);
}

void ShaderProgram::Set(const char* name, int value) const
{
    functions_->uniform1i(PlaceOf(name), value);
}

void ShaderProgram::Set(const char* name, float value) const
{
    functions_->uniform1f(PlaceOf(name), value);
}

void ShaderProgram::Set(const char* name, const std::array<float, 4>& value) const
{
    functions_->uniform4fv(PlaceOf(name), 1, value.data());
}

void ShaderProgram::Set(const char* name, const std::array<float, 3>& value) const
{
    functions_->uniform3fv(PlaceOf(name), 1, value.data());
}

void ShaderProgram::Set(const char* name, const std::array<float, 3>* values, int count) const
{
    functions_->uniform3fv(PlaceOf(name), count, values->data());
}

ShaderProgram::Usage::Usage(const ShaderProgram& program) : program_(program)
{
    glGetIntegerv(currentProgram, &previous_);
    program_.functions_->useProgram(program_.program_);
}

ShaderProgram::Usage::~Usage()
{
    program_.functions_->useProgram(static_cast<GLuint>(previous_));
}

void ShaderProgram::SelectTextureUnit(int unit) const
{
    functions_->activeTexture(firstTextureUnit + static_cast<GLenum>(unit));
}

}  // namespace orvane
