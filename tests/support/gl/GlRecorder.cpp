// SPDX-License-Identifier: MIT
#include "tests/support/gl/GlRecorder.h"

#include "tests/support/gl/GlCalls.h"

#include <algorithm>
#include <stdexcept>

namespace gl_calls
{
namespace
{

std::recursive_mutex theMutex;
bool isRecording = false;
thread_local int gluDepth = 0;

State& StateObject()
{
    static State state;
    return state;
}

std::vector<double> Identity()
{
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
}

}  // namespace

State::State()
    : answers{
          // Limits, as the software renderer has them.
          {GL_MAX_LIGHTS, {8}},
          {GL_MAX_CLIP_PLANES, {8}},
          {GL_MAX_TEXTURE_SIZE, {2048}},
          {GL_MAX_MODELVIEW_STACK_DEPTH, {32}},
          {GL_MAX_PROJECTION_STACK_DEPTH, {32}},
          {GL_MAX_TEXTURE_STACK_DEPTH, {10}},
          {GL_MAX_NAME_STACK_DEPTH, {64}},
          {GL_MAX_ATTRIB_STACK_DEPTH, {16}},
          {GL_MAX_CLIENT_ATTRIB_STACK_DEPTH, {16}},
          {GL_MAX_VIEWPORT_DIMS, {16384, 16384}},
          {GL_RED_BITS, {8}},
          {GL_GREEN_BITS, {8}},
          {GL_BLUE_BITS, {8}},
          {GL_ALPHA_BITS, {8}},
          {GL_DEPTH_BITS, {24}},
          {GL_STENCIL_BITS, {8}},
          {GL_RGBA_MODE, {1}},
          // The initial state.
          {GL_MATRIX_MODE, {GL_MODELVIEW}},
          {GL_MODELVIEW_STACK_DEPTH, {1}},
          {GL_PROJECTION_STACK_DEPTH, {1}},
          {GL_TEXTURE_STACK_DEPTH, {1}},
          {GL_NAME_STACK_DEPTH, {0}},
          {GL_ATTRIB_STACK_DEPTH, {0}},
          {GL_CLIENT_ATTRIB_STACK_DEPTH, {0}},
          {GL_MODELVIEW_MATRIX, Identity()},
          {GL_PROJECTION_MATRIX, Identity()},
          {GL_TEXTURE_MATRIX, Identity()},
          {GL_VIEWPORT, {0, 0, 100, 100}},
          {GL_DEPTH_RANGE, {0, 1}},
          {GL_RENDER_MODE, {GL_RENDER}},
          {GL_CURRENT_COLOR, {1, 1, 1, 1}},
          {GL_CURRENT_NORMAL, {0, 0, 1}},
          {GL_CURRENT_TEXTURE_COORDS, {0, 0, 0, 1}},
          {GL_CURRENT_RASTER_POSITION, {0, 0, 0, 1}},
          {GL_CURRENT_RASTER_POSITION_VALID, {1}},
          {GL_COLOR_CLEAR_VALUE, {0, 0, 0, 0}},
          {GL_COLOR_WRITEMASK, {1, 1, 1, 1}},
          {GL_DEPTH_WRITEMASK, {1}},
          {GL_DEPTH_FUNC, {GL_LESS}},
          {GL_DEPTH_CLEAR_VALUE, {1}},
          {GL_FRONT_FACE, {GL_CCW}},
          {GL_CULL_FACE_MODE, {GL_BACK}},
          {GL_POLYGON_MODE, {GL_FILL, GL_FILL}},
          {GL_SHADE_MODEL, {GL_SMOOTH}},
          {GL_BLEND_SRC, {GL_ONE}},
          {GL_BLEND_DST, {GL_ZERO}},
          {GL_DRAW_BUFFER, {GL_BACK}},
          {GL_READ_BUFFER, {GL_BACK}},
          {GL_LIGHT_MODEL_AMBIENT, {0.2, 0.2, 0.2, 1}},
          {GL_SCISSOR_BOX, {0, 0, 100, 100}},
          {GL_DITHER, {1}},
          {GL_PACK_ALIGNMENT, {4}},
          {GL_UNPACK_ALIGNMENT, {4}},
      }
{}

Locked TheState()
{
    return {std::unique_lock(theMutex), StateObject()};
}

void ResetState()
{
    TheState().state = State();
}

void SetRecording(bool recording)
{
    const Locked state = TheState();
    if (recording && isRecording)
    {
        throw std::logic_error("a GlRecording is running already");
    }
    isRecording = recording;
}

void AddLine(const char* name, const std::string& arguments, std::vector<double> numbers)
{
    Locked state = TheState();
    for (PlannedError& planned : state->plannedErrors)
    {
        if (planned.function == name && --planned.calls == 0)
        {
            state->errors.push_back(planned.error);
        }
    }
    if (isRecording)
    {
        const bool inner = IsInsideGlu();
        state->lines.push_back(
            {(inner ? "  " : "") + (name + arguments), inner, {name, std::move(numbers)}});
    }
}

double Answer(GLenum name)
{
    Locked state = TheState();
    const auto found = state->answers.find(name);
    return found == state->answers.end() || found->second.empty() ? 0 : found->second[0];
}

void PushStack(GLenum depthName, GLenum limitName)
{
    Locked state = TheState();
    const double depth = Answer(depthName);
    if (depth >= Answer(limitName))
    {
        state->errors.push_back(GL_STACK_OVERFLOW);
        return;
    }
    Keep(depthName, depth + 1);
}

void PopStack(GLenum depthName, int emptyDepth)
{
    Locked state = TheState();
    const double depth = Answer(depthName);
    if (depth <= emptyDepth)
    {
        state->errors.push_back(GL_STACK_UNDERFLOW);
        return;
    }
    Keep(depthName, depth - 1);
}

GLenum DepthName(GLenum matrixMode)
{
    return matrixMode == GL_PROJECTION ? GL_PROJECTION_STACK_DEPTH
           : matrixMode == GL_TEXTURE  ? GL_TEXTURE_STACK_DEPTH
                                       : GL_MODELVIEW_STACK_DEPTH;
}

GLenum DepthLimitName(GLenum matrixMode)
{
    return matrixMode == GL_PROJECTION ? GL_MAX_PROJECTION_STACK_DEPTH
           : matrixMode == GL_TEXTURE  ? GL_MAX_TEXTURE_STACK_DEPTH
                                       : GL_MAX_MODELVIEW_STACK_DEPTH;
}

InsideGlu::InsideGlu()
{
    ++gluDepth;
}

InsideGlu::~InsideGlu()
{
    --gluDepth;
}

bool IsInsideGlu()
{
    return gluDepth > 0;
}

}  // namespace gl_calls

using gl_calls::Answer;
using gl_calls::Locked;
using gl_calls::TheState;

namespace
{

bool IsOneOf(std::string_view line, GlRecording::Names names)
{
    const std::string_view name = line.substr(0, line.find(' '));
    return std::find(names.begin(), names.end(), name) != names.end();
}

template <typename Wanted>
std::vector<std::string> LinesWhere(Wanted wanted)
{
    Locked state = TheState();
    std::vector<std::string> lines;
    for (const gl_calls::State::Line& line : state->lines)
    {
        if (wanted(line))
        {
            lines.push_back(line.text);
        }
    }
    return lines;
}

}  // namespace

GlRecording::GlRecording()
{
    gl_calls::SetRecording(true);
    gl_calls::ResetState();
}

GlRecording::~GlRecording()
{
    gl_calls::SetRecording(false);
    gl_calls::ResetState();
}

std::vector<std::string> GlRecording::Lines() const
{
    return LinesWhere([](const auto& line) { return !line.inner; });
}

std::vector<GlCall> GlRecording::Calls() const
{
    Locked state = TheState();
    std::vector<GlCall> calls;
    for (const gl_calls::State::Line& line : state->lines)
    {
        if (!line.inner)
        {
            calls.push_back(line.call);
        }
    }
    return calls;
}

std::vector<std::string> GlRecording::AllLines() const
{
    return LinesWhere([](const auto&) { return true; });
}

std::vector<std::string> GlRecording::Only(Names names) const
{
    return LinesWhere([=](const auto& line) { return !line.inner && IsOneOf(line.text, names); });
}

std::vector<std::string> GlRecording::Without(Names names) const
{
    return LinesWhere([=](const auto& line) { return !line.inner && !IsOneOf(line.text, names); });
}

int GlRecording::Count(std::string_view name) const
{
    return static_cast<int>(Only({name}).size());
}

std::string GlRecording::Text() const
{
    std::string text;
    for (const std::string& line : Lines())
    {
        text += line + '\n';
    }
    return text;
}

std::vector<GlVertex> GlRecording::Vertices() const
{
    return TheState()->vertices;
}

void GlRecording::Clear()
{
    Locked state = TheState();
    state->lines.clear();
    state->vertices.clear();
    state->primitives = 0;
}

void GlRecording::SetInteger(GLenum name, const std::vector<GLint>& values)
{
    TheState()->answers[name].assign(values.begin(), values.end());
}

void GlRecording::SetDouble(GLenum name, const std::vector<double>& values)
{
    TheState()->answers[name] = values;
}

void GlRecording::SetEnabled(GLenum capability, bool enabled)
{
    gl_calls::Keep(capability, enabled ? 1 : 0);
}

void GlRecording::SetHits(GLint hits)
{
    TheState()->hits = hits;
}

void GlRecording::AddError(GLenum error)
{
    TheState()->errors.push_back(error);
}

void GlRecording::AddErrorAfter(std::string_view function, GLenum error, int calls)
{
    TheState()->plannedErrors.push_back({std::string(function), error, calls});
}

int GlRecording::MatrixDepth(GLenum mode) const
{
    return static_cast<int>(Answer(gl_calls::DepthName(mode)));
}

int GlRecording::NameDepth() const
{
    return static_cast<int>(Answer(GL_NAME_STACK_DEPTH));
}

int GlRecording::AttribDepth() const
{
    return static_cast<int>(Answer(GL_ATTRIB_STACK_DEPTH));
}

bool GlRecording::IsInsideBegin() const
{
    return TheState()->insideBegin;
}

bool GlRecording::IsBalanced() const
{
    return MatrixDepth(GL_MODELVIEW) == 1 && MatrixDepth(GL_PROJECTION) == 1 &&
           MatrixDepth(GL_TEXTURE) == 1 && NameDepth() == 0 && AttribDepth() == 0 &&
           Answer(GL_CLIENT_ATTRIB_STACK_DEPTH) == 0 && !IsInsideBegin();
}
