#include "host/dxf/dxf_sink.h"

#include "host/dxf/dxf_error.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace tabulon::dxf {

DxfFileSink::DxfFileSink(const std::filesystem::path& path) : owned_(true), name_(path.string()) {
  file_ = std::fopen(name_.c_str(), "wb");
  if (!file_)
    throw DxfError(name_, 0, DxfError::kNoGroupCode,
                   std::string("cannot create the file: ") + std::strerror(errno));
}

DxfFileSink::DxfFileSink(std::FILE* stream, std::string name) : file_(stream), name_(std::move(name)) {}

DxfFileSink::~DxfFileSink() {
  if (owned_ && file_) std::fclose(file_);
}

void DxfFileSink::write(std::string_view bytes) {
  if (bytes.empty()) return;
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size())
    throw DxfError(name_, 0, DxfError::kNoGroupCode,
                   std::string("cannot write: ") + std::strerror(errno));
}

void DxfFileSink::finish() {
  if (std::fflush(file_) != 0)
    throw DxfError(name_, 0, DxfError::kNoGroupCode,
                   std::string("cannot write: ") + std::strerror(errno));
  if (owned_) {
    if (::fsync(::fileno(file_)) != 0 && errno != EINVAL)
      throw DxfError(name_, 0, DxfError::kNoGroupCode,
                     std::string("cannot write: ") + std::strerror(errno));
    int rc = std::fclose(file_);
    file_ = nullptr;
    if (rc != 0)
      throw DxfError(name_, 0, DxfError::kNoGroupCode,
                     std::string("cannot close: ") + std::strerror(errno));
  }
}

}  // namespace tabulon::dxf
