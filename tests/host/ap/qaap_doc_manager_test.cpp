#include "host/ap/ckr_doc_lock_server.h"
#include "host/ap/krm_doc_value.h"
#include "host/ap/qaap_data_manager.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"

#include <gtest/gtest.h>

namespace {

struct Recorder : QaApDocManagerReactor {
  std::vector<std::string> events;
  void documentCreated(QaApDocument* doc) override { events.push_back("created " + doc->fileName().string()); }
  void documentToBeDestroyed(QaApDocument* doc) override { events.push_back("destroyed " + doc->fileName().string()); }
  void documentBecameCurrent(QaApDocument* doc) override { events.push_back("current " + doc->fileName().string()); }
};

}  // namespace

TEST(QaApDocManager, KeepsDocumentsTheCurrentOneAndTellsReactors) {
  QaApDocManager docs;
  Recorder recorder;
  docs.addReactor(&recorder);
  docs.addReactor(&recorder);  // once is enough
  EXPECT_EQ(docs.workingDatabase(), nullptr);
  auto* a = docs.addDocument(std::make_unique<QaDbDatabase>(), "a.dxf");
  auto* b = docs.addDocument(std::make_unique<QaDbDatabase>(), "b.dxf");
  EXPECT_EQ(docs.curDoc(), b);
  EXPECT_EQ(docs.workingDatabase(), b->database());
  EXPECT_EQ(docs.document(a->database()), a);
  EXPECT_EQ(docs.setCurDocument(a), Qa::eOk);
  EXPECT_EQ(docs.closeDocument(a), Qa::eOk);
  EXPECT_EQ(docs.curDoc(), b);
  EXPECT_EQ(docs.closeDocument(a), Qa::eInvalidInput);
  docs.removeReactor(&recorder);
  docs.closeAll();
  EXPECT_EQ(docs.documentCount(), 0);
  EXPECT_EQ(docs.curDoc(), nullptr);
  EXPECT_EQ(recorder.events, (std::vector<std::string>{"current a.dxf", "created a.dxf", "current b.dxf", "created b.dxf",
                                                       "current a.dxf", "destroyed a.dxf", "current b.dxf"}));
}

TEST(QaApDocManager, LocksNestAndTheLockServerUnlocksOnEveryWayOut) {
  auto& docs = qaDocManager();
  auto* doc = docs.addDocument(std::make_unique<QaDbDatabase>(), "lock.dxf");
  EXPECT_EQ(doc->myLockMode(), QaAp::kNotLocked);
  {
    CKR_DocLockServer outer;
    EXPECT_TRUE(outer.isLocked());
    EXPECT_EQ(doc->myLockMode(), QaAp::kWrite);
    try {
      CKR_DocLockServer inner(doc, QaAp::kRead);
      EXPECT_EQ(doc->lockDepth(), 2);
      EXPECT_EQ(doc->myLockMode(), QaAp::kRead);
      throw std::runtime_error("leaving early");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(doc->lockDepth(), 1);
  }
  EXPECT_FALSE(doc->isLocked());
  EXPECT_EQ(docs.unlockDocument(doc), Qa::eNotApplicable);
  docs.closeAll();
  CKR_DocLockServer none;  // no document: nothing to lock
  EXPECT_FALSE(none.isLocked());
}

TEST(QaApDataManager, MakesARecordPerDocumentOnFirstUseAndDropsItWithTheDocument) {
  auto& docs = qaDocManager();
  QaApDataManager<KrmDocValue> values;
  EXPECT_THROW(values.docData(), std::logic_error);
  auto* a = docs.addDocument(std::make_unique<QaDbDatabase>(), "a.dxf");
  auto* b = docs.addDocument(std::make_unique<QaDbDatabase>(), "b.dxf");
  values.docData(a).OpenCardsList.push_back(L"AB12CD34");
  values.docData().dialogRect = KrmWindowRect{1, 2, 3, 4};  // b is current
  EXPECT_EQ(values.size(), 2u);
  EXPECT_EQ(values.docData(a).OpenCardsList.size(), 1u);
  EXPECT_TRUE(values.docData(b).OpenCardsList.empty());
  docs.closeDocument(a);
  EXPECT_EQ(values.size(), 1u);
  EXPECT_EQ(values.docData(b).dialogRect, (KrmWindowRect{1, 2, 3, 4}));
  docs.closeAll();
  EXPECT_EQ(values.size(), 0u);
}

TEST(KrmDocValue, ManagersExistOnlyBetweenCreationAndDestruction) {
  auto& docs = qaDocManager();
  docs.addDocument(std::make_unique<QaDbDatabase>(), "a.dxf");
  EXPECT_EQ(KrmCurDocValue(), nullptr);
  KrmCreateDocDataManagers();
  ASSERT_NE(KrmCurDocValue(), nullptr);
  KrmCurDocValue()->OpenCardsList.push_back(L"CODE");
  EXPECT_EQ(KrmDocValueManager()->size(), 1u);
  EXPECT_EQ(KrmDocDataManager()->size(), 0u);
  KrmDestroyDocDataManagers();
  EXPECT_EQ(KrmDocValueManager(), nullptr);
  EXPECT_EQ(KrmCurDocValue(), nullptr);
  docs.closeAll();
}
