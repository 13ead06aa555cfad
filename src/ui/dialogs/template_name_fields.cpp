#include "ui/dialogs/template_name_fields.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "ui/ui_strings.h"

namespace tabulon::ui {

TemplateNameFields MakeTemplateNameFields(QWidget *parent, const UiStrings &strings, const QString &nameLabel,
                                          const QString &showNameLabel) {
  TemplateNameFields f;
  f.name = new QLineEdit(parent);
  f.name->setObjectName(QStringLiteral("name"));
  f.showName = new QLineEdit(parent);
  f.showName->setObjectName(QStringLiteral("showName"));
  f.folder = new QLabel(parent);
  f.chooseName = new QPushButton(strings.text(9310, L"存入库中..."), parent);
  f.load = new QPushButton(strings.text(9311, L"打开模板..."), parent);
  f.layout = new QGridLayout;
  f.layout->addWidget(new QLabel(nameLabel, parent), 0, 0);
  f.layout->addWidget(f.name, 0, 1);
  f.layout->addWidget(f.chooseName, 0, 2);
  f.layout->addWidget(new QLabel(showNameLabel, parent), 1, 0);
  f.layout->addWidget(f.showName, 1, 1);
  f.layout->addWidget(f.load, 1, 2);
  f.layout->addWidget(new QLabel(strings.text(9314, L"文件夹"), parent), 2, 0);
  f.layout->addWidget(f.folder, 2, 1, 1, 2);
  return f;
}

}  // namespace tabulon::ui
