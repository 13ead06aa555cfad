// The eight fill orders of a block class: in which order the references of the class
// on a page receive the rows. Two positions count as the same row (or column) when their
// y (or x) differ by less than 1.0 drawing unit, whatever the drawing scale.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "host/ge/qage_point3d.h"

// Whether the pair (p before q) is out of order under fill-order `code` 0..7:
//   0 columns left to right, each top to bottom      1 rows top to bottom, each left to right
//   2 columns left to right, each bottom to top      3 rows bottom to top, each left to right
//   4 by descending y; within one column right to left
//   5 rows top to bottom, each right to left         6 columns right to left, each bottom to top
//   7 rows bottom to top, each right to left
// Code 6 tests for an x difference above 1.0 where the others test for one below 1.0.
// Any other code never swaps.
bool KrmFillOrderSwaps(int code, const QaGePoint3d& p, const QaGePoint3d& q);

// Exchange sort of `items` by fill-order `code`, `positionOf(item)` giving the point.
// Full passes of neighbour swaps without an early stop: at the tolerance the rule is not
// a total order, and the result is exactly what these passes give.
template <class T, class PositionOf>
void KrmSortByFillOrder(std::vector<T>& items, int code, PositionOf positionOf) {
  const std::size_t count = items.size();
  for (std::size_t a = 0; a < count; ++a) {
    for (std::size_t b = 0; b + a + 1 < count; ++b) {
      if (KrmFillOrderSwaps(code, positionOf(items[b]), positionOf(items[b + 1]))) {
        std::swap(items[b], items[b + 1]);
      }
    }
  }
}
