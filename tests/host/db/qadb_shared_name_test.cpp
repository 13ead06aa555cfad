// Shared names: one address per distinct name, also when interned from several threads;
// the layer and linetype of entities held as shared names with unchanged rules.
#include "db_test_util.h"

#include <map>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace qadbtest;

TEST(QaDbSharedName, EqualNamesShareOneAddress) {
  const QaDbSharedName a(L"轮廓线");
  const QaDbSharedName b(std::wstring(L"轮廓") + L"线");
  EXPECT_EQ(a, b);
  EXPECT_EQ(a.key(), b.key());
  EXPECT_EQ(&a.str(), &b.str());
  EXPECT_EQ(a.str(), L"轮廓线");
  // Names differing in case or by a trailing blank are different names.
  for (const wchar_t* other : {L"轮廓线 ", L"轮廓", L"Dim", L"DIM"}) {
    const QaDbSharedName o(other);
    EXPECT_FALSE(o == a) << other;
    EXPECT_NE(o.key(), a.key()) << other;
    EXPECT_EQ(o.str(), other);
  }
  EXPECT_FALSE(QaDbSharedName(L"Dim") == QaDbSharedName(L"DIM"));
  // The default is the empty name.
  const QaDbSharedName none;
  EXPECT_TRUE(none.str().empty());
  EXPECT_EQ(none, QaDbSharedName(L""));
  EXPECT_EQ(none, QaDbSharedName(std::wstring_view()));
  // A copy is the same name.
  QaDbSharedName copy = a;
  EXPECT_EQ(copy.key(), a.key());
}

TEST(QaDbSharedName, ThreadsInterningTheSameNamesGetOneAddressEach) {
  constexpr int kThreads = 4;
  constexpr int kNames = 256;
  std::vector<std::vector<const void*>> seen(kThreads, std::vector<const void*>(kNames));
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([t, &seen] {
      // Each thread walks the names in its own order (an odd step through a power of
      // two visits every one) so that first uses collide.
      for (int k = 0; k < kNames; ++k) {
        const int i = (k * (2 * t + 1) + t * 37) % kNames;
        seen[static_cast<std::size_t>(t)][static_cast<std::size_t>(i)] =
            QaDbSharedName(L"concurrent layer " + std::to_wstring(i)).key();
      }
    });
  }
  for (auto& th : threads) th.join();
  std::map<const void*, int> owners;
  for (int i = 0; i < kNames; ++i) {
    const void* key = seen[0][static_cast<std::size_t>(i)];
    for (int t = 1; t < kThreads; ++t) ASSERT_EQ(seen[static_cast<std::size_t>(t)][static_cast<std::size_t>(i)], key) << i;
    EXPECT_EQ(QaDbSharedName(L"concurrent layer " + std::to_wstring(i)).key(), key);
    EXPECT_TRUE(owners.emplace(key, i).second) << "names " << owners[key] << " and " << i << " share an address";
  }
}

// Both ways of setting a layer or linetype (text or shared name) follow one rule: an
// entity in memory takes any non-empty name; a resident one only names its drawing has
// ("ByLayer" and "ByBlock" always pass as linetypes). A refused name changes nothing.
TEST(QaDbEntity, LayerAndLinetypeRulesAreTheSameForTextAndSharedNames) {
  enum class Field { Layer, Linetype };
  struct Case {
    bool resident;
    Field field;
    const wchar_t* name;
    Qa::ErrorStatus expected;
  };
  const std::vector<Case> cases = {
      {false, Field::Layer, L"ANY_LAYER", Qa::eOk},
      {false, Field::Layer, L"", Qa::eInvalidInput},
      {false, Field::Linetype, L"NO_SUCH_TYPE", Qa::eOk},
      {false, Field::Linetype, L"", Qa::eInvalidInput},
      {true, Field::Layer, L"HIDDEN_EDGES", Qa::eOk},
      {true, Field::Layer, L"hidden_edges", Qa::eOk},
      {true, Field::Layer, L"NOWHERE", Qa::eKeyNotFound},
      {true, Field::Layer, L"", Qa::eInvalidInput},
      {true, Field::Linetype, L"Continuous", Qa::eOk},
      {true, Field::Linetype, L"BYBLOCK", Qa::eOk},
      {true, Field::Linetype, L"bylayer", Qa::eOk},
      {true, Field::Linetype, L"DASHED", Qa::eKeyNotFound},
      {true, Field::Linetype, L"", Qa::eInvalidInput},
  };
  QaDbDatabase db;
  QaDbObjectId layerId;
  ASSERT_EQ(db.ensureLayer(L"HIDDEN_EDGES", layerId), Qa::eOk);
  for (const Case& c : cases) {
    for (bool shared : {false, true}) {
      const std::wstring name(c.name);
      SCOPED_TRACE(testing::Message() << (c.resident ? "resident " : "in memory ")
                                      << (c.field == Field::Layer ? "layer " : "linetype ")
                                      << (shared ? "shared \"" : "text \"")
                                      << std::string(name.begin(), name.end()) << '"');
      auto line = std::make_unique<QaDbLine>();
      QaDbEntity* entity = line.get();
      QaDbObjectPointer<QaDbEntity> open;
      if (c.resident) {
        ASSERT_EQ(open.open(append(db, std::move(line)), QaDb::kForWrite), Qa::eOk);
        entity = open.object();
      }
      const bool layer = c.field == Field::Layer;
      const std::wstring before = layer ? entity->layer() : entity->linetype();
      Qa::ErrorStatus got;
      if (layer)
        got = shared ? entity->setLayer(QaDbSharedName(name)) : entity->setLayer(name);
      else
        got = shared ? entity->setLinetype(QaDbSharedName(name)) : entity->setLinetype(name);
      EXPECT_EQ(got, c.expected);
      const std::wstring after = layer ? entity->layer() : entity->linetype();
      EXPECT_EQ(after, c.expected == Qa::eOk ? name : before);
      if (layer) {
        EXPECT_EQ(entity->sharedLayer(), QaDbSharedName(after));
      }
    }
  }
}

TEST(QaDbEntity, SharedNameSettersNeedAWriteOpenResidentEntity) {
  QaDbDatabase db;
  QaDbObjectId id = append(db, std::make_unique<QaDbLine>());
  auto* entity = QaDbEntity::cast(id.rawObject());
  ASSERT_NE(entity, nullptr);
  EXPECT_THROW(entity->setLayer(QaDbSharedName(L"0")), std::logic_error);
  EXPECT_THROW(entity->setLinetype(QaDbSharedName(L"Continuous")), std::logic_error);
  EXPECT_EQ(entity->linetype(), L"ByLayer");
}

TEST(QaDbEntity, NewEntitiesAndCopiedPropertiesShareTheNames) {
  QaDbLine fresh;
  EXPECT_EQ(fresh.layer(), L"0");
  EXPECT_EQ(fresh.linetype(), L"ByLayer");
  EXPECT_EQ(fresh.sharedLayer(), QaDbSharedName(L"0"));

  QaDbCircle source;
  ASSERT_EQ(source.setLayer(QaDbSharedName(L"中心线")), Qa::eOk);
  ASSERT_EQ(source.setLinetype(L"CENTER"), Qa::eOk);
  ASSERT_EQ(source.setColorIndex(3), Qa::eOk);
  QaDbLine copy;
  ASSERT_EQ(copy.setPropertiesFrom(&source), Qa::eOk);
  EXPECT_EQ(copy.layer(), L"中心线");
  EXPECT_EQ(copy.sharedLayer(), source.sharedLayer());
  EXPECT_EQ(&copy.linetype(), &source.linetype());
  EXPECT_EQ(copy.colorIndex(), 3);
  // Changing the copy leaves the source alone.
  ASSERT_EQ(copy.setLayer(L"OTHER"), Qa::eOk);
  EXPECT_EQ(source.layer(), L"中心线");
  // Appended to a drawing, the layer is created and kept; the unknown linetype falls back.
  QaDbDatabase db;
  QaDbObjectId id = append(db, source.cloneEntity());
  QaDbObjectPointer<QaDbEntity> resident(id, QaDb::kForRead);
  EXPECT_EQ(resident->layer(), L"中心线");
  EXPECT_EQ(resident->linetype(), L"ByLayer");
  EXPECT_TRUE(QaDbLayerTable::cast(db.layerTableId().rawObject())->has(L"中心线"));
}

}  // namespace
