// The command line docked under the drawing: the history of what was printed, asked
// and answered; the current prompt with its keywords (a keyword can be clicked); and
// the input field with completion of command names and recall of earlier input.
// Enter submits, Space submits too unless free text is asked for, Esc cancels.
#pragma once

#include <QStringList>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QCompleter;
class QStringListModel;

namespace tabulon::ui {

class UiStrings;

class CommandLine : public QWidget {
  Q_OBJECT

 public:
  // `strings` must outlive the widget.
  explicit CommandLine(const UiStrings &strings, QWidget *parent = nullptr);

  // Printed text: "\n" starts a new line, as the host prints.
  void appendText(const QString &text);
  // An answer written after its prompt, a blank between them.
  void appendAnswer(const QString &text);
  // Shows a prompt (also written to the history) with clickable keywords.
  void setPrompt(const QString &prompt, const QStringList &keywords);
  // Back to the idle prompt ("命令: ").
  void clearPrompt();
  void setCommandNames(const QStringList &names);
  void setSpaceSubmits(bool on) { spaceSubmits_ = on; }

  QString historyText() const;
  QString promptText() const;
  QStringList keywords() const { return keywords_; }
  QLineEdit *input() const { return input_; }
  QLabel *promptLabel() const { return prompt_; }

 signals:
  // Enter or Space: the text typed (empty for a plain Enter).
  void submitted(const QString &text);
  // Esc.
  void cancelled();

 protected:
  bool eventFilter(QObject *watched, QEvent *event) override;

 private:
  void submit();

  const UiStrings &strings_;
  QPlainTextEdit *history_;
  QLabel *prompt_;
  QLineEdit *input_;
  QCompleter *completer_;
  QStringListModel *names_;
  QStringList keywords_;
  QStringList recall_;
  int recallPos_ = 0;
  bool spaceSubmits_ = true;
  bool idle_ = true;  // no question is asked: what is typed is a command
};

}  // namespace tabulon::ui
