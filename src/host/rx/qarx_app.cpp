#include "host/rx/qarx_app.h"

#include <array>

QaRx::AppRetCode QaRxDbxApp::dispatch(int msg, void* appData) {
  using Handler = QaRx::AppRetCode (QaRxDbxApp::*)(void*);
  static constexpr std::array<Handler, 16> handlers{
      &QaRxDbxApp::On_kNullMsg,         &QaRxDbxApp::On_kInitAppMsg,     &QaRxDbxApp::On_kUnloadAppMsg,
      &QaRxDbxApp::On_kLoadDwgMsg,      &QaRxDbxApp::On_kUnloadDwgMsg,   &QaRxDbxApp::On_kInvkSubrMsg,
      &QaRxDbxApp::On_kCfgMsg,          &QaRxDbxApp::On_kEndMsg,         &QaRxDbxApp::On_kQuitMsg,
      &QaRxDbxApp::On_kSaveMsg,         &QaRxDbxApp::On_kDependencyMsg,  &QaRxDbxApp::On_kNoDependencyMsg,
      &QaRxDbxApp::On_kOleUnloadAppMsg, &QaRxDbxApp::On_kPreQuitMsg,     &QaRxDbxApp::On_kInitDialogMsg,
      &QaRxDbxApp::On_kEndDialogMsg,
  };
  if (msg < 0 || msg >= static_cast<int>(handlers.size())) return QaRx::kRetOK;
  return (this->*handlers[static_cast<std::size_t>(msg)])(appData);
}
