#include "host/svc/krm_frame_rules.h"

#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_open.h"
#include "host/svc/ini_file.h"
#include "host/svc/tabulon_paths.h"

#include <algorithm>

namespace {

std::wstring trimmed(const std::wstring& s) {
  const auto first = s.find_first_not_of(L" \t");
  if (first == std::wstring::npos) return {};
  return s.substr(first, s.find_last_not_of(L" \t") - first + 1);
}

bool sameBlockName(const std::wstring& a, const std::wstring& b) {
  auto lower = [](wchar_t c) { return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c - L'A' + L'a') : c; };
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [&](wchar_t x, wchar_t y) { return lower(x) == lower(y); });
}

bool listed(const std::vector<std::wstring>& names, const QaDbBlockReference& ref) {
  if (names.empty()) return false;
  const auto name = KrmBlockNameOf(ref);
  return std::any_of(names.begin(), names.end(), [&](const std::wstring& n) { return sameBlockName(n, name); });
}

KrmFrameRules fromIni(const tabulon::svc::IniFile& ini) {
  KrmFrameRules rules;
  const wchar_t* section = L"KrmFrame";
  rules.frameBlocks = KrmSplitList(ini.get(section, L"FrameBlocks").value_or(L""));
  rules.titleBlocks = KrmSplitList(ini.get(section, L"TitleBlocks").value_or(L""));
  rules.bomRowBlocks = KrmSplitList(ini.get(section, L"BomRowBlocks").value_or(L""));
  for (const auto& pair : KrmSplitList(ini.get(section, L"TitleMap").value_or(L""))) {
    const auto eq = pair.find(L'=');
    if (eq == std::wstring::npos) continue;
    auto from = trimmed(pair.substr(0, eq));
    auto to = trimmed(pair.substr(eq + 1));
    if (!from.empty() && !to.empty()) rules.titleMap.emplace_back(std::move(from), std::move(to));
  }
  if (auto key = ini.get(section, L"BomOrderKey"); key && !trimmed(*key).empty()) rules.bomOrderKey = trimmed(*key);
  return rules;
}

}  // namespace

std::vector<std::wstring> KrmSplitList(const std::wstring& text) {
  std::vector<std::wstring> out;
  std::size_t pos = 0;
  while (pos <= text.size()) {
    auto end = text.find(L';', pos);
    if (end == std::wstring::npos) end = text.size();
    if (auto part = trimmed(text.substr(pos, end - pos)); !part.empty()) out.push_back(std::move(part));
    pos = end + 1;
  }
  return out;
}

std::wstring KrmBlockNameOf(const QaDbBlockReference& ref) {
  QaDbObjectPointer<QaDbBlockTableRecord> block(ref.blockTableRecord(), QaDb::kForRead);
  return block ? block->getName() : std::wstring();
}

KrmFrameRules KrmFrameRules::load() { return fromIni(tabulon::svc::IniFile::load(tabulon::svc::optionsIniPath())); }

KrmFrameRules KrmFrameRules::parse(const std::string& optionsText) {
  return fromIni(tabulon::svc::IniFile::parse(optionsText, "options.ini"));
}

bool KrmFrameRules::isFrame(const QaDbBlockReference& ref) const {
  return ref.hasXData(kKrmFrameApp) || listed(frameBlocks, ref);
}

bool KrmFrameRules::isTitleBlock(const QaDbBlockReference& ref) const {
  return ref.hasXData(kKrmTitleApp) || listed(titleBlocks, ref);
}

bool KrmFrameRules::isBomRow(const QaDbBlockReference& ref) const {
  return ref.hasXData(kKrmBomRowApp) || listed(bomRowBlocks, ref);
}
