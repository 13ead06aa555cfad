// A dimension (DIMENSION): its definition points and text, and the anonymous block that
// draws it. Extents come from that block; a transform moves the points and is
// remembered for the block, which is not redrawn here.
#pragma once

#include <string>

#include "host/db/qadb_entity.h"

class QaDbDimension : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbDimension)

 public:
  // Kind in the low bits of group 70.
  enum Kind { kRotated = 0, kAligned = 1, kAngular = 2, kDiameter = 3, kRadius = 4, kAngular3Point = 5, kOrdinate = 6 };

  QaDbDimension() = default;

  int dimensionFlags() const { return flags_; }
  Qa::ErrorStatus setDimensionFlags(int flags);
  Kind kind() const { return static_cast<Kind>(flags_ & 7); }
  QaDbObjectId dimBlockId() const { return block_; }
  Qa::ErrorStatus setDimBlockId(QaDbObjectId id);
  QaDbObjectId dimensionStyle() const { return style_; }
  Qa::ErrorStatus setDimensionStyle(QaDbObjectId id);
  // The override text ("" means the measurement, "<>" stands for it inside a text).
  const std::wstring& dimensionText() const { return text_; }
  Qa::ErrorStatus setDimensionText(const std::wstring& text);
  double measurement() const { return measurement_; }
  Qa::ErrorStatus setMeasurement(double m);

  // Definition points: 10 (dimension line), 11 (text middle), 12 (block insertion), 13,
  // 14 (extension lines), 15 (radius/diameter/angle), 16 (arc).
  const QaGePoint3d& dimLinePoint() const { return points_[0]; }
  const QaGePoint3d& textPosition() const { return points_[1]; }
  const QaGePoint3d& blockInsertionPoint() const { return points_[2]; }
  const QaGePoint3d& xLine1Point() const { return points_[3]; }
  const QaGePoint3d& xLine2Point() const { return points_[4]; }
  const QaGePoint3d& defPoint2() const { return points_[5]; }
  const QaGePoint3d& arcPoint() const { return points_[6]; }
  // `code` is 10..16; eInvalidIndex otherwise.
  Qa::ErrorStatus getDefinitionPoint(int code, QaGePoint3d& p) const;
  Qa::ErrorStatus setDefinitionPoint(int code, const QaGePoint3d& p);
  double rotation() const { return rotation_; }
  Qa::ErrorStatus setRotation(double a);
  double textRotation() const { return textRotation_; }
  Qa::ErrorStatus setTextRotation(double a);
  double obliqueAngle() const { return oblique_; }
  Qa::ErrorStatus setObliqueAngle(double a);
  double leaderLength() const { return leaderLength_; }
  Qa::ErrorStatus setLeaderLength(double l);
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);

  // What has been applied to the definition points since the block was made.
  const QaGeMatrix3d& blockTransform() const { return blockTransform_; }
  // Where the block's contents are drawn: at the block insertion point (group 12), under
  // blockTransform().
  QaGeMatrix3d blockPlacement() const;

  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  // The block's contents under blockTransform(); without a block, the box of the
  // definition points that are in use.
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;
  // Copies of the block's entities under blockTransform().
  Qa::ErrorStatus explode(std::vector<std::unique_ptr<QaDbEntity>>& out) const override;

  void hardReferences(std::vector<QaDbObjectId>& out) const override;
  void remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) override;

 private:
  int flags_ = 0;
  QaDbObjectId block_;
  QaDbObjectId style_;
  std::wstring text_;
  double measurement_ = 0.0;
  QaGePoint3d points_[7];
  double rotation_ = 0.0;
  double textRotation_ = 0.0;
  double oblique_ = 0.0;
  double leaderLength_ = 0.0;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
  QaGeMatrix3d blockTransform_;
};
