#include "ui/studio/studio_user_io.h"

#include <QEventLoop>
#include <QMessageBox>

#include <algorithm>

#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/ed/qa_message_box.h"
#include "host/ed/qaed_selection.h"
#include "ui/studio/command_line.h"
#include "ui/ui_strings.h"
#include "ui/view/drawing_view.h"
#include "ui/view/scene_index.h"

namespace tabulon::ui {

namespace {

QaGePoint3d toPoint3d(QPointF p) { return QaGePoint3d(p.x(), p.y(), 0.0); }

QStringList toQStringList(const std::vector<std::wstring> &words) {
  QStringList out;
  for (const auto &w : words) out << toQString(w);
  return out;
}

DrawingView::Mode modeFor(QaEdRequest::Kind kind) {
  switch (kind) {
    case QaEdRequest::Kind::Point: return DrawingView::Mode::Point;
    case QaEdRequest::Kind::Entity: return DrawingView::Mode::Entity;
    case QaEdRequest::Kind::Selection: return DrawingView::Mode::Selection;
    case QaEdRequest::Kind::Text: return DrawingView::Mode::Idle;
  }
  return DrawingView::Mode::Idle;
}

}  // namespace

StudioUserIO::StudioUserIO(CommandLine &line, const UiStrings &strings, QWidget *boxParent, QObject *parent)
    : QObject(parent), line_(line), strings_(strings), boxParent_(boxParent) {}

StudioUserIO::~StudioUserIO() { answerCancel(); }

void StudioUserIO::setView(DrawingView *view) {
  for (auto &c : viewConnections_) disconnect(c);
  viewConnections_.clear();
  if (view_ && view_ != view) view_->setMode(DrawingView::Mode::Idle);
  view_ = view;
  connectView();
  if (view_ && waiting()) view_->setMode(modeFor(request_.kind));
}

void StudioUserIO::connectView() {
  if (!view_) return;
  viewConnections_.push_back(connect(view_, &DrawingView::pointPicked, this, &StudioUserIO::pointPicked));
  viewConnections_.push_back(connect(view_, &DrawingView::entityPicked, this, &StudioUserIO::entityPicked));
  viewConnections_.push_back(connect(view_, &DrawingView::nothingPicked, this, &StudioUserIO::nothingPicked));
  viewConnections_.push_back(connect(view_, &DrawingView::windowPicked, this, &StudioUserIO::windowPicked));
  viewConnections_.push_back(connect(view_, &QObject::destroyed, this, [this] { view_ = nullptr; }));
}

void StudioUserIO::print(std::wstring_view text) { line_.appendText(toQString(text)); }

QaEdInput StudioUserIO::request(const QaEdRequest &request) {
  if (loop_) return QaEdInput::cancel();  // one question at a time
  request_ = request;
  answer_.reset();
  selection_.clear();
  removing_ = false;
  line_.setPrompt(toQString(request.prompt), toQStringList(request.keywords));
  line_.setSpaceSubmits(request.kind != QaEdRequest::Kind::Text);
  if (view_) {
    view_->setMode(modeFor(request.kind));
    view_->setRubberBase(request.base ? std::optional<QPointF>(QPointF(request.base->x, request.base->y))
                                      : std::nullopt);
  }
  QEventLoop loop;
  loop_ = &loop;
  emit waitingForInput();
  if (!answer_) loop.exec();
  loop_ = nullptr;
  if (view_) {
    view_->setMode(DrawingView::Mode::Idle);
    view_->setHighlighted({});
  }
  line_.setSpaceSubmits(true);
  line_.clearPrompt();
  return answer_.value_or(QaEdInput::cancel());
}

void StudioUserIO::finish(QaEdInput input) {
  if (!waiting()) return;
  answer_ = std::move(input);
  loop_->quit();
}

void StudioUserIO::answerCancel() { finish(QaEdInput::cancel()); }

void StudioUserIO::answerText(const QString &typed) {
  if (!waiting()) return;
  const std::wstring text = toWString(typed.trimmed());
  if (request_.kind != QaEdRequest::Kind::Selection) {
    finish(qaedParseInput(text, request_.kind));
    return;
  }
  // A selection goes on until Enter; words change it meanwhile.
  if (text.empty()) {
    if (selection_.empty()) return finish(QaEdInput::enter());
    QaEdInput in = QaEdInput::of(QaEdInput::Kind::Handles);
    for (auto id : selection_) in.handles.push_back(id.handle());
    return finish(std::move(in));
  }
  const QString word = typed.trimmed().toLower();
  if (word == QLatin1String("r") || word == QLatin1String("remove")) {
    removing_ = true;
    line_.appendText(strings_.text(9003, L"\n删除对象: "));
    return;
  }
  if (word == QLatin1String("a") || word == QLatin1String("add")) {
    removing_ = false;
    line_.appendText(strings_.text(9004, L"\n选择对象: "));
    return;
  }
  const QaEdInput in = qaedParseInput(text, QaEdRequest::Kind::Selection);
  QaDbDatabase *db = qaWorkingDatabase();
  switch (in.kind) {
    case QaEdInput::Kind::Cancel:
      return finish(in);
    case QaEdInput::Kind::All:
      return addToSelection(qaedModelSpaceEntities(db));
    case QaEdInput::Kind::Window:
      if (view_ && view_->index()) {
        const WorldBox box{std::min(in.point.x, in.corner.x), std::min(in.point.y, in.corner.y),
                           std::max(in.point.x, in.corner.x), std::max(in.point.y, in.corner.y)};
        addToSelection(view_->index()->entitiesInside(box));
      }
      return;
    case QaEdInput::Kind::Point:
      if (view_ && view_->index()) {
        const auto id = view_->index()->entityAt(QPointF(in.point.x, in.point.y), view_->pickBoxPixels() / view_->transform().scale());
        if (id.isNull()) line_.appendText(strings_.text(9005, L"\n未选中对象。"));
        else addToSelection({id});
      }
      return;
    case QaEdInput::Kind::Handles: {
      std::vector<QaDbObjectId> ids;
      for (auto h : in.handles) {
        const auto id = db ? db->objectIdFromHandle(h) : QaDbObjectId();
        if (id.isNull() || id.isErased()) line_.appendText(strings_.text(9006, L"\n未找到对象 #") + toQString(h.text()));
        else ids.push_back(id);
      }
      return addToSelection(ids);
    }
    default:
      break;
  }
  // Free text: the caller's keywords end the selection as they are.
  if (qaedMatchKeyword(text, request_.keywords)) return finish(QaEdInput::ofText(text));
  line_.appendText(strings_.text(9007, L"\n无法识别的选择: ") + typed);
}

void StudioUserIO::addToSelection(const std::vector<QaDbObjectId> &ids) {
  for (auto id : ids) {
    auto it = std::find(selection_.begin(), selection_.end(), id);
    if (removing_ && it != selection_.end()) selection_.erase(it);
    if (!removing_ && it == selection_.end()) selection_.push_back(id);
  }
  line_.appendText(strings_.text(9008, L"\n找到 %1 个，共 %2 个").arg(ids.size()).arg(selection_.size()));
  if (view_) view_->setHighlighted(selection_);
}

void StudioUserIO::pointPicked(QPointF world) {
  if (!waiting()) return;
  const QString typed = QStringLiteral("%1,%2").arg(world.x(), 0, 'g', 12).arg(world.y(), 0, 'g', 12);
  line_.appendAnswer(typed);
  if (request_.kind == QaEdRequest::Kind::Point) finish(QaEdInput::ofPoint(toPoint3d(world)));
}

void StudioUserIO::entityPicked(QaDbObjectId id, QPointF world) {
  if (!waiting()) return;
  if (request_.kind == QaEdRequest::Kind::Entity) {
    QaEdInput in = QaEdInput::of(QaEdInput::Kind::Handles);
    in.handles.push_back(id.handle());
    in.point = toPoint3d(world);
    in.picked = true;
    return finish(std::move(in));
  }
  if (request_.kind == QaEdRequest::Kind::Selection) addToSelection({id});
}

void StudioUserIO::nothingPicked(QPointF) {
  if (waiting()) line_.appendText(strings_.text(9005, L"\n未选中对象。"));
}

void StudioUserIO::windowPicked(const WorldBox &box, bool crossing) {
  if (!waiting() || request_.kind != QaEdRequest::Kind::Selection || !view_ || !view_->index()) return;
  addToSelection(crossing ? view_->index()->entitiesCrossing(box) : view_->index()->entitiesInside(box));
}

int StudioUserIO::messageBox(std::wstring_view text, std::wstring_view caption, unsigned type) {
  line_.appendText(QStringLiteral("\n[") + toQString(caption) + QStringLiteral("] ") + toQString(text));
  if (unattended_) {
    if (!boxAnswers_.empty()) {
      const int answer = boxAnswers_.front();
      boxAnswers_.erase(boxAnswers_.begin());
      if (qaBoxHasButton(type, answer)) return answer;
    }
    return qaSafestButton(type);
  }
  QMessageBox box(boxParent_);
  box.setWindowTitle(toQString(caption.empty() ? kOstrelSuiteCaption : caption));
  box.setText(toQString(text));
  switch (type & 0xF0u) {
    case MB_ICONERROR: box.setIcon(QMessageBox::Critical); break;
    case MB_ICONQUESTION: box.setIcon(QMessageBox::Question); break;
    case MB_ICONWARNING: box.setIcon(QMessageBox::Warning); break;
    case MB_ICONINFORMATION: box.setIcon(QMessageBox::Information); break;
    default: break;
  }
  switch (type & MB_TYPEMASK) {
    case MB_OKCANCEL: box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel); break;
    case MB_YESNOCANCEL: box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel); break;
    case MB_YESNO: box.setStandardButtons(QMessageBox::Yes | QMessageBox::No); break;
    default: box.setStandardButtons(QMessageBox::Ok); break;
  }
  switch (box.exec()) {
    case QMessageBox::Ok: return IDOK;
    case QMessageBox::Yes: return IDYES;
    case QMessageBox::No: return IDNO;
    case QMessageBox::Cancel: return IDCANCEL;
    default: return qaSafestButton(type);
  }
}

}  // namespace tabulon::ui
