#include "host/db/qadb_attribute_definition.h"

QARX_DEFINE_MEMBERS(QaDbAttributeDefinition, QaDbText, L"ATTDEF")

namespace {
bool validTag(const std::wstring& tag) { return !tag.empty() && tag.find(L' ') == std::wstring::npos; }
}  // namespace

QaDbAttributeDefinition::QaDbAttributeDefinition() = default;

QaDbAttributeDefinition::QaDbAttributeDefinition(const QaGePoint3d& position, const std::wstring& text,
                                                 const std::wstring& tag, const std::wstring& prompt,
                                                 QaDbObjectId style)
    : QaDbText(position, text, style), prompt_(prompt) {
  data_.tag = tag;
}

Qa::ErrorStatus QaDbAttributeDefinition::setTag(std::wstring tag) {
  if (!validTag(tag)) return Qa::eInvalidInput;
  assertWriteEnabled();
  data_.tag = std::move(tag);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttributeDefinition::setPrompt(const std::wstring& prompt) {
  assertWriteEnabled();
  prompt_ = prompt;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttributeDefinition::setAttributeFlags(int flags) {
  assertWriteEnabled();
  data_.flags = flags;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttributeDefinition::setInvisible(bool on) {
  return setAttributeFlags(data_.flagsWith(QaDbAttributeData::kInvisible, on));
}
Qa::ErrorStatus QaDbAttributeDefinition::setConstant(bool on) {
  return setAttributeFlags(data_.flagsWith(QaDbAttributeData::kConstant, on));
}
Qa::ErrorStatus QaDbAttributeDefinition::setVerifiable(bool on) {
  return setAttributeFlags(data_.flagsWith(QaDbAttributeData::kVerifiable, on));
}
Qa::ErrorStatus QaDbAttributeDefinition::setPreset(bool on) {
  return setAttributeFlags(data_.flagsWith(QaDbAttributeData::kPreset, on));
}

Qa::ErrorStatus QaDbAttributeDefinition::setFieldLength(int length) {
  if (length < 0) return Qa::eInvalidInput;
  assertWriteEnabled();
  data_.fieldLength = length;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttributeDefinition::setLockPositionInBlock(bool on) {
  assertWriteEnabled();
  data_.lockPosition = on;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttributeDefinition::setMTextAttributeDefinition(const QaDbMText& mtext) {
  assertWriteEnabled();
  data_.setMText(mtext);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttributeDefinition::convertIntoMTextAttributeDefinition(bool multiLine) {
  assertWriteEnabled();
  data_.convertIntoMText(*this, multiLine);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttributeDefinition::updateMTextAttributeDefinition() {
  if (!data_.mtext) return Qa::eOk;
  assertWriteEnabled();
  QaDbAttributeData::syncMText(*data_.mtext, *this);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbAttributeDefinition::setTextString(std::wstring text) {
  if (!data_.mtext) return QaDbText::setTextString(std::move(text));
  Qa::ErrorStatus es = QaDbText::setTextString(text);
  if (es == Qa::eOk) data_.mtext->setContents(text);
  return es;
}

Qa::ErrorStatus QaDbAttributeDefinition::transformBy(const QaGeMatrix3d& m) {
  if (data_.mtext) {
    std::unique_ptr<QaDbEntity> probe = data_.mtext->cloneEntity();
    Qa::ErrorStatus es = probe->transformBy(m);
    if (es != Qa::eOk) return es;
  }
  Qa::ErrorStatus es = QaDbText::transformBy(m);
  if (es == Qa::eOk && data_.mtext) data_.mtext->transformBy(m);
  return es;
}

Qa::ErrorStatus QaDbAttributeDefinition::getGeomExtents(QaDbExtents& ext) const {
  if (data_.mtext) return data_.mtext->getGeomExtents(ext);
  return QaDbText::getGeomExtents(ext);
}
