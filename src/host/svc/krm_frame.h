// A drawing frame of the suite: a block reference in model space that the frame rules
// accept (krm_frame_rules.h). Its scale is the reference's X scale factor, its
// extents those of the reference, and its BOM dictionary name (getDicName) its handle.
// A plain value read from the drawing; it does not follow later changes.
#pragma once

#include "host/db/qa_error_status.h"
#include "host/db/qadb_extents.h"
#include "host/db/qadb_object_id.h"
#include "host/svc/krm_frame_rules.h"

#include <string>
#include <vector>

class QaDbDatabase;

class KrmFrame {
 public:
  KrmFrame() = default;

  // Reads the frame `id`: eOk, or eWrongObjectType for an object that is no block
  // reference in model space or that the rules do not accept, or the open failure.
  static Qa::ErrorStatus open(QaDbObjectId id, const KrmFrameRules& rules, KrmFrame& out);
  static Qa::ErrorStatus open(QaDbObjectId id, KrmFrame& out) { return open(id, KrmFrameRules::load(), out); }

  QaDbObjectId objectId() const { return id_; }
  // The name of the frame's bill-of-materials dictionary: its handle in hexadecimal.
  std::wstring getDicName() const;
  double scale() const { return scale_; }
  const QaDbExtents& extents() const { return extents_; }
  const std::wstring& blockName() const { return blockName_; }
  // Whether the point lies within the extents (x and y only).
  bool contains(const QaGePoint3d& point) const;

 private:
  QaDbObjectId id_;
  double scale_ = 1.0;
  QaDbExtents extents_;
  std::wstring blockName_;
};

// Every frame of the drawing's model space, in drawing order.
std::vector<KrmFrame> KrmFindFrames(QaDbDatabase* db, const KrmFrameRules& rules);

// The frame that an entity belongs to: the entity itself when it is a frame, else the
// first frame whose extents hold the entity's extents (or, for an entity without
// extents, its position). The null id when there is none.
QaDbObjectId GetKrmFrameXdata(QaDbObjectId entityId);
QaDbObjectId GetKrmFrameXdata(QaDbObjectId entityId, const KrmFrameRules& rules);
