// The template choice and the card editor of create mode, as the command KrmCreateCard
// reaches them. A program with windows (the studio) publishes one under KRM_CARD_CREATOR
// in the host's service dictionary; the dictionary owns it.
#pragma once

#include <string>

#include "host/db/qarx_class.h"
#include "host/ge/qage_point3d.h"

inline constexpr wchar_t KRM_CARD_CREATOR[] = L"KRM_CARD_CREATOR";

class KrmCardCreator : public QaRxObject {
  QARX_DECLARE_MEMBERS(KrmCardCreator)

 public:
  // The user chooses a card template in the library at `root`: its path, or false when
  // the choice was cancelled.
  virtual bool ChooseCardTemplate(const std::wstring& root, std::wstring& path) = 0;
  // Runs the editor in create mode on the template at `path` (modal); its finish
  // generates the card at `insertPoint`.
  virtual void RunCreateEditor(const std::wstring& path, const QaGePoint3d& insertPoint) = 0;
};

// The command's body inside its frame: choose, load, ask for the insertion point
// (suggested beside the card generated last in this drawing), edit and generate.
// 1 when the editor opened.
int KrmCreateCardRun();
