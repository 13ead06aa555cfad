// Groups and the reactors they keep on their members.
#include "db_test_util.h"

namespace {

using namespace qadbtest;

struct GroupFixture : ::testing::Test {
  QaDbDatabase db;
  std::vector<QaDbObjectId> members;
  QaDbObjectId group;

  void SetUp() override {
    for (int i = 0; i < 3; ++i)
      members.push_back(append(db, std::make_unique<QaDbLine>(QaGePoint3d(i, 0, 0), QaGePoint3d(i, 1, 0))));
    QaDbDictionary* dict = nullptr;
    ASSERT_EQ(db.getGroupDictionary(dict, QaDb::kForWrite), Qa::eOk);
    auto g = std::make_unique<QaDbGroup>();
    QaDbGroup* raw = g.get();
    ASSERT_EQ(dict->setAt(L"*A", std::move(g), group), Qa::eOk);
    dict->close();
    raw->setAnonymous();
    ASSERT_EQ(raw->append(members), Qa::eOk);
    raw->close();
  }

  bool reactorOn(QaDbObjectId member) const { return member.rawObject()->hasPersistentReactor(group); }
};

TEST_F(GroupFixture, AppendPutsTheGroupOnEachMember) {
  QaDbObjectPointer<QaDbGroup> g(group, QaDb::kForRead);
  EXPECT_TRUE(g->isAnonymous());
  EXPECT_EQ(g->name(), L"*A1");
  EXPECT_EQ(g->allEntityIds(), members);
  EXPECT_EQ(g->numEntities(), 3);
  for (QaDbObjectId m : members) EXPECT_TRUE(reactorOn(m));
  // Walking a member's reactors finds the group.
  std::vector<QaDbObjectId> groups;
  for (QaDbObjectId r : members[1].rawObject()->reactors())
    if (QaDbGroup::cast(r.rawObject())) groups.push_back(r);
  EXPECT_EQ(groups, std::vector<QaDbObjectId>{group});
  EXPECT_TRUE(group.rawObject()->hasPersistentReactor(db.groupDictionaryId()));
}

TEST_F(GroupFixture, RemoveAndDuplicatesKeepReactorsConsistent) {
  QaDbObjectPointer<QaDbGroup> g(group, QaDb::kForWrite);
  EXPECT_EQ(g->append(members[0]), Qa::eDuplicateKey);
  EXPECT_EQ(g->remove(members[0]), Qa::eOk);
  EXPECT_FALSE(reactorOn(members[0]));
  EXPECT_EQ(g->remove(members[0]), Qa::eKeyNotFound);
  EXPECT_FALSE(g->has(members[0]));
  EXPECT_TRUE(g->has(members[1]));
  EXPECT_EQ(g->clear(), Qa::eOk);
  for (QaDbObjectId m : members) EXPECT_FALSE(reactorOn(m));
  EXPECT_EQ(g->numEntities(), 0);
}

TEST_F(GroupFixture, ErasedMembersAreSkipped) {
  {
    QaDbObjectPointer<QaDbEntity> e(members[1], QaDb::kForWrite);
    e->erase();
  }
  QaDbObjectPointer<QaDbGroup> g(group, QaDb::kForRead);
  EXPECT_EQ(g->allEntityIds(), (std::vector<QaDbObjectId>{members[0], members[2]}));
  EXPECT_EQ(g->numEntities(), 2);
  EXPECT_EQ(g->memberIds().size(), 3u);
}

TEST_F(GroupFixture, ErasingTheGroupTakesItsReactorsAway) {
  {
    QaDbObjectPointer<QaDbGroup> g(group, QaDb::kForWrite);
    ASSERT_EQ(g->erase(), Qa::eOk);
  }
  for (QaDbObjectId m : members) EXPECT_FALSE(reactorOn(m));
  QaDbDictionary* dict = nullptr;
  ASSERT_EQ(db.getGroupDictionary(dict, QaDb::kForRead), Qa::eOk);
  EXPECT_EQ(dict->numEntries(), 0);
  dict->close();
  {
    QaDbObjectPointer<QaDbGroup> g(group, QaDb::kForWrite, true);
    ASSERT_EQ(g->erase(false), Qa::eOk);
  }
  for (QaDbObjectId m : members) EXPECT_TRUE(reactorOn(m));
}

TEST_F(GroupFixture, MembersMustBelongToTheSameDrawing) {
  QaDbDatabase other;
  QaDbObjectId foreign = append(other, std::make_unique<QaDbLine>());
  QaDbObjectPointer<QaDbGroup> g(group, QaDb::kForWrite);
  EXPECT_EQ(g->append(foreign), Qa::eWrongDatabase);
  EXPECT_EQ(g->append(QaDbObjectId()), Qa::eNullObjectId);
}

TEST(QaDbGroup, GroupInMemoryPutsReactorsWhenAdded) {
  QaDbDatabase db;
  QaDbObjectId a = append(db, std::make_unique<QaDbLine>());
  auto g = std::make_unique<QaDbGroup>(L"page 1");
  ASSERT_EQ(g->append(a), Qa::eOk);
  EXPECT_TRUE(a.rawObject()->reactors().empty());
  QaDbDictionary* dict = nullptr;
  ASSERT_EQ(db.getGroupDictionary(dict, QaDb::kForWrite), Qa::eOk);
  QaDbObjectId id;
  ASSERT_EQ(dict->setAt(L"PAGE", std::move(g), id), Qa::eOk);
  id.rawObject()->close();
  dict->close();
  EXPECT_TRUE(a.rawObject()->hasPersistentReactor(id));
  EXPECT_EQ(QaDbGroup::cast(id.rawObject())->description(), L"page 1");
}

}  // namespace
