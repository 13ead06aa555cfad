#include "host/db/qadb_mtext.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/db/qadb_curve_math.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_text_measure.h"

QARX_DEFINE_MEMBERS(QaDbMText, QaDbEntity, L"MTEXT")

QaDbMText::QaDbMText() = default;

QaDbObjectId qadbLocalTextStyle(QaDbDatabase* db, QaDbObjectId style);

Qa::ErrorStatus QaDbMText::setContents(const std::wstring& text) {
  assertWriteEnabled();
  contents_ = text;
  return Qa::eOk;
}

namespace {
// Strips inline formatting: \P paragraphs become "\n", \~ a space, escaped braces and
// backslashes stay as characters, stacked fractions read "a/b", other codes vanish.
std::wstring plainText(const std::wstring& s) {
  std::wstring out;
  for (std::size_t i = 0; i < s.size(); ++i) {
    wchar_t c = s[i];
    if (c == L'{' || c == L'}') continue;
    if (c == L'^' && i + 1 < s.size()) {
      // Caret notation of control characters; "^ " is a caret.
      wchar_t n = s[i + 1];
      ++i;
      if (n == L' ') out += L'^';
      else if (n == L'I') out += L'\t';
      else if (n == L'J') out += L'\n';
      continue;
    }
    if (c != L'\\' || i + 1 >= s.size()) {
      out += c;
      continue;
    }
    wchar_t code = s[++i];
    switch (code) {
      case L'P': out += L'\n'; break;
      case L'~': out += L' '; break;
      case L'\\': case L'{': case L'}': out += code; break;
      case L'L': case L'l': case L'O': case L'o': case L'K': case L'k': break;
      case L'S': {
        std::size_t end = s.find(L';', i + 1);
        if (end == std::wstring::npos) end = s.size();
        std::wstring stack = s.substr(i + 1, end - i - 1);
        for (wchar_t& ch : stack)
          if (ch == L'^' || ch == L'#') ch = L'/';
        out += stack;
        i = end;
        break;
      }
      case L'f': case L'F': case L'H': case L'W': case L'Q': case L'T': case L'C': case L'c':
      case L'A': case L'p': {
        std::size_t end = s.find(L';', i + 1);
        i = end == std::wstring::npos ? s.size() : end;
        break;
      }
      default:
        out += L'\\';
        out += code;
        break;
    }
  }
  return out;
}

std::vector<std::wstring> splitLines(const std::wstring& text) {
  std::vector<std::wstring> lines(1);
  for (wchar_t c : text) {
    if (c == L'\n') lines.emplace_back();
    else lines.back() += c;
  }
  return lines;
}
}  // namespace

std::wstring QaDbMText::text() const { return plainText(contents_); }

Qa::ErrorStatus QaDbMText::setLocation(const QaGePoint3d& p) {
  assertWriteEnabled();
  location_ = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbMText::setTextHeight(double h) {
  if (!(h > 0.0)) return Qa::eInvalidInput;
  assertWriteEnabled();
  height_ = h;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbMText::setWidth(double w) {
  if (w < 0.0) return Qa::eInvalidInput;
  assertWriteEnabled();
  width_ = w;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbMText::setDefinedHeight(double h) {
  if (h < 0.0) return Qa::eInvalidInput;
  assertWriteEnabled();
  definedHeight_ = h;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbMText::setAttachment(AttachmentPoint a) { return setAttachment(static_cast<int>(a)); }

Qa::ErrorStatus QaDbMText::setAttachment(int a) {
  if (a < kTopLeft || a > kBottomRight) return Qa::eInvalidInput;
  assertWriteEnabled();
  attachment_ = static_cast<AttachmentPoint>(a);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbMText::setFlowDirection(int direction) {
  if (direction != kLtoR && direction != kTtoB && direction != kByStyle) return Qa::eInvalidInput;
  assertWriteEnabled();
  flow_ = static_cast<FlowDirection>(direction);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbMText::setDirection(const QaGeVector3d& d) {
  // Only the part in the text's plane counts.
  QaGeVector3d inPlane = d - normal_ * d.dotProduct(normal_);
  if (inPlane.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  direction_ = inPlane.normal();
  return Qa::eOk;
}

double QaDbMText::rotation() const { return QaDbGeom::angleInPlane(direction_, normal_); }

Qa::ErrorStatus QaDbMText::setRotation(double a) {
  assertWriteEnabled();
  direction_ = QaDbGeom::directionInPlane(a, normal_);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbMText::setNormal(const QaGeVector3d& n) {
  if (n.isZeroLength()) return Qa::eInvalidInput;
  double a = rotation();
  assertWriteEnabled();
  normal_ = n.normal();
  direction_ = QaDbGeom::directionInPlane(a, normal_);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbMText::setTextStyle(QaDbObjectId style) {
  assertWriteEnabled();
  style_ = style;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbMText::setLineSpacingFactor(double f) {
  if (f < 0.25 || f > 4.0) return Qa::eInvalidInput;
  assertWriteEnabled();
  lineSpacingFactor_ = f;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbMText::setLineSpacingStyle(int style) {
  if (style != kAtLeast && style != kExactly) return Qa::eInvalidInput;
  assertWriteEnabled();
  lineSpacingStyle_ = style;
  return Qa::eOk;
}

namespace {
struct Block {
  double width = 0.0;
  int lines = 1;
};

Block measure(const std::wstring& plain, QaDbObjectId style, double height, double refWidth) {
  Block b;
  b.lines = 0;
  for (const std::wstring& line : splitLines(plain)) {
    double w = qadbTextWidth(line, style, height, 1.0);
    int visual = 1;
    if (refWidth > 0.0 && w > refWidth) {
      // Wrapped at the reference width.
      visual = static_cast<int>(std::ceil(w / refWidth));
      w = refWidth;
    }
    b.width = std::max(b.width, w);
    b.lines += visual;
  }
  return b;
}
}  // namespace

double QaDbMText::actualWidth() const { return measure(text(), style_, height_, width_).width; }

double QaDbMText::actualHeight() const {
  int lines = measure(text(), style_, height_, width_).lines;
  double pitch = height_ * 5.0 / 3.0 * lineSpacingFactor_;
  return height_ + (lines - 1) * pitch;
}

void QaDbMText::getBoundingPoints(QaGePoint3d corners[4]) const {
  double w = std::max(actualWidth(), width_);
  double h = actualHeight();
  int col = (attachment_ - 1) % 3;
  int row = (attachment_ - 1) / 3;
  double x0 = col == 0 ? 0.0 : (col == 1 ? -w / 2.0 : -w);
  double yTop = row == 0 ? 0.0 : (row == 1 ? h / 2.0 : h);
  QaGeVector3d xd = direction_;
  QaGeVector3d yd = normal_.crossProduct(xd);
  auto at = [&](double x, double y) { return location_ + xd * x + yd * y; };
  corners[0] = at(x0, yTop - h);
  corners[1] = at(x0 + w, yTop - h);
  corners[2] = at(x0 + w, yTop);
  corners[3] = at(x0, yTop);
}

Qa::ErrorStatus QaDbMText::transformBy(const QaGeMatrix3d& m) {
  QaDbGeom::PlaneMap pm = QaDbGeom::mapPlane(m, normal_);
  if (!pm.uniform) return Qa::eCannotScaleNonUniformly;
  QaGeVector3d xm = m * direction_;
  QaGeVector3d ym = m * normal_.crossProduct(direction_);
  assertWriteEnabled();
  location_ = m * location_;
  normal_ = pm.newNormal;
  // A mirrored text keeps reading from the same side; its up direction decides.
  direction_ = pm.flipped ? ym.crossProduct(normal_).normal() : xm.normal();
  height_ *= pm.scale;
  width_ *= pm.scale;
  definedHeight_ *= pm.scale;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbMText::getGeomExtents(QaDbExtents& ext) const {
  ext.reset();
  QaGePoint3d c[4];
  getBoundingPoints(c);
  for (const QaGePoint3d& p : c) ext.addPoint(p);
  return Qa::eOk;
}

void QaDbMText::hardReferences(std::vector<QaDbObjectId>& out) const {
  if (!style_.isNull()) out.push_back(style_);
}

void QaDbMText::remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) {
  QaDbEntity::remapIds(mapping, target);
  if (style_.isNull() || style_.database() == target) return;
  style_ = mapping.destinationOf(style_);
}

void QaDbMText::onAddedToDatabase() {
  QaDbEntity::onAddedToDatabase();
  style_ = qadbLocalTextStyle(database(), style_);
  if (style_.isNull())
    if (auto* table = QaDbTextStyleTable::cast(database()->textStyleTableId().rawObject()))
      style_ = table->getAt(L"Standard");
}
