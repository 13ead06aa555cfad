#include "host/ed/qaut_printf.h"

#include "host/ed/qaed_result_codes.h"
#include "host/ed/qaed_user_io.h"

#include <cwchar>
#include <stdexcept>
#include <vector>

std::wstring qaPortableFormat(std::wstring_view format) {
  std::wstring out;
  out.reserve(format.size() + 8);
  std::size_t i = 0;
  while (i < format.size()) {
    const wchar_t c = format[i++];
    out += c;
    if (c != L'%') continue;
    if (i < format.size() && format[i] == L'%') {
      out += format[i++];
      continue;
    }
    // flags, width, precision
    while (i < format.size() && std::wstring_view(L"-+ #0'").find(format[i]) != std::wstring_view::npos) out += format[i++];
    while (i < format.size() && ((format[i] >= L'0' && format[i] <= L'9') || format[i] == L'*')) out += format[i++];
    if (i < format.size() && format[i] == L'.') {
      out += format[i++];
      while (i < format.size() && ((format[i] >= L'0' && format[i] <= L'9') || format[i] == L'*')) out += format[i++];
    }
    // length modifier
    std::wstring length;
    if (format.substr(i).starts_with(L"I64")) {
      length = L"ll";
      i += 3;
    } else if (format.substr(i).starts_with(L"I32")) {
      i += 3;
    } else if (i < format.size() && format[i] == L'I') {
      length = L"z";
      ++i;
    } else {
      while (i < format.size() && std::wstring_view(L"hlLqjzt").find(format[i]) != std::wstring_view::npos) length += format[i++];
    }
    if (i >= format.size()) {
      out += length;
      break;
    }
    const wchar_t conv = format[i++];
    switch (conv) {
      case L's':
      case L'c':
        out += (length == L"h" ? L"" : L"l");
        out += conv;
        break;
      case L'S':
      case L'C':
        out += (length == L"l" || length == L"w") ? L"l" : L"";
        out += conv == L'S' ? L's' : L'c';
        break;
      default:
        out += length;
        out += conv;
    }
  }
  return out;
}

std::wstring qaFormatV(const wchar_t* format, va_list args) {
  if (!format) return {};
  const std::wstring portable = qaPortableFormat(format);
  std::vector<wchar_t> buffer(256);
  while (true) {
    va_list copy;
    va_copy(copy, args);
    const int n = std::vswprintf(buffer.data(), buffer.size(), portable.c_str(), copy);
    va_end(copy);
    if (n >= 0 && static_cast<std::size_t>(n) < buffer.size()) return std::wstring(buffer.data(), static_cast<std::size_t>(n));
    // The wide printf answers -1 both for a short buffer and for a bad format; stop
    // growing at a size no message of the system comes near.
    if (buffer.size() >= (std::size_t{1} << 22)) throw std::length_error("qaFormat: format cannot be expanded");
    buffer.resize(buffer.size() * 4);
  }
}

std::wstring qaFormat(const wchar_t* format, ...) {
  va_list args;
  va_start(args, format);
  std::wstring text;
  try {
    text = qaFormatV(format, args);
  } catch (...) {
    va_end(args);
    throw;
  }
  va_end(args);
  return text;
}

int qautPrintf(const wchar_t* format, ...) {
  va_list args;
  va_start(args, format);
  std::wstring text;
  try {
    text = qaFormatV(format, args);
  } catch (...) {
    va_end(args);
    throw;
  }
  va_end(args);
  qaedUserIO().print(text);
  return RTNORM;
}

void qautPrint(std::wstring_view text) { qaedUserIO().print(text); }
