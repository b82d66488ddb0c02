// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Everything that Orvane offers, in one include.

#include "extrude/Library.h"
#include "host/CArchive.h"
#include "host/CDynLinkLibrary.h"
#include "host/CException.h"
#include "host/CFile.h"
#include "host/CFont.h"
#include "host/CObList.h"
#include "host/CObject.h"
#include "host/CSize.h"
#include "host/CString.h"
#include "host/CWinApp.h"
#include "host/CWnd.h"
#include "host/GrowableArray.h"
#include "host/MultibyteCompare.h"
#include "host/RecordVersion.h"
#include "host/Resources.h"
#include "host/TypedList.h"
#include "platform/DeviceContexts.h"
#include "platform/Export.h"
#include "platform/Fonts.h"
#include "platform/Messages.h"
#include "platform/OpenGL.h"
#include "platform/Sync.h"
#include "platform/Types.h"
