// The plug-in's records per drawing, kept in memory only: KrmDocValue is what the card
// editor remembers about a drawing; CDocData is a record no code reads, whose manager
// exists and stays empty. The two managers exist while the plug-in is loaded (it
// creates them on load and destroys them on unload); the record of a drawing goes when
// the drawing closes.
#pragma once

#include "host/ap/qaap_data_manager.h"
#include "host/db/qadb_object_id.h"

#include <string>
#include <vector>

// A window rectangle in screen pixels; all zero when none was saved.
struct KrmWindowRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  bool operator==(const KrmWindowRect&) const = default;
};

struct KrmDocValue {
  // The entities of the card generated last in this drawing.
  std::vector<QaDbObjectId> lastCardIds;
  // Codes of the cards that have an editor open in this drawing.
  std::vector<std::wstring> OpenCardsList;
  // Where the card editor window stood when it last closed.
  KrmWindowRect dialogRect;
};

struct CDocData {};

// Creates the two managers (nothing when they exist) / destroys them.
void KrmCreateDocDataManagers();
void KrmDestroyDocDataManagers();

// The managers while the plug-in is loaded, else null.
QaApDataManager<KrmDocValue>* KrmDocValueManager();
QaApDataManager<CDocData>* KrmDocDataManager();

// The record of the current drawing; null when the plug-in is not loaded or no drawing
// is open.
KrmDocValue* KrmCurDocValue();
