// Laying out texts for painting: where the baseline of each line of a single-line text,
// an attribute or a multi-line text stands in world coordinates, at which angle and
// size, once the entity's justification and an outer transform are applied.
#pragma once

#include <string>
#include <vector>

#include "drawing/render/render_scene.h"
#include "host/db/qadb_object_id.h"
#include "host/ge/qage_matrix3d.h"

class QaDbText;
class QaDbMText;

namespace tabulon::render {

// What a text string shows: control codes such as %%d read as the characters they
// stand for; codes that show nothing, control characters and their caret form ("^J")
// dropped.
std::wstring ShownText(const std::wstring& text);

// Font em per unit of capital height for a text style (cached by the caller).
double EmPerHeight(QaDbObjectId style);

// One line of a single-line text or attribute, under `xform`. `emPerHeight` is that of
// the text's style. Nothing when the text shows nothing.
std::vector<RenderText> LayoutText(const QaDbText& text, const QaGeMatrix3d& xform, double emPerHeight);

// The lines of a multi-line text, paragraphs broken at its reference width, under
// `xform`.
std::vector<RenderText> LayoutMText(const QaDbMText& mtext, const QaGeMatrix3d& xform, double emPerHeight);

// The four corners of a laid-out line (lower-left, lower-right, upper-right,
// upper-left), for the extents of a scene.
void TextCorners(const RenderText& text, double length, QaGePoint2d corners[4]);

// Breaks one paragraph into lines no wider than `width` (by `measure`): after the last
// blank that fits when the line has one (words of western text stay whole), else
// between any two characters (Chinese text has no blanks). A width of 0 or less
// keeps the paragraph whole.
template <class Measure>
std::vector<std::wstring> WrapParagraph(const std::wstring& paragraph, double width, Measure&& measure) {
  std::vector<std::wstring> lines;
  if (width <= 0.0 || measure(paragraph) <= width) {
    lines.push_back(paragraph);
    return lines;
  }
  std::wstring line;
  for (wchar_t c : paragraph) {
    std::wstring longer = line + c;
    if (!line.empty() && c != L' ' && measure(longer) > width) {
      const auto blank = line.find_last_of(L' ');
      if (blank != std::wstring::npos && blank > 0) {
        lines.push_back(line.substr(0, blank));
        line = line.substr(blank + 1) + c;
      } else {
        lines.push_back(line);
        line.assign(1, c);
      }
    } else {
      line = std::move(longer);
    }
  }
  lines.push_back(line);
  return lines;
}

}  // namespace tabulon::render
