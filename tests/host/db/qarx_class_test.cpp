// Class tests of the run-time type information: synthetic hierarchies deeper than the
// classes remember ancestors for, and the database's own classes.
#include "db_test_util.h"

#include <memory>
#include <string>
#include <vector>

namespace {

// Two separate trees: a trunk twelve classes deep with branches forking at several
// depths (one of them past the remembered depth), and a short second tree.
class SyntheticHierarchy {
 public:
  SyntheticHierarchy() {
    const QaRxClass* trunk = add(L"T0", nullptr);
    std::vector<const QaRxClass*> trunkAt{trunk};
    for (int d = 1; d < 12; ++d) trunkAt.push_back(add(L"T" + std::to_wstring(d), trunkAt.back()));
    for (int fork : {0, 3, 7, 8, 10}) {
      const QaRxClass* c = trunkAt[static_cast<std::size_t>(fork)];
      for (int k = 1; k <= 3; ++k) c = add(L"B" + std::to_wstring(fork) + L"_" + std::to_wstring(k), c);
    }
    const QaRxClass* other = add(L"O0", nullptr);
    for (int d = 1; d < 10; ++d) other = add(L"O" + std::to_wstring(d), other);
  }
  const std::vector<std::unique_ptr<QaRxClass>>& classes() const { return classes_; }

 private:
  const QaRxClass* add(const std::wstring& name, const QaRxClass* parent) {
    classes_.push_back(std::make_unique<QaRxClass>(name.c_str(), parent, L""));
    return classes_.back().get();
  }
  std::vector<std::unique_ptr<QaRxClass>> classes_;
};

bool onParentChain(const QaRxClass* c, const QaRxClass* ancestor) {
  for (; c != nullptr; c = c->myParent())
    if (c == ancestor) return true;
  return false;
}

std::string narrow(const std::wstring& s) { return std::string(s.begin(), s.end()); }

TEST(QaRxClass, DerivationIsAnsweredAtEveryPairOfDepths) {
  SyntheticHierarchy h;
  int derivedPairs = 0;
  for (const auto& a : h.classes()) {
    for (const auto& b : h.classes()) {
      const bool expected = onParentChain(a.get(), b.get());
      ASSERT_EQ(a->isDerivedFrom(b.get()), expected) << narrow(a->name()) << " from " << narrow(b->name());
      derivedPairs += expected;
    }
  }
  // The trunk alone gives 12 * 13 / 2 pairs: the hierarchy is as deep as intended.
  EXPECT_GT(derivedPairs, 78);
}

TEST(QaRxClass, DatabaseClassesKnowTheirAncestors) {
  struct Case {
    const QaRxClass* cls;
    const QaRxClass* other;
    bool derived;
  };
  const std::vector<Case> cases = {
      {QaDbAttribute::desc(), QaDbAttribute::desc(), true},
      {QaDbAttribute::desc(), QaDbText::desc(), true},
      {QaDbAttribute::desc(), QaDbEntity::desc(), true},
      {QaDbAttribute::desc(), QaDbObject::desc(), true},
      {QaDbAttribute::desc(), QaRxObject::desc(), true},
      {QaDbAttribute::desc(), QaDbMText::desc(), false},
      {QaDbAttribute::desc(), QaDbAttributeDefinition::desc(), false},
      {QaDbText::desc(), QaDbAttribute::desc(), false},
      {QaDbEntity::desc(), QaDbText::desc(), false},
      {QaDbBlockTableRecord::desc(), QaDbSymbolTableRecord::desc(), true},
      {QaDbBlockTableRecord::desc(), QaDbEntity::desc(), false},
      {QaDbLayerTable::desc(), QaDbSymbolTable::desc(), true},
      {QaDbSymbolTable::desc(), QaDbLayerTable::desc(), false},
  };
  for (const Case& c : cases)
    EXPECT_EQ(c.cls->isDerivedFrom(c.other), c.derived) << narrow(c.cls->name()) << " from " << narrow(c.other->name());

  QaDbAttribute attribute;
  QaRxObject* object = &attribute;
  EXPECT_EQ(qaCast<QaDbText>(object), &attribute);
  EXPECT_EQ(qaCast<QaDbEntity>(object), &attribute);
  EXPECT_EQ(qaCast<QaDbMText>(object), nullptr);
  EXPECT_EQ(qaCast<QaDbAttributeDefinition>(object), nullptr);
  QaDbText text;
  EXPECT_EQ(qaCast<QaDbAttribute>(static_cast<QaRxObject*>(&text)), nullptr);
}

}  // namespace
