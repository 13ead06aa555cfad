// Conversion between the host's wide strings (UTF-32 on Linux) and UTF-8, the encoding
// of configuration files, string tables and file-system paths.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tabulon::svc {

// Encodes wide text as UTF-8; a value that is no Unicode scalar becomes U+FFFD.
std::string toUtf8(std::wstring_view text);

// Decodes UTF-8; each malformed or truncated sequence becomes one U+FFFD.
std::wstring fromUtf8(std::string_view text);

// True when `text` is well-formed UTF-8.
bool isValidUtf8(std::string_view text);

// A file-system path from a wide text, and back (paths are UTF-8 on disk).
std::filesystem::path toPath(std::wstring_view text);
std::wstring fromPath(const std::filesystem::path& path);

}  // namespace tabulon::svc
