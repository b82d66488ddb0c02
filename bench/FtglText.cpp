// SPDX-License-Identifier: MIT
// FTGL's extruded font: three display lists for each different letter. It has no bevels.
#include "bench/OtherTexts.h"

#include <FTGL/ftgl.h>

#include <sstream>

namespace
{
/// The size that the font is loaded with: a letter is so many units large, because FTGL takes whole
/// points only.
constexpr unsigned unitsPerEm = 72;

class FtglText : public OtherText
{
public:
    explicit FtglText(const TextJob& job) : view_(job.view), font_(job.fontFile.c_str())
    {
        font_.FaceSize(unitsPerEm);
        font_.Depth(unitsPerEm);
        font_.UseDisplayList(true);
        FtglText::SetText(job.text);
    }

    void Draw() override
    {
        view_.Apply(unitsPerEm);
        for (std::size_t line = 0; line < lines_.size(); ++line)
        {
            font_.Render(lines_[line].c_str(), -1,
                         FTPoint(0, -static_cast<double>(line * unitsPerEm), 0));
        }
    }

    void SetText(const std::string& text) override
    {
        lines_.clear();
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);)
        {
            lines_.push_back(line);
        }
    }

private:
    TextView view_;
    FTExtrudeFont font_;
    std::vector<std::string> lines_;
};
}  // namespace

std::unique_ptr<OtherText> MakeFtglText(const TextJob& job)
{
    return job.isBevelled ? nullptr : std::make_unique<FtglText>(job);
}
