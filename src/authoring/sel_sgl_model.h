// The model of the chooser dialog KrmDlgSelSgl: in one of eight modes it shows the
// block classes of a source array that the mode lets pass, and the attributes of the
// current class, and answers with copies of the chosen classes. The view owns the model
// for one run; the model owns copies of the records it shows.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "authoring/data_att_tr.h"

enum class KrmSelSglMode {
  kSingleBlocks = 0,
  kMultiBlocks = 1,
  kPageBase = 2,
  kClassCur = 3,
  kClassSum = 4,
  kBatchCur = 5,
  kBatchSum = 6,
  kAutoNum = 7,
};

// How a run of a chooser (or of any of the authoring dialogs) ended.
enum class KrmDialogEnd { kOk, kClear, kCancel };

class KrmSelSglModel {
 public:
  KrmSelSglModel(KrmSelSglMode mode, const std::vector<KrmDataAttTR>& source);

  KrmSelSglMode mode() const { return mode_; }
  // The dialog's caption, from the string table.
  std::wstring Caption() const;
  // Several classes may be chosen (modes 0 and 1); otherwise one.
  bool MultiSelect() const;
  // The attribute list takes a selection and the clear choice exists (modes 3 to 7).
  bool ChoosesAttribute() const;

  // The records that pass the mode's filter, in source order.
  const std::vector<KrmDataAttTR>& Classes() const { return classes_; }
  std::vector<std::wstring> ClassNames() const;
  // Show names of the current class's attributes; empty without a current class.
  std::vector<std::wstring> AttributeNames() const;

  int CurrentClass() const { return current_; }
  const std::vector<int>& SelectedClasses() const { return selected_; }
  int SelectedAttribute() const { return selectedAtt_; }

  // Makes `index` current (and, in single selection, the only selected class); the
  // attribute list follows, its first entry selected in modes 3 to 7. An index outside
  // the list is ignored.
  void SelectClass(int index);
  // Empties the selection (several-choice modes), so that a script can choose anew.
  void ClearSelection() { if (MultiSelect()) selected_.clear(); }
  // Adds or removes a class from the selection (several-choice modes only).
  void ToggleClass(int index);
  // Selects an attribute of the current class; ignored outside the list or in modes
  // that do not choose attributes.
  void SelectAttribute(int index);
  // Selects the class named `blockName` (exact), and in modes 3 to 7 the attribute
  // `tag` of it. Returns false, changing nothing, when either is not listed.
  bool SelectByName(const std::wstring& blockName, const std::wstring& tag = L"");

  // The chosen records in list order; in modes 3 to 7 with pageAttIndex set.
  std::vector<KrmDataAttTR> Result() const;

 private:
  KrmSelSglMode mode_;
  std::vector<KrmDataAttTR> classes_;
  std::vector<int> selected_;
  int current_ = -1;
  int selectedAtt_ = -1;
};

// Runs a chooser to its end: the view shows it, a script drives it.
using KrmSelSglRunner = std::function<KrmDialogEnd(KrmSelSglModel&)>;
