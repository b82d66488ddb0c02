// SPDX-License-Identifier: MIT
// Times the layout of a paragraph of 1,000 letters against hb_shape alone, and that of a paragraph
// in which one letter was changed.

#include "bench/Summary.h"
#include "shaping/FontQuery.h"
#include "shaping/TextShaper.h"

#include <hb.h>

#include <cstdio>
#include <string>
#include <vector>

namespace
{

/// A text with as many letters, spaces included.
std::string Repeated(const std::string& words, std::size_t letters)
{
    std::string text;
    std::size_t count = 0;
    for (std::size_t at = 0; count < letters; at = (at + 1) % words.size())
    {
        text += words[at];
        // Bytes that continue a letter count with their first one.
        const std::size_t next = (at + 1) % words.size();
        count += (static_cast<unsigned char>(words[next]) & 0xC0) != 0x80 ? 1 : 0;
    }
    return text;
}

/// HarfBuzz's font of a face, and the shaping of a text with it in one run.
class HarfBuzzFont
{
public:
    explicit HarfBuzzFont(const std::string& file)
    {
        hb_blob_t* const blob = hb_blob_create_from_file(file.c_str());
        hb_face_t* const face = hb_face_create(blob, 0);
        font_ = hb_font_create(face);
        hb_face_destroy(face);
        hb_blob_destroy(blob);
    }
    ~HarfBuzzFont() { hb_font_destroy(font_); }
    HarfBuzzFont(const HarfBuzzFont&) = delete;
    HarfBuzzFont& operator=(const HarfBuzzFont&) = delete;

    void Shape(const std::string& text) const
    {
        hb_buffer_t* const buffer = hb_buffer_create();
        hb_buffer_add_utf8(buffer, text.data(), static_cast<int>(text.size()), 0, -1);
        hb_buffer_guess_segment_properties(buffer);
        hb_shape(font_, buffer, nullptr, 0);
        hb_buffer_destroy(buffer);
    }

private:
    hb_font_t* font_;
};

std::string Milliseconds(double seconds)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.3f ms", 1'000 * seconds);
    return text;
}

void MeasureParagraph(const std::string& name, const std::string& words)
{
    constexpr std::size_t letters = 1'000;
    constexpr int turns = 200;
    constexpr int edits = 100;
    orvane::FontQuery query;
    query.name = "DejaVu Sans";
    orvane::LayoutOptions options;
    options.style.fonts.faces = {orvane::OpenFont(query).face};
    options.style.fonts.usesInstalledFonts = false;
    options.width = 30;
    const HarfBuzzFont font(options.style.fonts.faces.front()->File().file);
    // Each turn has a text that was not shaped before: the words, from another letter on.
    std::vector<std::string> texts;
    for (int n = 0; n <= turns; ++n)
    {
        texts.push_back(Repeated(std::to_string(n) + ' ' + words, letters));
    }
    orvane::TextShaper shaper;
    for (const double width : {0.0, 30.0})
    {
        std::size_t ourText = 0;
        std::size_t itsText = 0;
        options.width = width;
        const Paired whole = TimeInTurns(
            turns, [&] { shaper.LayOut(texts.at(ourText++), options); },
            [&] { font.Shape(texts.at(itsText++)); });
        char ratio[32];
        std::snprintf(ratio, sizeof ratio, "%.2f", whole.ratio);
        AddSummary("1,000 " + name + " letters " + (width > 0 ? "in lines" : "shaped") +
                       " / hb_shape alone",
                   std::string(ratio) + " (" + Milliseconds(whole.ours) + " / " +
                       Milliseconds(whole.floor) + ")");
        options.style.features = {"kern"};  // the next texts were not shaped like this
    }

    const std::string& text = texts.front();
    std::vector<double> seconds;
    std::size_t at = 0;
    for (int n = 0; n < edits; ++n)
    {
        // The first letter of another word each time becomes a digit.
        at = text.find(' ', at) + 1;
        std::size_t end = at + 1;
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        {
            ++end;
        }
        std::string edited = text;
        edited.replace(at, end - at, std::string(1, static_cast<char>('0' + n % 10)));
        seconds.push_back(Seconds([&] { shaper.LayOut(edited, options); }));
    }
    AddSummary("1,000 " + name + " letters in lines after an edit of one",
               Milliseconds(Median(seconds)));
}

void MeasureShaping()
{
    MeasureParagraph("Latin", "The quick brown fox jumps over the lazy dog, and AVATARs waffle. ");
    MeasureParagraph("Arabic",
                     "نص حكيم له سر قاطع وذو شأن عظيم مكتوب على ثوب أخضر ومغلف بجلد أزرق ");
}

const SummaryPart part("shaping", MeasureShaping);

}  // namespace
