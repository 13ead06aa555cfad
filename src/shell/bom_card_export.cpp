#include "shell/bom_card_export.h"

#include <string>

#include "drawing/card_engine.h"
#include "host/ap/ckr_doc_lock_server.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/ed/qa_message_box.h"
#include "host/ed/qaed_prompts.h"
#include "host/ed/qaed_result_codes.h"
#include "host/ed/qaed_selection.h"
#include "host/ed/qaut_printf.h"
#include "host/rx/qa_lang_resource.h"
#include "host/rx/qarx_system_registry.h"
#include "host/svc/krm_base_services.h"
#include "host/svc/krm_bom_data.h"
#include "host/svc/krm_card_root.h"
#include "host/svc/krm_frame.h"
#include "host/svc/krm_frm_service.h"
#include "host/svc/krm_std_service.h"
#include "host/ge/qage_point3d.h"

namespace {

bool contains(const std::vector<std::wstring>& list, const std::wstring& text) {
  for (const auto& s : list)
    if (s == text) return true;
  return false;
}

// The three keys of one section; false when any is missing, which `missing` then names.
bool readEntry(const KrmStdService& options, const std::wstring& section, KrmBomExportEntry& entry,
               std::vector<std::pair<std::wstring, std::wstring>>* missing) {
  bool complete = true;
  const std::pair<const wchar_t*, std::wstring*> keys[] = {
      {kKrmBomOptionCard, &entry.card}, {kKrmBomOptionTitle, &entry.title}, {kKrmBomOptionList, &entry.list}};
  for (const auto& [key, value] : keys) {
    if (options.getOstrelmOptionData(section, key, *value, 0) != 0) continue;
    complete = false;
    if (missing) missing->emplace_back(section, key);
  }
  return complete;
}

}  // namespace

int& KrmBomLastEntry() {
  static int last = 0;
  return last;
}

void KrmReadBomExportEntries(std::vector<KrmBomExportEntry>& entries,
                             std::vector<std::pair<std::wstring, std::wstring>>& missing) {
  entries.clear();
  missing.clear();
  const auto* options = qaFindService<KrmStdService>(KRM_STD_SERVICE);
  if (!options) {
    for (const wchar_t* key : {kKrmBomOptionCard, kKrmBomOptionTitle, kKrmBomOptionList})
      missing.emplace_back(kKrmBomOptionSection, key);
    return;
  }
  KrmBomExportEntry base;
  if (!readEntry(*options, kKrmBomOptionSection, base, &missing)) return;
  entries.push_back(base);
  for (int n = 1;; ++n) {
    KrmBomExportEntry more;
    if (!readEntry(*options, kKrmBomOptionSection + std::to_wstring(n), more, nullptr)) break;
    entries.push_back(more);
  }
}

bool KrmCollectBomFrames(QaDbDatabase* db, std::vector<std::wstring>& names) {
  names.clear();
  if (db != nullptr) {
    const auto* frames = qaFindService<KrmFrmService>(KRM_FRM_SERVICE);
    std::vector<QaDbObjectId> ids;
    const int count = frames ? frames->getValidFrameCount(ids, db) : 0;
    for (QaDbObjectId id : ids) {
      KrmFrame frame;
      if (KrmFrame::open(id, frame) == Qa::eOk) names.push_back(frame.getDicName());
    }
    if (count >= 2) {
      const std::wstring prompt = L"选择明细表所在的图框";
      KR_QRXSelectSet selection;
      const int result = selection.userSelect(prompt.c_str(), prompt.c_str());
      if (result == 2) {
        names.clear();
        return false;
      }
      if (result == 0) {
        names.clear();
        for (QaDbObjectId picked : selection.ids()) {
          KrmFrame frame;
          if (KrmFrame::open(GetKrmFrameXdata(picked), frame) != Qa::eOk) continue;
          if (!contains(names, frame.getDicName())) names.push_back(frame.getDicName());
        }
        if (names.empty()) {
          qautPrint(L"\n没有选择到图框！");
          return false;
        }
      }
    }
  }
  if (names.empty()) {
    showMessageKrmCadNotInitialized();
    return false;
  }
  return true;
}

void KrmCollectBomData(const std::vector<std::wstring>& names, QaDbDatabase* db, KrmBomRow& title,
                       std::vector<KrmBomRow>& rows) {
  title.clear();
  rows.clear();
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i == 0) {
      CKR_DocLockServer lock;
      std::vector<std::wstring> from, to;
      if (GetMultiTitle(title, from, to, names[i], db) != 0) {
        for (std::size_t k = 0; k < from.size() && k < to.size(); ++k) {
          auto it = title.find(from[k]);
          if (it != title.end() && !it->second.empty()) title[to[k]] = it->second;
        }
      }
    }
    CKR_DocLockServer lock;
    std::vector<KrmStringMap> frameRows;
    if (GetMultiBomData(nullptr, nullptr, frameRows, names[i], L"", db) == 0) continue;
    for (const auto& row : frameRows) {
      KrmBomRow copy;
      for (const auto& [key, value] : row)
        if (!key.empty() || !value.empty()) copy[key] = value;
      rows.push_back(std::move(copy));
    }
  }
}

std::wstring KrmBomEntryPrompt(const std::vector<KrmBomExportEntry>& entries, int current) {
  std::wstring prompt = L"插入点[";
  for (std::size_t k = 0; k < entries.size(); ++k) {
    if (k > 0) prompt += L"/";
    const std::wstring number = L"(" + std::to_wstring(k + 1) + L")";
    prompt += static_cast<int>(k) == current ? L"<" + entries[k].card + L">" + number : entries[k].card + number;
  }
  return prompt + L"]<按回车键则默认为当前点>";
}

bool KrmChooseBomEntry(const std::vector<KrmBomExportEntry>& entries, int& chosen, QaGePoint3d& point) {
  point = QaGePoint3d::kOrigin;
  chosen = 0;
  if (entries.size() == 1) {
    const std::wstring prompt = KrmLoadString(148, L"插入点<按回车键则默认为当前点>");
    QaGePoint3d picked;
    const int result = qaedGetPoint(nullptr, prompt.c_str(), picked);
    if (result == RTNONE) return true;
    if (result != RTNORM) return false;
    point = picked;
    return true;
  }
  int& last = KrmBomLastEntry();
  if (last < 0 || last >= static_cast<int>(entries.size())) last = 0;
  std::wstring keywords;
  for (std::size_t k = 1; k <= entries.size(); ++k) keywords += L" " + std::to_wstring(k);
  while (true) {
    const std::wstring prompt = KrmBomEntryPrompt(entries, last);
    qaedInitGet(0, keywords.c_str());
    QaGePoint3d picked;
    const int result = qaedGetPoint(nullptr, prompt.c_str(), picked);
    if (result == RTKWORD) {
      std::wstring input;
      qaedGetInput(input);
      int number = 0;
      try {
        number = std::stoi(input);
      } catch (const std::exception&) {
        number = 0;
      }
      last = number - 1;
      if (last < 0 || last >= static_cast<int>(entries.size())) last = 0;
      continue;
    }
    if (result == RTNONE || result == RTNORM) {
      if (result == RTNORM) point = picked;
      chosen = last;
      return true;
    }
    return false;
  }
}

int KrmBomCardExpRun() {
  QaDbDatabase* db = qaWorkingDatabase();
  std::vector<std::wstring> names;
  if (!KrmCollectBomFrames(db, names)) return 0;
  KrmBomRow title;
  std::vector<KrmBomRow> rows;
  KrmCollectBomData(names, db, title, rows);

  std::vector<KrmBomExportEntry> entries;
  std::vector<std::pair<std::wstring, std::wstring>> missing;
  KrmReadBomExportEntries(entries, missing);
  if (!missing.empty()) {
    for (const auto& [section, key] : missing)
      qautPrintf(L"\ngetOstrelmOptionData %s FieldMap  %s error !", section.c_str(), key.c_str());
    return 0;
  }
  int chosen = 0;
  QaGePoint3d point;
  if (!KrmChooseBomEntry(entries, chosen, point)) return 0;
  const KrmBomExportEntry& entry = entries[static_cast<std::size_t>(chosen)];

  KrmResolveCardRoot();
  KrmCardEngine engine;
  engine.InitCardPath(KrmCardRoot());
  engine.SetCardName(entry.card);
  engine.SetPageStep(1);
  engine.SetPageStart_B(1);
  if (!title.empty()) engine.SetTableContent(entry.title, {title});
  engine.SetTableContent(entry.list, rows);
  engine.SetInsert(point);
  return engine.PlayCreate();
  // The engine writes the batch numbers as it goes out of scope.
}
