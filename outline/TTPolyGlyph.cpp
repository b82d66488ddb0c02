// SPDX-License-Identifier: MIT
#include "outline/TTPolyGlyph.h"

#include "contours/DuplicateSearch.h"
#include "outline/TTGlyph.h"

#include <algorithm>
#include <span>

TTPolyGlyph& TTPolyGlyph::operator=(const TTPolyGlyph& other)
{
    if (this != &other)
    {
        flags = other.flags;
        inverseScale = other.inverseScale;
        totalVertexCount = other.totalVertexCount;
        scale = other.scale;
        xMax = other.xMax;
        xMin = other.xMin;
        yMax = other.yMax;
        yMin = other.yMin;
        SetContourCount(other.contourCount);
        for (int i = 0; i < contourCount; ++i)
        {
            contours.SetAt(i, other.contours[i]);
        }
    }
    return *this;
}

unsigned long TTPolyGlyph::SizeOf() const
{
    // vertices.SizeOf() and contours.SizeOf() include the two members themselves, but sizeof *this
    // contains these already.
    return sizeof *this + (vertices.SizeOf() - sizeof vertices) +
           (contours.SizeOf() - sizeof contours);
}

void TTPolyGlyph::SetContourCount(int count)
{
    contourCount = std::max(count, 0);
    contours.RemoveAll();
    contours.SetSize(contourCount);
    vertices.RemoveAll();
    for (int i = 0; i < contourCount; ++i)
    {
        contours.GetElement(i)->SetVerticies(&vertices);
    }
}

void TTPolyGlyph::FromTTGlyph(const TTGlyph& glyph, float newScale)
{
    scale = newScale == 0.0f ? 1.0f : newScale;
    inverseScale = 1.0f / scale;
    SetContourCount(glyph.GetContourCount());
    for (int i = 0; i < contourCount; ++i)
    {
        contours.GetElement(i)->FromTTContour(glyph.GetContours()[i], scale);
    }
    if (glyph.IsComposite())
    {
        SetComposite();
    }
    if (glyph.IsDefined())
    {
        SetDefined();
    }
    CalculateBounds();
    vertices.FreeExtra();
    CorrectDuplicateVerticies();
}

void TTPolyGlyph::CorrectDuplicateVerticies()
{
    if (contourCount == 0)
    {
        return;
    }
    orvane::contours::SeparateVertices(
        std::span<TTPolyContour>(contours.GetElement(0), static_cast<std::size_t>(contourCount)));
}

void TTPolyGlyph::CalculateBounds()
{
    totalVertexCount = vertices.GetSize();
    if (totalVertexCount == 0)
    {
        xMax = xMin = yMax = yMin = 0.0f;
        return;
    }
    xMax = yMax = -1.0e8f;
    xMin = yMin = 1.0e8f;
    for (int i = 0; i < totalVertexCount; ++i)
    {
        const Vector2D point = vertices.ElementAt(i).GetPoint();
        xMin = std::min(xMin, point.x);
        xMax = std::max(xMax, point.x);
        yMin = std::min(yMin, point.y);
        yMax = std::max(yMax, point.y);
    }
    xMax *= inverseScale;
    xMin *= inverseScale;
    yMax *= inverseScale;
    yMin *= inverseScale;
}
