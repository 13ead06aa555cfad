// A group of entities (GROUP), entered in the group dictionary. It does not own its
// members; it keeps itself as persistent reactor on each, so a member finds its groups.
// Members and reactors stay consistent: append adds the reactor, remove takes it away,
// erasing the group takes all away (and unerasing puts them back).
#pragma once

#include <string>
#include <vector>

#include "host/db/qadb_object.h"

class QaDbGroup : public QaDbObject {
  QADB_DECLARE_MEMBERS(QaDbGroup)

 public:
  QaDbGroup() = default;
  explicit QaDbGroup(const std::wstring& description, bool selectable = true)
      : description_(description), selectable_(selectable) {}

  const std::wstring& description() const { return description_; }
  Qa::ErrorStatus setDescription(const std::wstring& d);
  bool isSelectable() const { return selectable_; }
  Qa::ErrorStatus setSelectable(bool on);
  bool isAnonymous() const { return anonymous_; }
  Qa::ErrorStatus setAnonymous();
  Qa::ErrorStatus setAnonymous(bool on);
  // The key of the group in its dictionary, "" when not entered.
  std::wstring name() const;

  // Appends a member of the same database (eWrongDatabase otherwise; eDuplicateKey when
  // already a member). On a group in memory the reactors follow when it is added.
  Qa::ErrorStatus append(QaDbObjectId id);
  Qa::ErrorStatus append(const std::vector<QaDbObjectId>& ids);
  Qa::ErrorStatus remove(QaDbObjectId id);
  Qa::ErrorStatus clear();
  bool has(QaDbObjectId id) const;
  // Members that are not erased, in group order.
  std::vector<QaDbObjectId> allEntityIds() const;
  Qa::ErrorStatus allEntityIds(std::vector<QaDbObjectId>& ids) const;
  int numEntities() const;
  // Every member as stored, erased ones included.
  const std::vector<QaDbObjectId>& memberIds() const { return members_; }

  void remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) override;
  void onAddedToDatabase() override;
  void onErased(bool erasing) override;

 private:
  void setReactorOn(QaDbObjectId member, bool on);
  std::vector<QaDbObjectId> members_;
  std::wstring description_;
  bool selectable_ = true;
  bool anonymous_ = false;
};
