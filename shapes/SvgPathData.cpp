// SPDX-License-Identifier: MIT
#include "shapes/SvgText.h"

namespace orvane::shapes
{

using contours::DoublePoint;

namespace
{

/// Reads path data, one command after the other.
class PathReader
{
public:
    PathReader(std::string_view text, SegmentLimit& limit) : scanner_(text), limit_(limit) {}

    Path Read()
    {
        scanner_.SkipSpace();
        if (!scanner_.IsAtEnd() && scanner_.Peek() != 'M' && scanner_.Peek() != 'm')
        {
            scanner_.Fail("M or m, with which path data begins");
        }
        while (!scanner_.IsAtEnd())
        {
            ReadCommand();
        }
        return std::move(path_);
    }

private:
    /// A command with all of its arguments, which may stand there more than once.
    void ReadCommand()
    {
        const SvgScanner before = scanner_;
        const char letter = scanner_.Peek();
        scanner_.Take(letter);
        isRelative_ = letter >= 'a';
        const char command = isRelative_ ? static_cast<char>(letter - 'a' + 'A') : letter;
        if (command == 'Z')
        {
            path_.Close();
            lastCommand_ = 'Z';
            scanner_.SkipSpace();
            return;
        }
        if (std::string_view("MLHVCSQTA").find(command) == std::string_view::npos)
        {
            before.Fail("a path command");
        }
        Draw(command);
        for (;;)
        {
            scanner_.SkipSpace();
            const SvgScanner next = scanner_;
            scanner_.SkipComma();
            if (!scanner_.TakeNumber())
            {
                scanner_ = next;
                return;
            }
            scanner_ = next;
            Draw(command == 'M' ? 'L' : command);
        }
    }

    /// Draws a command once.
    void Draw(char command)
    {
        limit_.Add(1);
        const DoublePoint current = path_.Current();
        switch (command)
        {
            case 'M':
                path_.MoveTo(ExpectPoint());
                break;
            case 'L':
                path_.LineTo(ExpectPoint());
                break;
            case 'H': {
                const double x = scanner_.ExpectNumber();
                path_.LineTo({isRelative_ ? current.x + x : x, current.y});
                break;
            }
            case 'V': {
                const double y = scanner_.ExpectNumber();
                path_.LineTo({current.x, isRelative_ ? current.y + y : y});
                break;
            }
            case 'C': {
                const DoublePoint first = ExpectPoint();
                DrawCubic(first);
                break;
            }
            case 'S':
                DrawCubic(lastCommand_ == 'C' || lastCommand_ == 'S' ? current * 2.0 - lastControl_
                                                                     : current);
                break;
            case 'Q': {
                const DoublePoint control = ExpectPoint();
                DrawQuadratic(control);
                break;
            }
            case 'T':
                DrawQuadratic(lastCommand_ == 'Q' || lastCommand_ == 'T'
                                  ? current * 2.0 - lastControl_
                                  : current);
                break;
            default:
                DrawArc();
                break;
        }
        lastCommand_ = command;
    }

    void DrawCubic(const DoublePoint& first)
    {
        lastControl_ = ExpectPoint();
        path_.CubicTo(first, lastControl_, ExpectPoint());
    }

    void DrawQuadratic(const DoublePoint& control)
    {
        lastControl_ = control;
        path_.QuadraticTo(control, ExpectPoint());
    }

    void DrawArc()
    {
        const double rx = scanner_.ExpectNumber();
        const double ry = scanner_.ExpectNumber();
        const double rotation = scanner_.ExpectNumber();
        const bool isLarge = scanner_.ExpectFlag();
        const bool sweeps = scanner_.ExpectFlag();
        path_.ArcTo({rx, ry}, rotation, isLarge, sweeps, ExpectPoint());
    }

    DoublePoint ExpectPoint()
    {
        const double x = scanner_.ExpectNumber();
        const double y = scanner_.ExpectNumber();
        return isRelative_ ? path_.Current() + DoublePoint{x, y} : DoublePoint{x, y};
    }

    SvgScanner scanner_;
    SegmentLimit& limit_;
    Path path_;
    bool isRelative_ = false;
    char lastCommand_ = 'Z';
    DoublePoint lastControl_;  ///< the last control point of the last command, if it has any
};

}  // namespace

Path ParsePathData(std::string_view text, SegmentLimit& limit)
{
    return PathReader(text, limit).Read();
}

}  // namespace orvane::shapes
