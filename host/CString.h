// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdarg>
#include <string>
#include <string_view>

#if defined(__GNUC__)
#define ORVANE_PRINTF(text, first) __attribute__((format(printf, text, first)))
#else
#define ORVANE_PRINTF(text, first)
#endif

/// A text of 8-bit characters in the process's code page. Positions are in bytes, from 0. A text
/// that is built with a length may contain zero bytes.
class ORVANE_API CString
{
public:
    CString() = default;
    CString(LPCSTR text);  ///< null makes an empty text
    CString(const char* text, int length);
    explicit CString(char character, int count = 1);
    CString(std::string text);

    CString& operator=(LPCSTR text);
    CString& operator=(char character);

    int GetLength() const;
    BOOL IsEmpty() const;
    void Empty();

    // The character at a position; a zero character outside the text.
    char GetAt(int index) const;
    char operator[](int index) const;
    /// Does nothing outside the text.
    void SetAt(int index, char character);

    operator LPCSTR() const;
    const std::string& Text() const { return text_; }

    CString& operator+=(const CString& other);
    CString& operator+=(LPCSTR other);
    CString& operator+=(char other);

    // The result is negative, zero or positive, as with strcmp; bytes are compared as unsigned.
    // CompareNoCase treats the letters A to Z as equal to a to z.
    int Compare(LPCSTR other) const;
    int CompareNoCase(LPCSTR other) const;

    // The first position at or after \p start where the text or character is found; -1 if it is not
    // found.
    int Find(LPCSTR text, int start = 0) const;
    int Find(char character, int start = 0) const;
    /// The last position where the character is found; -1 if it is not found.
    int ReverseFind(char character) const;

    // Parts of the text. A part that would reach beyond the text ends where the text ends.
    CString Left(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Right(int count) const;

    void MakeUpper();
    void MakeLower();
    void TrimLeft();
    void TrimRight();

    // Replace the text by a formatted text, like printf.
    void Format(LPCSTR format, ...) ORVANE_PRINTF(2, 3);
    void FormatV(LPCSTR format, std::va_list arguments) ORVANE_PRINTF(2, 0);

    /// Replaces the text by the string resource with this number. Returns FALSE and makes the text
    /// empty when there is no such resource.
    BOOL LoadString(UINT resource);

    /// The text as a buffer that the caller may write to: at least \p minimumLength characters and
    /// a final zero. Call ReleaseBuffer after writing and before any other use of the text.
    LPSTR GetBuffer(int minimumLength);
    /// Ends the use of the buffer and cuts the text to \p newLength characters, or before its first
    /// zero character if \p newLength is negative.
    void ReleaseBuffer(int newLength = -1);

private:
    std::string text_;
};

ORVANE_API CString operator+(const CString& left, const CString& right);
ORVANE_API CString operator+(const CString& left, LPCSTR right);
ORVANE_API CString operator+(LPCSTR left, const CString& right);
ORVANE_API CString operator+(const CString& left, char right);

inline bool operator==(const CString& a, const CString& b)
{
    return a.Text() == b.Text();
}
inline bool operator==(const CString& a, LPCSTR b)
{
    return a.Compare(b) == 0;
}
inline bool operator==(LPCSTR a, const CString& b)
{
    return b.Compare(a) == 0;
}
inline bool operator!=(const CString& a, const CString& b)
{
    return a.Text() != b.Text();
}
inline bool operator!=(const CString& a, LPCSTR b)
{
    return a.Compare(b) != 0;
}
inline bool operator!=(LPCSTR a, const CString& b)
{
    return b.Compare(a) != 0;
}
inline bool operator<(const CString& a, const CString& b)
{
    return a.Compare(b) < 0;
}
inline bool operator<(const CString& a, LPCSTR b)
{
    return a.Compare(b) < 0;
}
inline bool operator>(const CString& a, const CString& b)
{
    return a.Compare(b) > 0;
}
inline bool operator>(const CString& a, LPCSTR b)
{
    return a.Compare(b) > 0;
}
inline bool operator<=(const CString& a, const CString& b)
{
    return a.Compare(b) <= 0;
}
inline bool operator<=(const CString& a, LPCSTR b)
{
    return a.Compare(b) <= 0;
}
inline bool operator>=(const CString& a, const CString& b)
{
    return a.Compare(b) >= 0;
}
inline bool operator>=(const CString& a, LPCSTR b)
{
    return a.Compare(b) >= 0;
}
