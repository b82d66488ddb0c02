// SPDX-License-Identifier: MIT
#include "platform/Messages.h"

#include <atomic>
#include <cstdio>
#include <string>

namespace
{

std::atomic<MessageBoxHandler> messageBoxHandler = nullptr;
std::atomic<SendMessageHandler> sendMessageHandler = nullptr;

}  // namespace

int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type)
{
    if (const MessageBoxHandler handler = messageBoxHandler)
    {
        return handler(owner, text, caption, type);
    }
    // Written by one call, so that messages of several threads do not mix.
    const std::string line = std::string(caption != nullptr ? caption : "Error") + ": " +
                             (text != nullptr ? text : "") + '\n';
    std::fputs(line.c_str(), stderr);
    return IDOK;
}

LRESULT SendMessageTimeoutA(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT flags,
                            UINT timeout, DWORD_PTR* result)
{
    const SendMessageHandler handler = sendMessageHandler;
    if (handler == nullptr || window == nullptr)
    {
        return 0;
    }
    return handler(window, message, wParam, lParam, flags, timeout, result);
}

MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler)
{
    return messageBoxHandler.exchange(handler);
}

SendMessageHandler SetSendMessageHandler(SendMessageHandler handler)
{
    return sendMessageHandler.exchange(handler);
}
