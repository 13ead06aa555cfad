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

tabulon::Error SystemError(const std::string& what, const std::wstring& path, int err) {
  return tabulon::MakeError(what + ": " + std::strerror(err)).inFile(KrmToUtf8(path));
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

tabulon::Result<std::string> KrmReadWholeFile(const std::wstring& path) {
  const fs::path p = KrmToFsPath(path);
  std::error_code ec;
  if (fs::is_directory(p, ec)) return tabulon::MakeError("is a folder, not a file").inFile(KrmToUtf8(path));
  std::ifstream in(p, std::ios::binary);
  if (!in) return SystemError("cannot open", path, errno);
  std::ostringstream buffer;
  buffer << in.rdbuf();
  if (in.bad()) return SystemError("cannot read", path, errno);
  return std::move(buffer).str();
}

tabulon::Status KrmWriteWholeFile(const std::wstring& path, const std::string& bytes) {
  const fs::path target = KrmToFsPath(path);
  fs::path temp = target;
  temp += ".tmp-" + KrmToUtf8(KrmNewTemplateId().substr(0, 8));
  {
    std::ofstream out(temp, std::ios::binary | std::ios::trunc);
    if (!out) return SystemError("cannot create", KrmFromFsPath(temp), errno);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.flush();
    if (!out) {
      const int err = errno;
      out.close();
      std::error_code ignored;
      fs::remove(temp, ignored);
      return SystemError("cannot write", KrmFromFsPath(temp), err);
    }
  }
  std::error_code ec;
  fs::rename(temp, target, ec);
  if (ec) {
    std::error_code ignored;
    fs::remove(temp, ignored);
    return tabulon::MakeError("cannot replace the file: " + ec.message()).inFile(KrmToUtf8(path));
  }
  return tabulon::Status::Ok();
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
