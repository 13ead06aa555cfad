// Connects the drawing database's text extents to the real font metrics: a host session
// holds a QaGiFontTextWidth for as long as it runs; without one the database estimates.
#pragma once

#include <string>

#include "host/db/qadb_object_id.h"
#include "host/db/qadb_text_measure.h"

// Width of one line of `text` in the font of the text style `style` (the default font
// when the id does not open as a text style), at text height `height` and width factor
// `widthFactor`. Control codes (%%d and the like) count as the characters they draw.
double qagiTextWidth(const std::wstring& text, QaDbObjectId style, double height, double widthFactor);

// Makes qagiTextWidth the database's text width function for a scope.
class QaGiFontTextWidth : public QaDbTextWidthScope {
 public:
  QaGiFontTextWidth() : QaDbTextWidthScope(&qagiTextWidth) {}
};
