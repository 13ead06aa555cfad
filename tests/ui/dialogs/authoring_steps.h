// What a user does in the template dialogs, for tests that drive them through
// ModalScript: typing a name, choosing classes (or one attribute of a class) in the
// chooser, picking a template in the library dialog.
#pragma once

#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include "ui/dialogs/load_cards_dialog.h"
#include "ui/dialogs/sel_sgl_dialog.h"

namespace tabulon::test {

// Replaces the text of `edit` as typing does, through the input method so that any
// script (Chinese names included) arrives as the user's own edit.
inline void TypeName(QLineEdit *edit, const QString &text) {
  edit->setFocus();
  edit->selectAll();
  QInputMethodEvent typed;
  typed.setCommitString(text);
  QApplication::sendEvent(edit, &typed);
}

// Each step ends its dialog: with OK when it did what it was asked, else (after
// reporting the failure) by rejecting it, so a wrong dialog never hangs the test.

// Selects exactly the rows of the chooser named in `names` and closes it with OK.
inline void ChooseRows(tabulon::ui::SelSglDialog &dialog, const QStringList &names) {
  for (int row = 0; row < dialog.classList()->count(); ++row) {
    auto *item = dialog.classList()->item(row);
    item->setSelected(names.contains(item->text()));
  }
  QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
}

// Selects the class `name` and its attribute `tag` in the chooser and closes it with OK.
inline void ChooseAttribute(tabulon::ui::SelSglDialog &dialog, const QString &name, const QString &tag) {
  const auto classes = dialog.classList()->findItems(name, Qt::MatchExactly);
  if (classes.size() != 1) {
    ADD_FAILURE() << "no class " << name.toStdString();
    return dialog.reject();
  }
  classes.front()->setSelected(true);
  const auto tags = dialog.attributeList()->findItems(tag, Qt::MatchExactly);
  if (tags.size() != 1) {
    ADD_FAILURE() << "no attribute " << tag.toStdString() << " in " << name.toStdString();
    return dialog.reject();
  }
  dialog.attributeList()->setCurrentItem(tags.front());
  QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
}

// Picks the template shown as `name` in the library dialog and confirms it.
inline void PickTemplate(tabulon::ui::LoadCardsDialog &dialog, const QString &name) {
  const auto rows = dialog.tree()->findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
  if (rows.size() != 1) {
    ADD_FAILURE() << "no template " << name.toStdString();
    return dialog.reject();
  }
  dialog.tree()->setCurrentItem(rows.front());
  QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
}

}  // namespace tabulon::test
