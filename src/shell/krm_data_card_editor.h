// The card editor of programs without a window: the new rows of a placed card come
// from data given beforehand (block name to rows, read from files by the caller), and
// the card is confirmed at once. With no data the card is confirmed unchanged.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "card/table_rows.h"
#include "shell/krm_card_editor.h"

class KrmDataCardEditor : public KrmCardEditor {
  QARX_DECLARE_MEMBERS(KrmDataCardEditor)

 public:
  KrmDataCardEditor() = default;
  explicit KrmDataCardEditor(std::map<std::wstring, KrmTableRows> tables) : tables_(std::move(tables)) {}

  // The data replaces the rows of the blocks it names; the page numbers follow. An error
  // names a block or column that the card does not have.
  tabulon::Result<KrmCardEditOutcome> EditPlacedCard(KrmCardEditRequest& request) override;

  // The error of the last edit, if it failed; the caller reports it.
  const std::optional<tabulon::Error>& lastError() const { return lastError_; }
  // Cards edited so far.
  int editCount() const { return edits_; }

 private:
  std::map<std::wstring, KrmTableRows> tables_;
  std::optional<tabulon::Error> lastError_;
  int edits_ = 0;
};
