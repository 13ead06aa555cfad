// Single-line text (TEXT), and the base of attributes and attribute definitions.
// `position` is the first alignment point; `alignmentPoint` the second, which decides
// where a justified text stands (for left/base text it is kept but not used).
// Angles in radians.
#pragma once

#include <string>

#include "host/db/qadb_entity.h"

class QaDbText : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbText)

 public:
  QaDbText();  // out of line: make_unique then does not clear the object first
  QaDbText(const QaGePoint3d& position, const std::wstring& text, QaDbObjectId style = QaDbObjectId(),
           double height = 0.0, double rotation = 0.0);

  const std::wstring& textString() const { return text_; }
  virtual Qa::ErrorStatus setTextString(std::wstring text);
  const QaGePoint3d& position() const { return position_; }
  Qa::ErrorStatus setPosition(const QaGePoint3d& p);
  const QaGePoint3d& alignmentPoint() const { return alignmentPoint_; }
  Qa::ErrorStatus setAlignmentPoint(const QaGePoint3d& p);
  bool isDefaultAlignment() const { return horzMode_ == QaDb::kTextLeft && vertMode_ == QaDb::kTextBase; }
  QaDb::TextHorzMode horizontalMode() const { return horzMode_; }
  Qa::ErrorStatus setHorizontalMode(QaDb::TextHorzMode mode);
  Qa::ErrorStatus setHorizontalMode(int mode);  // eInvalidInput outside 0..5
  QaDb::TextVertMode verticalMode() const { return vertMode_; }
  Qa::ErrorStatus setVerticalMode(QaDb::TextVertMode mode);
  Qa::ErrorStatus setVerticalMode(int mode);  // eInvalidInput outside 0..3
  double height() const { return height_; }
  Qa::ErrorStatus setHeight(double h);  // eInvalidInput for h < 0
  double widthFactor() const { return widthFactor_; }
  Qa::ErrorStatus setWidthFactor(double f);  // eInvalidInput for f <= 0
  QaDbObjectId textStyle() const { return style_; }
  Qa::ErrorStatus setTextStyle(QaDbObjectId style);
  double rotation() const { return rotation_; }
  Qa::ErrorStatus setRotation(double a);
  double oblique() const { return oblique_; }
  Qa::ErrorStatus setOblique(double a);
  double thickness() const { return thickness_; }
  Qa::ErrorStatus setThickness(double t);
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);
  // Backwards (mirrored in X, generation flag 2) and upside down (flag 4).
  bool isMirroredInX() const { return mirrorX_; }
  Qa::ErrorStatus mirrorInX(bool on);
  bool isMirroredInY() const { return mirrorY_; }
  Qa::ErrorStatus mirrorInY(bool on);
  // Generation flags as one number (2 backwards, 4 upside down).
  int generationFlags() const { return (mirrorX_ ? 2 : 0) | (mirrorY_ ? 4 : 0); }

  // The point the text is anchored at: `position` for left/base text, else
  // `alignmentPoint`.
  QaGePoint3d anchorPoint() const;
  // The text's box corners in world coordinates from its anchor, height, measured width
  // and justification: lower-left, lower-right, upper-right, upper-left.
  void getBoundingPoints(QaGePoint3d corners[4]) const;

  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;

  void hardReferences(std::vector<QaDbObjectId>& out) const override;
  void remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) override;
  void onAddedToDatabase() override;

 protected:
  // Width of the text as drawn (through qadbTextWidth).
  double measuredWidth() const;

 private:
  std::wstring text_;
  QaGePoint3d position_;
  QaGePoint3d alignmentPoint_;
  QaDb::TextHorzMode horzMode_ = QaDb::kTextLeft;
  QaDb::TextVertMode vertMode_ = QaDb::kTextBase;
  double height_ = 0.0;
  double widthFactor_ = 1.0;
  QaDbObjectId style_;
  double rotation_ = 0.0;
  double oblique_ = 0.0;
  double thickness_ = 0.0;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
  bool mirrorX_ = false;
  bool mirrorY_ = false;
};
