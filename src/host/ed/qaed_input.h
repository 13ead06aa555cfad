// One request to the user and what came back, in the form every input channel (scripted
// answers, the terminal, the studio's view) shares. Typed answers are parsed from text
// here, so that a script and a terminal user write the same things:
//
//   x,y  or  x,y,z         a point (also a pick at that point)
//   (empty line)           Enter
//   cancel  or  esc        cancel
//   #1A  or  #1A,#2F ...   entities by handle (one pick, or a selection)
//   all                    every entity of model space (selection only)
//   window x1,y1 x2,y2     the entities lying inside a window (selection only)
//   yes / no / ok          buttons of a message box (y, n also)
//   anything else          text: a keyword, or free input
#pragma once

#include "host/db/qadb_handle.h"
#include "host/ge/qage_point3d.h"

#include <optional>
#include <string>
#include <vector>

struct QaEdRequest {
  enum class Kind { Point, Entity, Selection, Text };
  Kind kind = Kind::Text;
  std::wstring prompt;
  std::optional<QaGePoint3d> base;     // a point request's rubber-band origin
  std::vector<std::wstring> keywords;  // words the answer may be, besides its kind
};

struct QaEdInput {
  enum class Kind { Point, Enter, Cancel, Text, Handles, All, Window };
  Kind kind = Kind::Cancel;
  QaGePoint3d point;                // Point; first corner of Window
  QaGePoint3d corner;               // second corner of Window
  std::wstring text;                // Text
  std::vector<QaDbHandle> handles;  // Handles
  bool picked = false;              // Handles: `point` is where the entity was picked

  static QaEdInput of(Kind kind) {
    QaEdInput in;
    in.kind = kind;
    return in;
  }
  static QaEdInput cancel() { return of(Kind::Cancel); }
  static QaEdInput enter() { return of(Kind::Enter); }
  static QaEdInput ofPoint(const QaGePoint3d& p) {
    QaEdInput in = of(Kind::Point);
    in.point = p;
    return in;
  }
  static QaEdInput ofText(std::wstring t) {
    QaEdInput in = of(Kind::Text);
    in.text = std::move(t);
    return in;
  }
};

// Parses "x,y" or "x,y,z" (blanks allowed around numbers); nothing otherwise.
std::optional<QaGePoint3d> qaedParsePoint(std::wstring_view text);

// Parses one typed answer as described above, for the kind of request it answers.
QaEdInput qaedParseInput(std::wstring_view text, QaEdRequest::Kind kind);

// A keyword of `keywords` that `text` names: the whole word or an unambiguous
// beginning of it, without regard to case. Nothing when none or several match.
std::optional<std::wstring> qaedMatchKeyword(std::wstring_view text, const std::vector<std::wstring>& keywords);
