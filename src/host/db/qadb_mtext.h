// Multi-line text (MTEXT): contents with inline formatting codes, a location, a
// reference width (0 for none), an attachment point 1..9 (top-left ... bottom-right),
// and its direction as an x-axis vector or, equivalently, a rotation.
#pragma once

#include <string>

#include "host/db/qadb_entity.h"

class QaDbMText : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbMText)

 public:
  enum AttachmentPoint {
    kTopLeft = 1, kTopCenter = 2, kTopRight = 3,
    kMiddleLeft = 4, kMiddleCenter = 5, kMiddleRight = 6,
    kBottomLeft = 7, kBottomCenter = 8, kBottomRight = 9,
  };
  enum FlowDirection { kLtoR = 1, kTtoB = 3, kByStyle = 5 };
  enum LineSpacingStyle { kAtLeast = 1, kExactly = 2 };

  QaDbMText();  // out of line: make_unique then does not clear the object first

  const std::wstring& contents() const { return contents_; }
  Qa::ErrorStatus setContents(const std::wstring& text);
  // The contents without formatting codes, paragraphs as "\n".
  std::wstring text() const;
  const QaGePoint3d& location() const { return location_; }
  Qa::ErrorStatus setLocation(const QaGePoint3d& p);
  double textHeight() const { return height_; }
  Qa::ErrorStatus setTextHeight(double h);  // eInvalidInput for h <= 0
  double width() const { return width_; }
  Qa::ErrorStatus setWidth(double w);  // eInvalidInput for w < 0
  // Defined height of the column box (group 46), 0 when none.
  double definedHeight() const { return definedHeight_; }
  Qa::ErrorStatus setDefinedHeight(double h);
  AttachmentPoint attachment() const { return attachment_; }
  Qa::ErrorStatus setAttachment(AttachmentPoint a);
  Qa::ErrorStatus setAttachment(int a);  // eInvalidInput outside 1..9
  FlowDirection flowDirection() const { return flow_; }
  Qa::ErrorStatus setFlowDirection(int direction);
  // The x axis of the text, a unit vector in its plane.
  const QaGeVector3d& direction() const { return direction_; }
  Qa::ErrorStatus setDirection(const QaGeVector3d& d);
  // Angle of `direction` in the plane of the normal.
  double rotation() const;
  Qa::ErrorStatus setRotation(double a);
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);
  QaDbObjectId textStyle() const { return style_; }
  Qa::ErrorStatus setTextStyle(QaDbObjectId style);
  double lineSpacingFactor() const { return lineSpacingFactor_; }
  Qa::ErrorStatus setLineSpacingFactor(double f);  // 0.25 .. 4
  int lineSpacingStyle() const { return lineSpacingStyle_; }
  Qa::ErrorStatus setLineSpacingStyle(int style);

  // Width and height of the text block: widest line (or the reference width when set
  // and wider), lines times the line pitch.
  double actualWidth() const;
  double actualHeight() const;
  // Corners of the block in world coordinates: lower-left, lower-right, upper-right,
  // upper-left.
  void getBoundingPoints(QaGePoint3d corners[4]) const;

  // Moves, rotations, uniform scaling and mirrors; eCannotScaleNonUniformly otherwise.
  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;

  void hardReferences(std::vector<QaDbObjectId>& out) const override;
  void remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) override;
  void onAddedToDatabase() override;

 private:
  std::wstring contents_;
  QaGePoint3d location_;
  double height_ = 2.5;
  double width_ = 0.0;
  double definedHeight_ = 0.0;
  AttachmentPoint attachment_ = kTopLeft;
  FlowDirection flow_ = kLtoR;
  QaGeVector3d direction_ = QaGeVector3d::kXAxis;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
  QaDbObjectId style_;
  double lineSpacingFactor_ = 1.0;
  int lineSpacingStyle_ = kAtLeast;
};
