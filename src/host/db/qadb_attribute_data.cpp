#include "host/db/qadb_attribute_data.h"

#include "host/db/qadb_text.h"

QaDbAttributeData::QaDbAttributeData(const QaDbAttributeData& o)
    : tag(o.tag),
      flags(o.flags),
      fieldLength(o.fieldLength),
      lockPosition(o.lockPosition),
      mtext(o.mtext ? std::unique_ptr<QaDbMText>(static_cast<QaDbMText*>(o.mtext->clone().release())) : nullptr) {}

QaDbAttributeData& QaDbAttributeData::operator=(const QaDbAttributeData& o) {
  if (this != &o) {
    QaDbAttributeData copy(o);
    tag = std::move(copy.tag);
    flags = copy.flags;
    fieldLength = copy.fieldLength;
    lockPosition = copy.lockPosition;
    mtext = std::move(copy.mtext);
  }
  return *this;
}

namespace {
// Attachment of a multi-line text from single-line justification.
int attachmentOf(const QaDbText& t) {
  int col = 1;
  switch (t.horizontalMode()) {
    case QaDb::kTextCenter:
    case QaDb::kTextMid: col = 2; break;
    case QaDb::kTextRight: col = 3; break;
    default: col = 1; break;
  }
  int row = 3;
  if (t.horizontalMode() == QaDb::kTextMid) row = 2;
  else if (t.verticalMode() == QaDb::kTextTop) row = 1;
  else if (t.verticalMode() == QaDb::kTextVertMid) row = 2;
  return (row - 1) * 3 + col;
}
}  // namespace

void QaDbAttributeData::syncMText(QaDbMText& m, const QaDbText& t) {
  m.setContents(t.textString());
  m.setNormal(t.normal());
  m.setLocation(t.anchorPoint());
  if (t.height() > 0.0) m.setTextHeight(t.height());
  m.setRotation(t.rotation());
  m.setTextStyle(t.textStyle());
  m.setAttachment(attachmentOf(t));
  m.setPropertiesFrom(&t);
}

std::unique_ptr<QaDbMText> QaDbAttributeData::mtextFrom(const QaDbText& text) {
  auto m = std::make_unique<QaDbMText>();
  syncMText(*m, text);
  return m;
}

void QaDbAttributeData::setMText(const QaDbMText& m) {
  mtext.reset(static_cast<QaDbMText*>(m.clone().release()));
}

void QaDbAttributeData::convertIntoMText(const QaDbText& owner, bool multiLine) {
  if (!multiLine) {
    mtext.reset();
    return;
  }
  if (!mtext) mtext = mtextFrom(owner);
  else syncMText(*mtext, owner);
}
