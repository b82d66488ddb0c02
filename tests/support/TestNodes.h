// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Nodes for tests of the scene tree.

#include "scene/DrawingObject.h"
#include "scene/DrawingParameters.h"

#include <functional>
#include <string>
#include <vector>

/// A node with a name that writes into a log when it is drawn and when it is deleted.
class LoggingNode : public DrawingObject
{
public:
    using Log = std::vector<std::string>;

    LoggingNode(std::string name, Log& log) : name_(std::move(name)), log_(log) {}
    ~LoggingNode() override { log_.push_back("end " + name_); }

    int DrawObject(DrawingParameters* parameters) override
    {
        log_.push_back("draw " + name_);
        return onDraw ? onDraw(parameters) : 1;
    }

    /// What DrawObject does further and returns.
    std::function<int(DrawingParameters*)> onDraw;

private:
    std::string name_;
    Log& log_;
};

/// A node with content: a box.
class BoxNode : public DrawingObject
{
public:
    BoxNode(const Vector& minimum, const Vector& maximum) : minimum_(minimum), maximum_(maximum)
    {
        BoxNode::CalculateBounds();
    }

    int CalculateBounds() override
    {
        ++calculations;
        SetLocalBounds(minimum_, maximum_);
        return result;
    }

    int calculations = 0;
    int result = 1;

private:
    Vector minimum_;
    Vector maximum_;
};
