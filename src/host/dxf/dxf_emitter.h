// Writes one object from its fields, in the order CAD programs write it, and
// carries over from the original tags (when the object was loaded) whatever
// the fields do not cover: unmodelled tags of each subclass, subclasses and
// application groups nobody models, and numbers whose value did not change
// (written with their original text). Must not outlive the context.
#pragma once

#include "host/db/qadb_object.h"
#include "host/dxf/dxf_write_context.h"

#include <initializer_list>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace tabulon::dxf {

class DxfEmitter {
 public:
  DxfEmitter(DxfWriteContext& ctx, const QaDbObject& object, std::string_view type);
  // As above with the original tags given (a BLOCK or SEQEND kept beside the object).
  DxfEmitter(DxfWriteContext& ctx, const QaDbObject& object, std::string_view type, DxfOriginal original);

  const DxfOriginal& original() const { return original_; }
  // Writes a record that belongs to the object without being it (VERTEX,
  // SEQEND, BLOCK, ENDBLK): the object's reactors, extension dictionary and
  // extended data are not written; the original's extended data is.
  void asPart() { part_ = true; }
  // The original came from an R12 file: no subclass markers.
  bool flatOriginal() const { return flat_; }

  // "0 TYPE", the handle, application groups, extension dictionary,
  // reactors and the owner. `handle` 0 means the object's own.
  void head(int handleCode = 5, std::uint64_t handle = 0, QaDbObjectId owner = QaDbObjectId(), bool useOwner = false);
  // Starts a subclass ("100 marker"); the tags of the original's subclass of
  // that name (the n-th one for the n-th call) that are not in `modelled`
  // are written when the next subclass starts or at finish().
  void subclass(std::string_view marker, std::span<const int> modelled);
  // Starts an embedded part ("101 marker") written from fields.
  void embedded(std::string_view marker);
  // Writes the original's part of that marker (100 or 101) whole, if any.
  void keepSegment(int markerCode, std::string_view marker);
  // More codes of the current subclass that the caller writes itself.
  void addModelled(std::initializer_list<int> more);
  // From an R12 original: writes its body tags with these codes, in their order.
  void copyFlat(std::span<const int> codes);
  // Marks original parts of that marker as covered (not to be written at finish()).
  void dropSegment(std::string_view marker);
  // Marks every embedded part of the original (101 markers, whatever their name) as covered.
  void dropEmbedded();
  // Codes the kind's reader takes from every part of the body but embedded ones,
  // whatever its marker: the fields cover them, so no original part carries them
  // over (kept in another part, they would be read again, in another order).
  void coverEverywhere(std::span<const int> codes);

  void text(int code, const std::wstring& value);
  void raw(int code, std::string_view value);
  void real(int code, double value);
  // An angle kept in radians, written in degrees.
  void angle(int code, double radians);
  void integer(int code, std::int64_t value);
  void point(int code, const QaGePoint3d& p, bool withZ = true);
  void point2(int code, double x, double y);
  void handle(int code, QaDbObjectId id);
  // The original value of `code` in the current subclass (n-th occurrence), if any.
  const DxfTag* originalTag(int code, int occurrence = 0) const;

  // The remaining original tags, subclasses nobody wrote, then extended data.
  void finish();

  DxfWriteContext& ctx() { return ctx_; }

 private:
  struct Segment {
    int markerCode = 100;
    std::string_view name;
    std::size_t begin = 0, end = 0;  // tags after the marker
    bool used = false;
  };
  void flushKept();
  void writeLeading();
  void writeKept(const DxfTag& tag);
  // An original tag of a part that is not embedded, unless the fields cover its code.
  void writeKeptOutside(const DxfTag& tag);
  const Segment* current() const { return current_ >= 0 ? &segments_[static_cast<std::size_t>(current_)] : nullptr; }

  DxfWriteContext& ctx_;
  const QaDbObject& object_;
  std::string type_;
  DxfOriginal original_;
  bool flat_ = false;
  std::vector<Segment> segments_;
  int current_ = -1;
  std::vector<int> currentModelled_;
  std::vector<int> allModelled_;
  std::vector<int> coveredEverywhere_;
  std::map<std::string, int, std::less<>> occurrences_;
  std::map<int, int> codeUse_;
  bool leadingDone_ = false;
  bool part_ = false;
};

}  // namespace tabulon::dxf
