// The messages the host sends to a plug-in's entry point, and the application base
// classes that dispatch them to virtual handlers, one per message number 0 to 15.
// Numbers above 15 are answered with kRetOK (0) and reach no handler.
#pragma once

namespace QaRx {

enum AppMsgCode {
  kNullMsg = 0,
  kInitAppMsg = 1,
  kUnloadAppMsg = 2,
  kLoadDwgMsg = 3,
  kUnloadDwgMsg = 4,
  kInvkSubrMsg = 5,
  kCfgMsg = 6,
  kEndMsg = 7,
  kQuitMsg = 8,
  kSaveMsg = 9,
  kDependencyMsg = 10,
  kNoDependencyMsg = 11,
  kOleUnloadAppMsg = 12,
  kPreQuitMsg = 13,
  kInitDialogMsg = 14,
  kEndDialogMsg = 15,
  kSuspendMsg = 16,
};

enum AppRetCode { kRetOK = 0, kRetError = 3 };

}  // namespace QaRx

// Base of a plug-in application: dispatches a message to its handler. Every handler
// answers kRetOK unless a subclass overrides it.
class QaRxDbxApp {
 public:
  QaRxDbxApp() = default;
  virtual ~QaRxDbxApp() = default;
  QaRxDbxApp(const QaRxDbxApp&) = delete;
  QaRxDbxApp& operator=(const QaRxDbxApp&) = delete;

  // The handler of `msg`, in message order; kRetOK for numbers outside 0 to 15.
  QaRx::AppRetCode dispatch(int msg, void* appData);

  virtual QaRx::AppRetCode On_kNullMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kInitAppMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kUnloadAppMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kLoadDwgMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kUnloadDwgMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kInvkSubrMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kCfgMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kEndMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kQuitMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kSaveMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kDependencyMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kNoDependencyMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kOleUnloadAppMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kPreQuitMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kInitDialogMsg(void*) { return QaRx::kRetOK; }
  virtual QaRx::AppRetCode On_kEndDialogMsg(void*) { return QaRx::kRetOK; }
};

// Base of an application with commands and a user interface (as opposed to a pure
// database extension); dispatches the same way.
class QaRxQrxApp : public QaRxDbxApp {};
