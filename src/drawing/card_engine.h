// KrmCardEngine creates cards in the current drawing without a dialog, for other
// programs and plug-ins. One engine object makes a batch: its cards stand one beside
// the other and share one continuous batch page numbering, written into the drawing by
// Finish, or when the object is destroyed unfinished. The engine owns copies of the row data it is given;
// the drawing owns the entities it makes.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "card/table_rows.h"
#include "host/db/qadb_object_id.h"
#include "host/ge/qage_point3d.h"
#include "host/svc/result.h"

class KrmCardEngine {
 public:
  KrmCardEngine() = default;
  // Finishes the batch when Finish was not called; a failure then goes unreported.
  ~KrmCardEngine();
  KrmCardEngine(const KrmCardEngine&) = delete;
  KrmCardEngine& operator=(const KrmCardEngine&) = delete;

  // Everything back to the defaults, the batch lists included (nothing is written).
  int Reset();
  // Forgets card path, card name and table contents; the batch stays.
  int ResetContent();
  // Sets the library folder; forgets card name and table contents.
  int InitCardPath(const std::wstring& path);
  // Sets the card's file name, with or without ".crd"; forgets table contents.
  int SetCardName(const std::wstring& name);
  int SetPageStep(int step);
  // First batch number of the batch (used when the object is destroyed).
  int SetPageStart_B(int start);
  // First class number of each card.
  int SetPageStart_C(int start);
  // Insertion point of the first card of the object; later cards go beside it.
  int SetInsert(const QaGePoint3d& point);
  // Rows for the block class `blockName`; a second call for a name replaces the first.
  int SetTableContent(const std::wstring& blockName, KrmTableRows rows);
  // Creates the card. Returns 1, or 0 when there is no table content or the card
  // template cannot be loaded (a message names path and card).
  int PlayCreate();
  // The same, saying what failed: no table content, a card template that does not
  // load (the card file and the reason), or a card that drew nothing (its first table's
  // drawing missing or empty, a page point cancelled). Messages go to the command line
  // as with PlayCreate.
  tabulon::Status Create();
  // Replaces `out` with the ids of everything the object drew (earlier cards repeat
  // once per later card).
  int GetAllEnt(std::vector<QaDbObjectId>& out) const;
  // Ends the batch: writes the batch page number and count into every page of every
  // card made, then resets, so the object may start another batch. Pages whose
  // reference no longer opens (erased since) are skipped and counted no further; the
  // failure names how many of them there are, the others are numbered all the same.
  tabulon::Status Finish();

  // Read access for callers and tests.
  const std::wstring& CardPath() const { return cardPath_; }
  const std::wstring& CardName() const { return cardName_; }
  const std::vector<QaDbObjectId>& BatchCurIds() const { return batchCurIds_; }
  const std::vector<QaDbObjectId>& BatchSumIds() const { return batchSumIds_; }

 private:
  // PlayCreate, with the reason of a failure in `why` when given.
  int Play(tabulon::Status* why);
  // Pages whose number could not be written.
  int WriteBatchNumbers();

  std::wstring cardPath_;
  std::wstring cardName_;
  int pageStep_ = 1;
  int pageStartC_ = 1;
  int pageStartB_ = 1;
  std::vector<std::wstring> batchCurNames_;
  std::vector<QaDbObjectId> batchCurIds_;
  std::vector<std::wstring> batchSumNames_;
  std::vector<QaDbObjectId> batchSumIds_;
  std::map<std::wstring, KrmTableRows> tableContents_;
  std::vector<QaDbObjectId> lastCardEntities_;
  std::vector<QaDbObjectId> allEntities_;
  QaGePoint3d insertPoint_;
};
