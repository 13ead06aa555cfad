#include "host/dxf/dxf_write_context.h"

namespace tabulon::dxf {

namespace {

std::string targetCodePage(const QaDbDatabase& db, DxfVersion version) {
  if (dxfVersionIsUnicode(version)) return "UTF-8";
  std::string cp = db.codePage();
  if (cp.empty() || !dxfIconvName(cp) || dxfNormalizeCodePage(cp) == "UTF-8") return "ANSI_1252";
  return cp;
}

bool isPointerCode(int code) {
  return (code >= 320 && code <= 369) || (code >= 390 && code <= 399) || code == 480 || code == 481;
}

}  // namespace

DxfWriteContext::DxfWriteContext(const QaDbDatabase& db, DxfTagWriter& writer, DxfVersion version,
                                 std::uint64_t firstFreeHandle)
    : db_(db), writer_(writer), version_(version), codec_(targetCodePage(db, version)), nextHandle_(firstFreeHandle), firstFree_(firstFreeHandle) {}

std::uint64_t DxfWriteContext::newHandle() {
  while (claimed_.count(nextHandle_)) ++nextHandle_;
  claimed_.insert(nextHandle_);
  return nextHandle_++;
}

bool dxfPartHandleUsable(const QaDbDatabase& db, std::uint64_t firstFree, std::uint64_t handle) {
  // Only handles below the database's seed: those above are the writer's to give.
  return handle != 0 && handle < firstFree && db.objectIdFromHandle(QaDbHandle(handle)).isNull();
}

bool DxfWriteContext::claim(std::uint64_t handle) {
  return dxfPartHandleUsable(db_, firstFree_, handle) && claimed_.insert(handle).second;
}

DxfOriginal DxfWriteContext::original(const DxfSource& source, DxfSpan span) {
  DxfOriginal o;
  if (span.empty()) return o;
  o.source = &source;
  DxfTagReader reader = source.tags(span);
  DxfTag tag;
  while (reader.next(tag)) o.tags.push_back(tag);
  o.frame = dxfReadFrame(o.tags);
  return o;
}

bool DxfWriteContext::canCopyBytes(const DxfSource& source, DxfSpan span) const {
  if (source.lineEnd() != writer_.lineEnd()) return false;
  if (source.codec().codePage() == codec_.codePage()) return true;
  return dxfIsAscii(source.text(span));
}

void DxfWriteContext::copySpan(const DxfSource& source, DxfSpan span) {
  if (span.empty()) return;
  if (canCopyBytes(source, span)) {
    writer_.writeVerbatim(source.text(span));
    return;
  }
  DxfTagReader reader = source.tags(span);
  DxfTag tag;
  while (reader.next(tag)) copyTag(source, tag);
}

void DxfWriteContext::copyTag(const DxfSource& source, const DxfTag& tag) {
  if (dxfIsTextCode(tag.code) && source.codec().codePage() != codec_.codePage() && !dxfIsAscii(tag.value))
    writer_.write(tag.code, codec_.transcode(tag.value, source.codec()));
  else
    writer_.write(tag.code, tag.value);
}

void DxfWriteContext::beginSection(std::string_view name) {
  writer_.write(0, "SECTION");
  writer_.write(2, name);
  if (!comments_) return;
  auto it = comments_->find(std::string(name));
  if (it == comments_->end()) return;
  static const DxfTextCodec utf8("UTF-8");
  for (const auto& c : it->second) writer_.write(999, codec_.transcode(c, utf8));
}

bool DxfWriteContext::pointerIsLive(const DxfTag& tag) const {
  if (!isPointerCode(tag.code)) return true;
  auto h = dxfParseHandle(tag.value);
  if (!h || *h == 0) return true;  // the null pointer stays as it is
  QaDbObjectId id = db_.objectIdFromHandle(QaDbHandle(*h));
  return !id.isNull() && !id.isErased();
}

}  // namespace tabulon::dxf
