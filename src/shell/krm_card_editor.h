// The editor that the command KrmCardEdit hands a placed card to, and the re-edit entry
// itself. An editor is published in the host's service dictionary under KRM_CARD_EDITOR
// by whoever provides one (the studio's dialog, the command-line program's data files);
// the dictionary owns it. Without one, the card is confirmed unchanged.
#pragma once

#include <string>

#include "card/card_data.h"
#include "card/card_dir.h"
#include "drawing/placed_card.h"
#include "host/db/qarx_class.h"
#include "host/svc/result.h"

class KrmCardTemplate;

inline constexpr wchar_t KRM_CARD_EDITOR[] = L"KRM_CARD_EDITOR";

// What the editor is opened on, in edit mode. The template and the placed card belong to
// the command and outlive the editor; `data` is the card as read back from the drawing.
struct KrmCardEditRequest {
  std::wstring path;                         // the card template file
  KrmCardTemplate* cardTemplate = nullptr;   // loaded
  KrmCardData data;                          // current grid and page (curRow) selected
  KrmPlacedCard* card = nullptr;             // the pages in the drawing
  class KrmCardEditor* parent = nullptr;     // the editor whose pick button started this, or null
};

// How the editor ended.
struct KrmCardEditOutcome {
  // OK, or cancel with the save-on-cancel flag: the drawing is to be brought in line.
  bool accepted = false;
  KrmCardData oldData;  // the snapshot the editor started from (or last wrote through)
  KrmCardData newData;  // the edited card
  int rearrange = 0;
  int autoArrange = 1;
  KrmCardDir dir;
};

class KrmCardEditor : public QaRxObject {
  QARX_DECLARE_MEMBERS(KrmCardEditor)

 public:
  // Runs the editor on the card (modal). An error ends the command with nothing written.
  virtual tabulon::Result<KrmCardEditOutcome> EditPlacedCard(KrmCardEditRequest& request) = 0;
};

// The re-edit entry: the user picks an entity of a placed card, the card is read back
// and handed to the editor published under KRM_CARD_EDITOR, and when the editor is
// accepted the drawing is brought in line. `parent` is the open editor when its pick
// button asks, else null. Returns 1 when an editor was opened, else 0.
int KrmCardEditFrom(KrmCardEditor* parent);
