#include "card/table_attributes.h"

#include "card/file_utils.h"
#include "card/number_text.h"
#include "card/template_json.h"
#include "card/utf8_text.h"

KrmTableAttributes::KrmTableAttributes() : id_(KrmNewTemplateId()) {}

int KrmTableAttributes::InitTable(const std::wstring& path) { return ReadTable(path).ok() ? 1 : 0; }

tabulon::Status KrmTableAttributes::ReadTable(const std::wstring& path) {
  const std::wstring file = KrmWithExtension(path, kKrmTableExtension);
  auto bytes = KrmReadWholeFile(file);
  if (!bytes.ok()) return bytes.status();
  tabulon::Status read = KrmTableFromJson(*bytes, *this);
  if (!read.ok()) return tabulon::Error(read.error()).inFile(KrmToUtf8(file));
  return read;
}

int KrmTableAttributes::OutputTable(const std::wstring& path) const { return WriteTable(path).ok() ? 1 : 0; }

tabulon::Status KrmTableAttributes::WriteTable(const std::wstring& path) const {
  const std::wstring file = KrmWithExtension(path, kKrmTableExtension);
  auto text = KrmTableToJson(*this);
  if (!text.ok()) return tabulon::Error(text.error()).inFile(KrmToUtf8(file));
  return KrmWriteWholeFile(file, *text);
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
