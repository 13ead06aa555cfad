// The handlers of the six commands, and the framing that five of them share: resolve
// the card root (message 159 and an end when there is none), then run with the
// plug-in's resource current, restored on every way out. Each answers 1 when it did
// its work, 0 otherwise.
//
// KrmMakeTbl and KrmMakeCard open the authoring dialogs that the program publishes
// (krm_authoring_dialogs.h); without them they print where to turn and end.
// KrmCreateCard ends after its framing until the library dialog and the editor exist.
// KrmCardEdit hands a picked card to the published editor (krm_card_editor.h);
// KrmBomCardExp runs the bill-of-materials export.
#pragma once

#include "host/db/qadb_object_id.h"

#include <functional>
#include <string>
#include <vector>

int KrmMakeTbl();
int KrmMakeCard();
int KrmCreateCard();
int KrmCardEdit();
int KrmBomCardExp();
int KrmDelBlkID();

// Runs `body` inside the command framing; 0 when the card root is missing.
int KrmRunFramed(const std::function<int()>& body);

// The name a generated block keeps: as long as it holds "_", what follows the first
// "_" ("A_B_C" -> "C").
std::wstring KrmStripBlockPrefix(const std::wstring& name);

// Prints `prompt`, then runs the host's selection without a filter; the selected ids,
// or none when the selection did not end normally.
std::vector<QaDbObjectId> KrmPickEntities(const std::wstring& prompt);
