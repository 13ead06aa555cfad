#include "authoring/sel_sgl_model.h"

#include <algorithm>

#include "host/rx/qa_lang_resource.h"

namespace {

bool Passes(KrmSelSglMode mode, const KrmDataAttTR& record) {
  switch (mode) {
    case KrmSelSglMode::kMultiBlocks:
    case KrmSelSglMode::kPageBase:
    case KrmSelSglMode::kAutoNum:
      return record.IsMultiRecord();
    default:
      return record.IsSingleRecord();
  }
}

}  // namespace

KrmSelSglModel::KrmSelSglModel(KrmSelSglMode mode, const std::vector<KrmDataAttTR>& source) : mode_(mode) {
  for (const auto& record : source)
    if (Passes(mode, record)) classes_.push_back(record);
  if (classes_.empty()) return;
  if (MultiSelect()) {
    for (int i = 0; i < static_cast<int>(classes_.size()); ++i) selected_.push_back(i);
    current_ = 0;
  } else {
    SelectClass(0);
  }
}

std::wstring KrmSelSglModel::Caption() const {
  switch (mode_) {
    case KrmSelSglMode::kSingleBlocks: return KrmLoadString(107, L"选择单记录属性块(可多选)");
    case KrmSelSglMode::kMultiBlocks: return KrmLoadString(108, L"选择多记录属性块(可多选)");
    case KrmSelSglMode::kPageBase: return KrmLoadString(110, L"选择分页基准块");
    case KrmSelSglMode::kClassCur: return KrmLoadString(111, L"选择类当前页数属性");
    case KrmSelSglMode::kClassSum: return KrmLoadString(112, L"选择类总页数属性");
    case KrmSelSglMode::kBatchCur: return KrmLoadString(113, L"选择批当前页数属性");
    case KrmSelSglMode::kBatchSum: return KrmLoadString(114, L"选择批总页数属性");
    case KrmSelSglMode::kAutoNum: return KrmLoadString(115, L"选择自动编号字段");
  }
  return {};
}

bool KrmSelSglModel::MultiSelect() const {
  return mode_ == KrmSelSglMode::kSingleBlocks || mode_ == KrmSelSglMode::kMultiBlocks;
}

bool KrmSelSglModel::ChoosesAttribute() const { return static_cast<int>(mode_) >= 3; }

std::vector<std::wstring> KrmSelSglModel::ClassNames() const {
  std::vector<std::wstring> names;
  for (const auto& record : classes_) names.push_back(record.blockName);
  return names;
}

std::vector<std::wstring> KrmSelSglModel::AttributeNames() const {
  std::vector<std::wstring> names;
  if (current_ < 0) return names;
  for (const auto& att : classes_[static_cast<std::size_t>(current_)].atts) names.push_back(att.GetShowName());
  return names;
}

void KrmSelSglModel::SelectClass(int index) {
  if (index < 0 || index >= static_cast<int>(classes_.size())) return;
  current_ = index;
  if (!MultiSelect()) selected_ = {index};
  else if (std::find(selected_.begin(), selected_.end(), index) == selected_.end()) selected_.push_back(index);
  const bool hasAtts = !classes_[static_cast<std::size_t>(index)].atts.empty();
  selectedAtt_ = ChoosesAttribute() && hasAtts ? 0 : -1;
}

void KrmSelSglModel::ToggleClass(int index) {
  if (!MultiSelect() || index < 0 || index >= static_cast<int>(classes_.size())) return;
  const auto at = std::find(selected_.begin(), selected_.end(), index);
  if (at != selected_.end()) selected_.erase(at);
  else selected_.push_back(index);
  current_ = index;
}

void KrmSelSglModel::SelectAttribute(int index) {
  if (!ChoosesAttribute() || current_ < 0) return;
  if (index < 0 || index >= static_cast<int>(classes_[static_cast<std::size_t>(current_)].atts.size())) return;
  selectedAtt_ = index;
}

bool KrmSelSglModel::SelectByName(const std::wstring& blockName, const std::wstring& tag) {
  for (int i = 0; i < static_cast<int>(classes_.size()); ++i) {
    if (classes_[static_cast<std::size_t>(i)].blockName != blockName) continue;
    int att = -1;
    if (ChoosesAttribute()) {
      const auto& atts = classes_[static_cast<std::size_t>(i)].atts;
      for (int a = 0; a < static_cast<int>(atts.size()) && att < 0; ++a)
        if (atts[static_cast<std::size_t>(a)].GetShowName() == tag) att = a;
      if (att < 0) return false;
    }
    SelectClass(i);
    if (att >= 0) selectedAtt_ = att;
    return true;
  }
  return false;
}

std::vector<KrmDataAttTR> KrmSelSglModel::Result() const {
  std::vector<int> order = selected_;
  std::sort(order.begin(), order.end());
  std::vector<KrmDataAttTR> result;
  for (int index : order) {
    KrmDataAttTR record = classes_[static_cast<std::size_t>(index)];
    if (ChoosesAttribute()) record.pageAttIndex = selectedAtt_;
    result.push_back(std::move(record));
  }
  return result;
}
