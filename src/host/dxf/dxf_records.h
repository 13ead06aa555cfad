// What the codec keeps of an object beyond its modelled fields: the byte
// ranges of its original tags in the file it came from. A record shares
// ownership of that file's text, so a copy of the object (a clone into
// another drawing) can still write back what the codec did not model.
#pragma once

#include "host/db/qadb_dxf_record.h"
#include "host/dxf/dxf_audit.h"
#include "host/dxf/dxf_header.h"
#include "host/dxf/dxf_source.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tabulon::dxf {

// The original tags of one object: span covers "0 TYPE" up to the next "0".
// For a POLYLINE it covers the whole run POLYLINE ... VERTEX ... SEQEND.
class DxfObjectRecord : public QaDbDxfRecord {
 public:
  // What codecKind() says of the object records (of any of the classes below).
  static constexpr int kObjectKind = 0x44580001;

  DxfObjectRecord(std::shared_ptr<const DxfSource> source, DxfSpan span)
      : source_(std::move(source)), span_(span) {}
  std::unique_ptr<QaDbDxfRecord> clone() const override { return std::make_unique<DxfObjectRecord>(*this); }
  int codecKind() const final { return kObjectKind; }

  const DxfSource& source() const { return *source_; }
  const std::shared_ptr<const DxfSource>& sharedSource() const { return source_; }
  DxfSpan span() const { return span_; }
  void setSpan(DxfSpan span) { span_ = span; }

 private:
  std::shared_ptr<const DxfSource> source_;
  DxfSpan span_;
};

// The object record an object carries, or null.
inline const DxfObjectRecord* dxfObjectRecordOf(const QaDbDxfRecord* record) {
  return record && record->codecKind() == DxfObjectRecord::kObjectKind ? static_cast<const DxfObjectRecord*>(record)
                                                                        : nullptr;
}

// A block: the BLOCK_RECORD table entry (span), plus its BLOCK and ENDBLK.
class DxfBlockRecord : public DxfObjectRecord {
 public:
  using DxfObjectRecord::DxfObjectRecord;
  std::unique_ptr<QaDbDxfRecord> clone() const override { return std::make_unique<DxfBlockRecord>(*this); }

  DxfSpan blockBegin;  // BLOCK
  DxfSpan blockEnd;    // ENDBLK
};

// A block reference followed by attributes: span is the INSERT, seqend its SEQEND.
class DxfInsertRecord : public DxfObjectRecord {
 public:
  using DxfObjectRecord::DxfObjectRecord;
  std::unique_ptr<QaDbDxfRecord> clone() const override { return std::make_unique<DxfInsertRecord>(*this); }

  DxfSpan seqend;
};

// A table that is not one of the nine the database keeps, carried as it came.
struct DxfRawTable {
  std::string name;
  std::vector<DxfHeaderTag> tags;  // TABLE ... ENDTAB, without the ENDTAB
};

// A section nobody models (THUMBNAILIMAGE, ACDSDATA...), carried as it came.
struct DxfRawSection {
  std::string name;
  std::vector<DxfHeaderTag> tags;  // between "2 NAME" and ENDSEC
  std::string after;               // the section it followed in the file
};

// What a drawing loaded from a file keeps at the level of the file: the header
// variables, classes, sections and tables nobody models, comments, and how
// the file was read. Lives in the database's dxfHeader() slot. Text values are
// UTF-8.
class DxfDocumentRecord : public QaDbDxfRecord {
 public:
  std::unique_ptr<QaDbDxfRecord> clone() const override { return std::make_unique<DxfDocumentRecord>(*this); }

  DxfHeader header;
  bool hasClassesSection = false;
  std::vector<DxfHeaderTag> classes;  // every tag of CLASSES
  std::vector<DxfRawTable> rawTables;
  std::vector<DxfRawSection> rawSections;
  std::vector<std::string> leadingComments;  // 999 before the first section
  // 999 comments right after a section's name, by section name.
  std::map<std::string, std::vector<std::string>> sectionComments;
  // The original TABLE heads of the nine tables are in the tables' own records.

  // How the file was read.
  DxfVersion readVersion = DxfVersion::R2018;
  std::string encoding;        // "UTF-8" or a code page name
  std::string lineEnd = "\n";  // "\r\n" for a file written with CR LF: saves keep it
  std::string encodingReason;
  DxfAuditReport audit;
};

}  // namespace tabulon::dxf
