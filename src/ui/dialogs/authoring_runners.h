// The nested dialogs an authoring dialog runs: the chooser, the library and the page
// arrangement. The studio gives the real dialogs (StudioRunners); tests give scripted
// runs. Plain copyable functions.
#pragma once

#include <functional>

#include "authoring/load_cards_model.h"
#include "authoring/sel_sgl_model.h"
#include "card/card_dir.h"

class QWidget;

namespace tabulon::ui {

class UiStrings;

struct AuthoringRunners {
  KrmSelSglRunner selSgl;
  KrmLoadCardsRunner loadCards;
  std::function<bool(KrmCardDir &)> arrangement;
};

// The real dialogs, modal over `parent`; `strings` must outlive the runners.
AuthoringRunners StudioRunners(QWidget *parent, const UiStrings &strings);

}  // namespace tabulon::ui
