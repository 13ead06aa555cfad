#include "host/dxf/dxf_emitter.h"

#include "host/dxf/dxf_entity_codes.h"
#include "host/dxf/dxf_read_context.h"
#include "host/dxf/dxf_xdata.h"

#include <cmath>

namespace tabulon::dxf {

namespace {

DxfOriginal loadOriginal(const QaDbObject& object) {
  if (const auto* rec = dxfObjectRecordOf(object.dxfRecord()))
    return DxfWriteContext::original(rec->source(), rec->span());
  return {};
}

}  // namespace

DxfEmitter::DxfEmitter(DxfWriteContext& ctx, const QaDbObject& object, std::string_view type)
    : DxfEmitter(ctx, object, type, loadOriginal(object)) {}

DxfEmitter::DxfEmitter(DxfWriteContext& ctx, const QaDbObject& object, std::string_view type, DxfOriginal original)
    : ctx_(ctx), object_(object), type_(type), original_(std::move(original)) {
  if (!original_.valid()) return;
  // A POLYLINE's span runs on over its vertices: stop at the first "0" after the head.
  for (std::size_t i = 1; i < original_.tags.size(); ++i) {
    if (original_.tags[i].code == 0) {
      original_.tags.resize(i);
      original_.frame = dxfReadFrame(original_.tags);
      break;
    }
  }
  flat_ = !dxfVersionHasSubclasses(original_.source->version()) || dxfBodyIsFlat(original_.tags, original_.frame);
  const auto& tags = original_.tags;
  const auto& f = original_.frame;
  Segment lead{0, "", f.bodyBegin, f.bodyBegin};
  segments_.push_back(lead);
  for (std::size_t i = f.bodyBegin; i < f.xdataBegin; ++i) {
    const DxfTag& t = tags[i];
    if (!flat_ && (t.code == 100 || t.code == 101)) {
      segments_.push_back(Segment{t.code, dxfTrim(t.value), i + 1, i + 1});
    } else {
      segments_.back().end = i + 1;
    }
  }
}

void DxfEmitter::head(int handleCode, std::uint64_t handle, QaDbObjectId owner, bool useOwner) {
  DxfTagWriter& w = ctx_.w();
  w.write(0, type_);
  w.writeHandle(handleCode, handle ? handle : object_.handle().value());
  if (original_.valid()) {
    for (const auto& g : original_.frame.appGroups) {
      if (g.name == "ACAD_REACTORS" || g.name == "ACAD_XDICTIONARY") continue;
      for (std::size_t i = g.begin; i < g.end; ++i)
        if (ctx_.pointerIsLive(original_.tags[i])) ctx_.copyTag(*original_.source, original_.tags[i]);
    }
  }
  QaDbObjectId xdict = part_ ? QaDbObjectId() : object_.extensionDictionary();
  if (!xdict.isNull() && !xdict.isErased()) {
    w.write(102, "{ACAD_XDICTIONARY");
    w.writeHandle(360, xdict.handle().value());
    w.write(102, "}");
  }
  std::vector<QaDbObjectId> reactors;
  if (!part_)
    for (QaDbObjectId r : object_.reactors())
      if (!r.isNull() && !r.isErased() && r.database() == &ctx_.db()) reactors.push_back(r);
  if (!reactors.empty()) {
    w.write(102, "{ACAD_REACTORS");
    for (QaDbObjectId r : reactors) w.writeHandle(330, r.handle().value());
    w.write(102, "}");
  }
  QaDbObjectId o = useOwner ? owner : object_.ownerId();
  w.writeHandle(330, o.isNull() ? 0 : o.handle().value());
}

void DxfEmitter::writeKept(const DxfTag& tag) {
  if (ctx_.pointerIsLive(tag)) ctx_.copyTag(*original_.source, tag);
}

void DxfEmitter::writeKeptOutside(const DxfTag& tag) {
  if (!codes::contains(coveredEverywhere_, tag.code)) writeKept(tag);
}

void DxfEmitter::flushKept() {
  // A flat (R12) original has no subclasses: what is left goes out at finish().
  if (!original_.valid() || flat_) return;
  if (const Segment* s = current()) {
    for (std::size_t i = s->begin; i < s->end; ++i)
      if (!codes::contains(currentModelled_, original_.tags[i].code)) writeKeptOutside(original_.tags[i]);
  }
}

void DxfEmitter::writeLeading() {
  // Tags before the first marker go with the first subclass written.
  if (leadingDone_ || !original_.valid() || flat_) return;
  leadingDone_ = true;
  const Segment& lead = segments_.front();
  for (std::size_t i = lead.begin; i < lead.end; ++i)
    if (!codes::contains(currentModelled_, original_.tags[i].code)) writeKeptOutside(original_.tags[i]);
}

void DxfEmitter::subclass(std::string_view marker, std::span<const int> modelled) {
  flushKept();
  current_ = -1;
  codeUse_.clear();
  currentModelled_.assign(modelled.begin(), modelled.end());
  allModelled_.insert(allModelled_.end(), modelled.begin(), modelled.end());
  ctx_.w().write(100, marker);
  writeLeading();
  if (!original_.valid()) return;
  if (flat_) {
    current_ = 0;  // the whole flat body serves every subclass for numbers
    return;
  }
  int wanted = occurrences_[std::string(marker)]++;
  int seen = 0;
  for (std::size_t i = 1; i < segments_.size(); ++i) {
    Segment& s = segments_[i];
    if (s.markerCode == 100 && s.name == marker && seen++ == wanted) {
      s.used = true;
      current_ = static_cast<int>(i);
      break;
    }
  }
}

void DxfEmitter::embedded(std::string_view marker) {
  flushKept();
  current_ = -1;
  codeUse_.clear();
  currentModelled_.clear();
  ctx_.w().write(101, marker);
  dropSegment(marker);
}

void DxfEmitter::keepSegment(int markerCode, std::string_view marker) {
  if (!original_.valid() || flat_) return;
  for (std::size_t i = 1; i < segments_.size(); ++i) {
    Segment& s = segments_[i];
    if (s.used || s.markerCode != markerCode || s.name != marker) continue;
    flushKept();
    current_ = -1;
    currentModelled_.clear();
    s.used = true;
    ctx_.w().write(markerCode, marker);
    for (std::size_t k = s.begin; k < s.end; ++k) writeKept(original_.tags[k]);
  }
}

void DxfEmitter::addModelled(std::initializer_list<int> more) {
  currentModelled_.insert(currentModelled_.end(), more.begin(), more.end());
  allModelled_.insert(allModelled_.end(), more.begin(), more.end());
}

void DxfEmitter::copyFlat(std::span<const int> wanted) {
  allModelled_.insert(allModelled_.end(), wanted.begin(), wanted.end());
  if (!original_.valid() || !flat_) return;
  for (std::size_t i = original_.frame.bodyBegin; i < original_.frame.xdataBegin; ++i)
    if (codes::contains(wanted, original_.tags[i].code)) writeKept(original_.tags[i]);
}

void DxfEmitter::dropEmbedded() {
  for (auto& s : segments_)
    if (s.markerCode == 101) s.used = true;
}

void DxfEmitter::coverEverywhere(std::span<const int> codes) {
  coveredEverywhere_.insert(coveredEverywhere_.end(), codes.begin(), codes.end());
}

void DxfEmitter::dropSegment(std::string_view marker) {
  for (auto& s : segments_)
    if (s.name == marker) s.used = true;
}

const DxfTag* DxfEmitter::originalTag(int code, int occurrence) const {
  const Segment* s = current();
  if (!s || !original_.valid()) return nullptr;
  std::size_t begin = flat_ ? original_.frame.bodyBegin : s->begin;
  std::size_t end = flat_ ? original_.frame.xdataBegin : s->end;
  int n = 0;
  for (std::size_t i = begin; i < end; ++i)
    if (original_.tags[i].code == code && n++ == occurrence) return &original_.tags[i];
  return nullptr;
}

void DxfEmitter::text(int code, const std::wstring& value) { ctx_.w().write(code, ctx_.encode(value)); }

void DxfEmitter::raw(int code, std::string_view value) { ctx_.w().write(code, value); }

void DxfEmitter::real(int code, double value) {
  int n = codeUse_[code]++;
  if (const DxfTag* t = originalTag(code, n)) {
    auto v = dxfParseDouble(t->value);
    if (v && *v == value) {
      ctx_.w().write(code, t->value);
      return;
    }
  }
  ctx_.w().writeDouble(code, value);
}

void DxfEmitter::angle(int code, double radians) {
  int n = codeUse_[code]++;
  if (const DxfTag* t = originalTag(code, n)) {
    auto v = dxfParseDouble(t->value);
    if (v && dxfDegToRad(*v) == radians) {
      ctx_.w().write(code, t->value);
      return;
    }
  }
  ctx_.w().writeDouble(code, dxfRadToDeg(radians));
}

void DxfEmitter::integer(int code, std::int64_t value) {
  int n = codeUse_[code]++;
  if (const DxfTag* t = originalTag(code, n)) {
    auto v = dxfParseInt(t->value);
    if (v && *v == value) {
      ctx_.w().write(code, t->value);
      return;
    }
  }
  ctx_.w().writeInt(code, value);
}

void DxfEmitter::point(int code, const QaGePoint3d& p, bool withZ) {
  real(code, p.x);
  real(code + 10, p.y);
  if (withZ) real(code + 20, p.z);
}

void DxfEmitter::point2(int code, double x, double y) {
  real(code, x);
  real(code + 10, y);
}

void DxfEmitter::handle(int code, QaDbObjectId id) {
  ctx_.w().writeHandle(code, id.isNull() || id.isErased() ? 0 : id.handle().value());
}

void DxfEmitter::finish() {
  flushKept();
  current_ = -1;
  writeLeading();
  if (original_.valid()) {
    const auto& tags = original_.tags;
    if (flat_) {
      for (std::size_t i = original_.frame.bodyBegin; i < original_.frame.xdataBegin; ++i)
        if (!codes::contains(allModelled_, tags[i].code) && !codes::contains(codes::kCommon, tags[i].code))
          writeKept(tags[i]);
    } else {
      // Subclasses the writer did not name keep their place at the end.
      for (std::size_t k = 1; k < segments_.size(); ++k) {
        const Segment& s = segments_[k];
        if (s.used) continue;
        ctx_.w().write(s.markerCode, s.name);
        for (std::size_t i = s.begin; i < s.end; ++i) {
          if (s.markerCode == 101) writeKept(tags[i]);
          else writeKeptOutside(tags[i]);
        }
      }
    }
  }
  if (part_) {
    if (original_.valid())
      for (std::size_t i = original_.frame.xdataBegin; i < original_.tags.size(); ++i)
        ctx_.copyTag(*original_.source, original_.tags[i]);
    return;
  }
  // Extended data: the original text when the values did not change.
  const QaDbXData& xdata = object_.allXData();
  if (original_.valid() && original_.frame.hasXData(original_.tags.size())) {
    DxfAuditReport ignored;
    DxfReadContext rc(*original_.source, ignored);
    if (dxfReadXData(rc, original_.tags, original_.frame.xdataBegin) == xdata) {
      for (std::size_t i = original_.frame.xdataBegin; i < original_.tags.size(); ++i)
        ctx_.copyTag(*original_.source, original_.tags[i]);
      return;
    }
  }
  dxfWriteXData(ctx_.w(), ctx_.codec(), xdata);
}

}  // namespace tabulon::dxf
