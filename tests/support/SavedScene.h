// SPDX-License-Identifier: MIT
#pragma once

#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/Json.h"
#include "tests/support/SceneFiles.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A scene that is saved as s.orv, and what `orvane info s.orv` prints of it. The only font is Edge
/// Test.
class SavedScene : public testing::Test
{
protected:
    SavedScene();

    /// \param parent takes the new text; null for the scene.
    OrvFontString& AddText(const char* characters, DrawingObject* parent = nullptr);
    void Save(DWORD codePage = westernCodePage);
    ToolResult RunInfo(const std::vector<std::string>& options = {});
    /// What --json prints. The run must succeed.
    Json InfoAsJson();

    ToolFolder folder;
    SceneObject scene;
    ViewObject view;
};
