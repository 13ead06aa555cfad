// The word library's chooser: the categories in a list, the phrases of the chosen one
// beside it; a double click or OK takes the phrase.
#pragma once

#include <string>
#include <vector>

#include "editor/word_lib.h"

class QWidget;

namespace tabulon::ui {

class UiStrings;

// True with `out` the phrase the user chose.
bool RunWordChooser(const std::vector<KrmWordCategory>& categories, std::wstring& out, const UiStrings& strings,
                    QWidget* parent);

}  // namespace tabulon::ui
