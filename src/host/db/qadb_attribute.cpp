#include "host/db/qadb_attribute.h"

#include "host/db/qadb_attribute_definition.h"

QARX_DEFINE_MEMBERS(QaDbAttribute, QaDbText, L"ATTRIB")

namespace {
bool validTag(const std::wstring& tag) { return !tag.empty() && tag.find(L' ') == std::wstring::npos; }
}  // namespace

QaDbAttribute::QaDbAttribute() = default;

QaDbAttribute::QaDbAttribute(const QaGePoint3d& position, const std::wstring& text, const std::wstring& tag,
                             QaDbObjectId style)
    : QaDbText(position, text, style) {
  data_.tag = tag;
}

Qa::ErrorStatus QaDbAttribute::setTag(std::wstring tag) {
  if (!validTag(tag)) return Qa::eInvalidInput;
  assertWriteEnabled();
  data_.tag = std::move(tag);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttribute::setAttributeFlags(int flags) {
  assertWriteEnabled();
  data_.flags = flags;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttribute::setInvisible(bool on) {
  return setAttributeFlags(data_.flagsWith(QaDbAttributeData::kInvisible, on));
}
Qa::ErrorStatus QaDbAttribute::setConstant(bool on) {
  return setAttributeFlags(data_.flagsWith(QaDbAttributeData::kConstant, on));
}
Qa::ErrorStatus QaDbAttribute::setVerifiable(bool on) {
  return setAttributeFlags(data_.flagsWith(QaDbAttributeData::kVerifiable, on));
}
Qa::ErrorStatus QaDbAttribute::setPreset(bool on) {
  return setAttributeFlags(data_.flagsWith(QaDbAttributeData::kPreset, on));
}

Qa::ErrorStatus QaDbAttribute::setFieldLength(int length) {
  if (length < 0) return Qa::eInvalidInput;
  assertWriteEnabled();
  data_.fieldLength = length;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttribute::setLockPositionInBlock(bool on) {
  assertWriteEnabled();
  data_.lockPosition = on;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttribute::setMTextAttribute(const QaDbMText& mtext) {
  assertWriteEnabled();
  data_.setMText(mtext);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttribute::convertIntoMTextAttribute(bool multiLine) {
  assertWriteEnabled();
  data_.convertIntoMText(*this, multiLine);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttribute::updateMTextAttribute() {
  if (!data_.mtext) return Qa::eOk;
  assertWriteEnabled();
  QaDbAttributeData::syncMText(*data_.mtext, *this);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttribute::setAttributeFromBlock(const QaDbAttributeDefinition* def,
                                                     const QaGeMatrix3d& blockTransform) {
  if (def == nullptr) return Qa::eNullEntityPointer;
  assertWriteEnabled();
  setPropertiesFrom(def);
  data_ = def->attributeData();
  setPosition(def->position());
  setAlignmentPoint(def->alignmentPoint());
  setHorizontalMode(def->horizontalMode());
  setVerticalMode(def->verticalMode());
  setHeight(def->height());
  setWidthFactor(def->widthFactor());
  setTextStyle(def->textStyle());
  setRotation(def->rotation());
  setOblique(def->oblique());
  setThickness(def->thickness());
  setNormal(def->normal());
  mirrorInX(def->isMirroredInX());
  mirrorInY(def->isMirroredInY());
  setTextString(def->textString());
  return transformBy(blockTransform);
}

Qa::ErrorStatus QaDbAttribute::setTextString(std::wstring text) {
  if (!data_.mtext) return QaDbText::setTextString(std::move(text));
  Qa::ErrorStatus es = QaDbText::setTextString(text);
  if (es == Qa::eOk) data_.mtext->setContents(text);
  return es;
}

Qa::ErrorStatus QaDbAttribute::transformBy(const QaGeMatrix3d& m) {
  if (data_.mtext) {
    std::unique_ptr<QaDbEntity> probe = data_.mtext->cloneEntity();
    Qa::ErrorStatus es = probe->transformBy(m);
    if (es != Qa::eOk) return es;
  }
  Qa::ErrorStatus es = QaDbText::transformBy(m);
  if (es == Qa::eOk && data_.mtext) data_.mtext->transformBy(m);
  return es;
}

Qa::ErrorStatus QaDbAttribute::getGeomExtents(QaDbExtents& ext) const {
  if (data_.mtext) return data_.mtext->getGeomExtents(ext);
  return QaDbText::getGeomExtents(ext);
}
