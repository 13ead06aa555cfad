// Conversion between the card model's wide strings (UTF-32 on Linux) and UTF-8,
// the encoding of template files and file-system paths.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Encodes wide text as UTF-8; a code point that is not a Unicode scalar value
// (a surrogate or a value past U+10FFFF) becomes U+FFFD.
std::string KrmToUtf8(std::wstring_view text);

// Decodes UTF-8; every malformed or truncated sequence becomes one U+FFFD.
std::wstring KrmFromUtf8(std::string_view text);

// A file-system path from a wide path text, and back.
std::filesystem::path KrmToFsPath(std::wstring_view path);
std::wstring KrmFromFsPath(const std::filesystem::path& path);
