// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Scenes in files, as the tool keeps them.

#include "host/CArchive.h"
#include "host/CFile.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <string>

constexpr DWORD westernCodePage = 1252;

/// The bytes of a file: the scene and the view as objects of one archive, then the code page.
inline std::string SceneFileBytes(SceneObject& scene, ViewObject& view,
                                  DWORD codePage = westernCodePage)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive.WriteObject(&scene);
    archive.WriteObject(&view);
    archive << codePage;
    archive.Close();
    return {file.Bytes().begin(), file.Bytes().end()};
}
