#include "drawing/card_tag.h"

#include "drawing/cell_xdata.h"
#include "host/db/qadb_entity.h"
#include "host/db/qadb_object.h"

namespace {

// Item numbers shared by both layouts; what they hold depends on the layout.
constexpr int kItemCardId = 1001;
constexpr int kItemCardCode = 1002;
constexpr int kItem3 = 1003;
constexpr int kItem4 = 1004;
constexpr int kItem5 = 1005;
constexpr int kItemKindOrPage = 1501;

}  // namespace

int WriteCardTagOfEntity(QaDbObject* object, const KrmCardTag& tag) {
  KR_QRXAppXdata xdata(kKrmCardTagApp, object->database());
  xdata.setString(kItemCardId, tag.cardId);
  xdata.setString(kItemCardCode, tag.cardCode);
  xdata.setInteger(kItem3, tag.entityIndex);
  xdata.setInteger(kItem4, tag.recordHead);
  xdata.setInteger(kItemKindOrPage, tag.entityKind);
  xdata.setXdata(object);
  return 1;
}

int WriteCardTagOfGroup(QaDbObject* object, const KrmCardTag& tag, int pageIndex) {
  KR_QRXAppXdata xdata(kKrmCardTagApp, object->database());
  xdata.setString(kItemCardId, tag.cardId);
  xdata.setString(kItemCardCode, tag.cardCode);
  xdata.setInteger(kItem3, tag.pageStep);
  xdata.setInteger(kItem4, tag.pageStartSum);
  xdata.setInteger(kItem5, tag.pageStartCur);
  xdata.setInteger(kItemKindOrPage, pageIndex);
  xdata.setXdata(object);
  return 1;
}

int ReadCardTagOfEntity(const QaDbObject* object, KrmCardTag& tag) {
  tag = KrmCardTag();
  KR_QRXAppXdata xdata(kKrmCardTagApp, object->database());
  xdata.getXdata(object);
  xdata.getString(kItemCardId, tag.cardId, false);
  xdata.getString(kItemCardCode, tag.cardCode, false);
  xdata.getInteger(kItem3, tag.entityIndex, false);
  xdata.getInteger(kItem4, tag.recordHead, false);
  xdata.getInteger(kItemKindOrPage, tag.entityKind, false);
  return 1;
}

int ReadCardTagOfGroup(const QaDbObject* object, KrmCardTag& tag) {
  tag = KrmCardTag();
  KR_QRXAppXdata xdata(kKrmCardTagApp, object->database());
  xdata.getXdata(object);
  xdata.getString(kItemCardId, tag.cardId, false);
  xdata.getString(kItemCardCode, tag.cardCode, false);
  xdata.getInteger(kItem3, tag.pageStep, false);
  xdata.getInteger(kItem4, tag.pageStartSum, false);
  xdata.getInteger(kItem5, tag.pageStartCur, false);
  xdata.getInteger(kItemKindOrPage, tag.entityIndex, false);
  return 1;
}

bool HasCardTag(const QaDbObject* object) { return object->hasXData(kKrmCardTagApp); }

void TagListIfFree(const std::vector<QaDbEntity*>& entities, const std::vector<QaDbEntity*>& rows,
                   KrmCardTag& tag) {
  for (QaDbEntity* entity : entities) {
    if (entity == nullptr || HasCardTag(entity)) continue;
    tag.entityKind = 0;
    WriteCardTagOfEntity(entity, tag);
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i] == nullptr || HasCardTag(rows[i])) continue;
    tag.entityKind = 1;
    tag.entityIndex = static_cast<int>(i);
    WriteCardTagOfEntity(rows[i], tag);
  }
}

void TagPagesIfFree(const std::vector<KrmDataSort>& sorts, KrmCardTag& tag) {
  for (const KrmDataSort& sort : sorts) {
    for (std::size_t i = 0; i < sort.refs.size(); ++i) {
      if (sort.refs[i] == nullptr || HasCardTag(sort.refs[i])) continue;
      tag.entityKind = 0;
      tag.entityIndex = static_cast<int>(i);
      WriteCardTagOfEntity(sort.refs[i], tag);
    }
  }
}
