// Walks the sections of a DXF file: SECTION / 2 name ... ENDSEC, up to EOF.
// Object sections are handed out one object at a time (its tags from "0 TYPE"
// up to the next "0"); other sections as one run of tags. Everything handed
// out views the source, which must outlive the reader; the tags of an object
// stay valid until the next call.
//
// Repaired here and reported: a stray ENDSEC, a missing EOF. Fatal: a section
// without ENDSEC, tags outside any section, a SECTION without a name.
#pragma once

#include "host/dxf/dxf_audit.h"
#include "host/dxf/dxf_source.h"
#include "host/dxf/dxf_tag.h"

#include <span>
#include <string>
#include <vector>

namespace tabulon::dxf {

struct DxfRawObject {
  std::string_view type;         // the value of the "0" tag
  std::span<const DxfTag> tags;  // all tags, the "0" tag first
  DxfSpan span;                  // bytes in the source
  std::size_t line = 0;          // line of the "0" tag
  std::size_t firstXData = 0;    // index of the first 1001 tag; tags.size() when none
};

class DxfSectionReader {
 public:
  // `report` collects repairs and must outlive the reader.
  DxfSectionReader(const DxfSource& source, DxfAuditReport& report);

  // Moves to the next section; false when the file ends (EOF or end of data).
  bool nextSection();
  const std::string& sectionName() const { return sectionName_; }
  std::size_t sectionLine() const { return sectionLine_; }
  // Bytes of the whole section, SECTION to ENDSEC inclusive; complete after
  // the section was read to its end.
  DxfSpan sectionSpan() const { return {sectionBegin_, sectionEnd_}; }

  // The next object of the current section; false at its ENDSEC.
  bool nextObject(DxfRawObject& object);
  // All remaining tags of the current section up to its ENDSEC (for HEADER,
  // CLASSES and sections nobody models).
  std::vector<DxfTag> readRemainingTags();

  // 999 comments found before the first section.
  const std::vector<DxfTag>& leadingComments() const { return leadingComments_; }
  // 999 comments between the name of the current section and its first object.
  const std::vector<DxfTag>& sectionComments() const { return sectionComments_; }
  const DxfSource& source() const { return source_; }

 private:
  // Reads a "0" tag that must end the current section or start an object.
  bool readObjectStart(DxfTag& tag);
  bool nextTag(DxfTag& tag);
  [[noreturn]] void failUnterminated(const DxfTag* at) const;

  const DxfSource& source_;
  DxfAuditReport& report_;
  DxfTagReader reader_;
  std::string sectionName_;
  std::size_t sectionLine_ = 0;
  std::size_t sectionBegin_ = 0;
  std::size_t sectionEnd_ = 0;
  bool inSection_ = false;
  bool finished_ = false;
  bool sawSection_ = false;
  std::vector<DxfTag> tags_;
  DxfTag lookahead_;        // a "0" tag read already, handed out next
  bool hasLookahead_ = false;
  std::vector<DxfTag> leadingComments_;
  std::vector<DxfTag> sectionComments_;
};

}  // namespace tabulon::dxf
