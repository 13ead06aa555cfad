#include "host/db/qadb_text.h"

#include <cmath>
#include <numbers>

#include "host/db/qadb_curve_math.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_text_measure.h"

QARX_DEFINE_MEMBERS(QaDbText, QaDbEntity, L"TEXT")

QaDbText::QaDbText() = default;

QaDbText::QaDbText(const QaGePoint3d& position, const std::wstring& text, QaDbObjectId style, double height,
                   double rotation)
    : text_(text), position_(position), height_(height), style_(style), rotation_(rotation) {}

Qa::ErrorStatus QaDbText::setTextString(std::wstring text) {
  assertWriteEnabled();
  text_ = std::move(text);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::setPosition(const QaGePoint3d& p) {
  assertWriteEnabled();
  position_ = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::setAlignmentPoint(const QaGePoint3d& p) {
  assertWriteEnabled();
  alignmentPoint_ = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::setHorizontalMode(QaDb::TextHorzMode mode) { return setHorizontalMode(static_cast<int>(mode)); }

Qa::ErrorStatus QaDbText::setHorizontalMode(int mode) {
  if (mode < QaDb::kTextLeft || mode > QaDb::kTextFit) return Qa::eInvalidInput;
  assertWriteEnabled();
  horzMode_ = static_cast<QaDb::TextHorzMode>(mode);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::setVerticalMode(QaDb::TextVertMode mode) { return setVerticalMode(static_cast<int>(mode)); }

Qa::ErrorStatus QaDbText::setVerticalMode(int mode) {
  if (mode < QaDb::kTextBase || mode > QaDb::kTextTop) return Qa::eInvalidInput;
  assertWriteEnabled();
  vertMode_ = static_cast<QaDb::TextVertMode>(mode);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::setHeight(double h) {
  if (h < 0.0) return Qa::eInvalidInput;
  assertWriteEnabled();
  height_ = h;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::setWidthFactor(double f) {
  if (!(f > 0.0)) return Qa::eInvalidInput;
  assertWriteEnabled();
  widthFactor_ = f;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::setTextStyle(QaDbObjectId style) {
  assertWriteEnabled();
  style_ = style;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::setRotation(double a) {
  assertWriteEnabled();
  rotation_ = a;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::setOblique(double a) {
  assertWriteEnabled();
  oblique_ = a;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::setThickness(double t) {
  assertWriteEnabled();
  thickness_ = t;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::setNormal(const QaGeVector3d& n) {
  // Nearly every text lies in its plane's Z axis, a unit vector already: no root to take.
  const bool unit = n.x * n.x + n.y * n.y + n.z * n.z == 1.0;
  if (!unit && n.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  normal_ = unit ? n : n.normal();
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::mirrorInX(bool on) {
  assertWriteEnabled();
  mirrorX_ = on;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::mirrorInY(bool on) {
  assertWriteEnabled();
  mirrorY_ = on;
  return Qa::eOk;
}

QaGePoint3d QaDbText::anchorPoint() const {
  bool usesFirstPoint = isDefaultAlignment() || horzMode_ == QaDb::kTextAlign || horzMode_ == QaDb::kTextFit;
  return usesFirstPoint ? position_ : alignmentPoint_;
}

double QaDbText::measuredWidth() const { return qadbTextWidth(text_, style_, height_, widthFactor_); }

void QaDbText::getBoundingPoints(QaGePoint3d corners[4]) const {
  double w = measuredWidth();
  double h = height_;
  double x0 = 0.0, y0 = 0.0;
  double rotation = rotation_;
  switch (horzMode_) {
    case QaDb::kTextLeft: break;
    case QaDb::kTextCenter: x0 = -w / 2.0; break;
    case QaDb::kTextRight: x0 = -w; break;
    case QaDb::kTextMid: x0 = -w / 2.0; break;
    case QaDb::kTextAlign:
    case QaDb::kTextFit: {
      // The text fills the baseline from the first to the second point.
      QaGeVector3d base = QaGeMatrix3d::worldToPlane(normal_) * (alignmentPoint_ - position_);
      w = std::hypot(base.x, base.y);
      if (w > 0.0) rotation = std::atan2(base.y, base.x);
      break;
    }
  }
  if (horzMode_ == QaDb::kTextMid) {
    y0 = -h / 2.0;
  } else {
    switch (vertMode_) {
      case QaDb::kTextBase:
      case QaDb::kTextBottom: y0 = 0.0; break;
      case QaDb::kTextVertMid: y0 = -h / 2.0; break;
      case QaDb::kTextTop: y0 = -h; break;
    }
  }
  double shear = std::tan(oblique_);
  // Local corners before mirroring, baseline along +x.
  double xs[4] = {x0, x0 + w, x0 + w, x0};
  double ys[4] = {y0, y0, y0 + h, y0 + h};
  QaGeMatrix3d toWorld = QaGeMatrix3d::translation(anchorPoint().asVector()) * QaGeMatrix3d::planeToWorld(normal_) *
                         QaGeMatrix3d::rotation(rotation);
  for (int i = 0; i < 4; ++i) {
    double x = xs[i] + shear * (ys[i] - y0);
    double y = ys[i];
    // Backwards text runs to the left of its anchor, upside-down text hangs below it.
    if (mirrorX_) x = -x;
    if (mirrorY_) y = -y;
    QaGePoint3d local(x, y, 0.0);
    corners[i] = toWorld * local;
  }
}

Qa::ErrorStatus QaDbText::transformBy(const QaGeMatrix3d& m) {
  QaGeVector3d xd = QaDbGeom::directionInPlane(rotation_, normal_);
  QaGeVector3d yd = normal_.crossProduct(xd);
  QaGeVector3d xm = m * xd;
  QaGeVector3d ym = m * yd;
  if (xm.isZeroLength() || ym.isZeroLength()) return Qa::eInvalidInput;
  QaDbGeom::PlaneMap pm = QaDbGeom::mapPlane(m, normal_);
  // Height follows the part of the mapped y direction across the baseline.
  QaGeVector3d xu = xm.normal();
  QaGeVector3d yPerp = ym - xu * ym.dotProduct(xu);
  double hScale = yPerp.length();
  double wScale = xm.length();
  if (hScale <= 0.0) return Qa::eInvalidInput;
  assertWriteEnabled();
  position_ = m * position_;
  alignmentPoint_ = m * alignmentPoint_;
  normal_ = pm.newNormal;
  if (pm.flipped) {
    // A mirrored text stays readable from the same side: it runs backwards.
    rotation_ = QaDbGeom::normalizeAngle(QaDbGeom::angleInPlane(ym, normal_) - std::numbers::pi / 2.0);
    mirrorX_ = !mirrorX_;
  } else {
    rotation_ = QaDbGeom::angleInPlane(xm, normal_);
  }
  height_ *= hScale;
  widthFactor_ *= wScale / hScale;
  thickness_ *= (m * normal_).length();
  return Qa::eOk;
}

Qa::ErrorStatus QaDbText::getGeomExtents(QaDbExtents& ext) const {
  ext.reset();
  QaGePoint3d c[4];
  getBoundingPoints(c);
  for (const QaGePoint3d& p : c) ext.addPoint(p);
  return Qa::eOk;
}

void QaDbText::hardReferences(std::vector<QaDbObjectId>& out) const {
  if (!style_.isNull()) out.push_back(style_);
}

void QaDbText::remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) {
  QaDbEntity::remapIds(mapping, target);
  if (style_.isNull() || style_.database() == target) return;
  style_ = mapping.destinationOf(style_);
}

namespace {
// A style id from another drawing is replaced by the style of the same name here, or
// by "Standard".
QaDbObjectId localStyle(QaDbDatabase* db, QaDbObjectId style) {
  if (style.isNull() || style.database() == db) return style;
  auto* table = QaDbTextStyleTable::cast(db->textStyleTableId().rawObject());
  if (table == nullptr) return QaDbObjectId();
  std::wstring name = L"Standard";
  if (auto* rec = QaDbSymbolTableRecord::cast(style.rawObject())) name = rec->name();
  QaDbObjectId id = table->getAt(name);
  return id.isNull() ? table->getAt(L"Standard") : id;
}
}  // namespace

void QaDbText::onAddedToDatabase() {
  QaDbEntity::onAddedToDatabase();
  style_ = localStyle(database(), style_);
  if (style_.isNull())
    if (auto* table = QaDbTextStyleTable::cast(database()->textStyleTableId().rawObject()))
      style_ = table->getAt(L"Standard");
}

// Shared with multi-line text.
QaDbObjectId qadbLocalTextStyle(QaDbDatabase* db, QaDbObjectId style) { return localStyle(db, style); }
