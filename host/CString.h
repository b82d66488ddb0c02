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

/// A text of 8-bit characters in the process's code page. May hold zero characters when built with
/// a length. Positions are bytes from 0.
class ORVANE_API CString
{
public:
    CString() = default;
    CString(LPCSTR text);  ///< null gives the empty text
    CString(const char* text, int length);
    explicit CString(char character, int count = 1);
    CString(std::string text);

    CString& operator=(LPCSTR text);
    CString& operator=(char character);

    int GetLength() const;
    BOOL IsEmpty() const;
    void Empty();

    /// Zero outside the text.
    char GetAt(int index) const;
    char operator[](int index) const;
    /// Ignored outside the text.
    void SetAt(int index, char character);

    operator LPCSTR() const;
    const std::string& Text() const { return text_; }

    CString& operator+=(const CString& other);
    CString& operator+=(LPCSTR other);
    CString& operator+=(char other);

    /// Like strcmp: bytes compared as unsigned. CompareNoCase folds A to Z only.
    int Compare(LPCSTR other) const;
    int CompareNoCase(LPCSTR other) const;

    /// The first position of the text or character at or after \p start, -1 when there is none.
    int Find(LPCSTR text, int start = 0) const;
    int Find(char character, int start = 0) const;
    /// The last position of the character, -1 when there is none.
    int ReverseFind(char character) const;

    /// Parts; counts and positions beyond the text give what there is.
    CString Left(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Right(int count) const;

    void MakeUpper();
    void MakeLower();
    void TrimLeft();
    void TrimRight();

    /// Replaces the text by a formatted one, as printf.
    void Format(LPCSTR format, ...) ORVANE_PRINTF(2, 3);
    void FormatV(LPCSTR format, std::va_list arguments) ORVANE_PRINTF(2, 0);

    /// Replaces the text by a string resource. FALSE, and the empty text, when there is none of
    /// that number.
    BOOL LoadString(UINT resource);

    /// A writable buffer of at least \p minimumLength characters and a final zero, valid until
    /// ReleaseBuffer, which takes the new length (-1: up to the first zero).
    LPSTR GetBuffer(int minimumLength);
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
