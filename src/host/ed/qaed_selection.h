// Picking entities on the host's command line: selection sets (qaedSSGet and its
// companions, with a RAII holder), the single pick EntSelEx, and the base library's
// EraseObject and KR_QRXSelectSet. They work on the model space of the working
// database. A selection is one answer made of words read left to right: "#handle"
// (several joined by commas allowed), "all", "window x1,y1 x2,y2" (entities lying
// inside), a point "x,y" (the smallest entity whose extents hold it), and "r" / "a",
// which switch between removing from and adding to the selection.
#pragma once

#include "host/db/qa_error_status.h"
#include "host/db/qadb_object_id.h"
#include "host/ge/qage_point3d.h"

#include <cstdint>
#include <string>
#include <vector>

class QaDbDatabase;

// The name of a selection set handed out by qaedSSGet; free it with qaedSSFree.
struct QaEdSSName {
  std::uint64_t key = 0;
};
// The host's transient name of one entity of a selection.
struct QaEdEntName {
  QaDbObjectId id;
};

// `mode` null or empty: the user selects (prompt "\n选择对象: "); "X" (or "_X"): every
// entity of model space. RTNORM with a set; RTERROR when nothing was selected; RTCAN
// when cancelled; RTREJ for another mode or without a working database.
int qaedSSGet(const wchar_t* mode, QaEdSSName& ss);
// The same user selection with a prompt of the caller's.
int qaedSSGetWithPrompt(const wchar_t* prompt, QaEdSSName& ss);
// RTNORM, or RTERROR for a set that does not exist (or an index out of range).
int qaedSSLength(const QaEdSSName& ss, std::int32_t& length);
int qaedSSName(const QaEdSSName& ss, std::int32_t index, QaEdEntName& ent);
int qaedSSFree(const QaEdSSName& ss);
// Number of selection sets not yet freed.
std::size_t qaedSSCount();
Qa::ErrorStatus qadbGetObjectId(QaDbObjectId& id, const QaEdEntName& ent);

// Owns one selection set and frees it when it goes.
class QaEdSelectionSet {
 public:
  QaEdSelectionSet() = default;
  ~QaEdSelectionSet();
  QaEdSelectionSet(const QaEdSelectionSet&) = delete;
  QaEdSelectionSet& operator=(const QaEdSelectionSet&) = delete;

  // As qaedSSGet; a set held before is freed first.
  int select(const wchar_t* mode = nullptr);
  int selectWithPrompt(const wchar_t* prompt);
  std::vector<QaDbObjectId> ids() const;
  bool empty() const { return ids().empty(); }

 private:
  void free();
  QaEdSSName name_;
};

// One entity. RTNORM with its id and the pick point (for a pick by handle, the centre
// of its extents); RTKWORD for a keyword of qaedInitGet; RTNONE on Enter; RTCAN on
// cancel. A miss or an unknown handle says so and asks again.
int EntSelEx(const wchar_t* prompt, QaDbObjectId& id, QaGePoint3d& pickPoint);

// Erases the entities of `ids` (each opened for write and closed at once); ids that
// do not open are skipped. Returns how many were erased.
int EraseObject(const std::vector<QaDbObjectId>& ids);

// The base library's selection with a prompt of its own.
class KR_QRXSelectSet {
 public:
  // 0 when something was selected, 1 when nothing was, 2 when the user cancelled. The
  // remove prompt is printed when the answer switches to removing ("r").
  int userSelect(const wchar_t* prompt, const wchar_t* removePrompt);
  const std::vector<QaDbObjectId>& ids() const { return ids_; }
  int length() const { return static_cast<int>(ids_.size()); }

 private:
  std::vector<QaDbObjectId> ids_;
};

// The live entities of model space, in drawing order.
std::vector<QaDbObjectId> qaedModelSpaceEntities(QaDbDatabase* db);
// The entity whose extents hold `point` (within `tolerance`) with the smallest extents;
// among equal ones the one drawn last. Null when none.
QaDbObjectId qaedEntityAtPoint(QaDbDatabase* db, const QaGePoint3d& point, double tolerance = 1e-6);
