// Picking table texts from the drawing.
#include "editor/table_pickup.h"

#include <algorithm>
#include <cmath>

#include "host/db/qadb_mtext.h"
#include "host/db/qadb_open.h"
#include "host/db/qadb_text.h"
#include "host/ed/qaed_result_codes.h"
#include "host/ed/qaed_selection.h"
#include "host/ge/qage_point3d.h"
#include "host/svc/krm_bom_data.h"
#include "host/svc/krm_frame.h"
#include "host/svc/krm_frame_rules.h"

std::vector<std::vector<std::wstring>> GroupTextsIntoRows(std::vector<KrmPickedText> texts) {
  std::stable_sort(texts.begin(), texts.end(), [](const KrmPickedText& a, const KrmPickedText& b) { return a.y > b.y; });
  std::vector<std::vector<KrmPickedText>> rows;
  for (KrmPickedText& text : texts) {
    if (!rows.empty()) {
      const KrmPickedText& head = rows.back().front();
      if (std::fabs(head.y - text.y) <= std::max(head.height, text.height) / 2.0) {
        rows.back().push_back(std::move(text));
        continue;
      }
    }
    rows.push_back({std::move(text)});
  }
  std::vector<std::vector<std::wstring>> out;
  for (auto& row : rows) {
    std::stable_sort(row.begin(), row.end(), [](const KrmPickedText& a, const KrmPickedText& b) { return a.x < b.x; });
    out.emplace_back();
    for (KrmPickedText& text : row) out.back().push_back(std::move(text.text));
  }
  return out;
}

std::vector<KrmPickedText> TextsOfEntities(const std::vector<QaDbObjectId>& ids) {
  std::vector<KrmPickedText> texts;
  for (const QaDbObjectId& id : ids) {
    QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForRead);
    if (entity.object() == nullptr) continue;
    if (const QaDbText* text = QaDbText::cast(entity.object())) {
      texts.push_back({text->textString(), text->position().x, text->position().y, text->height()});
    } else if (const QaDbMText* mtext = QaDbMText::cast(entity.object())) {
      texts.push_back({mtext->contents(), mtext->location().x, mtext->location().y, mtext->textHeight()});
    }
  }
  return texts;
}

namespace {

bool SelectRows(std::vector<std::vector<std::wstring>>& rows) {
  QaEdSelectionSet selection;
  if (selection.select() != RTNORM) return false;
  rows = GroupTextsIntoRows(TextsOfEntities(selection.ids()));
  return !rows.empty();
}

std::map<std::wstring, std::wstring> RowMap(const std::vector<std::wstring>& names, const std::vector<std::wstring>& row) {
  std::map<std::wstring, std::wstring> map;
  for (std::size_t i = 0; i < names.size() && i < row.size(); ++i) map[names[i]] = row[i];
  return map;
}

}  // namespace

int MakeMapDataFromTabPickup(const std::vector<std::wstring>& names, std::vector<std::map<std::wstring, std::wstring>>& maps) {
  std::vector<std::vector<std::wstring>> rows;
  if (!SelectRows(rows)) return 0;
  maps.clear();
  for (const auto& row : rows) maps.push_back(RowMap(names, row));
  return 1;
}

int MakeMapDataFromTabPickup(const std::vector<std::wstring>& names, std::map<std::wstring, std::wstring>& map) {
  std::vector<std::vector<std::wstring>> rows;
  if (!SelectRows(rows)) return 0;
  map = RowMap(names, rows.front());
  return 1;
}

bool MakeSingleDataFromPickText(std::wstring& text) {
  QaDbObjectId id;
  QaGePoint3d point;
  if (EntSelEx(L"\n选择文字: ", id, point) != RTNORM) return false;
  const std::vector<KrmPickedText> texts = TextsOfEntities({id});
  if (texts.empty()) return false;
  text = texts.front().text;
  return true;
}

int KrmGetDwgDataFromFile(std::map<std::wstring, std::wstring>& map, const std::vector<std::wstring>& names, int,
                          QaDbDatabase* db) {
  const std::vector<KrmFrame> frames = KrmFindFrames(db, KrmFrameRules::load());
  if (frames.empty()) return 0;
  KrmStringMap title;
  std::vector<std::wstring> from, to;
  if (!GetMultiTitle(title, from, to, frames.front().getDicName(), db)) return 0;
  int found = 0;
  for (const std::wstring& name : names) {
    if (const auto tag = title.find(name); tag != title.end()) {
      map[name] = tag->second;
      ++found;
      continue;
    }
    for (std::size_t i = 0; i < from.size() && i < to.size(); ++i) {
      if (to[i] != name) continue;
      if (const auto tag = title.find(from[i]); tag != title.end()) {
        map[name] = tag->second;
        ++found;
        break;
      }
    }
  }
  return found > 0 ? 1 : 0;
}
