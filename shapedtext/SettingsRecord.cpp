// SPDX-License-Identifier: MIT
#include "shapedtext/SettingsRecord.h"

#include "orvane/Error.h"
#include "platform/Limits.h"
#include "shapedtext/EmbeddedFont.h"

#include <string>

namespace orvane
{

namespace
{

// Which of a style's materials, and which of a query's looks, follow.
constexpr DWORD faceBit = 0x1;
constexpr DWORD edgeBit = 0x2;
constexpr DWORD bevelBit = 0x4;
constexpr DWORD weightBit = 0x1;
constexpr DWORD widthBit = 0x2;
constexpr DWORD slantBit = 0x4;

class SettingsWriter
{
public:
    explicit SettingsWriter(CArchive& archive) : archive_(archive) {}

    void Write(const ShapedTextSettings& settings)
    {
        Count(settings.fonts.size());
        for (const ShapedFont& font : settings.fonts)
        {
            Write(font.query);
            Write(font.face);
        }
        Write(settings.style);
        Count(settings.spans.size());
        for (const ShapedSpan& span : settings.spans)
        {
            Count(span.begin);
            Count(span.end);
            Write(span.style);
        }
        archive_ << LONG{static_cast<int>(settings.direction)};
        archive_ << settings.width;
        archive_ << DWORD{settings.breaksWords};
        archive_ << DWORD{settings.isJustified};
        archive_ << DWORD{settings.lineHeight.has_value()};
        archive_ << settings.lineHeight.value_or(0);
        Count(settings.tabStops.size());
        for (const double stop : settings.tabStops)
        {
            archive_ << stop;
        }
        archive_ << settings.tabInterval;
        // Version 1 ends here.
        archive_ << DWORD{settings.usesColorGlyphs};
        Write(settings.fit);
        Write(settings.path);
        for (const ShapedFont& font : settings.fonts)
        {
            archive_.WriteObject(font.embedded.get());
        }
    }

private:
    void Count(std::size_t count) { archive_ << static_cast<DWORD>(count); }
    void Text(const std::string& text) { archive_ << CString(text); }

    void Write(const std::optional<FitBox>& fit)
    {
        const FitBox box = fit.value_or(FitBox());
        archive_ << DWORD{fit.has_value()};
        archive_ << box.width;
        archive_ << box.height;
        archive_ << DWORD{box.breaksLines};
    }

    void Write(const std::optional<TextPath>& line)
    {
        const TextPath path = line.value_or(TextPath());
        archive_ << DWORD{line.has_value()};
        archive_ << path.radius;
        Text(path.data);
        archive_ << path.unit;
        archive_ << DWORD{path.start.has_value()};
        archive_ << path.start.value_or(0);
        archive_ << LONG{static_cast<int>(path.side)};
    }

    void Write(const FontQuery& query)
    {
        Text(query.name);
        Text(query.pattern);
        Text(query.file);
        archive_ << LONG{query.index};
        archive_ << ((query.weight ? weightBit : 0) | (query.width ? widthBit : 0) |
                     (query.isItalic ? slantBit : 0));
        archive_ << LONG{query.weight.value_or(0)};
        archive_ << query.width.value_or(0);
        archive_ << DWORD{query.isItalic.value_or(false)};
        Text(query.instance);
        Write(query.axes);
    }

    void Write(const FaceIdentity& face)
    {
        Text(face.family);
        Text(face.style);
        Text(face.fullName);
        Text(face.fileName);
        archive_ << LONG{face.index};
        archive_ << DWORD{face.checksum};
        Write(face.axes);
    }

    void Write(const std::vector<AxisValue>& axes)
    {
        Count(axes.size());
        for (const AxisValue& axis : axes)
        {
            Text(axis.tag);
            archive_ << axis.value;
        }
    }

    void Write(const ShapedStyle& style)
    {
        Count(style.fonts.size());
        for (const std::size_t font : style.fonts)
        {
            Count(font);
        }
        archive_ << DWORD{style.usesInstalledFonts};
        archive_ << style.size;
        archive_ << style.rise;
        Text(style.language);
        Text(style.script);
        Count(style.features.size());
        for (const std::string& feature : style.features)
        {
            Text(feature);
        }
        archive_ << ((style.face ? faceBit : 0) | (style.edge ? edgeBit : 0) |
                     (style.bevel ? bevelBit : 0));
        for (const std::optional<NamedColor>* color : {&style.face, &style.edge, &style.bevel})
        {
            if (*color)
            {
                NamedColor((*color).value()).Serialize(archive_);
            }
        }
    }

    CArchive& archive_;
};

class SettingsReader
{
public:
    explicit SettingsReader(CArchive& archive) : archive_(archive) {}

    ShapedTextSettings Read(DWORD version)
    {
        ShapedTextSettings settings;
        const std::size_t fontCount = Count("the fonts of a text", limits::maxTextFonts);
        for (std::size_t i = 0; i < fontCount; ++i)
        {
            ShapedFont& font = settings.fonts.emplace_back();
            font.query = ReadQuery();
            font.face = ReadIdentity();
        }
        settings.style = ReadStyle(fontCount);
        const std::size_t spanCount = Count("the spans of a text", limits::maxTextSpans);
        for (std::size_t i = 0; i < spanCount; ++i)
        {
            ShapedSpan& span = settings.spans.emplace_back();
            span.begin = Count("the begin of a span", limits::maxTextBytes);
            span.end = Count("the end of a span", limits::maxTextBytes);
            span.style = ReadStyle(fontCount);
        }
        settings.direction = Choice("the direction of a text", TextDirection::RightToLeft);
        settings.width = Number();
        settings.breaksWords = Flag("whether words are broken");
        settings.isJustified = Flag("whether lines are justified");
        settings.lineHeight = OptionalNumber("whether a text has a line height");
        const std::size_t stopCount = Count("the tab stops of a text", limits::maxTabStops);
        for (std::size_t i = 0; i < stopCount; ++i)
        {
            settings.tabStops.push_back(Number());
        }
        settings.tabInterval = Number();
        if (version >= 2)
        {
            settings.usesColorGlyphs = Flag("whether a text has glyphs in colours");
            settings.fit = ReadFit();
            settings.path = ReadPath();
            for (ShapedFont& font : settings.fonts)
            {
                font.embedded = EmbeddedFont::Read(archive_);
            }
        }
        return settings;
    }

private:
    std::size_t Count(const char* place, std::size_t most)
    {
        DWORD count = 0;
        archive_ >> count;
        if (count > most)
        {
            throw Error(place, std::to_string(count), "at most " + std::to_string(most));
        }
        return count;
    }

    bool Flag(const char* place) { return Count(place, 1) != 0; }

    double Number()
    {
        double number = 0;
        archive_ >> number;
        return number;
    }

    std::optional<double> OptionalNumber(const char* placeOfFlag)
    {
        const bool isThere = Flag(placeOfFlag);
        const double number = Number();
        return isThere ? std::optional<double>(number) : std::nullopt;
    }

    int Integer()
    {
        LONG number = 0;
        archive_ >> number;
        return static_cast<int>(number);
    }

    std::string Text()
    {
        CString text;
        archive_ >> text;
        if (text.Text().find('\0') != std::string::npos)
        {
            throw Error("a name in a text's record", "a zero byte", "none");
        }
        return text.Text();
    }

    /// A number from 0 to that of \p last.
    template <typename Enum>
    Enum Choice(const char* place, Enum last)
    {
        const int number = Integer();
        if (number < 0 || number > static_cast<int>(last))
        {
            throw Error(place, std::to_string(number),
                        "0 to " + std::to_string(static_cast<int>(last)));
        }
        return static_cast<Enum>(number);
    }

    std::optional<FitBox> ReadFit()
    {
        const bool isThere = Flag("whether a text fills a box");
        FitBox box;
        box.width = Number();
        box.height = Number();
        box.breaksLines = Flag("whether the lines in a box are broken");
        return isThere ? std::optional<FitBox>(box) : std::nullopt;
    }

    std::optional<TextPath> ReadPath()
    {
        const bool isThere = Flag("whether a text stands on a path");
        TextPath path;
        path.radius = Number();
        path.data = Text();
        path.unit = Number();
        path.start = OptionalNumber("whether a text is aligned at a place of its path");
        path.side = Choice("the side of a path", PathSide::Right);
        return isThere ? std::optional<TextPath>(path) : std::nullopt;
    }

    FontQuery ReadQuery()
    {
        FontQuery query;
        query.name = Text();
        query.pattern = Text();
        query.file = Text();
        query.index = Integer();
        const std::size_t looks = Count("the looks of a font", weightBit | widthBit | slantBit);
        const int weight = Integer();
        const double width = Number();
        const bool isItalic = Flag("whether a font is italic");
        if ((looks & weightBit) != 0)
        {
            query.weight = weight;
        }
        if ((looks & widthBit) != 0)
        {
            query.width = width;
        }
        if ((looks & slantBit) != 0)
        {
            query.isItalic = isItalic;
        }
        query.instance = Text();
        query.axes = ReadAxes();
        return query;
    }

    FaceIdentity ReadIdentity()
    {
        FaceIdentity face;
        face.family = Text();
        face.style = Text();
        face.fullName = Text();
        face.fileName = Text();
        face.index = Integer();
        DWORD checksum = 0;
        archive_ >> checksum;
        face.checksum = checksum;
        face.axes = ReadAxes();
        return face;
    }

    std::vector<AxisValue> ReadAxes()
    {
        std::vector<AxisValue> axes;
        const std::size_t count = Count("the axes of a font", limits::maxSpanSettings);
        for (std::size_t i = 0; i < count; ++i)
        {
            AxisValue& axis = axes.emplace_back();
            axis.tag = Text();
            axis.value = Number();
        }
        return axes;
    }

    ShapedStyle ReadStyle(std::size_t fontCount)
    {
        ShapedStyle style;
        const std::size_t count = Count("the fonts of a style", limits::maxTextFonts);
        for (std::size_t i = 0; i < count; ++i)
        {
            const std::size_t font = Count("a font of a style", limits::maxTextFonts);
            if (font >= fontCount)
            {
                throw Error("a font of a style", std::to_string(font),
                            "less than " + std::to_string(fontCount));
            }
            style.fonts.push_back(font);
        }
        style.usesInstalledFonts = Flag("whether a style uses installed fonts");
        style.size = Number();
        style.rise = Number();
        style.language = Text();
        style.script = Text();
        const std::size_t features = Count("the features of a style", limits::maxSpanSettings);
        for (std::size_t i = 0; i < features; ++i)
        {
            style.features.push_back(Text());
        }
        const std::size_t colors = Count("the materials of a style", faceBit | edgeBit | bevelBit);
        ReadColor((colors & faceBit) != 0, style.face);
        ReadColor((colors & edgeBit) != 0, style.edge);
        ReadColor((colors & bevelBit) != 0, style.bevel);
        return style;
    }

    void ReadColor(bool isThere, std::optional<NamedColor>& color)
    {
        if (isThere)
        {
            color.emplace().Serialize(archive_);
        }
    }

    CArchive& archive_;
};

}  // namespace

void WriteSettings(CArchive& archive, const ShapedTextSettings& settings)
{
    SettingsWriter(archive).Write(settings);
}

ShapedTextSettings ReadSettings(CArchive& archive, DWORD version)
{
    return SettingsReader(archive).Read(version);
}

}  // namespace orvane
