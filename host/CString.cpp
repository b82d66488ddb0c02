// SPDX-License-Identifier: MIT
#include "host/CString.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

namespace
{

constexpr const char* whiteSpace = " \t\n\v\f\r";

char ToUpper(char character)
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

char ToLower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

int AsIndex(std::size_t position)
{
    return position == std::string::npos ? -1 : static_cast<int>(position);
}

LPCSTR OrEmpty(LPCSTR text)
{
    return text == nullptr ? "" : text;
}

}  // namespace

CString::CString(LPCSTR text) : text_(OrEmpty(text)) {}

CString::CString(const char* text, int length)
    : text_(OrEmpty(text), text == nullptr ? 0 : std::max(length, 0))
{}

CString::CString(char character, int count) : text_(std::max(count, 0), character) {}

CString::CString(std::string text) : text_(std::move(text)) {}

CString& CString::operator=(LPCSTR text)
{
    text_ = OrEmpty(text);
    return *this;
}

CString& CString::operator=(char character)
{
    text_ = character;
    return *this;
}

int CString::GetLength() const
{
    return static_cast<int>(text_.size());
}

BOOL CString::IsEmpty() const
{
    return text_.empty();
}

void CString::Empty()
{
    text_.clear();
}

char CString::GetAt(int index) const
{
    return index >= 0 && index < GetLength() ? text_[index] : '\0';
}

char CString::operator[](int index) const
{
    return GetAt(index);
}

void CString::SetAt(int index, char character)
{
    if (index >= 0 && index < GetLength())
    {
        text_[index] = character;
    }
}

CString::operator LPCSTR() const
{
    return text_.c_str();
}

CString& CString::operator+=(const CString& other)
{
    text_ += other.text_;
    return *this;
}

CString& CString::operator+=(LPCSTR other)
{
    text_ += OrEmpty(other);
    return *this;
}

CString& CString::operator+=(char other)
{
    text_ += other;
    return *this;
}

int CString::Compare(LPCSTR other) const
{
    return std::strcmp(text_.c_str(), OrEmpty(other));
}

int CString::CompareNoCase(LPCSTR other) const
{
    const char* left = text_.c_str();
    const char* right = OrEmpty(other);
    while (*left != '\0' && ToLower(*left) == ToLower(*right))
    {
        ++left;
        ++right;
    }
    return static_cast<unsigned char>(ToLower(*left)) - static_cast<unsigned char>(ToLower(*right));
}

int CString::Find(LPCSTR text, int start) const
{
    return AsIndex(text_.find(OrEmpty(text), std::max(start, 0)));
}

int CString::Find(char character, int start) const
{
    return AsIndex(text_.find(character, std::max(start, 0)));
}

int CString::ReverseFind(char character) const
{
    return AsIndex(text_.rfind(character));
}

CString CString::Left(int count) const
{
    return Mid(0, count);
}

CString CString::Mid(int first) const
{
    return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const
{
    const std::size_t start = std::min<std::size_t>(std::max(first, 0), text_.size());
    return text_.substr(start, std::max(count, 0));
}

CString CString::Right(int count) const
{
    return Mid(GetLength() - std::max(count, 0));
}

void CString::MakeUpper()
{
    std::transform(text_.begin(), text_.end(), text_.begin(), ToUpper);
}

void CString::MakeLower()
{
    std::transform(text_.begin(), text_.end(), text_.begin(), ToLower);
}

void CString::TrimLeft()
{
    text_.erase(0, text_.find_first_not_of(whiteSpace));
}

void CString::TrimRight()
{
    text_.erase(text_.find_last_not_of(whiteSpace) + 1);
}

void CString::Format(LPCSTR format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::FormatV(LPCSTR format, std::va_list arguments)
{
    std::va_list measured;
    va_copy(measured, arguments);
    // The analyzer of Clang 14 does not see that va_copy initializes `measured`.
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    // The result is made in a separate string, because the arguments may point into this text.
    std::string result(std::max(length, 0), '\0');
    if (length > 0)
    {
        std::vsnprintf(result.data(), result.size() + 1, format, arguments);
    }
    text_ = std::move(result);
}

LPSTR CString::GetBuffer(int minimumLength)
{
    text_.resize(std::max(GetLength(), minimumLength));
    return text_.data();
}

void CString::ReleaseBuffer(int newLength)
{
    text_.resize(newLength < 0 ? std::strlen(text_.c_str())
                               : std::min<std::size_t>(newLength, text_.size()));
}

CString operator+(const CString& left, const CString& right)
{
    return left.Text() + right.Text();
}

CString operator+(const CString& left, LPCSTR right)
{
    return left.Text() + OrEmpty(right);
}

CString operator+(LPCSTR left, const CString& right)
{
    return OrEmpty(left) + right.Text();
}

CString operator+(const CString& left, char right)
{
    return left.Text() + right;
}
