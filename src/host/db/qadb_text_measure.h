// How wide a line of text is, for the extents of texts and attributes. The default is
// an estimate (full-width characters one text height wide, others 0.6 of it, times the
// width factor); the text metrics layer installs a real measurer at start.
#pragma once

#include <functional>
#include <string>

#include "host/db/qadb_object_id.h"

// Width of `text` (one line, no formatting codes) drawn with the style `style` at text
// height `height` and width factor `widthFactor`.
using QaDbTextWidthFunction =
    std::function<double(const std::wstring& text, QaDbObjectId style, double height, double widthFactor)>;

// Installs `fn`; an empty function brings the estimate back.
void qadbSetTextWidthFunction(QaDbTextWidthFunction fn);
double qadbTextWidth(const std::wstring& text, QaDbObjectId style, double height, double widthFactor);
// The estimate itself.
double qadbEstimateTextWidth(const std::wstring& text, double height, double widthFactor);
