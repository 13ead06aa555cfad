// What attributes and attribute definitions share beyond text: tag, flags, field
// length, lock position and the embedded multi-line text. A value held by both classes.
#pragma once

#include <memory>
#include <string>

#include "host/db/qadb_mtext.h"

class QaDbText;

struct QaDbAttributeData {
  // Attribute flags (group 70).
  enum Flags { kInvisible = 1, kConstant = 2, kVerifiable = 4, kPreset = 8 };

  std::wstring tag;
  int flags = 0;
  int fieldLength = 0;
  bool lockPosition = false;
  // Present for a multi-line attribute (definition).
  std::unique_ptr<QaDbMText> mtext;

  QaDbAttributeData() = default;
  QaDbAttributeData(const QaDbAttributeData& o);
  QaDbAttributeData& operator=(const QaDbAttributeData& o);

  // An embedded text made from the single-line text's values: contents, anchor,
  // height, rotation, style, attachment from the justification, layer and colour.
  static std::unique_ptr<QaDbMText> mtextFrom(const QaDbText& text);
  // Brings an embedded text's anchor, height, rotation, style and contents in line with
  // the single-line values.
  static void syncMText(QaDbMText& mtext, const QaDbText& text);

  // `flags` with one flag set or cleared.
  int flagsWith(int flag, bool on) const { return on ? (flags | flag) : (flags & ~flag); }
  // Replaces the embedded text by a copy of `m`.
  void setMText(const QaDbMText& m);
  // Makes the owner multi-line (embedded text made from, or brought in line with, its
  // single-line values) or single-line (embedded text dropped).
  void convertIntoMText(const QaDbText& owner, bool multiLine);
};
