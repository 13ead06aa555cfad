// The model of the card template dialog KrmDlgMakeCard: two table templates of the
// library, first page and continuation, and the arrangement of the pages become a card
// template, written as <name>.crd. The two tables may be one; when they differ they
// must agree on the page base and the five page bindings. The view owns the model for
// one run; the model owns its record.
#pragma once

#include <functional>
#include <string>

#include "authoring/load_cards_model.h"
#include "card/card_attributes.h"
#include "card/card_dir.h"
#include "host/svc/result.h"

class KrmMakeCardModel {
 public:
  // `root`: the card root, without a trailing separator.
  explicit KrmMakeCardModel(std::wstring root);

  void SetOnChanged(std::function<void()> onChanged) { onChanged_ = std::move(onChanged); }

  const std::wstring& Caption() const { return caption_; }
  const std::wstring& Name() const { return name_; }
  const std::wstring& ShowName() const { return showName_; }
  bool NameLocked() const { return nameLocked_; }
  bool TablesLocked() const { return tablesLocked_; }
  // A change of the name is copied into the show name. Ignored while locked.
  void SetName(const std::wstring& name);
  void SetShowName(const std::wstring& showName);
  const std::wstring& Folder() const { return folder_; }
  // The folder of the card relative to the card root, as "/a/b/".
  void SetFolder(const std::wstring& folder);

  const std::wstring& FirstDisplay() const { return firstDisplay_; }
  const std::wstring& NextDisplay() const { return nextDisplay_; }
  const std::wstring& FirstTbl() const { return firstTbl_; }
  const std::wstring& NextTbl() const { return nextTbl_; }
  // A table chosen for one page while the other is empty goes to both.
  void SetFirst(const std::wstring& display, const std::wstring& fileName);
  void SetNext(const std::wstring& display, const std::wstring& fileName);

  const KrmCardDir& Arrangement() const { return arrangement_; }
  void SetArrangement(const KrmCardDir& dir);
  const std::wstring& Summary() const { return summary_; }
  static std::wstring SummaryOf(const KrmCardDir& dir);

  bool ChooseCardName(const KrmLoadCardsRunner& run);
  bool ChooseFirst(const KrmLoadCardsRunner& run);
  bool ChooseNext(const KrmLoadCardsRunner& run);
  // Runs the arrangement editor on a copy; true (and the copy taken) when it confirmed.
  bool EditArrangement(const std::function<bool(KrmCardDir&)>& run);
  tabulon::Status LoadCard(const KrmLoadCardsRunner& run);

  // Validates, compares the tables, asks about a card of the same name and writes the
  // .crd. On an error (shown to the user as well) nothing is written.
  tabulon::Status OnOK();
  // The first difference between the two tables in the card's folder; ok when they
  // are one file or agree. The message has been shown.
  tabulon::Status CompareFirstNext();

  const KrmCardAttributes& Card() const { return card_; }
  std::wstring CardPath() const { return root_ + folder_ + name_; }

 private:
  bool CheckSameCard(const std::wstring& path);
  std::wstring ChooseTable(const KrmLoadCardsRunner& run, std::wstring& fileName);
  void Changed() {
    if (onChanged_) onChanged_();
  }

  std::wstring root_;
  std::wstring caption_;
  std::wstring name_;
  std::wstring showName_;
  bool nameLocked_ = false;
  bool tablesLocked_ = false;
  std::wstring folder_ = L"/";
  std::wstring firstDisplay_;
  std::wstring nextDisplay_;
  std::wstring firstTbl_;
  std::wstring nextTbl_;
  KrmCardDir arrangement_;
  std::wstring summary_;
  KrmCardAttributes card_;
  std::function<void()> onChanged_;
};
