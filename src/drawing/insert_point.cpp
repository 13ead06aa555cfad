#include "drawing/insert_point.h"

#include <cmath>

#include "host/ed/qaed_prompts.h"
#include "host/ed/qaut_printf.h"
#include "host/rx/qa_lang_resource.h"

namespace {
constexpr unsigned kNewInsertPointId = 149;
constexpr unsigned kPageInsertPointId = 150;
// Extents narrower than this count as empty: nothing is placed yet.
constexpr double kEmptyWidth = 0.1;
}  // namespace

QaGePoint3d SuggestInsertPoint(const KrmCardDir& dir, const QaGePoint3d& lower, const QaGePoint3d& upper,
                               double pageHeight) {
  const int d = dir.GetDir();
  const double y = (d == 2 || d == 3) ? upper.y - pageHeight : lower.y;
  const double gap = std::fabs(lower.x - upper.x) < kEmptyWidth ? 0.0 : dir.GetHor();
  const double x = (d == 0 || d == 3) ? upper.x + gap : lower.x - gap;
  return {x, y, 0.0};
}

int AskPoint(const std::wstring& prompt, const QaGePoint3d& base, QaGePoint3d& out) {
  out = base;
  const int result = qaedGetPoint(&base, prompt.c_str(), out);
  if (result == RTNORM) return 1;
  if (result == RTNONE) {
    out = base;
    return 1;
  }
  out = base;
  return 0;
}

std::wstring NewInsertPointPrompt() { return KrmLoadString(kNewInsertPointId, L"\n请选取新的插入点"); }

std::wstring PageInsertPointPrompt(int pageNumber) {
  const std::wstring format = KrmLoadString(kPageInsertPointId, L"\n请选取第%d页的插入点");
  return qaFormat(format.c_str(), pageNumber);
}
