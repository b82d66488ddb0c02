// SPDX-License-Identifier: MIT
#pragma once

#include "platform/OpenGL.h"
#include "scene/DrawingObject.h"

/// A square in the plane z = 0 that faces +z, from -size to size, made of a grid of small squares:
/// OpenGL lights vertices.
class PanelNode : public DrawingObject
{
public:
    explicit PanelNode(float size, int cells = 1) : size_(size), cells_(cells)
    {
        // White, and nothing but diffuse.
        material.SetAmbientColor(ColorVector(0.0f, 0.0f, 0.0f, 1.0f));
        material.SetDiffuseColor(ColorVector(1.0f, 1.0f, 1.0f, 1.0f));
        material.SetSpecularColor(ColorVector(0.0f, 0.0f, 0.0f, 1.0f));
        PanelNode::CalculateBounds();
    }

    int CalculateBounds() override
    {
        SetLocalBounds(Vector(-size_, -size_, 0.0f), Vector(size_, size_, 0.0f));
        return 1;
    }

    int DrawObject(DrawingParameters*) override
    {
        PrepareMaterialColors(material);
        glBegin(GL_QUADS);
        glNormal3f(0, 0, 1);
        for (int y = 0; y < cells_; ++y)
        {
            for (int x = 0; x < cells_; ++x)
            {
                glVertex3f(Edge_(x), Edge_(y), 0);
                glVertex3f(Edge_(x + 1), Edge_(y), 0);
                glVertex3f(Edge_(x + 1), Edge_(y + 1), 0);
                glVertex3f(Edge_(x), Edge_(y + 1), 0);
            }
        }
        glEnd();
        return 1;
    }

    NamedColor material;

private:
    float Edge_(int index) const
    {
        return size_ * (2.0f * static_cast<float>(index) / static_cast<float>(cells_) - 1);
    }

    float size_;
    int cells_;
};
