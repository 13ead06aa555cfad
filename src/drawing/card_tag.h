// The identity that a generated card writes on its page groups and on every entity of
// its pages, so that the card can be found and edited again from the drawing alone.
// Stored as numbered items of the application "KRM_TABULONPARA". A group and an entity
// use different layouts under the same item numbers: read each with its own reader.
#pragma once

#include <string>
#include <vector>

#include "drawing/data_sort.h"

class QaDbObject;
class QaDbEntity;

// Name of the extended-data application that carries every card record.
inline constexpr wchar_t kKrmCardTagApp[] = L"KRM_TABULONPARA";

// A plain copyable value. Every field has the default that a reader starts from.
struct KrmCardTag {
  std::wstring cardId;    // id of the card template
  std::wstring cardCode;  // 8-character code of one placed card
  int entityKind = 0;     // on entities: 1 for a row block of the page-base class
  int entityIndex = 0;    // on entities: place in its list; towards a group: page number
  int pageStep = 1;
  int pageStartSum = 1;
  int pageStartCur = 1;
  int recordHead = 1;  // on entities: 1 starts a record, 0 holds the previous one's overflow

  friend bool operator==(const KrmCardTag&, const KrmCardTag&) = default;
};

// Writes the entity layout (items 1001 cardId, 1002 cardCode, 1003 entityIndex,
// 1004 recordHead, 1501 entityKind). `object` must be writable. Returns 1.
int WriteCardTagOfEntity(QaDbObject* object, const KrmCardTag& tag);
// Writes the group layout (1001 cardId, 1002 cardCode, 1003 pageStep, 1004
// pageStartSum, 1005 pageStartCur, 1501 the zero-based page index). Returns 1.
int WriteCardTagOfGroup(QaDbObject* object, const KrmCardTag& tag, int pageIndex);
// Reset `tag` to the defaults, then read what the object carries in the entity,
// respectively group, layout (the group reader puts the page index in entityIndex).
// Missing items keep their defaults. Return 1.
int ReadCardTagOfEntity(const QaDbObject* object, KrmCardTag& tag);
int ReadCardTagOfGroup(const QaDbObject* object, KrmCardTag& tag);
// True when the object carries the application at all; the items are not looked at.
bool HasCardTag(const QaDbObject* object);

// Tags every untagged entity of `entities` with kind 0 and the tag's own entityIndex,
// then every untagged entity of `rows` with kind 1 and its index in `rows`. The first
// writer wins: entities that carry a tag already are left alone.
void TagListIfFree(const std::vector<QaDbEntity*>& entities, const std::vector<QaDbEntity*>& rows,
                   KrmCardTag& tag);
// For each entry, tags every untagged reference with kind 0 and its index in the entry.
void TagPagesIfFree(const std::vector<KrmDataSort>& sorts, KrmCardTag& tag);
