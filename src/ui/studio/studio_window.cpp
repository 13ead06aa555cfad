#include "ui/studio/studio_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>

#include "host/ap/ckr_doc_lock_server.h"
#include "host/ap/krm_doc_value.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/ed/qa_message_box.h"
#include "host/ed/qaed_command_stack.h"
#include "host/rx/qarx_system_registry.h"
#include "host/ed/qaed_prompts.h"
#include "host/svc/krm_reg_service.h"
#include "shell/krm_authoring_dialogs.h"
#include "shell/krm_command_table.h"
#include "ui/dialogs/cell_descriptor_dialog.h"
#include "ui/dialogs/studio_authoring_dialogs.h"
#include "shell/krm_host_session.h"
#include "ui/dialogs/card_editor_services.h"
#include "ui/dialogs/create_card_dialog.h"
#include "ui/studio/command_line.h"
#include "ui/studio/studio_document.h"
#include "ui/studio/studio_user_io.h"
#include "ui/ui_strings.h"
#include "ui/view/drawing_view.h"

#include <algorithm>

namespace tabulon::ui {

namespace {

constexpr int kMaxRecent = 8;
// The studio's own commands, which change only the view (no undo step).
constexpr wchar_t kViewCommandGroup[] = L"TabulonStudio";
constexpr wchar_t kSettingsKey[] = L"TabulonStudio";
constexpr wchar_t kStudioGroup[] = L"TABULON_STUDIO";

QString pathText(const std::filesystem::path &path) { return QString::fromStdString(path.string()); }

}  // namespace

StudioWindow::StudioWindow(const UiStrings &strings, QWidget *parent) : QMainWindow(parent), strings_(strings) {
  setObjectName(QStringLiteral("StudioWindow"));
  line_ = new CommandLine(strings_, this);
  io_ = new StudioUserIO(*line_, strings_, this, this);
  session_ = std::make_unique<KrmHostSession>(*io_);
  qaServiceDictionary().atPut(KRM_AUTHORING_DIALOGS, std::make_unique<StudioAuthoringDialogs>(this, strings_));
  // The studio's own command: the cell description of an attribute block picked in the drawing.
  qaedCommandStack().addCommand(kStudioGroup, L"KrmCellDesc", L"单元描述", 0, [this] {
    CellDescriptorForm form;
    if (!form.PickBlock().ok()) return 0;
    CellDescriptorDialog dialog(form, strings_, this);
    return dialog.exec() == QDialog::Accepted ? 1 : 0;
  });
  setCardDialogSetup({});

  tabs_ = new QTabWidget(this);
  tabs_->setDocumentMode(true);
  tabs_->setTabsClosable(true);
  setCentralWidget(tabs_);
  connect(tabs_, &QTabWidget::currentChanged, this, &StudioWindow::currentTabChanged);
  connect(tabs_, &QTabWidget::tabCloseRequested, this, [this](int index) {
    tabs_->setCurrentIndex(index);
    closeCurrent();
  });

  auto *dock = new QDockWidget(strings_.text(9010, L"命令行"), this);
  dock->setObjectName(QStringLiteral("commandLineDock"));
  dock->setWidget(line_);
  dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
  addDockWidget(Qt::BottomDockWidgetArea, dock);
  resizeDocks({dock}, {170}, Qt::Vertical);
  connect(line_, &CommandLine::submitted, this, &StudioWindow::onSubmitted);
  connect(line_, &CommandLine::cancelled, this, &StudioWindow::onCancelled);
  connect(io_, &StudioUserIO::waitingForInput, this, [this] {
    if (scriptRunning_) QTimer::singleShot(0, this, &StudioWindow::feedScript);
  });

  coordinates_ = new QLabel(this);
  coordinates_->setMinimumWidth(220);
  statusBar()->addPermanentWidget(coordinates_);

  registerViewCommands();
  QStringList names{QStringLiteral("ZOOM")};
  for (const auto &entry : KrmCommandTable()) {
    names << toQString(KrmLocalNameOf(entry));
    names << toQString(entry.globalName);
  }
  line_->setCommandNames(names);

  buildActions();
  buildMenus();
  resize(1280, 800);
  updateTitle();
  updateActions();
  line_->appendText(strings_.text(9011, L"Tabulon Studio 已就绪。输入命令，或从菜单选择。"));
}

StudioWindow::~StudioWindow() {
  io_->answerCancel();
  qaServiceDictionary().remove(KRM_AUTHORING_DIALOGS);
  qaedCommandStack().removeGroup(kStudioGroup);
  qaServiceDictionary().remove(KRM_CARD_EDITOR);
  qaServiceDictionary().remove(KRM_CARD_CREATOR);
  qaedCommandStack().removeGroup(kViewCommandGroup);
  // The views go before the documents they show; the session closes the documents.
  tabs_->clear();
  documents_.clear();
  session_.reset();
}

void StudioWindow::setCardDialogSetup(CardDialogSetup setup) {
  // The card editor's previews zoom the view to the area shown, before `setup` runs.
  CardDialogSetup full = [this, setup = std::move(setup)](CreateCardDialog &dialog) {
    dialog.setShowArea([this](const QaGePoint3d &lower, const QaGePoint3d &upper) {
      if (DrawingView *view = currentView()) view->zoomToWindow(WorldBox{lower.x, lower.y, upper.x, upper.y});
    });
    if (setup) setup(dialog);
  };
  qaServiceDictionary().atPut(KRM_CARD_EDITOR, std::make_unique<StudioCardEditor>(strings_, this, full));
  qaServiceDictionary().atPut(KRM_CARD_CREATOR, std::make_unique<StudioCardCreator>(strings_, this, full));
}

void StudioWindow::registerViewCommands() {
  // ZOOM: E (extents) or two corners of a window, typed or picked; scripts use it too.
  qaedCommandStack().addCommand(kViewCommandGroup, L"_ZOOM", L"ZOOM", QA_CMD_TRANSPARENT, [this]() -> int {
    DrawingView *view = currentView();
    if (!view) return 0;
    qaedInitGet(0, L"Extents Window");
    QaGePoint3d first;
    int rc = qaedGetPoint(nullptr, strings_.wtext(9045, L"\n指定窗口的角点，或 [Extents/Window]: ").c_str(), first);
    if (rc == RTKWORD) {
      std::wstring keyword;
      qaedGetInput(keyword);
      if (keyword == L"Extents") {
        view->zoomExtents();
        return 1;
      }
      rc = qaedGetPoint(nullptr, strings_.wtext(9046, L"\n指定第一个角点: ").c_str(), first);
    }
    if (rc != RTNORM) return 0;
    QaGePoint3d second;
    if (qaedGetPoint(&first, strings_.wtext(9047, L"\n指定对角点: ").c_str(), second) != RTNORM) return 0;
    view->zoomToWindow(WorldBox{std::min(first.x, second.x), std::min(first.y, second.y), std::max(first.x, second.x),
                                std::max(first.y, second.y)});
    return 1;
  });
}

void StudioWindow::buildActions() {
  auto make = [this](unsigned id, const wchar_t *literal, const QKeySequence &key, auto slot) {
    auto *action = new QAction(strings_.text(id, literal), this);
    if (!key.isEmpty()) action->setShortcut(key);
    connect(action, &QAction::triggered, this, slot);
    return action;
  };
  saveAction_ = make(9021, L"保存(&S)", QKeySequence::Save, [this] {
    if (auto s = saveDrawing(); !s) report(s.error());
  });
  saveAsAction_ = make(9022, L"另存为(&A)...", QKeySequence::SaveAs, [this] {
    const QString file = QFileDialog::getSaveFileName(this, strings_.text(9022, L"另存为"), QString(),
                                                      strings_.text(9029, L"DXF 图纸 (*.dxf)"));
    if (file.isEmpty()) return;
    if (auto s = saveDrawing(file.toStdString()); !s) report(s.error());
  });
  closeAction_ = make(9023, L"关闭(&C)", QKeySequence::Close, [this] { closeCurrent(); });
  undoAction_ = make(9031, L"放弃(&U)", QKeySequence::Undo, [this] {
    if (auto s = undo(); !s) report(s.error());
  });
  redoAction_ = make(9032, L"重做(&R)", QKeySequence::Redo, [this] {
    if (auto s = redo(); !s) report(s.error());
  });
  for (const auto &entry : KrmCommandTable()) {
    const QString name = toQString(KrmLocalNameOf(entry));
    auto *action = new QAction(name, this);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, [this, name] {
      if (!io_->waiting()) {
        line_->appendText(QStringLiteral("\n") + strings_.text(9001, L"命令:") + QLatin1Char(' ') + name);
        runCommand(name);
      }
    });
    commandActions_.push_back(action);
  }
}

void StudioWindow::buildMenus() {
  QMenu *file = menuBar()->addMenu(strings_.text(9020, L"文件(&F)"));
  QAction *open = file->addAction(strings_.text(9024, L"打开(&O)..."), this, [this] {
    const QString name = QFileDialog::getOpenFileName(this, strings_.text(9024, L"打开"), QString(),
                                                      strings_.text(9029, L"DXF 图纸 (*.dxf)"));
    if (name.isEmpty()) return;
    if (auto r = openDrawing(name.toStdString()); !r) report(r.error());
  });
  open->setShortcut(QKeySequence::Open);
  file->addAction(saveAction_);
  file->addAction(saveAsAction_);
  recentMenu_ = file->addMenu(strings_.text(9025, L"最近的文件"));
  file->addSeparator();
  file->addAction(closeAction_);
  file->addAction(strings_.text(9026, L"退出(&X)"), this, &QWidget::close);
  rebuildRecentMenu();

  QMenu *edit = menuBar()->addMenu(strings_.text(9030, L"编辑(&E)"));
  edit->addAction(undoAction_);
  edit->addAction(redoAction_);

  QMenu *view = menuBar()->addMenu(strings_.text(9040, L"视图(&V)"));
  viewActions_.push_back(view->addAction(strings_.text(9041, L"范围缩放"), this, [this] {
    if (auto *v = currentView()) v->zoomExtents();
  }));
  viewActions_.push_back(view->addAction(strings_.text(9042, L"窗口缩放"), this, [this] {
    if (auto *v = currentView(); v && !io_->waiting()) v->setMode(DrawingView::Mode::ZoomWindow);
  }));
  viewActions_.push_back(view->addAction(strings_.text(9043, L"放大"), this, [this] {
    if (auto *v = currentView()) v->zoomAbout(QPointF(v->width() / 2.0, v->height() / 2.0), 1.5);
  }));
  viewActions_.push_back(view->addAction(strings_.text(9044, L"缩小"), this, [this] {
    if (auto *v = currentView()) v->zoomAbout(QPointF(v->width() / 2.0, v->height() / 2.0), 1 / 1.5);
  }));

  QMenu *commands = menuBar()->addMenu(strings_.text(9050, L"卡片(&K)"));
  for (QAction *a : commandActions_) commands->addAction(a);

  QToolBar *bar = addToolBar(strings_.text(9051, L"工具栏"));
  bar->setObjectName(QStringLiteral("mainToolBar"));
  bar->addAction(open);
  bar->addAction(saveAction_);
  bar->addSeparator();
  bar->addAction(undoAction_);
  bar->addAction(redoAction_);
  bar->addSeparator();
  for (QAction *a : viewActions_) bar->addAction(a);
  bar->addSeparator();
  for (QAction *a : commandActions_) bar->addAction(a);
}

StudioDocument *StudioWindow::current() const {
  QaApDocument *doc = qaCurDoc();
  for (const auto &d : documents_)
    if (d->document == doc) return d.get();
  return nullptr;
}

QaApDocument *StudioWindow::currentDocument() const {
  auto *d = current();
  return d ? d->document : nullptr;
}

DrawingView *StudioWindow::currentView() const {
  auto *d = current();
  return d ? d->view : nullptr;
}

bool StudioWindow::isChanged(QaApDocument *doc) const {
  for (const auto &d : documents_)
    if (d->document == doc) return d->changed;
  return false;
}

Result<QaApDocument *> StudioWindow::openDrawing(const std::filesystem::path &path) {
  std::string error;
  QaApDocument *doc = session_->openDrawing(path, &error);
  if (!doc) {
    // The reader names the file itself at the front; the error carries it in its field.
    const std::string prefix = path.string() + ": ";
    if (error.rfind(prefix, 0) == 0) error.erase(0, prefix.size());
    return MakeError(error.empty() ? "cannot read the drawing" : error).inFile(path.string());
  }
  auto record = std::make_unique<StudioDocument>();
  record->document = doc;
  record->index = IndexDrawing(*doc);
  record->view = new DrawingView(tabs_);
  connect(record->view, &DrawingView::cursorMoved, this, [this](QPointF p) {
    coordinates_->setText(QStringLiteral("%1, %2").arg(p.x(), 0, 'f', 4).arg(p.y(), 0, 'f', 4));
  });
  StudioDocument &d = *record;
  documents_.push_back(std::move(record));
  const int tab = tabs_->addTab(d.view, QFileInfo(pathText(path)).fileName());
  tabs_->setTabToolTip(tab, pathText(path));
  d.view->setIndex(d.index);
  tabs_->setCurrentIndex(tab);
  currentTabChanged();
  addRecent(std::filesystem::absolute(path));
  return doc;
}

Status StudioWindow::saveDrawing(const std::filesystem::path &path) {
  StudioDocument *d = current();
  if (!d) return MakeError("no drawing is open");
  std::filesystem::path target = path.empty() ? d->document->fileName() : path;
  if (target.empty()) return MakeError("the drawing has no file yet: save it under a name");
  std::string error;
  QaDbDatabase *db = d->document->database();
  if (db->saveAs(target, QaDb::kDwgCurrent, &error) != Qa::eOk)
    return MakeError(error.empty() ? "cannot write the drawing" : error).inFile(target.string());
  d->document->setFileName(target);
  db->setFilename(target);
  d->changed = false;
  tabs_->setTabText(tabs_->indexOf(d->view), QFileInfo(pathText(target)).fileName());
  addRecent(std::filesystem::absolute(target));
  updateTitle();
  return Status::Ok();
}

bool StudioWindow::askSave(StudioDocument &doc) {
  if (!doc.changed) return true;
  const QString name = QFileInfo(pathText(doc.document->fileName())).fileName();
  const int answer = io_->messageBox(
      toWString(strings_.text(9060, L"图纸 %1 已修改。是否保存?").arg(name)), kOstrelSuiteCaption,
      MB_YESNOCANCEL | MB_ICONQUESTION);
  if (answer == IDCANCEL) return false;
  if (answer == IDYES) {
    if (auto s = saveDrawing(); !s) {
      report(s.error());
      return false;
    }
  }
  return true;
}

bool StudioWindow::closeCurrent() {
  StudioDocument *d = current();
  if (!d || commandRunning_) return false;
  if (!askSave(*d)) return false;
  QaApDocument *doc = d->document;
  DrawingView *view = d->view;
  io_->setView(nullptr);
  tabs_->removeTab(tabs_->indexOf(view));
  delete view;
  std::erase_if(documents_, [doc](const auto &p) { return p->document == doc; });
  qaDocManager().closeDocument(doc);
  currentTabChanged();
  return true;
}

void StudioWindow::currentTabChanged() {
  auto *view = qobject_cast<DrawingView *>(tabs_->currentWidget());
  for (const auto &d : documents_)
    if (d->view == view) qaDocManager().setCurDocument(d->document);
  io_->setView(view);
  updateTitle();
  updateActions();
}

void StudioWindow::refresh(StudioDocument &doc) {
  doc.index = IndexDrawing(*doc.document);
  doc.view->setIndex(doc.index);
  updateTitle();
  updateActions();
}

void StudioWindow::updateTitle() {
  StudioDocument *d = current();
  QString title = strings_.text(9000, L"Tabulon Studio");
  if (d) {
    const auto &file = d->document->fileName();
    const QString name = file.empty() ? strings_.text(9027, L"未命名") : QFileInfo(pathText(file)).fileName();
    title = name + QStringLiteral("[*] - ") + title;
    setWindowModified(d->changed);
    const int tab = tabs_->indexOf(d->view);
    tabs_->setTabText(tab, d->changed ? name + QStringLiteral(" *") : name);
  } else {
    setWindowModified(false);
  }
  setWindowTitle(title);
}

void StudioWindow::updateActions() {
  StudioDocument *d = current();
  const bool idle = !commandRunning_;
  saveAction_->setEnabled(d && idle);
  saveAsAction_->setEnabled(d && idle);
  closeAction_->setEnabled(d && idle);
  undoAction_->setEnabled(d && idle && d->history.canUndo());
  redoAction_->setEnabled(d && idle && d->history.canRedo());
  for (QAction *a : commandActions_) a->setEnabled(idle);
  tabs_->tabBar()->setEnabled(idle);
}

std::optional<int> StudioWindow::runCommand(const QString &name) {
  if (commandRunning_) return std::nullopt;
  const std::wstring typed = toWString(name);
  const QaEdCommand *command = qaedCommandStack().lookupCmd(typed);
  if (!command) {
    line_->appendText(strings_.text(9012, L"\n未知命令 \"%1\"。").arg(name));
    return std::nullopt;
  }
  lastCommand_ = name;
  commandRunning_ = true;
  updateActions();
  // The studio's view commands change no drawing: no undo step for them.
  StudioDocument *d = command->group == kViewCommandGroup ? nullptr : current();
  if (d) {
    if (auto s = d->history.begin(*d->document->database()); !s)
      line_->appendText(QStringLiteral("\n") + QString::fromStdString(s.describe()));
  }
  std::optional<int> result;
  {
    CKR_DocLockServer lock(currentDocument());
    result = qaedCommandStack().invoke(typed);
  }
  if (d && d->history.end(*d->document->database(), typed)) {
    d->changed = true;
    refresh(*d);
  }
  commandRunning_ = false;
  updateTitle();
  updateActions();
  emit commandEnded(name, result.value_or(0));
  return result;
}

std::optional<int> StudioWindow::runCommandLine(const QString &text) {
  const QString typed = text.trimmed();
  if (typed.isEmpty()) {
    if (lastCommand_.isEmpty()) return std::nullopt;
    return runCommand(lastCommand_);
  }
  return runCommand(typed);
}

void StudioWindow::onSubmitted(const QString &text) {
  if (io_->waiting()) {
    io_->answerText(text);
    return;
  }
  if (commandRunning_) return;
  runCommandLine(text);
}

void StudioWindow::onCancelled() {
  if (io_->waiting()) io_->answerCancel();
  else if (auto *v = currentView()) v->setMode(DrawingView::Mode::Idle);
}

void StudioWindow::runScript(const QStringList &lines) {
  script_ = lines;
  scriptRunning_ = true;
  io_->setUnattendedBoxes(true);
  QTimer::singleShot(0, this, &StudioWindow::feedScript);
}

void StudioWindow::feedScript() {
  if (!scriptRunning_) return;
  // A command busy between questions: the script goes on when it asks or ends.
  if (commandRunning_ && !io_->waiting()) return;
  if (script_.isEmpty()) {
    // The end of the script ends a question still open, as the end of input does.
    if (io_->waiting()) {
      io_->answerCancel();
      return;
    }
    scriptRunning_ = false;
    io_->setUnattendedBoxes(false);
    emit scriptFinished();
    return;
  }
  const QString line = script_.takeFirst();
  if (io_->waiting()) {
    line_->appendAnswer(line);
    io_->answerText(line);
  } else {
    line_->appendText(QStringLiteral("\n") + strings_.text(9001, L"命令:") + QLatin1Char(' ') + line);
    runCommandLine(line);
  }
  QTimer::singleShot(0, this, &StudioWindow::feedScript);
}

Status StudioWindow::undo() {
  StudioDocument *d = current();
  if (!d || commandRunning_) return MakeError("nothing to undo");
  auto status = d->history.undo(*d->document->database());
  if (status) {
    if (auto *value = KrmDocValueManager()) value->docData(d->document).lastCardIds.clear();
    d->changed = true;
    line_->appendText(strings_.text(9033, L"\n放弃: ") + toQString(d->history.redoName()));
    refresh(*d);
  }
  return status;
}

Status StudioWindow::redo() {
  StudioDocument *d = current();
  if (!d || commandRunning_) return MakeError("nothing to redo");
  auto status = d->history.redo(*d->document->database());
  if (status) {
    if (auto *value = KrmDocValueManager()) value->docData(d->document).lastCardIds.clear();
    d->changed = true;
    line_->appendText(strings_.text(9034, L"\n重做: ") + toQString(d->history.undoName()));
    refresh(*d);
  }
  return status;
}

void StudioWindow::report(const tabulon::Error &error) {
  const QString text = QString::fromStdString(error.describe());
  line_->appendText(QStringLiteral("\n") + text);
  io_->messageBox(toWString(text), kOstrelSuiteCaption, MB_OK | MB_ICONERROR);
}

QStringList StudioWindow::recentFiles() const {
  QStringList out;
  KrmRegService reg;
  if (!reg.Open(17, 1, 0) || !reg.OpenSubKey(kSettingsKey)) return out;
  for (int i = 0; i < kMaxRecent; ++i) {
    std::wstring value;
    if (reg.Read(L"Recent" + std::to_wstring(i), value) && !value.empty()) out << toQString(value);
  }
  reg.Close();
  return out;
}

void StudioWindow::addRecent(const std::filesystem::path &path) {
  QStringList list = recentFiles();
  const QString file = pathText(path);
  list.removeAll(file);
  list.prepend(file);
  while (list.size() > kMaxRecent) list.removeLast();
  KrmRegService reg;
  if (reg.Open(17, 0, 1) && reg.CreateSubKey(kSettingsKey)) {
    for (int i = 0; i < kMaxRecent; ++i)
      reg.Write(L"Recent" + std::to_wstring(i), i < list.size() ? toWString(list.at(i)) : std::wstring());
    reg.Close();
  }
  rebuildRecentMenu();
}

void StudioWindow::rebuildRecentMenu() {
  if (!recentMenu_) return;
  recentMenu_->clear();
  for (const QString &file : recentFiles()) {
    recentMenu_->addAction(file, this, [this, file] {
      if (auto r = openDrawing(file.toStdString()); !r) report(r.error());
    });
  }
  recentMenu_->setEnabled(!recentMenu_->isEmpty());
}

void StudioWindow::closeEvent(QCloseEvent *event) {
  if (commandRunning_) {
    // The command ends first; the window closes when it has.
    io_->answerCancel();
    event->ignore();
    QTimer::singleShot(0, this, &QWidget::close);
    return;
  }
  while (current()) {
    if (!closeCurrent()) {
      event->ignore();
      return;
    }
  }
  event->accept();
}

}  // namespace tabulon::ui
