// SPDX-License-Identifier: MIT
#include "imaging/GLMemoryDIB.h"
#include "platform/Rendering.h"
#include "scene/DrawingParameters.h"

// The one operation of GLMemoryDIB that knows DrawingParameters. It stands here because scene/ lies
// above imaging/: the header there only points to that class.

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
