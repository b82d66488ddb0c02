// SPDX-License-Identifier: MIT
#include "platform/Messages.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

std::string shown;

int Show(HWND, LPCSTR text, LPCSTR caption, UINT type)
{
    shown = std::string(caption) + '|' + text + '|' + std::to_string(type);
    return 7;
}

LRESULT Send(HWND, UINT message, WPARAM wParam, LPARAM lParam, UINT flags, UINT timeout,
             DWORD_PTR* result)
{
    *result = message + wParam + flags + timeout;
    shown = reinterpret_cast<const char*>(lParam);
    return 1;
}

const HWND window = reinterpret_cast<HWND>(std::uintptr_t{4});

TEST(Messages, WithoutAHostAMessageGoesToStandardError)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(MessageBoxA(nullptr, "the text", "the caption", MB_ICONEXCLAMATION), IDOK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "the caption: the text\n");
    testing::internal::CaptureStderr();
    EXPECT_EQ(MessageBoxA(nullptr, nullptr, nullptr, MB_OK), IDOK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error: \n");
}

TEST(Messages, AHostCanHandleMessageBoxesAndStop)
{
    EXPECT_EQ(SetMessageBoxHandler(Show), nullptr);
    testing::internal::CaptureStderr();
    EXPECT_EQ(MessageBoxA(nullptr, "text", "caption", 48), 7);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(shown, "caption|text|48");
    EXPECT_EQ(SetMessageBoxHandler(nullptr), &Show);
    EXPECT_EQ(SetMessageBoxHandler(nullptr), nullptr);
}

TEST(Messages, MessagesToWindowsAreNotAnsweredWithoutAHost)
{
    DWORD_PTR result = 5;
    EXPECT_EQ(SendMessageTimeoutA(window, WM_SETTEXT, 0, 0, SMTO_BLOCK, 100, &result), 0);
    EXPECT_EQ(result, 5U);
}

TEST(Messages, AHostCanHandleMessagesToWindows)
{
    EXPECT_EQ(SetSendMessageHandler(Send), nullptr);
    DWORD_PTR result = 0;
    const auto text = reinterpret_cast<LPARAM>("progress");
    EXPECT_EQ(SendMessageTimeoutA(window, WM_SETTEXT, 1000, text, SMTO_ABORTIFHUNG, 100, &result),
              1);
    EXPECT_EQ(result, 12U + 1000U + 2U + 100U);
    EXPECT_EQ(shown, "progress");
    EXPECT_EQ(SendMessageTimeoutA(nullptr, WM_SETTEXT, 0, text, 0, 100, &result), 0);
    EXPECT_EQ(SetSendMessageHandler(nullptr), &Send);
}

}  // namespace
