// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Message boxes and messages to windows. A host can set handlers for both. Without handlers the
/// calls return at once.

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

/// Shows a message through the host's handler. Without a handler, writes "caption: text" to
/// standard error and returns IDOK at once.
ORVANE_API int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);

/// Sends a message to a window through the host's handler, which gives up after \p timeout
/// milliseconds. 0 when there is no handler, the window is null, or the handler does not answer.
ORVANE_API LRESULT SendMessageTimeoutA(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT flags, UINT timeout, DWORD_PTR* result);

/// Functions of a host that handle the two calls above. They may be called from any thread that
/// uses the library.
using MessageBoxHandler = int (*)(HWND owner, LPCSTR text, LPCSTR caption, UINT type);
using SendMessageHandler = LRESULT (*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT flags, UINT timeout, DWORD_PTR* result);

/// Set a handler; null restores the default. Each returns the handler that was set before, null for
/// the default.
ORVANE_API MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler);
ORVANE_API SendMessageHandler SetSendMessageHandler(SendMessageHandler handler);

#endif
