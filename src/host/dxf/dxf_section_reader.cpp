#include "host/dxf/dxf_section_reader.h"

#include "host/dxf/dxf_error.h"

namespace tabulon::dxf {

DxfSectionReader::DxfSectionReader(const DxfSource& source, DxfAuditReport& report)
    : source_(source), report_(report), reader_(source.bytes(), source.fileName()) {
  if (source.bytes().find_first_not_of(" \t\r\n") == std::string_view::npos)
    throw DxfError(source.fileName(), source.bytes().empty() ? 0 : 1, DxfError::kNoGroupCode,
                   "the file is empty");
}

bool DxfSectionReader::nextSection() {
  if (finished_) return false;
  if (inSection_) {
    // Skip what is left of the current section.
    readRemainingTags();
  }
  DxfTag tag;
  while (nextTag(tag)) {
    if (tag.code == 999) {
      leadingComments_.push_back(tag);
      continue;
    }
    std::string_view value = dxfTrim(tag.value);
    if (tag.code == 0 && value == "SECTION") {
      std::size_t begin = tag.offset;
      DxfTag name;
      if (!reader_.next(name) || name.code != 2)
        reader_.fail(tag, "SECTION has no name (group code 2 must follow)");
      sectionName_ = std::string(dxfTrim(name.value));
      sectionLine_ = tag.line;
      sectionComments_.clear();
      sawSection_ = true;
      sectionBegin_ = begin;
      sectionEnd_ = begin;
      inSection_ = true;
      return true;
    }
    if (tag.code == 0 && value == "ENDSEC") {
      report_.add(tag.line, "ENDSEC without a SECTION before it; ignored");
      continue;
    }
    if (tag.code == 0 && value == "EOF") {
      finished_ = true;
      if (!sawSection_) reader_.fail(tag, "EOF before any SECTION: the file holds no drawing");
      return false;
    }
    // Tags outside any section: skipped up to the next SECTION.
    std::size_t first = tag.line;
    std::size_t skipped = 1;
    DxfTag more;
    while (reader_.next(more)) {
      if (more.code == 0 && (dxfTrim(more.value) == "SECTION" || dxfTrim(more.value) == "EOF")) {
        reader_.pushBack();
        break;
      }
      ++skipped;
    }
    report_.add(first, std::to_string(skipped) + " tags outside any section (from \"" +
                           std::string(value.substr(0, 40)) + "\") ignored");
  }
  finished_ = true;
  if (!sawSection_)
    throw DxfError(source_.fileName(), 1, DxfError::kNoGroupCode, "no SECTION found: this is not a DXF drawing");
  report_.add(source_.lineOf(source_.bytes().size()), "the file has no EOF tag at its end");
  return false;
}

void DxfSectionReader::failUnterminated(const DxfTag* at) const {
  // Where the section began: a line, or for a binary file a byte offset.
  const std::size_t offset = source_.binaryOffsetOfLine(sectionLine_);
  const std::string begun = offset != std::string::npos ? "at byte offset " + std::to_string(offset)
                                                        : "at line " + std::to_string(sectionLine_);
  if (!at) {
    throw DxfError(source_.fileName(), source_.lineOf(source_.bytes().size()), DxfError::kNoGroupCode,
                   "the file ends inside section " + sectionName_ + " (begun " + begun + "), before its ENDSEC");
  }
  throw DxfError(source_.fileName(), at->line, at->code,
                 "section " + sectionName_ + " (begun " + begun + ") ends at \"" + std::string(dxfTrim(at->value)) +
                     "\" without its ENDSEC");
}

bool DxfSectionReader::nextTag(DxfTag& tag) {
  if (hasLookahead_) {
    tag = lookahead_;
    hasLookahead_ = false;
    return true;
  }
  return reader_.next(tag);
}

bool DxfSectionReader::readObjectStart(DxfTag& tag) {
  while (true) {
    if (!nextTag(tag)) failUnterminated(nullptr);
    if (tag.code == 0) break;
    if (tag.code == 999) {
      sectionComments_.push_back(tag);
      continue;
    }
    reader_.fail(tag, "tag outside any object in section " + sectionName_);
  }
  std::string_view value = dxfTrim(tag.value);
  if (value == "ENDSEC") {
    sectionEnd_ = reader_.position();
    inSection_ = false;
    return false;
  }
  if (value == "SECTION" || value == "EOF") failUnterminated(&tag);
  return true;
}

bool DxfSectionReader::nextObject(DxfRawObject& object) {
  if (!inSection_) return false;
  DxfTag tag;
  if (!readObjectStart(tag)) return false;
  // Tags are read straight into the buffer, which only ever grows.
  if (tags_.empty()) tags_.resize(64);
  tags_[0] = tag;
  std::size_t count = 1;
  std::size_t end = source_.bytes().size();
  std::size_t firstXData = std::string_view::npos;
  while (true) {
    if (count == tags_.size()) tags_.resize(2 * count);
    bool atZero = false;
    count += reader_.readRun(tags_.data() + count, tags_.size() - count, atZero);
    if (!atZero) {
      if (count == tags_.size()) continue;
      // A tag of another shape, or the end of the text. Group codes of four places
      // (extended data) only come this way, so this is where the first 1001 shows.
      if (!reader_.next(tags_[count])) break;
      if (tags_[count].code == 1001 && firstXData == std::string_view::npos) firstXData = count;
      atZero = tags_[count++].code == 0;
    }
    if (atZero) {
      lookahead_ = tags_[--count];
      hasLookahead_ = true;
      end = lookahead_.offset;
      break;
    }
  }
  object.type = dxfTrim(tag.value);
  object.tags = std::span<const DxfTag>(tags_.data(), count);
  object.span = {tag.offset, end};
  object.line = tag.line;
  object.firstXData = std::min(firstXData, count);
  return true;
}

std::vector<DxfTag> DxfSectionReader::readRemainingTags() {
  std::vector<DxfTag> out;
  if (!inSection_) return out;
  DxfTag tag;
  while (true) {
    if (!nextTag(tag)) failUnterminated(nullptr);
    if (tag.code == 0) {
      std::string_view value = dxfTrim(tag.value);
      if (value == "ENDSEC") {
        sectionEnd_ = reader_.position();
        inSection_ = false;
        return out;
      }
      if (value == "SECTION" || value == "EOF") failUnterminated(&tag);
    }
    out.push_back(tag);
  }
}

}  // namespace tabulon::dxf
