// SPDX-License-Identifier: MIT
#include "imaging/GLMemoryDIB.h"
#include "platform/Rendering.h"
#include "scene/DrawingParameters.h"

// The only operation of GLMemoryDIB that uses DrawingParameters. It is implemented in scene/,
// because imaging/ must not include headers of scene/.

void GLMemoryDIB::PrepareNextBand(double row, double column, DrawingParameters* parameters)
{
    projection.SetViewOffset(GetDIBWidth() * column, GetDIBHeight() * row);
    if (parameters != nullptr)
    {
        parameters->SetProjection(&projection);
    }
    wglMakeCurrent(memoryDC, renderingContext);
    LoadProjection();
}
