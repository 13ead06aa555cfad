// The model of the library dialog KrmDlgLoadCards: the tree of the card library with
// the templates of one type (folders without such a template hidden at every depth),
// the selection, the drawing to preview, deleting a template, and the answer: a name
// pair and a folder relative to the card root. The model owns its tree; nothing is
// kept between two openings.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "card/card_file.h"

class KrmLoadCardsModel {
 public:
  // One item of the tree. The root item has no entry.
  struct Item {
    enum class Kind { kRoot, kTemplate, kFolder };
    Kind kind = Kind::kRoot;
    std::wstring text;
    KrmCardFile entry;
    Item* parent = nullptr;
    std::vector<std::unique_ptr<Item>> children;
  };

  // `root`: the card root without a trailing separator; `wantedType`: ".tbl" or ".crd".
  // The tree is empty until Open.
  KrmLoadCardsModel(std::wstring root, std::wstring wantedType = L".tbl");

  // Reads the library, builds the tree and selects the first template along the first
  // children; shows the first page.
  void Open();

  const std::wstring& WantedType() const { return wantedType_; }
  bool ListsCards() const { return wantedType_ == L".crd"; }
  std::wstring Caption() const;

  const Item& Root() const { return *root_; }
  const Item* Selected() const { return selected_; }
  void Select(const Item* item) {
    selected_ = item;
    showingNext_ = false;
  }
  // The template item whose relative folder and file name are these ("/" is the root,
  // "/a/b/" a folder); a folder item when `fileName` is empty. Null when there is none.
  const Item* Find(const std::wstring& folder, const std::wstring& fileName) const;
  // Selects what Find finds; false when nothing.
  bool SelectPath(const std::wstring& folder, const std::wstring& fileName);

  // The side drawing to preview for the selection: the template's (the card's first
  // or continuation table for cards), without extension; empty for other items.
  std::wstring PreviewPath() const;
  // Caption of the flip button of cards: the page it will show next.
  std::wstring FlipCaption() const;
  // Shows the other page of a card.
  void Flip();
  bool ShowingContinuation() const { return showingNext_; }

  // The question to ask before deleting the selection; empty when it cannot be deleted.
  std::wstring DeleteQuestion() const;
  // Deletes the selected template (tree and files) when `confirmed`; emptied folders go
  // from the tree upwards and the first item left is selected. False when nothing was
  // deleted.
  bool DeleteSelected(bool confirmed);

  // Ends the dialog with OK: fills the results from the selection.
  void Confirm();
  // The folder the transfer dialog opens on: the card root and the relative folder
  // that confirming the selection would give.
  std::wstring TransferPath() const;
  const std::vector<std::wstring>& selectedNames() const { return selectedNames_; }
  const std::wstring& selectedFolder() const { return selectedFolder_; }
  // Each empty unless selectedNames holds exactly two texts.
  std::wstring SelectedFileName() const;
  std::wstring SelectedShowName() const;

  // The relative folder of an item: "/" for the root, "/a/b/" for folder b below a,
  // a template's folder for a template.
  static std::wstring RelativeFolderOf(const Item& item);

 private:
  bool Fill(Item& item, const std::wstring& path, const std::vector<KrmCardFile>& tree);

  std::wstring root_path_;
  std::wstring wantedType_;
  std::unique_ptr<Item> root_;
  const Item* selected_ = nullptr;
  bool showingNext_ = false;
  std::vector<std::wstring> selectedNames_;
  std::wstring selectedFolder_;
};

// Runs the library dialog: true when it ended with OK (after Confirm).
using KrmLoadCardsRunner = std::function<bool(KrmLoadCardsModel&)>;

// Deletes the files of one template, `path` without extension: for ".tbl" the table
// and its side drawing, for anything else the card alone. Results are not looked at.
void DeleteTemplateFiles(const std::wstring& path, const std::wstring& type);
