// The dialogs of template authoring that the commands KrmMakeTbl and KrmMakeCard open.
// A program that can show them (the studio) publishes them in the host's service
// dictionary under KRM_AUTHORING_DIALOGS; the dictionary owns them. The dialogs are
// views on the models, which the commands own for the time of the dialog.
#pragma once

#include "host/db/qarx_class.h"

class KrmMakeTblModel;
class KrmMakeCardModel;

inline constexpr wchar_t KRM_AUTHORING_DIALOGS[] = L"KRM_AUTHORING_DIALOGS";

class KrmAuthoringDialogs : public QaRxObject {
  QARX_DECLARE_MEMBERS(KrmAuthoringDialogs)

 public:
  // Shows the table template dialog on `model`, modal; true when it closed with OK,
  // that is after the model's OnOK succeeded.
  virtual bool RunMakeTable(KrmMakeTblModel& model) = 0;
  // The same for the card template dialog.
  virtual bool RunMakeCard(KrmMakeCardModel& model) = 0;
};
