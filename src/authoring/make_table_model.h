// The model of the table template dialog KrmDlgMakeTbl: a drawn page form (attribute
// blocks and plain geometry) picked in the working drawing becomes a table template,
// written as <name>.tbl in the card library with its side drawing beside it. The
// lines of the dialog are the only place where the page base and the page bindings
// live until OnOK parses them back. The view owns the model for one run; the model
// owns its records and ids (ids of the working drawing, not owned).
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "authoring/data_att_tr.h"
#include "authoring/load_cards_model.h"
#include "authoring/sel_sgl_model.h"
#include "card/table_attributes.h"
#include "host/db/qadb_object_id.h"
#include "host/svc/result.h"

class KrmMakeTblModel {
 public:
  // Which operations the dialog offers at present.
  struct Availability {
    bool chooseName = false;
    bool chooseSingle = false;
    bool chooseMulti = false;
    bool choosePageBase = false;
    std::array<bool, 5> choosePageAtt{};  // in the order of kKrmPageAttKeys
    bool ok = false;
  };

  // `root`: the card root, without a trailing separator.
  explicit KrmMakeTblModel(std::wstring root);

  // Called after every operation that may have changed what the dialog shows.
  void SetOnChanged(std::function<void()> onChanged) { onChanged_ = std::move(onChanged); }

  const std::wstring& Caption() const { return caption_; }
  const std::wstring& Name() const { return name_; }
  const std::wstring& ShowName() const { return showName_; }
  bool NameLocked() const { return nameLocked_; }
  // A change of the name is copied into the show name. Ignored while locked.
  void SetName(const std::wstring& name);
  void SetShowName(const std::wstring& showName);
  const std::wstring& Folder() const { return folder_; }

  const std::wstring& StatusLine() const { return statusLine_; }
  const std::wstring& SingleSummary() const { return singleSummary_; }
  const std::wstring& MultiSummary() const { return multiSummary_; }
  const std::wstring& PageBaseLine() const { return pageBaseLine_; }
  // The line of page attribute `keyIndex` (0..4 in the order of kKrmPageAttKeys).
  const std::wstring& PageAttLine(int keyIndex) const { return pageAttLines_.at(static_cast<std::size_t>(keyIndex)); }

  const std::vector<QaDbObjectId>& PickedIds() const { return pickedIds_; }
  const std::vector<KrmDataAttTR>& AllBlocks() const { return allBlocks_; }
  const std::vector<KrmDataAttTR>& SingleBlocks() const { return singleBlocks_; }
  const std::vector<KrmDataAttTR>& MultiBlocks() const { return multiBlocks_; }

  // The class list: names of the multi-record classes, and the current one (-1: none).
  std::vector<std::wstring> ClassList() const;
  int CurrentClass() const { return currentClass_; }
  bool FillOrderEnabled() const { return currentClass_ >= 0; }
  // The fill order of the current class, -1 without one.
  int CurrentFillOrder() const;
  // The eight labels of the fill orders, index = fillOrder.
  static std::vector<std::wstring> FillOrderLabels();

  Availability Available() const;

  // Asks the user to select the form in the working drawing and scans the selection.
  // A cancelled or empty selection changes nothing (an error in field "selection").
  tabulon::Status PickBlocks();
  // The same with a selection made by the caller. A selection without any attribute
  // block is refused with the message shown, and the dialog is emptied.
  tabulon::Status TakeSelection(const std::vector<QaDbObjectId>& ids);
  // The folder of the template relative to the card root, as "/a/b/".
  void SetFolder(const std::wstring& folder);

  // Run the chooser; a cancelled chooser changes nothing. False when the operation is
  // not available now or the chooser was cancelled.
  bool ChooseSingleBlocks(const KrmSelSglRunner& run);
  bool ChooseMultiBlocks(const KrmSelSglRunner& run);
  bool ChoosePageBase(const KrmSelSglRunner& run);
  bool ChoosePageAtt(int keyIndex, const KrmSelSglRunner& run);

  void SelectClass(int index);
  // Stores `fillOrder` on the current multi-record class; ignored without one.
  void SelectFillOrder(int fillOrder);

  // Takes name, show name and folder from the library (".tbl" listed).
  bool ChooseName(const KrmLoadCardsRunner& run);
  // Loads a template of the library for editing; the name is then locked. The error
  // (also shown) when the file does not read.
  tabulon::Status LoadTable(const KrmLoadCardsRunner& run);

  // Validates, builds the record, asks about a template of the same name, writes the
  // side drawing and the .tbl. On an error (shown to the user as well) nothing is
  // written and the dialog stays as it was.
  tabulon::Status OnOK();

  // The record as last built by OnOK.
  const KrmTableAttributes& Table() const { return table_; }
  // The path of the template without extension: root, folder and name joined.
  std::wstring TemplatePath() const { return root_ + folder_ + name_; }

 private:
  void FullReset();
  void RebuildSummaries();
  void RefillClassList();
  std::wstring LineOf(const std::vector<KrmDataAttTR>& chosen) const;
  void BuildTable();
  // False when the user cancelled.
  bool CheckSameTable(const std::wstring& path);
  void Changed() {
    if (onChanged_) onChanged_();
  }

  std::wstring root_;
  std::wstring caption_;
  std::wstring name_;
  std::wstring showName_;
  bool nameLocked_ = false;
  bool scanned_ = false;  // classes came from a pick or a load
  std::wstring folder_ = L"/";
  std::wstring statusLine_;
  std::wstring singleSummary_;
  std::wstring multiSummary_;
  std::wstring pageBaseLine_;
  std::array<std::wstring, 5> pageAttLines_;
  std::vector<QaDbObjectId> pickedIds_;
  std::vector<KrmDataAttTR> allBlocks_;
  std::vector<KrmDataAttTR> singleBlocks_;
  std::vector<KrmDataAttTR> multiBlocks_;
  int currentClass_ = -1;
  KrmTableAttributes table_;
  std::function<void()> onChanged_;
};

