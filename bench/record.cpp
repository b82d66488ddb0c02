// SPDX-License-Identifier: MIT
// orvane_record CHARACTERS STYLE | showcase: writes the OpenGL calls of one draw, of a text or of
// the showcase in its view, to standard output (CallStream.h).

#include "bench/CallStream.h"
#include "bench/Scenes.h"
#include "orvane.h"
#include "tests/support/gl/GlRecorder.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace
{

template <typename Value>
void Put(std::vector<std::uint32_t>& words, Value value)
{
    const std::size_t at = words.size();
    words.resize(at + sizeof value / sizeof(std::uint32_t));
    std::memcpy(words.data() + at, &value, sizeof value);
}

/// Whether the form is that of a call. An array may have fewer numbers than its form: of a light's
/// parameters, some have three values, some four.
bool Fits(const CallForm& form, const GlCall& call)
{
    const std::string_view name = form.name;
    const std::size_t most = std::strlen(form.arguments);
    return name == call.name &&
           (name.ends_with("fv") ? call.arguments.size() <= most : call.arguments.size() == most);
}

/// The place of a call's name in callForms is its Call.
std::uint32_t FormOf(const GlCall& call)
{
    std::uint32_t form = 0;
    while (form < std::size(callForms) && !Fits(callForms[form], call))
    {
        ++form;
    }
    if (form == std::size(callForms))
    {
        throw std::runtime_error(std::string(call.name) + ", with " +
                                 std::to_string(call.arguments.size()) +
                                 " numbers: CallStream.h has no such call");
    }
    return form;
}

std::vector<std::uint32_t> WordsOf(const std::vector<GlCall>& calls)
{
    std::vector<std::uint32_t> words;
    for (const GlCall& call : calls)
    {
        const std::uint32_t form = FormOf(call);
        words.push_back(form);
        const std::string_view types = callForms[form].arguments;
        for (std::size_t i = 0; i < types.size(); ++i)
        {
            const double number = i < call.arguments.size() ? call.arguments[i] : 0;
            switch (types[i])
            {
                case 'd':
                    Put(words, number);
                    break;
                case 'f':
                    Put(words, static_cast<float>(number));
                    break;
                case 'i':
                    Put(words, static_cast<std::int32_t>(number));
                    break;
                default:
                    Put(words, static_cast<std::uint32_t>(number));
            }
        }
    }
    return words;
}

int RecordDraw(DrawingObject& node)
{
    DrawingParameters parameters = SolidDraw();
    node.Draw(&parameters);  // builds what is not built yet
    const GlRecording recording;
    node.Draw(&parameters);
    try
    {
        const std::vector<std::uint32_t> words = WordsOf(recording.Calls());
        const std::size_t written =
            std::fwrite(words.data(), sizeof words[0], words.size(), stdout);
        return written == words.size() ? 0 : 1;
    }
    catch (const std::exception& error)
    {
        std::fprintf(stderr, "orvane_record: %s\n", error.what());
        return 1;
    }
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::strcmp(argv[1], "showcase") == 0)
    {
        Showcase showcase(1, 1);
        return RecordDraw(showcase.view);
    }
    if (argc == 3)
    {
        return RecordDraw(
            *MakeText(std::atoi(argv[1]), static_cast<orvane::EdgeStyle>(std::atoi(argv[2]))));
    }
    std::fprintf(stderr, "usage: orvane_record CHARACTERS STYLE | showcase\n");
    return 2;
}
