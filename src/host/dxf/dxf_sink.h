// Where written DXF text goes. A sink receives bytes in order and reports a
// failure by throwing DxfError; the writer owns nothing it is given.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace tabulon::dxf {

class DxfSink {
 public:
  virtual ~DxfSink() = default;
  virtual void write(std::string_view bytes) = 0;
  // Makes everything written so far durable; called once at the end.
  virtual void finish() {}
};

// Appends to a string held by the caller (which must outlive the sink).
class DxfStringSink : public DxfSink {
 public:
  explicit DxfStringSink(std::string& out) : out_(out) {}
  void write(std::string_view bytes) override { out_.append(bytes); }

 private:
  std::string& out_;
};

// Writes to a file it creates (replacing any old one) and closes on destruction.
class DxfFileSink : public DxfSink {
 public:
  explicit DxfFileSink(const std::filesystem::path& path);
  // Writes to an open stream the caller keeps (e.g. stdout); not closed here.
  DxfFileSink(std::FILE* stream, std::string name);
  ~DxfFileSink() override;
  DxfFileSink(const DxfFileSink&) = delete;
  DxfFileSink& operator=(const DxfFileSink&) = delete;

  void write(std::string_view bytes) override;
  void finish() override;

 private:
  std::FILE* file_ = nullptr;
  bool owned_ = false;
  std::string name_;
};

}  // namespace tabulon::dxf
