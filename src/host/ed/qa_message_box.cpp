#include "host/ed/qa_message_box.h"

#include "host/ed/qaed_user_io.h"
#include "host/rx/qa_lang_resource.h"

int QaMessageBox(std::wstring_view text, unsigned type) {
  return qaedUserIO().messageBox(text, kOstrelSuiteCaption, type);
}

void SdShowMsg(std::wstring_view text) { QaMessageBox(text, MB_OK | MB_ICONINFORMATION); }

void showMessageKrmCadNotInitialized() {
  QaMessageBox(KrmLoadString(9508, L"图框库未就绪: 当前图纸中没有找到图框 (options.ini [KrmFrame] FrameBlocks, 或扩展数据 KRM_FRAME)。"),
               MB_OK | MB_ICONWARNING);
}

bool qaBoxHasButton(unsigned type, int result) {
  switch (type & MB_TYPEMASK) {
    case MB_OKCANCEL: return result == IDOK || result == IDCANCEL;
    case MB_YESNOCANCEL: return result == IDYES || result == IDNO || result == IDCANCEL;
    case MB_YESNO: return result == IDYES || result == IDNO;
    default: return result == IDOK;
  }
}

int qaSafestButton(unsigned type) {
  if (qaBoxHasButton(type, IDCANCEL)) return IDCANCEL;
  if (qaBoxHasButton(type, IDNO)) return IDNO;
  return IDOK;
}
