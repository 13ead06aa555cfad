#include "ui/studio/command_line.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStringListModel>
#include <QTextCursor>
#include <QVBoxLayout>

#include "ui/ui_strings.h"

namespace tabulon::ui {

CommandLine::CommandLine(const UiStrings &strings, QWidget *parent) : QWidget(parent), strings_(strings) {
  history_ = new QPlainTextEdit(this);
  history_->setReadOnly(true);
  history_->setMaximumBlockCount(2000);
  history_->setObjectName(QStringLiteral("commandHistory"));
  prompt_ = new QLabel(this);
  prompt_->setObjectName(QStringLiteral("commandPrompt"));
  prompt_->setTextFormat(Qt::RichText);
  prompt_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  input_ = new QLineEdit(this);
  input_->setObjectName(QStringLiteral("commandInput"));
  names_ = new QStringListModel(this);
  completer_ = new QCompleter(names_, this);
  completer_->setCaseSensitivity(Qt::CaseInsensitive);
  completer_->setCompletionMode(QCompleter::PopupCompletion);
  input_->setCompleter(completer_);
  input_->installEventFilter(this);

  auto *row = new QHBoxLayout;
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(prompt_);
  row->addWidget(input_, 1);
  auto *layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->setSpacing(2);
  layout->addWidget(history_, 1);
  layout->addLayout(row);

  connect(input_, &QLineEdit::returnPressed, this, &CommandLine::submit);
  connect(prompt_, &QLabel::linkActivated, this, [this](const QString &link) {
    input_->clear();
    appendAnswer(link);
    emit submitted(link);
  });
  clearPrompt();
}

void CommandLine::appendText(const QString &text) {
  QTextCursor cursor(history_->document());
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(text);
  history_->setTextCursor(cursor);
  history_->ensureCursorVisible();
}

void CommandLine::appendAnswer(const QString &text) {
  const QString shown = history_->toPlainText();
  appendText(shown.isEmpty() || shown.back().isSpace() ? text : QLatin1Char(' ') + text);
}

void CommandLine::setPrompt(const QString &prompt, const QStringList &keywords) {
  keywords_ = keywords;
  idle_ = false;
  appendText(prompt);
  QString shown = prompt;
  while (shown.startsWith(QLatin1Char('\n'))) shown.remove(0, 1);
  shown = shown.toHtmlEscaped();
  for (const QString &k : keywords)
    shown += QStringLiteral(" [<a href=\"%1\">%1</a>]").arg(k.toHtmlEscaped());
  prompt_->setText(shown);
}

void CommandLine::clearPrompt() {
  keywords_.clear();
  idle_ = true;
  prompt_->setText(strings_.text(9001, L"命令:").toHtmlEscaped());
}

void CommandLine::setCommandNames(const QStringList &names) { names_->setStringList(names); }

QString CommandLine::historyText() const { return history_->toPlainText(); }

QString CommandLine::promptText() const { return prompt_->text(); }

void CommandLine::submit() {
  if (completer_->popup() && completer_->popup()->isVisible()) completer_->popup()->hide();
  const QString text = input_->text().trimmed();
  input_->clear();
  if (!text.isEmpty() && (recall_.isEmpty() || recall_.back() != text)) recall_.push_back(text);
  recallPos_ = static_cast<int>(recall_.size());
  if (idle_) appendText(QStringLiteral("\n") + strings_.text(9001, L"命令:") + QLatin1Char(' ') + text);
  else appendAnswer(text);
  emit submitted(text);
}

bool CommandLine::eventFilter(QObject *watched, QEvent *event) {
  if (watched == input_ && event->type() == QEvent::KeyPress) {
    auto *key = static_cast<QKeyEvent *>(event);
    switch (key->key()) {
      case Qt::Key_Escape:
        input_->clear();
        appendText(strings_.text(9002, L" *取消*"));
        emit cancelled();
        return true;
      case Qt::Key_Space:
        if (!spaceSubmits_) break;
        submit();
        return true;
      case Qt::Key_Up:
        if (recallPos_ > 0) input_->setText(recall_.at(--recallPos_));
        return true;
      case Qt::Key_Down:
        if (recallPos_ + 1 < recall_.size()) input_->setText(recall_.at(++recallPos_));
        else {
          recallPos_ = static_cast<int>(recall_.size());
          input_->clear();
        }
        return true;
      default:
        break;
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace tabulon::ui
