// What the writers of entities, tables and objects share while one drawing is
// written: the target version and encoding, the tag writer, handles given to
// records that are not database objects (BLOCK, ENDBLK, SEQEND, VERTEX), and
// access to the original tags objects were loaded with.
#pragma once

#include "host/db/qadb_database.h"
#include "host/dxf/dxf_object_frame.h"
#include "host/dxf/dxf_records.h"
#include "host/dxf/dxf_tag_writer.h"
#include "host/dxf/dxf_text_codec.h"

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <unordered_set>
#include <vector>

namespace tabulon::dxf {

// The original tags of one span, read again for writing.
struct DxfOriginal {
  const DxfSource* source = nullptr;
  std::vector<DxfTag> tags;
  DxfObjectFrame frame;
  bool valid() const { return source != nullptr && !tags.empty(); }
};

// The handles records that are not database objects may keep: a handle of the
// file the drawing came from (below the database's seed `firstFree`) that names
// no object of the database. claim() and the write plan apply the same rule.
bool dxfPartHandleUsable(const QaDbDatabase& db, std::uint64_t firstFree, std::uint64_t handle);

class DxfWriteContext {
 public:
  DxfWriteContext(const QaDbDatabase& db, DxfTagWriter& writer, DxfVersion version, std::uint64_t firstFreeHandle);

  const QaDbDatabase& db() const { return db_; }
  DxfTagWriter& w() { return writer_; }
  DxfVersion version() const { return version_; }
  const DxfTextCodec& codec() const { return codec_; }
  bool atLeast(DxfVersion v) const { return dxfVersionAtLeast(version_, v); }

  // A fresh handle for a record that is not a database object.
  std::uint64_t newHandle();
  // Takes `handle` for a record that is not a database object; false when it
  // is 0, names a database object, or was taken already.
  bool claim(std::uint64_t handle);
  // `original` when it can be claimed, else a fresh handle.
  std::uint64_t partHandle(std::uint64_t original) { return claim(original) ? original : newHandle(); }
  std::uint64_t nextHandle() const { return nextHandle_; }

  // Text of the database in the file's encoding.
  std::string encode(const std::wstring& text) const { return codec_.encode(text); }
  // A value of a source file in the file's encoding.
  std::string transcode(std::string_view value, const DxfSource& source) const {
    return codec_.transcode(value, source.codec());
  }

  // Re-reads the tags of `span` in `source`.
  static DxfOriginal original(const DxfSource& source, DxfSpan span);
  // True when the bytes of `span` can be copied into the output as they are.
  bool canCopyBytes(const DxfSource& source, DxfSpan span) const;
  // Writes the tags of `span` as they are: bytes copied when possible, else
  // tag by tag with text re-encoded.
  void copySpan(const DxfSource& source, DxfSpan span);
  // Writes one original tag, re-encoding text values.
  void copyTag(const DxfSource& source, const DxfTag& tag);
  // True when an original pointer tag still names an object of the database.
  bool pointerIsLive(const DxfTag& tag) const;

  // "0 SECTION", "2 name" and the comments that followed the name in the file read.
  void beginSection(std::string_view name);
  void setSectionComments(const std::map<std::string, std::vector<std::string>>* comments) { comments_ = comments; }

 private:
  const QaDbDatabase& db_;
  DxfTagWriter& writer_;
  DxfVersion version_;
  DxfTextCodec codec_;
  std::uint64_t nextHandle_;
  std::uint64_t firstFree_;
  std::unordered_set<std::uint64_t> claimed_;
  const std::map<std::string, std::vector<std::string>>* comments_ = nullptr;
};

}  // namespace tabulon::dxf
