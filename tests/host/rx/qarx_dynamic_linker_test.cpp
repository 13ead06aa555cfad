#include "host/rx/qarx_dynamic_linker.h"

#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/rx/qarx_app.h"
#include "host/rx/qarx_system_registry.h"

#include <gtest/gtest.h>

namespace {

// A module that writes down what happens to it.
struct Probe {
  std::vector<std::string> log;
  bool attachAnswer = true;
  int initAnswer = QaRx::kRetOK;
  bool askUnload = true;

  QaRxModule module(const std::wstring& name) {
    return QaRxModule{name,
                      [this] {
                        log.push_back("attach");
                        return attachAnswer;
                      },
                      [this] { log.push_back("detach"); },
                      [this](int msg, void* data) {
                        log.push_back("msg " + std::to_string(msg));
                        if (msg == QaRx::kInitAppMsg) {
                          if (askUnload) qarxDynamicLinker().allowUnload(data);
                          qarxDynamicLinker().declareMultiDocument(data);
                          return initAnswer;
                        }
                        return static_cast<int>(QaRx::kRetOK);
                      }};
  }
};

}  // namespace

TEST(QaRxDynamicLinker, SendsInitAndDrawingMessagesAroundAttachAndDetach) {
  auto& docs = qaDocManager();
  docs.addDocument(std::make_unique<QaDbDatabase>(), "one.dxf");
  auto& linker = qarxDynamicLinker();
  Probe probe;
  ASSERT_TRUE(linker.loadModule(probe.module(L"Probe")));
  EXPECT_FALSE(linker.loadModule(probe.module(L"Probe")));  // already loaded
  EXPECT_TRUE(linker.isUnloadAllowed(L"Probe"));
  EXPECT_TRUE(linker.isMultiDocument(L"Probe"));
  docs.addDocument(std::make_unique<QaDbDatabase>(), "two.dxf");  // a drawing opened later
  EXPECT_TRUE(linker.unloadModule(L"Probe"));
  EXPECT_FALSE(linker.isLoaded(L"Probe"));
  docs.closeAll();
  EXPECT_EQ(probe.log, (std::vector<std::string>{"attach", "msg 1", "msg 3", "msg 3", "msg 4", "msg 4", "msg 2", "detach"}));
}

TEST(QaRxDynamicLinker, KeepsAModuleThatDidNotAskToBeUnloadableUntilForced) {
  auto& linker = qarxDynamicLinker();
  Probe probe;
  probe.askUnload = false;
  ASSERT_TRUE(linker.loadModule(probe.module(L"Sticky")));
  EXPECT_FALSE(linker.unloadModule(L"Sticky"));
  EXPECT_TRUE(linker.isLoaded(L"Sticky"));
  EXPECT_EQ(linker.sendMessage(L"Sticky", QaRx::kSaveMsg, nullptr), QaRx::kRetOK);
  EXPECT_EQ(linker.sendMessage(L"Nobody", QaRx::kSaveMsg, nullptr), QaRx::kRetError);
  linker.unloadAll();
  EXPECT_TRUE(linker.loadedModules().empty());
  EXPECT_EQ(probe.log.back(), "detach");
}

TEST(QaRxDynamicLinker, RefusedLoadsLeaveNothingLoaded) {
  auto& linker = qarxDynamicLinker();
  Probe refusesAttach;
  refusesAttach.attachAnswer = false;
  EXPECT_FALSE(linker.loadModule(refusesAttach.module(L"A")));
  EXPECT_EQ(refusesAttach.log, (std::vector<std::string>{"attach"}));
  Probe failsInit;
  failsInit.initAnswer = QaRx::kRetError;
  EXPECT_FALSE(linker.loadModule(failsInit.module(L"B")));
  EXPECT_EQ(failsInit.log, (std::vector<std::string>{"attach", "msg 1", "detach"}));
  EXPECT_TRUE(linker.loadedModules().empty());
}

TEST(QaRxDbxApp, DispatchesMessagesToTheirHandlersAndAnswersZeroBeyond) {
  struct App : QaRxQrxApp {
    std::vector<int> seen;
    QaRx::AppRetCode On_kInitAppMsg(void*) override { seen.push_back(1); return QaRx::kRetOK; }
    QaRx::AppRetCode On_kEndDialogMsg(void*) override { seen.push_back(15); return QaRx::kRetError; }
  } app;
  EXPECT_EQ(app.dispatch(QaRx::kInitAppMsg, nullptr), QaRx::kRetOK);
  EXPECT_EQ(app.dispatch(QaRx::kEndDialogMsg, nullptr), QaRx::kRetError);
  EXPECT_EQ(app.dispatch(QaRx::kSuspendMsg, nullptr), QaRx::kRetOK);
  EXPECT_EQ(app.dispatch(-1, nullptr), QaRx::kRetOK);
  EXPECT_EQ(app.seen, (std::vector<int>{1, 15}));
}

TEST(QaRxSystemRegistry, HoldsTheServiceDictionary) {
  auto& services = qaServiceDictionary();
  EXPECT_EQ(QaRxDictionary::cast(qaSysRegistry().at(kServiceDictionaryName)), &services);
  auto inner = std::make_unique<QaRxDictionary>();
  auto* raw = inner.get();
  EXPECT_EQ(services.atPut(L"TEST_SERVICE", std::move(inner)), nullptr);
  EXPECT_EQ(qaFindService<QaRxDictionary>(L"TEST_SERVICE"), raw);
  EXPECT_EQ(qaFindService<QaRxDictionary>(L"test_service"), nullptr);  // names are exact
  EXPECT_NE(services.remove(L"TEST_SERVICE"), nullptr);
  EXPECT_EQ(services.remove(L"TEST_SERVICE"), nullptr);
}
