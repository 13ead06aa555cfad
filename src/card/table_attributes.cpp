#include "card/table_attributes.h"

#include "card/file_utils.h"
#include "card/number_text.h"
#include "card/template_json.h"

KrmTableAttributes::KrmTableAttributes() : id_(KrmNewTemplateId()) {}

int KrmTableAttributes::InitTable(const std::wstring& path) {
  std::wstring reason;
  return InitTable(path, reason);
}

int KrmTableAttributes::InitTable(const std::wstring& path, std::wstring& reason) {
  std::string bytes;
  if (!KrmReadWholeFile(KrmWithExtension(path, kKrmTableExtension), bytes, reason)) return 0;
  std::wstring why;
  if (!KrmTableFromJson(bytes, *this, why)) {
    reason = KrmWithExtension(path, kKrmTableExtension) + L": " + why;
    return 0;
  }
  return 1;
}

int KrmTableAttributes::OutputTable(const std::wstring& path) const {
  std::wstring reason;
  return OutputTable(path, reason);
}

int KrmTableAttributes::OutputTable(const std::wstring& path, std::wstring& reason) const {
  std::string text;
  std::wstring why;
  if (!KrmTableToJson(*this, text, why)) {
    reason = KrmWithExtension(path, kKrmTableExtension) + L": " + why;
    return 0;
  }
  return KrmWriteWholeFile(KrmWithExtension(path, kKrmTableExtension), text, reason) ? 1 : 0;
}

void KrmTableAttributes::Reset() {
  std::wstring id = std::move(id_);
  *this = KrmTableAttributes();
  id_ = std::move(id);
}

namespace {

void NamesOf(const std::vector<KrmBlockSet>& blocks, std::vector<std::wstring>& names) {
  names.clear();
  for (const auto& block : blocks) names.push_back(block.GetBlockName());
}

}  // namespace

void KrmTableAttributes::getSCell(std::vector<std::wstring>& names) const { NamesOf(sCells_, names); }

void KrmTableAttributes::getMCell(std::vector<std::wstring>& names) const { NamesOf(mCells_, names); }

int KrmTableAttributes::getAtt(const std::wstring& blockName, std::vector<KrmAttSet>& out) const {
  for (const auto* list : {&sCells_, &mCells_}) {
    for (const auto& block : *list) {
      if (block.GetBlockName() == blockName) {
        block.GetAtt(out);
        return 1;
      }
    }
  }
  out.clear();
  return 0;
}

int KrmTableAttributes::getBlkNum(const std::wstring& blockName, int& order, int& count) const {
  auto it = mDirType_.find(blockName);
  if (it == mDirType_.end() || it->second.size() != 2) return 0;
  order = KrmTextToInt(it->second[0]);
  count = KrmTextToInt(it->second[1]);
  return 1;
}

bool KrmTableAttributes::PageBinding(const std::wstring& key, std::wstring& blockName, std::wstring& attName) const {
  auto it = pageAtt_.find(key);
  if (it == pageAtt_.end() || it->second.size() != 2) return false;
  blockName = it->second[0];
  attName = it->second[1];
  return true;
}
