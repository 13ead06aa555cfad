#include "card/file_utils.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <random>
#include <sstream>
#include <system_error>

#include "card/utf8_text.h"

namespace fs = std::filesystem;

namespace {

std::wstring SystemReason(const std::wstring& what, const std::wstring& path, int err) {
  return what + L" " + path + L": " + KrmFromUtf8(std::strerror(err));
}

}  // namespace

bool IsValidFileName(const std::wstring& text) {
  return text.find_first_of(L"\\/:*?\"<>|") == std::wstring::npos;
}

bool EnsureFolder(const std::wstring& path) {
  if (DirectoryExists(path)) return true;
  std::wstring one = path;
  if (one.size() > 1 && one.back() == L'/') one.pop_back();
  std::error_code ec;
  fs::create_directory(KrmToFsPath(one), ec);
  return DirectoryExists(path);
}

bool DirectoryExists(const std::wstring& path) {
  std::wstring one = path;
  if (one.size() > 1 && one.back() == L'/') one.pop_back();
  if (one.empty()) return false;
  std::error_code ec;
  return fs::is_directory(KrmToFsPath(one), ec);
}

bool FileExists(const std::wstring& path) {
  if (path.empty()) return false;
  std::error_code ec;
  return fs::exists(KrmToFsPath(path), ec);
}

bool KrmReadWholeFile(const std::wstring& path, std::string& bytes, std::wstring& reason) {
  const fs::path p = KrmToFsPath(path);
  std::error_code ec;
  if (fs::is_directory(p, ec)) {
    reason = path + L": is a folder, not a file";
    return false;
  }
  std::ifstream in(p, std::ios::binary);
  if (!in) {
    reason = SystemReason(L"cannot open", path, errno);
    return false;
  }
  std::ostringstream buffer;
  buffer << in.rdbuf();
  if (in.bad()) {
    reason = SystemReason(L"cannot read", path, errno);
    return false;
  }
  bytes = std::move(buffer).str();
  return true;
}

bool KrmWriteWholeFile(const std::wstring& path, const std::string& bytes, std::wstring& reason) {
  const fs::path target = KrmToFsPath(path);
  fs::path temp = target;
  temp += ".tmp-" + KrmToUtf8(KrmNewTemplateId().substr(0, 8));
  {
    std::ofstream out(temp, std::ios::binary | std::ios::trunc);
    if (!out) {
      reason = SystemReason(L"cannot create", KrmFromFsPath(temp), errno);
      return false;
    }
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.flush();
    if (!out) {
      const int err = errno;
      out.close();
      std::error_code ignored;
      fs::remove(temp, ignored);
      reason = SystemReason(L"cannot write", KrmFromFsPath(temp), err);
      return false;
    }
  }
  std::error_code ec;
  fs::rename(temp, target, ec);
  if (ec) {
    std::error_code ignored;
    fs::remove(temp, ignored);
    reason = L"cannot replace " + path + L": " + KrmFromUtf8(ec.message());
    return false;
  }
  return true;
}

std::wstring KrmNewTemplateId() {
  static std::mt19937_64 generator = [] {
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device()};
    return std::mt19937_64(seed);
  }();
  static const wchar_t* const kHex = L"0123456789abcdef";
  std::wstring id;
  id.reserve(32);
  for (int half = 0; half < 2; ++half) {
    std::uint64_t bits = generator();
    for (int i = 0; i < 16; ++i) {
      id.push_back(kHex[bits & 0xF]);
      bits >>= 4;
    }
  }
  return id;
}

std::wstring KrmWithExtension(const std::wstring& path, const std::wstring& extension) {
  if (path.size() >= extension.size() && path.compare(path.size() - extension.size(), extension.size(), extension) == 0) {
    return path;
  }
  return path + extension;
}
