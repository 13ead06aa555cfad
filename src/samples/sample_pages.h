// The pages of the sample card library, drawn into a form sheet's model space at the
// origin: the machining process card (first page and continuation page) and the parts
// list card fed by the bill of materials (first page and continuation page). Each
// page's attribute blocks carry the cell descriptions of its classes.
#pragma once

#include <string>
#include <vector>

#include "card/table_attributes.h"
#include "samples/sample_form.h"

namespace tabulon::samples {

// What the table template of a drawn page records beyond the blocks it finds.
struct PageLayout {
  std::wstring pageBase;     // the multi-record class that counts the pages
  int fillOrder = 0;         // fill-order code of the multi-record classes
  KrmTextListMap pageAtts;   // CLASSCUR ... BATCHSUM bindings
};

PageLayout DrawProcessFirstPage(FormSheet& sheet);
PageLayout DrawProcessNextPage(FormSheet& sheet);
PageLayout DrawPartsListFirstPage(FormSheet& sheet);
PageLayout DrawPartsListNextPage(FormSheet& sheet);

// Shared by the pages: a sheet border (thin outline of the paper, thick frame inside
// with a binding margin of 25 on the left and 5 elsewhere).
void DrawSheetBorder(FormSheet& sheet, double width, double height);
// The page number bindings every sample page has: this card's page and total on the
// page-number block, the batch's on the batch blocks.
KrmTextListMap SamplePageBindings();

// Columns of a table laid side by side from `x0`.
struct FormColumn {
  std::wstring label;
  double width = 0;
};
// Right edges of the columns.
std::vector<double> ColumnEdges(double x0, const std::vector<FormColumn>& columns);

}  // namespace tabulon::samples
