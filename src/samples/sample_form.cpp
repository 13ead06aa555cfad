#include "samples/sample_form.h"

#include "drawing/cell_descriptor.h"
#include "drawing/cell_xdata.h"
#include "host/db/qadb_attribute.h"
#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_circle.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_layer_table.h"
#include "host/db/qadb_line.h"
#include "host/db/qadb_open.h"
#include "host/db/qadb_polyline.h"
#include "host/db/qadb_text.h"
#include "host/db/qadb_text_measure.h"
#include "host/db/qadb_text_style_table.h"
#include "host/gi/qagi_text_style.h"

#include <cmath>
#include <stdexcept>

namespace tabulon::samples {

namespace {

struct LayerLook {
  const wchar_t* name;
  int color;
  int lineWeight;  // hundredths of a millimetre
};

constexpr LayerLook kLayers[] = {
    {kLayerThick, 7, 50}, {kLayerThin, 7, 18}, {kLayerLabel, 7, 18},
    {kLayerFill, 5, 18},  {kLayerDrawing, 7, 35}, {kLayerCentre, 1, 13},
};

// Side margin of a cell's text.
constexpr double kCellMargin = 1.0;

void check(Qa::ErrorStatus es, const char* what) {
  if (es != Qa::eOk) throw std::runtime_error(std::string("sample form: ") + what + " failed (" + Qa::errorStatusText(es) + ")");
}

// Writes one cell property the way outside authoring tools do: a plain list of values.
void writeProperty(QaDbDatabase& db, QaDbObject& def, const wchar_t* app, const std::wstring& value,
                   const std::wstring& second = {}) {
  if (value.empty()) return;
  KR_QRXAppXdata data(app, &db);
  data.setString(1, value);
  if (!second.empty()) data.setString(2, second);
  check(data.setXdataPlain(&def), "writing a cell property");
}

}  // namespace

QaDbObjectId EnsureFormStyles(QaDbDatabase& db) {
  for (const auto& look : kLayers) {
    QaDbObjectId id;
    check(db.ensureLayer(look.name, id), "making a layer");
    QaDbObjectPointer<QaDbLayerTableRecord> layer(id, QaDb::kForWrite);
    layer->setColorIndex(look.color);
    layer->setLineWeight(look.lineWeight);
  }
  QaDbTextStyleTable* styles = nullptr;
  check(db.getSymbolTable(styles, QaDb::kForWrite), "opening the text styles");
  QaDbObjectId id = styles->getAt(kFormTextStyle);
  if (id.isNull()) {
    auto style = std::make_unique<QaDbTextStyleTableRecord>(kFormTextStyle);
    style->setFileName(kFormFontFile);
    QaDbTextStyleTableRecord* raw = style.get();
    const Qa::ErrorStatus es = styles->add(std::move(style), id);
    if (es == Qa::eOk) raw->close();
    styles->close();
    check(es, "adding the text style");
    return id;
  }
  styles->close();
  return id;
}

FormSheet::FormSheet(QaDbDatabase& db) : db_(db), style_(EnsureFormStyles(db)) {}

QaDbObjectId FormSheet::Append(std::unique_ptr<QaDbEntity> entity, QaDbObjectId owner) {
  if (owner.isNull()) owner = target_;
  if (owner.isNull()) owner = db_.modelSpaceId();
  if (owner == db_.modelSpaceId() && (dx_ != 0 || dy_ != 0))
    entity->transformBy(QaGeMatrix3d::translation(QaGeVector3d(dx_, dy_, 0)));
  QaDbObjectPointer<QaDbBlockTableRecord> block(owner, QaDb::kForWrite);
  if (!block) throw std::runtime_error("sample form: the block to draw in does not open");
  QaDbEntity* raw = entity.get();
  QaDbObjectId id;
  check(block->appendQaDbEntity(std::move(entity), id), "appending an entity");
  raw->close();
  return id;
}

QaDbObjectId FormSheet::Line(double x0, double y0, double x1, double y1, bool thick) {
  return LineOn(thick ? kLayerThick : kLayerThin, x0, y0, x1, y1);
}

QaDbObjectId FormSheet::LineOn(const std::wstring& layer, double x0, double y0, double x1, double y1) {
  auto line = std::make_unique<QaDbLine>(QaGePoint3d(x0, y0, 0), QaGePoint3d(x1, y1, 0));
  line->setLayer(layer);
  return Append(std::move(line), {});
}

QaDbObjectId FormSheet::Box(double x0, double y0, double x1, double y1, bool thick) {
  auto box = std::make_unique<QaDbPolyline>();
  box->addVertexAt(0, {x0, y0});
  box->addVertexAt(1, {x1, y0});
  box->addVertexAt(2, {x1, y1});
  box->addVertexAt(3, {x0, y1});
  box->setClosed(true);
  box->setLayer(thick ? kLayerThick : kLayerThin);
  return Append(std::move(box), {});
}

QaDbObjectId FormSheet::CircleOn(const std::wstring& layer, double cx, double cy, double r) {
  auto circle = std::make_unique<QaDbCircle>(QaGePoint3d(cx, cy, 0), QaGeVector3d::kZAxis, r);
  circle->setLayer(layer);
  return Append(std::move(circle), {});
}

double FormSheet::FittingHeight(const std::wstring& text, double room, double height) const {
  QaGiTextStyle measurer;
  fromQaDbTextStyle(style_, measurer);
  measurer.setTextSize(height);
  const double width = measurer.width(text);
  return width > room && width > 0 ? height * room / width : height;
}

QaDbObjectId FormSheet::Label(const std::wstring& text, double x0, double y0, double x1, double y1, double height) {
  const QaGePoint3d centre((x0 + x1) / 2, (y0 + y1) / 2, 0);
  height = FittingHeight(text, std::abs(x1 - x0) - 2 * kCellMargin, height);
  auto label = std::make_unique<QaDbText>(centre, text, style_, height);
  label->setHorizontalMode(QaDb::kTextMid);
  label->setAlignmentPoint(centre);
  label->setLayer(kLayerLabel);
  return Append(std::move(label), {});
}

QaDbObjectId FormSheet::LabelLeft(const std::wstring& text, double x0, double y0, double y1, double height) {
  const QaGePoint3d at(x0 + kCellMargin, (y0 + y1) / 2, 0);
  auto label = std::make_unique<QaDbText>(at, text, style_, height);
  label->setHorizontalMode(QaDb::kTextLeft);
  label->setVerticalMode(QaDb::kTextVertMid);
  label->setAlignmentPoint(at);
  label->setLayer(kLayerLabel);
  return Append(std::move(label), {});
}

QaDbObjectId FormSheet::Block(const std::wstring& name, const std::vector<FormCell>& cells) {
  const QaDbObjectId blockId = NewBlock(name);
  AddCells(blockId, cells);
  return blockId;
}

QaDbObjectId FormSheet::NewBlock(const std::wstring& name) {
  QaDbBlockTable* table = nullptr;
  check(db_.getBlockTable(table, QaDb::kForWrite), "opening the block table");
  auto record = std::make_unique<QaDbBlockTableRecord>(name);
  QaDbBlockTableRecord* raw = record.get();
  QaDbObjectId blockId;
  const Qa::ErrorStatus es = table->add(std::move(record), blockId);
  if (es == Qa::eOk) raw->close();
  table->close();
  check(es, "adding a block");
  return blockId;
}

void FormSheet::AddCells(QaDbObjectId blockId, const std::vector<FormCell>& cells) {
  for (const FormCell& cell : cells) {
    const double baseline = (cell.y0 + cell.y1 - cell.textHeight) / 2;
    auto def = std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(cell.x0 + kCellMargin, baseline, 0),
                                                         cell.defaultValue, cell.tag, cell.tag, style_);
    def->setHeight(cell.textHeight);
    // Fit text between the cell's margins: the distance of its two points is the
    // cell's width.
    def->setHorizontalMode(QaDb::kTextFit);
    def->setAlignmentPoint(QaGePoint3d(cell.x1 - kCellMargin, baseline, 0));
    def->setLayer(kLayerFill);
    writeProperty(db_, *def, kKrmXdataCode, cell.code);
    writeProperty(db_, *def, kKrmXdataVType, cell.valueType, cell.decimals);
    writeProperty(db_, *def, kKrmXdataAlign, cell.align);
    writeProperty(db_, *def, kKrmXdataTextLengthMode, cell.rowType);
    writeProperty(db_, *def, kKrmXdataControlType, cell.control);
    writeProperty(db_, *def, kKrmXdataControlValue, cell.controlValues);
    writeProperty(db_, *def, kKrmXdataDefaultValue, cell.defaultValue);
    writeProperty(db_, *def, kKrmXdataExpression, cell.expression);
    writeProperty(db_, *def, kKrmXdataOrder, cell.order);
    Append(std::move(def), blockId);
  }
}

QaDbObjectId FormSheet::Insert(QaDbObjectId block, double x, double y) {
  auto ref = std::make_unique<QaDbBlockReference>(QaGePoint3d(x, y, 0), block);
  ref->setLayer(kLayerFill);
  const QaGeMatrix3d transform = ref->blockTransform();
  {
    QaDbObjectPointer<QaDbBlockTableRecord> definition(block, QaDb::kForRead);
    if (!definition) throw std::runtime_error("sample form: the block to insert does not open");
    for (QaDbObjectId id : definition->liveEntityIds()) {
      QaDbObjectPointer<QaDbAttributeDefinition> def(id, QaDb::kForRead);
      if (!def || def->isConstant()) continue;
      auto att = std::make_unique<QaDbAttribute>();
      check(att->setAttributeFromBlock(def.object(), transform), "making an attribute");
      ref->appendAttribute(std::move(att));
    }
  }
  return Append(std::move(ref), db_.modelSpaceId());
}

bool FormSheet::SetAttribute(QaDbObjectId reference, const std::wstring& tag, const std::wstring& text) {
  QaDbObjectPointer<QaDbBlockReference> ref(reference, QaDb::kForRead);
  if (!ref) return false;
  // The cell's alignment, from its definition.
  std::wstring align;
  {
    QaDbObjectPointer<QaDbBlockTableRecord> block(ref->blockTableRecord(), QaDb::kForRead);
    for (QaDbObjectId id : block ? block->liveEntityIds() : std::vector<QaDbObjectId>{}) {
      QaDbObjectPointer<QaDbAttributeDefinition> def(id, QaDb::kForRead);
      if (def && def->tag() == tag) {
        align = ReadXdataString(*def, kKrmXdataAlign);
        break;
      }
    }
  }
  for (QaDbObjectId id : ref->attributeIds()) {
    QaDbObjectPointer<QaDbAttribute> att(id, QaDb::kForWrite);
    if (!att || att->tag() != tag) continue;
    att->setTextString(text);
    // A text that fits its cell stands by the cell's alignment; a longer one stays
    // squeezed between the cell's margins.
    const QaGePoint3d left = att->position();
    const QaGePoint3d right = att->alignmentPoint();
    const double width = left.distanceTo(right);
    if (att->horizontalMode() == QaDb::kTextFit &&
        qadbTextWidth(text, att->textStyle(), att->height(), att->widthFactor()) <= width) {
      if (align == L"CENTER") {
        att->setHorizontalMode(QaDb::kTextCenter);
        att->setAlignmentPoint(left + (right - left) * 0.5);
      } else if (align == L"RIGHT") {
        att->setHorizontalMode(QaDb::kTextRight);
      } else {
        att->setHorizontalMode(QaDb::kTextLeft);
        att->setAlignmentPoint(left);
      }
    }
    return true;
  }
  return false;
}

void FormSheet::Mark(QaDbObjectId reference, const std::wstring& appName) {
  QaDbObjectPointer<QaDbEntity> entity(reference, QaDb::kForWrite);
  if (entity) entity->setXData(appName, {});
}

std::vector<QaDbObjectId> FormSheet::ModelSpaceIds() const {
  QaDbObjectPointer<QaDbBlockTableRecord> space(db_.modelSpaceId(), QaDb::kForRead);
  return space ? space->liveEntityIds() : std::vector<QaDbObjectId>{};
}

}  // namespace tabulon::samples
