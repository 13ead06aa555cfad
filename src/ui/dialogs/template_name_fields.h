// The rows both authoring dialogs open with: the template's name, with the button that
// stores it in the library; its show name, with the button that opens an existing
// template; and the library folder it goes to. The widgets belong to `parent`; the
// layout is handed to the caller, who puts it into the dialog's own.
#pragma once

#include <QString>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

namespace tabulon::ui {

class UiStrings;

struct TemplateNameFields {
  QLineEdit *name = nullptr;
  QLineEdit *showName = nullptr;
  QLabel *folder = nullptr;
  QPushButton *chooseName = nullptr;
  QPushButton *load = nullptr;
  QGridLayout *layout = nullptr;
};

TemplateNameFields MakeTemplateNameFields(QWidget *parent, const UiStrings &strings, const QString &nameLabel,
                                          const QString &showNameLabel);

}  // namespace tabulon::ui
