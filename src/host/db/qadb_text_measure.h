// How wide a line of text is, for the extents of texts and attributes. The default is
// an estimate (full-width characters one text height wide, others 0.6 of it, times the
// width factor); a host session measures with the real fonts while it runs
// (QaHostSession), and a scope may choose a measurer of its own (QaDbTextWidthScope).
#pragma once

#include <functional>
#include <string>

#include "host/db/qadb_object_id.h"

// Width of `text` (one line, no formatting codes) drawn with the style `style` at text
// height `height` and width factor `widthFactor`.
using QaDbTextWidthFunction =
    std::function<double(const std::wstring& text, QaDbObjectId style, double height, double widthFactor)>;

// Makes `fn` the measurer for a scope and brings back the one before when the scope
// ends, on every way out; an empty function measures with the estimate. Scopes nest.
class QaDbTextWidthScope {
 public:
  explicit QaDbTextWidthScope(QaDbTextWidthFunction fn);
  ~QaDbTextWidthScope();
  QaDbTextWidthScope(const QaDbTextWidthScope&) = delete;
  QaDbTextWidthScope& operator=(const QaDbTextWidthScope&) = delete;

 private:
  QaDbTextWidthFunction previous_;
};

// The estimate for a scope, whatever measures outside it: for code and tests whose
// figures must not depend on the fonts of the machine.
class QaDbEstimatedTextWidth : public QaDbTextWidthScope {
 public:
  QaDbEstimatedTextWidth() : QaDbTextWidthScope(QaDbTextWidthFunction()) {}
};

double qadbTextWidth(const std::wstring& text, QaDbObjectId style, double height, double widthFactor);
// The estimate itself.
double qadbEstimateTextWidth(const std::wstring& text, double height, double widthFactor);
