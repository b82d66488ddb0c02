// SPDX-License-Identifier: MIT
#include "solids/drawing/ShaderProgram.h"

#include "orvane/Error.h"
#include "solids/drawing/OpenGLFunctions.h"

#include <string>

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
    void(APIENTRY* bindAttribute)(GLuint, GLuint, const char*);
    void(APIENTRY* linkProgram)(GLuint);
    void(APIENTRY* getProgram)(GLuint, GLenum, GLint*);
    void(APIENTRY* getProgramLog)(GLuint, GLsizei, GLsizei*, char*);
    void(APIENTRY* deleteProgram)(GLuint);
    void(APIENTRY* useProgram)(GLuint);
    GLint(APIENTRY* getUniformLocation)(GLuint, const char*);
    void(APIENTRY* uniform1i)(GLint, GLint);
    void(APIENTRY* uniform1f)(GLint, GLfloat);
    void(APIENTRY* uniform1fv)(GLint, GLsizei, const GLfloat*);
    void(APIENTRY* uniform3fv)(GLint, GLsizei, const GLfloat*);
    void(APIENTRY* uniform4fv)(GLint, GLsizei, const GLfloat*);
    void(APIENTRY* uniformMatrix3fv)(GLint, GLsizei, GLboolean, const GLfloat*);
    void(APIENTRY* uniformMatrix4fv)(GLint, GLsizei, GLboolean, const GLfloat*);
    void(APIENTRY* activeTexture)(GLenum);
    void(APIENTRY* vertexAttribute)(GLuint, GLint, GLenum, GLboolean, GLsizei, const void*);
    void(APIENTRY* enableAttribute)(GLuint);
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
    FunctionFinder finder;
    finder.Find(found->createShader, "glCreateShader");
    finder.Find(found->shaderSource, "glShaderSource");
    finder.Find(found->compileShader, "glCompileShader");
    finder.Find(found->getShader, "glGetShaderiv");
    finder.Find(found->getShaderLog, "glGetShaderInfoLog");
    finder.Find(found->deleteShader, "glDeleteShader");
    finder.Find(found->createProgram, "glCreateProgram");
    finder.Find(found->attachShader, "glAttachShader");
    finder.Find(found->bindAttribute, "glBindAttribLocation");
    finder.Find(found->linkProgram, "glLinkProgram");
    finder.Find(found->getProgram, "glGetProgramiv");
    finder.Find(found->getProgramLog, "glGetProgramInfoLog");
    finder.Find(found->deleteProgram, "glDeleteProgram");
    finder.Find(found->useProgram, "glUseProgram");
    finder.Find(found->getUniformLocation, "glGetUniformLocation");
    finder.Find(found->uniform1i, "glUniform1i");
    finder.Find(found->uniform1f, "glUniform1f");
    finder.Find(found->uniform1fv, "glUniform1fv");
    finder.Find(found->uniform3fv, "glUniform3fv");
    finder.Find(found->uniform4fv, "glUniform4fv");
    finder.Find(found->uniformMatrix3fv, "glUniformMatrix3fv");
    finder.Find(found->uniformMatrix4fv, "glUniformMatrix4fv");
    finder.Find(found->activeTexture, "glActiveTexture");
    finder.Find(found->vertexAttribute, "glVertexAttribPointer");
    finder.Find(found->enableAttribute, "glEnableVertexAttribArray");
    if (!finder.HasAll())
    {
        throw Error("OpenGL", "no functions for shaders", "OpenGL 3.0 or later");
    }
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
        throw Error("OpenGL", "the shaders are refused: " + text);
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

ShaderProgram::ShaderProgram(const char* vertexShader, const char* fragmentShader,
                             std::initializer_list<const char*> attributes)
    : functions_(FindFunctions()), program_(functions_->createProgram())
{
    try
    {
        AddShader(*functions_, program_, vertexShaderType, vertexShader);
        AddShader(*functions_, program_, fragmentShaderType, fragmentShader);
        GLuint number = 0;
        for (const char* const attribute : attributes)
        {
            functions_->bindAttribute(program_, number++, attribute);
        }
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

void ShaderProgram::Set(const char* name, const float* values, int count) const
{
    functions_->uniform1fv(PlaceOf(name), count, values);
}

void ShaderProgram::Set(const char* name, const std::array<float, 3>* values, int count) const
{
    functions_->uniform3fv(PlaceOf(name), count, values->data());
}

void ShaderProgram::Set(const char* name, const std::array<float, 4>* values, int count) const
{
    functions_->uniform4fv(PlaceOf(name), count, values->data());
}

void ShaderProgram::Set(const char* name, const std::array<float, 9>& matrix) const
{
    functions_->uniformMatrix3fv(PlaceOf(name), 1, GL_FALSE, matrix.data());
}

void ShaderProgram::Set(const char* name, const std::array<float, 16>& matrix) const
{
    functions_->uniformMatrix4fv(PlaceOf(name), 1, GL_FALSE, matrix.data());
}

void ShaderProgram::SetAttribute(unsigned number, int count, std::size_t stride,
                                 std::size_t offset) const
{
    functions_->vertexAttribute(number, count, GL_FLOAT, GL_FALSE, static_cast<GLsizei>(stride),
                                PlaceInBuffer(offset));
    functions_->enableAttribute(number);
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
