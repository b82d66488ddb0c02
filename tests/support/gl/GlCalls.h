// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The inside of the OpenGL recorder: its state, and what turns a call into a line. Only the files
/// that define the recorded functions include it.

#include "tests/support/gl/GlRecorder.h"

#include <deque>
#include <limits>
#include <map>
#include <mutex>
#include <span>

namespace gl_calls
{

/// Arguments whose texts differ from their numbers.
struct Enum
{
    GLenum value;
};
struct Primitive
{
    GLenum mode;
};
struct BlendFactor
{
    GLenum factor;
};
struct Bits
{
    GLbitfield bits;
};
struct ClientBits
{
    GLbitfield bits;
};
struct Boolean
{
    GLboolean value;
};
struct Memory
{
    const void* address;
};
/// The values of a parameter (glLightfv and the like), as many as it has.
template <typename Number>
struct Parameters
{
    GLenum name;
    const Number* values;
};

/// The name of an enumerator from 0x100 up; null for one that the recorder doesn't know.
const char* EnumName(GLenum value);

/// Whether a parameter's value is an enumerator.
bool TakesNames(GLenum parameter);
/// How many values a parameter has.
int ParameterCount(GLenum parameter);

std::string Text(Enum argument);
std::string Text(Primitive argument);
std::string Text(BlendFactor argument);
std::string Text(Bits argument);
std::string Text(ClientBits argument);
std::string Text(Boolean argument);
std::string Text(Memory argument);
template <typename Number>
requires std::integral<Number> || std::floating_point<Number> std::string Text(Number argument)
{
    return GlNumber(argument);
}
template <typename Number>
std::string Text(std::span<const Number> values)
{
    std::string text;
    for (const Number value : values)
    {
        text += text.empty() ? "" : " ";
        text += GlNumber(value);
    }
    return text;
}

/// An array argument of \p count values.
template <typename Number>
std::span<const Number> Array(const Number* values, int count)
{
    return {values, static_cast<std::size_t>(values == nullptr || count < 0 ? 0 : count)};
}
template <typename Number>
std::string Text(Parameters<Number> argument)
{
    if (TakesNames(argument.name))
    {
        return Text(Enum{static_cast<GLenum>(argument.values[0])});
    }
    return Text(Array(argument.values, ParameterCount(argument.name)));
}

// The same arguments as numbers.
template <typename Number>
requires std::integral<Number> || std::floating_point<Number>
void AddNumbers(std::vector<double>& numbers, Number argument)
{
    numbers.push_back(static_cast<double>(argument));
}
inline void AddNumbers(std::vector<double>& numbers, Enum argument)
{
    numbers.push_back(argument.value);
}
inline void AddNumbers(std::vector<double>& numbers, Primitive argument)
{
    numbers.push_back(argument.mode);
}
inline void AddNumbers(std::vector<double>& numbers, BlendFactor argument)
{
    numbers.push_back(argument.factor);
}
inline void AddNumbers(std::vector<double>& numbers, Bits argument)
{
    numbers.push_back(argument.bits);
}
inline void AddNumbers(std::vector<double>& numbers, ClientBits argument)
{
    numbers.push_back(argument.bits);
}
inline void AddNumbers(std::vector<double>& numbers, Boolean argument)
{
    numbers.push_back(argument.value);
}
inline void AddNumbers(std::vector<double>&, Memory) {}
template <typename Number>
void AddNumbers(std::vector<double>& numbers, std::span<const Number> values)
{
    numbers.insert(numbers.end(), values.begin(), values.end());
}
template <typename Number>
void AddNumbers(std::vector<double>& numbers, Parameters<Number> argument)
{
    AddNumbers(numbers, Array(argument.values, ParameterCount(argument.name)));
}

struct PlannedError
{
    std::string function;
    GLenum error;
    int calls;
};

struct SavedAttributes
{
    GLbitfield mask;
    std::map<GLenum, std::vector<double>> answers;
};

struct State
{
    State();

    struct Line
    {
        std::string text;
        bool inner;
        GlCall call;
    };
    std::vector<Line> lines;
    std::vector<GlVertex> vertices;
    std::map<GLenum, std::vector<double>> answers;  // by the name that a query asks for
    std::deque<GLenum> errors;
    std::vector<PlannedError> plannedErrors;
    std::vector<SavedAttributes> attributes;
    std::vector<SavedAttributes> clientAttributes;
    bool insideBegin = false;
    GLenum primitive = 0;
    int primitives = 0;
    GLint hits = 0;
    GLuint nextName = 1;          // of lists and textures
    GLint imageSize[2] = {0, 0};  // of the last texture image
};

/// The state, with the lock that guards it held.
struct Locked
{
    std::unique_lock<std::recursive_mutex> lock;
    State& state;

    State* operator->() { return &state; }
};
Locked TheState();
void ResetState();
void SetRecording(bool recording);

/// Adds a line. \p arguments with a space before each.
void AddLine(const char* name, const std::string& arguments, std::vector<double> numbers = {});

template <typename... Arguments>
void Call(const char* name, const Arguments&... arguments)
{
    std::string text;
    std::vector<double> numbers;
    ((text += ' ', text += Text(arguments), AddNumbers(numbers, arguments)), ...);
    AddLine(name, text, std::move(numbers));
}

/// Remembers what the query of \p name answers from now on.
template <typename... Values>
void Keep(GLenum name, Values... values)
{
    TheState()->answers[name] = {static_cast<double>(values)...};
}

double Answer(GLenum name);
void PushStack(GLenum depthName, GLenum limitName);
void PopStack(GLenum depthName, int emptyDepth);
/// The stack depth that a matrix mode stands for, and its limit.
GLenum DepthName(GLenum matrixMode);
GLenum DepthLimitName(GLenum matrixMode);

/// Marks the calls that GLU makes on this thread as inner, while it lives.
class InsideGlu
{
public:
    InsideGlu();
    ~InsideGlu();
    InsideGlu(const InsideGlu&) = delete;
    InsideGlu& operator=(const InsideGlu&) = delete;
};
bool IsInsideGlu();

}  // namespace gl_calls

// A function that is only recorded: GL_CALL(glCullFace, (GLenum mode), Enum{mode});
#define GL_CALL(name, parameters, ...)          \
    void name parameters                        \
    {                                           \
        using namespace gl_calls;               \
        Call(#name __VA_OPT__(, ) __VA_ARGS__); \
    }                                           \
    static_assert(true)
