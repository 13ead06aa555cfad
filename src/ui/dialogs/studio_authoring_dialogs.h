// The studio's authoring dialogs as the commands KrmMakeTbl and KrmMakeCard find them
// in the host's service dictionary: each run shows the dialog modal over the window
// with the studio's nested dialogs. The window and strings must outlive it.
#pragma once

#include "shell/krm_authoring_dialogs.h"

class QWidget;

namespace tabulon::ui {

class UiStrings;

class StudioAuthoringDialogs : public KrmAuthoringDialogs {
 public:
  StudioAuthoringDialogs(QWidget *parent, const UiStrings &strings) : parent_(parent), strings_(strings) {}

  bool RunMakeTable(KrmMakeTblModel &model) override;
  bool RunMakeCard(KrmMakeCardModel &model) override;

 private:
  QWidget *parent_;
  const UiStrings &strings_;
};

}  // namespace tabulon::ui
