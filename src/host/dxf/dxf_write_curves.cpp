// LINE, CIRCLE, ARC, ELLIPSE, POINT and SOLID from their fields.
#include "host/db/qadb_arc.h"
#include "host/db/qadb_circle.h"
#include "host/db/qadb_ellipse.h"
#include "host/db/qadb_line.h"
#include "host/db/qadb_point.h"
#include "host/db/qadb_solid.h"
#include "host/dxf/dxf_entity_codes.h"
#include "host/dxf/dxf_entity_writer.h"
#include "host/dxf/dxf_read_context.h"

namespace tabulon::dxf {

namespace {

bool isZAxis(const QaGeVector3d& n) { return n.x == 0 && n.y == 0 && n.z == 1; }

void normal(DxfEmitter& e, const QaGeVector3d& n, bool always = false) {
  if (always || !isZAxis(n)) e.point(210, QaGePoint3d(n.x, n.y, n.z));
}

}  // namespace

bool dxfWriteCurve(DxfWriteContext& ctx, const QaDbEntity& entity) {
  const char* type = nullptr;
  if (QaDbLine::cast(&entity)) type = "LINE";
  else if (QaDbArc::cast(&entity)) type = "ARC";
  else if (QaDbCircle::cast(&entity)) type = "CIRCLE";
  else if (QaDbEllipse::cast(&entity)) type = "ELLIPSE";
  else if (QaDbPoint::cast(&entity)) type = "POINT";
  else if (QaDbSolid::cast(&entity)) type = "SOLID";
  else return false;
  if (dxfCanWriteVerbatim(ctx, entity)) {
    const auto* rec = static_cast<const DxfObjectRecord*>(entity.dxfRecord());
    ctx.copySpan(rec->source(), rec->span());
    return true;
  }
  DxfEmitter e(ctx, entity, type);
  // Their readers take these codes from any part of the body.
  if (QaDbLine::cast(&entity)) {
    e.coverEverywhere(codes::kLine);
  } else if (QaDbArc::cast(&entity)) {
    e.coverEverywhere(codes::kCircle);
    e.coverEverywhere(codes::kArc);
  } else if (QaDbCircle::cast(&entity)) {
    e.coverEverywhere(codes::kCircle);
  } else if (QaDbEllipse::cast(&entity)) {
    e.coverEverywhere(codes::kEllipse);
  } else if (QaDbPoint::cast(&entity)) {
    e.coverEverywhere(codes::kPoint);
  } else {
    e.coverEverywhere(codes::kSolid);
  }
  dxfWriteEntityHead(e, entity, QaDbObjectId());
  if (const auto* line = QaDbLine::cast(&entity)) {
    e.subclass("AcDbLine", codes::kLine);
    if (line->thickness() != 0) e.real(39, line->thickness());
    e.point(10, line->startPoint());
    e.point(11, line->endPoint());
    normal(e, line->normal());
  } else if (const auto* arc = QaDbArc::cast(&entity)) {
    e.subclass("AcDbCircle", codes::kCircle);
    if (arc->thickness() != 0) e.real(39, arc->thickness());
    e.point(10, arc->center());
    e.real(40, arc->radius());
    normal(e, arc->normal());
    e.subclass("AcDbArc", codes::kArc);
    e.angle(50, arc->startAngle());
    e.angle(51, arc->endAngle());
  } else if (const auto* circle = QaDbCircle::cast(&entity)) {
    e.subclass("AcDbCircle", codes::kCircle);
    if (circle->thickness() != 0) e.real(39, circle->thickness());
    e.point(10, circle->center());
    e.real(40, circle->radius());
    normal(e, circle->normal());
  } else if (const auto* ellipse = QaDbEllipse::cast(&entity)) {
    e.subclass("AcDbEllipse", codes::kEllipse);
    e.point(10, ellipse->center());
    const QaGeVector3d& a = ellipse->majorAxis();
    e.point(11, QaGePoint3d(a.x, a.y, a.z));
    normal(e, ellipse->normal(), true);
    e.real(40, ellipse->radiusRatio());
    e.real(41, ellipse->startParam());
    e.real(42, ellipse->endParam());
  } else if (const auto* point = QaDbPoint::cast(&entity)) {
    e.subclass("AcDbPoint", codes::kPoint);
    e.point(10, point->position());
    if (point->thickness() != 0) e.real(39, point->thickness());
    normal(e, point->normal());
    if (point->ecsRotation() != 0) e.angle(50, point->ecsRotation());
  } else if (const auto* solid = QaDbSolid::cast(&entity)) {
    e.subclass("AcDbTrace", codes::kSolid);
    for (int k = 0; k < 4; ++k) {
      QaGePoint3d p;
      solid->getPointAt(k, p);
      e.point(10 + k, p);
    }
    if (solid->thickness() != 0) e.real(39, solid->thickness());
    normal(e, solid->normal());
  }
  e.finish();
  return true;
}

}  // namespace tabulon::dxf
