// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Message boxes and messages to windows. Without a host that takes them over they never block.

#include "platform/Export.h"
#include "platform/Types.h"

#if !defined(_WIN32)

constexpr UINT MB_OK = 0x0000;
constexpr UINT MB_ICONEXCLAMATION = 0x0030;
constexpr int IDOK = 1;
constexpr UINT WM_SETTEXT = 0x000C;
constexpr UINT SMTO_NORMAL = 0x0000;
constexpr UINT SMTO_BLOCK = 0x0001;
constexpr UINT SMTO_ABORTIFHUNG = 0x0002;

/// Shows a message. Unless a host has taken it over, writes "caption: text" to standard error and
/// returns IDOK at once.
ORVANE_API int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);

/// Sends a message to a window, giving up after \p timeout milliseconds. 0 when no host has taken
/// messages over, the window is null, or the host does not answer.
ORVANE_API LRESULT SendMessageTimeoutA(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT flags, UINT timeout, DWORD_PTR* result);

/// What a host may put in place of the two calls above. A null function restores the default.
/// Handlers may be called from any thread that uses the library.
using MessageBoxHandler = int (*)(HWND owner, LPCSTR text, LPCSTR caption, UINT type);
using SendMessageHandler = LRESULT (*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT flags, UINT timeout, DWORD_PTR* result);

/// Each returns the handler that was in place, null for the default.
ORVANE_API MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler);
ORVANE_API SendMessageHandler SetSendMessageHandler(SendMessageHandler handler);

#endif
