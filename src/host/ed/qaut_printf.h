// Printing on the host's command line, printf-style. The formats are those the plug-in
// was written with: in a wide format "%s" and "%c" take wide strings and characters
// ("%hs" and "%S" a narrow one), and "%I64d" is a 64-bit integer.
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

// Formats and prints on the current user channel; returns RTNORM.
int qautPrintf(const wchar_t* format, ...);

// Prints text as it stands (no format characters).
void qautPrint(std::wstring_view text);

// The same formatting, into a string.
std::wstring qaFormat(const wchar_t* format, ...);
std::wstring qaFormatV(const wchar_t* format, va_list args);

// The format rewritten for the C library's wide printf ("%s" -> "%ls" and so on).
std::wstring qaPortableFormat(std::wstring_view format);
