#include "host/ed/qaed_selection.h"

#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_entity.h"
#include "host/db/qadb_open.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/ed/qaed_prompts.h"
#include "host/ed/qaed_result_codes.h"
#include "host/ed/qaed_state.h"
#include "host/ed/qaed_user_io.h"
#include "host/rx/qa_lang_resource.h"

#include <algorithm>
#include <cwctype>
#include <limits>
#include <optional>

namespace {

std::wstring SelectPrompt() { return KrmLoadString(9004, L"\n选择对象: "); }

std::optional<QaDbExtents> extentsOf(QaDbObjectId id) {
  QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForRead);
  if (!entity) return std::nullopt;
  QaDbExtents ext;
  if (entity->getGeomExtents(ext) != Qa::eOk || ext.isEmpty()) return std::nullopt;
  return ext;
}

bool insideWindow(const QaDbExtents& ext, const QaGePoint3d& a, const QaGePoint3d& b) {
  const double minX = std::min(a.x, b.x), maxX = std::max(a.x, b.x);
  const double minY = std::min(a.y, b.y), maxY = std::max(a.y, b.y);
  return ext.minPoint().x >= minX && ext.maxPoint().x <= maxX && ext.minPoint().y >= minY && ext.maxPoint().y <= maxY;
}

// A model-space entity of the database by handle; null when there is none.
QaDbObjectId modelSpaceEntity(QaDbDatabase* db, QaDbHandle handle) {
  const auto id = db->objectIdFromHandle(handle);
  if (id.isNull() || id.isErased()) return {};
  QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForRead);
  if (!entity || entity->ownerId() != db->modelSpaceId()) return {};
  return id;
}

void addUnique(std::vector<QaDbObjectId>& set, QaDbObjectId id) {
  if (std::find(set.begin(), set.end(), id) == set.end()) set.push_back(id);
}

void removeFrom(std::vector<QaDbObjectId>& set, QaDbObjectId id) { std::erase(set, id); }

std::vector<QaDbObjectId> inWindow(QaDbDatabase* db, const QaGePoint3d& a, const QaGePoint3d& b) {
  std::vector<QaDbObjectId> out;
  for (auto id : qaedModelSpaceEntities(db))
    if (auto ext = extentsOf(id); ext && insideWindow(*ext, a, b)) out.push_back(id);
  return out;
}

std::vector<std::wstring> words(std::wstring_view text) {
  std::vector<std::wstring> out;
  std::wstring current;
  for (wchar_t c : text) {
    if (std::iswspace(static_cast<wint_t>(c))) {
      if (!current.empty()) out.push_back(std::move(current));
      current.clear();
    } else {
      current += c;
    }
  }
  if (!current.empty()) out.push_back(std::move(current));
  return out;
}

std::wstring lowered(std::wstring_view s) {
  std::wstring out(s);
  for (auto& c : out) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return out;
}

// Applies one answer to a selection. Returns false (with a line printed) for a word it
// does not understand; unknown handles and misses are reported and skipped.
bool applySelection(QaDbDatabase* db, const QaEdInput& input, const wchar_t* removePrompt,
                    std::vector<QaDbObjectId>& set) {
  auto& io = qaedUserIO();
  auto addHandle = [&](QaDbHandle h, bool removing) {
    const auto id = modelSpaceEntity(db, h);
    if (id.isNull()) {
      io.print(KrmLoadString(9500, L"\n未找到对象 #%1。", {h.text()}));
      return;
    }
    removing ? removeFrom(set, id) : addUnique(set, id);
  };
  switch (input.kind) {
    case QaEdInput::Kind::Handles:
      for (auto h : input.handles) addHandle(h, false);
      return true;
    case QaEdInput::Kind::All:
      for (auto id : qaedModelSpaceEntities(db)) addUnique(set, id);
      return true;
    case QaEdInput::Kind::Window:
      for (auto id : inWindow(db, input.point, input.corner)) addUnique(set, id);
      return true;
    case QaEdInput::Kind::Point:
      if (auto id = qaedEntityAtPoint(db, input.point); !id.isNull()) addUnique(set, id);
      else io.print(KrmLoadString(9005, L"\n未选中对象。"));
      return true;
    case QaEdInput::Kind::Text:
      break;
    default:
      return false;
  }
  const auto list = words(input.text);
  bool removing = false;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const auto word = lowered(list[i]);
    if (word == L"r" || word == L"remove") {
      removing = true;
      if (removePrompt) io.print(removePrompt);
    } else if (word == L"a" || word == L"add") {
      removing = false;
    } else if (word == L"all") {
      for (auto id : qaedModelSpaceEntities(db)) removing ? removeFrom(set, id) : addUnique(set, id);
    } else if (word == L"window" && i + 2 < list.size() && qaedParsePoint(list[i + 1]) && qaedParsePoint(list[i + 2])) {
      for (auto id : inWindow(db, *qaedParsePoint(list[i + 1]), *qaedParsePoint(list[i + 2])))
        removing ? removeFrom(set, id) : addUnique(set, id);
      i += 2;
    } else if (auto point = qaedParsePoint(list[i])) {
      if (auto id = qaedEntityAtPoint(db, *point); !id.isNull()) removing ? removeFrom(set, id) : addUnique(set, id);
      else io.print(KrmLoadString(9005, L"\n未选中对象。"));
    } else {
      const auto parsed = qaedParseInput(list[i], QaEdRequest::Kind::Selection);
      if (parsed.kind != QaEdInput::Kind::Handles) {
        io.print(KrmLoadString(9007, L"\n无法识别的选择: ") + list[i]);
        return false;
      }
      for (auto h : parsed.handles) addHandle(h, removing);
    }
  }
  return true;
}

// One user selection. RTNORM with the ids, RTERROR when empty, RTCAN when cancelled.
int userSelection(QaDbDatabase* db, const wchar_t* prompt, const wchar_t* removePrompt, std::vector<QaDbObjectId>& out) {
  out.clear();
  const auto init = qaedTakeInitGet();
  QaEdRequest request{QaEdRequest::Kind::Selection, prompt ? std::wstring(prompt) : SelectPrompt(), std::nullopt, init.keywords};
  auto& io = qaedUserIO();
  while (true) {
    const auto input = io.request(request);
    if (input.kind == QaEdInput::Kind::Cancel) return RTCAN;
    if (input.kind == QaEdInput::Kind::Enter) return RTERROR;
    if (!applySelection(db, input, removePrompt, out)) {
      out.clear();
      continue;
    }
    io.print(KrmLoadString(9501, L"\n找到 %1 个", {std::to_wstring(out.size())}));
    return out.empty() ? RTERROR : RTNORM;
  }
}

std::uint64_t storeSet(std::vector<QaDbObjectId> ids) {
  auto& state = qaedState();
  const auto key = state.nextSelectionSet++;
  state.selectionSets.emplace(key, std::move(ids));
  return key;
}

}  // namespace

std::vector<QaDbObjectId> qaedModelSpaceEntities(QaDbDatabase* db) {
  if (!db) return {};
  QaDbObjectPointer<QaDbBlockTableRecord> space(db->modelSpaceId(), QaDb::kForRead);
  if (!space) return {};
  return space->liveEntityIds();
}

QaDbObjectId qaedEntityAtPoint(QaDbDatabase* db, const QaGePoint3d& point, double tolerance) {
  QaDbObjectId best;
  double bestArea = std::numeric_limits<double>::infinity();
  for (auto id : qaedModelSpaceEntities(db)) {
    const auto ext = extentsOf(id);
    if (!ext) continue;
    const auto& lo = ext->minPoint();
    const auto& hi = ext->maxPoint();
    if (point.x < lo.x - tolerance || point.x > hi.x + tolerance || point.y < lo.y - tolerance || point.y > hi.y + tolerance)
      continue;
    const double area = (hi.x - lo.x) * (hi.y - lo.y);
    if (area <= bestArea) {
      bestArea = area;
      best = id;
    }
  }
  return best;
}

int qaedSSGet(const wchar_t* mode, QaEdSSName& ss) {
  QaDbDatabase* db = qaWorkingDatabase();
  if (!db) return RTREJ;
  const std::wstring m = mode ? lowered(mode) : std::wstring();
  std::vector<QaDbObjectId> ids;
  if (m == L"x" || m == L"_x") {
    ids = qaedModelSpaceEntities(db);
    if (ids.empty()) return RTERROR;
  } else if (m.empty()) {
    const int status = userSelection(db, nullptr, nullptr, ids);
    if (status != RTNORM) return status;
  } else {
    return RTREJ;
  }
  ss.key = storeSet(std::move(ids));
  return RTNORM;
}

int qaedSSGetWithPrompt(const wchar_t* prompt, QaEdSSName& ss) {
  QaDbDatabase* db = qaWorkingDatabase();
  if (!db) return RTREJ;
  std::vector<QaDbObjectId> ids;
  const int status = userSelection(db, prompt, nullptr, ids);
  if (status != RTNORM) return status;
  ss.key = storeSet(std::move(ids));
  return RTNORM;
}

int qaedSSLength(const QaEdSSName& ss, std::int32_t& length) {
  const auto& sets = qaedState().selectionSets;
  auto it = sets.find(ss.key);
  if (it == sets.end()) return RTERROR;
  length = static_cast<std::int32_t>(it->second.size());
  return RTNORM;
}

int qaedSSName(const QaEdSSName& ss, std::int32_t index, QaEdEntName& ent) {
  const auto& sets = qaedState().selectionSets;
  auto it = sets.find(ss.key);
  if (it == sets.end() || index < 0 || static_cast<std::size_t>(index) >= it->second.size()) return RTERROR;
  ent.id = it->second[static_cast<std::size_t>(index)];
  return RTNORM;
}

int qaedSSFree(const QaEdSSName& ss) { return qaedState().selectionSets.erase(ss.key) ? RTNORM : RTERROR; }

std::size_t qaedSSCount() { return qaedState().selectionSets.size(); }

Qa::ErrorStatus qadbGetObjectId(QaDbObjectId& id, const QaEdEntName& ent) {
  id = ent.id;
  return id.isNull() ? Qa::eNullObjectId : Qa::eOk;
}

QaEdSelectionSet::~QaEdSelectionSet() { free(); }

void QaEdSelectionSet::free() {
  if (name_.key) qaedSSFree(name_);
  name_ = {};
}

int QaEdSelectionSet::select(const wchar_t* mode) {
  free();
  return qaedSSGet(mode, name_);
}

int QaEdSelectionSet::selectWithPrompt(const wchar_t* prompt) {
  free();
  return qaedSSGetWithPrompt(prompt, name_);
}

std::vector<QaDbObjectId> QaEdSelectionSet::ids() const {
  std::vector<QaDbObjectId> out;
  std::int32_t length = 0;
  if (!name_.key || qaedSSLength(name_, length) != RTNORM) return out;
  for (std::int32_t i = 0; i < length; ++i) {
    QaEdEntName ent;
    if (qaedSSName(name_, i, ent) == RTNORM) out.push_back(ent.id);
  }
  return out;
}

int EntSelEx(const wchar_t* prompt, QaDbObjectId& id, QaGePoint3d& pickPoint) {
  id = QaDbObjectId();
  const auto init = qaedTakeInitGet();
  QaEdRequest request{QaEdRequest::Kind::Entity, prompt ? std::wstring(prompt) : SelectPrompt(), std::nullopt, init.keywords};
  auto& io = qaedUserIO();
  QaDbDatabase* db = qaWorkingDatabase();
  while (true) {
    const auto input = io.request(request);
    switch (input.kind) {
      case QaEdInput::Kind::Cancel:
        return RTCAN;
      case QaEdInput::Kind::Enter:
        return RTNONE;
      case QaEdInput::Kind::Point:
        if (auto found = qaedEntityAtPoint(db, input.point); !found.isNull()) {
          id = found;
          pickPoint = input.point;
          return RTNORM;
        }
        io.print(KrmLoadString(9005, L"\n未选中对象。"));
        continue;
      case QaEdInput::Kind::Handles:
        if (db && input.handles.size() == 1) {
          if (auto found = modelSpaceEntity(db, input.handles.front()); !found.isNull()) {
            id = found;
            const auto ext = extentsOf(found);
            if (input.picked) pickPoint = input.point;
            else pickPoint = ext ? ext->minPoint() + (ext->maxPoint() - ext->minPoint()) * 0.5 : QaGePoint3d();
            return RTNORM;
          }
          io.print(KrmLoadString(9500, L"\n未找到对象 #%1。", {input.handles.front().text()}));
          continue;
        }
        break;
      case QaEdInput::Kind::Text:
        if (auto keyword = qaedMatchKeyword(input.text, init.keywords)) {
          qaedState().lastInput = *keyword;
          return RTKWORD;
        }
        break;
      default:
        break;
    }
    io.print(KrmLoadString(9504, L"\n需要选择一个对象。"));
  }
}

int EraseObject(const std::vector<QaDbObjectId>& ids) {
  int erased = 0;
  for (auto id : ids) {
    QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForWrite);
    if (entity && entity->erase() == Qa::eOk) ++erased;
  }
  return erased;
}

int KR_QRXSelectSet::userSelect(const wchar_t* prompt, const wchar_t* removePrompt) {
  ids_.clear();
  QaDbDatabase* db = qaWorkingDatabase();
  if (!db) return 1;
  const int status = userSelection(db, prompt, removePrompt, ids_);
  if (status == RTCAN) return 2;
  return status == RTNORM ? 0 : 1;
}
