// SPDX-License-Identifier: MIT
#include "apps/cli/info/NodeTitle.h"

#include "apps/cli/info/JsonWriter.h"
#include "document/SceneNames.h"
#include "scene/DrawingObject.h"

namespace orvane
{

std::string TitleOf(const DrawingObject& node)
{
    const std::string name = NameOfNode(node);
    return node.GetRuntimeClass()->m_lpszClassName + (name.empty() ? name : " " + Quoted(name));
}

}  // namespace orvane
