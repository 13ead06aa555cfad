#include "shell/krm_command_table.h"

#include "host/ed/qaed_command_stack.h"
#include "host/rx/qa_lang_resource.h"
#include "shell/krm_commands.h"

const std::vector<KrmCommandEntry>& KrmCommandTable() {
  static const std::vector<KrmCommandEntry> table{
      {kKrmCommandGroup, L"_KrmMakeTbl", L"KrmMakeTbl", 0, QA_CMD_MODAL, &KrmMakeTbl},
      {kKrmCommandGroup, L"_KrmMakeCard", L"KrmMakeCard", 0, QA_CMD_MODAL, &KrmMakeCard},
      {kKrmCommandGroup, L"_KrmCreateCard", L"KrmCreateCard", 0, QA_CMD_MODAL, &KrmCreateCard},
      {kKrmCommandGroup, L"_KrmCardEdit", L"KrmCardEdit", 0, QA_CMD_MODAL, &KrmCardEdit},
      {kKrmCommandGroup, L"_KrmBomCardExp", L"KrmBomCardExp", 0, QA_CMD_MODAL, &KrmBomCardExp},
      {kKrmCommandGroup, L"_KrmDelBlkID", L"KrmDelBlkID", 0, QA_CMD_MODAL, &KrmDelBlkID},
  };
  return table;
}

std::wstring KrmLocalNameOf(const KrmCommandEntry& entry) {
  if (!entry.localName.empty()) return entry.localName;
  std::wstring name = KrmLoadString(entry.localNameId, L"");
  if (name.size() > kKrmMaxLocalName) name.resize(kKrmMaxLocalName);
  return name;
}
