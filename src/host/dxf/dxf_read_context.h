// What the readers of entities, tables and objects share while a file loads:
// the source, how its strings decode, its version, the repair report, and
// typed access to tag values that fails with a located DxfError.
#pragma once

#include "host/db/qadb_handle.h"
#include "host/db/qadb_shared_name.h"
#include "host/dxf/dxf_audit.h"
#include "host/dxf/dxf_object_frame.h"
#include "host/dxf/dxf_source.h"
#include "host/ge/qage_point3d.h"
#include "host/ge/qage_vector3d.h"

#include <cstdint>
#include <span>
#include <string>

namespace tabulon::dxf {

class DxfReadContext {
 public:
  DxfReadContext(const DxfSource& source, DxfAuditReport& audit) : source_(source), audit_(audit) {}

  const DxfSource& source() const { return source_; }
  const DxfTextCodec& codec() const { return source_.codec(); }
  DxfVersion version() const { return source_.version(); }
  // The object being read has no subclass markers, its common properties may
  // stand anywhere in the body: every object of R12 and older, and those that
  // markFlatObject() names so in later files.
  bool flat() const { return objectFlat_ || !dxfVersionHasSubclasses(source_.version()); }
  // The file is of R12 or older.
  bool flatFile() const { return !dxfVersionHasSubclasses(source_.version()); }
  // Says whether the object about to be read is in the flat form (see dxfBodyIsFlat).
  void markFlatObject(bool flat) const { objectFlat_ = flat; }
  DxfAuditReport& audit() const { return audit_; }

  std::wstring text(const DxfTag& tag) const { return codec().decode(tag.value); }
  // A layer name: most entities repeat the one before, so the last is kept.
  QaDbSharedName layerName(const DxfTag& tag) const {
    if (tag.value != lastLayerRaw_ || !haveLayer_) {
      lastLayer_ = QaDbSharedName(codec().decode(tag.value));
      lastLayerRaw_ = tag.value;
      haveLayer_ = true;
    }
    return lastLayer_;
  }
  double real(const DxfTag& tag) const {
    double value;
    return dxfParsePlainDecimal(tag.value, value) ? value : realSlow(tag);
  }
  int integer(const DxfTag& tag) const {
    std::int64_t value;
    return dxfParsePlainInt(tag.value, value) ? static_cast<int>(value) : integerSlow(tag);
  }
  // A handle value; 0 (with a finding) when malformed.
  std::uint64_t handle(const DxfTag& tag) const;
  bool flag(const DxfTag& tag) const { return integer(tag) != 0; }
  [[noreturn]] void fail(const DxfTag& tag, const std::string& message) const;

 private:
  double realSlow(const DxfTag& tag) const;
  int integerSlow(const DxfTag& tag) const;

  const DxfSource& source_;
  DxfAuditReport& audit_;
  mutable std::string lastLayerRaw_;
  mutable QaDbSharedName lastLayer_;
  mutable bool haveLayer_ = false;
  mutable bool objectFlat_ = false;
};

// Accumulates the coordinates of points given by code, code+10, code+20.
inline void dxfSetCoord(QaGePoint3d& p, int axis, double v) {
  (axis == 0 ? p.x : axis == 1 ? p.y : p.z) = v;
}
inline void dxfSetCoord(QaGeVector3d& p, int axis, double v) {
  (axis == 0 ? p.x : axis == 1 ? p.y : p.z) = v;
}

// Walks the body of an object (between the common part and the extended
// data): `visit(tag, subclass)` for every tag that is not a subclass marker,
// where `subclass` counts the markers seen (0 before the first). A "101
// Embedded Object" marker starts a part that belongs to no subclass: its tags
// are visited with subclass -1, up to the next subclass marker if one follows
// (a damaged file, or one whose unknown parts were written after it).
template <class Visit>
void dxfForEachBodyTag(std::span<const DxfTag> tags, const DxfObjectFrame& frame, Visit&& visit) {
  int markers = 0, subclass = 0;
  for (std::size_t i = frame.bodyBegin; i < frame.xdataBegin; ++i) {
    const DxfTag& t = tags[i];
    if (t.code == 100) {
      subclass = ++markers;
      continue;
    }
    if (t.code == 101) {
      subclass = -1;
      continue;
    }
    visit(t, subclass);
  }
}

// As dxfForEachBodyTag, with the name of the current subclass marker ("" before
// the first, "Embedded Object" after a 101 marker): visit(tag, subclass, name).
template <class Visit>
void dxfForEachBodyTagNamed(std::span<const DxfTag> tags, const DxfObjectFrame& frame, Visit&& visit) {
  int markers = 0, subclass = 0;
  std::string_view name;
  for (std::size_t i = frame.bodyBegin; i < frame.xdataBegin; ++i) {
    const DxfTag& t = tags[i];
    if (t.code == 100) {
      subclass = ++markers;
      name = dxfTrim(t.value);
      continue;
    }
    if (t.code == 101) {
      subclass = -1;
      name = dxfTrim(t.value);
      continue;
    }
    visit(t, subclass, name);
  }
}

constexpr double kDxfPi = 3.14159265358979323846;
inline double dxfDegToRad(double d) { return d * (kDxfPi / 180.0); }
inline double dxfRadToDeg(double r) { return r * (180.0 / kDxfPi); }

}  // namespace tabulon::dxf
