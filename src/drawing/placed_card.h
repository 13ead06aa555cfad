// The read-back model of a card that stands in the drawing: its pages (one anonymous
// group each), and on each page the block references of every class with their cell
// texts. Plain copyable values; ids refer to objects of the drawing, which owns them.
#pragma once

#include <string>
#include <vector>

#include "card/att_set.h"
#include "host/db/qadb_object_id.h"
#include "host/ge/qage_point3d.h"

// One block reference of a page.
struct KrmLoadAtt {
  QaDbObjectId refId;
  int rowIndex = 0;                // entityIndex of its card tag: restores the row order
  std::vector<std::wstring> texts;  // one per column, in the order of the class's colNames
  QaGePoint3d position;            // insertion point
  int recordHead = 1;              // 1 starts a record, 0 continues the one before

  friend bool operator==(const KrmLoadAtt&, const KrmLoadAtt&) = default;
};

// One block class on one page.
struct KrmLoadTAtt {
  std::wstring blockName;                // class name as the template has it
  QaDbObjectId blockId;                  // block definition used on this page
  std::vector<KrmLoadAtt> refs;          // references of this class on the page
  std::vector<std::wstring> colNames;    // show names of the class's columns
  int fillOrder = 0;

  friend bool operator==(const KrmLoadTAtt&, const KrmLoadTAtt&) = default;
};

// One placed page: the fields of the base it derives from describe the page-base class.
struct KrmLoadGroup : KrmLoadTAtt {
  std::vector<KrmLoadTAtt> otherClasses;  // one per other class of the card
  int pageIndex = 0;                      // zero-based, from the group's tag
  QaDbObjectId groupId;                   // the page's anonymous group
  std::vector<QaDbObjectId> allIds;       // every entity of the page
  std::vector<QaDbObjectId> otherIds;     // entities of no known class

  friend bool operator==(const KrmLoadGroup&, const KrmLoadGroup&) = default;
};

// Descriptor of one block class other than the page base.
struct KrmLoadGrid {
  std::wstring blockName;
  std::vector<std::wstring> colNames;
  int fillOrder = 0;

  friend bool operator==(const KrmLoadGrid&, const KrmLoadGrid&) = default;
};

// All that is known of one card in the drawing.
struct KrmPlacedCard {
  std::vector<KrmLoadGroup> pages;  // sorted by pageIndex
  std::wstring baseBlockName;
  std::vector<std::wstring> baseColNames;
  int baseFillOrder = 0;
  std::vector<KrmLoadGrid> otherGrids;
  std::wstring cardCode;

  friend bool operator==(const KrmPlacedCard&, const KrmPlacedCard&) = default;
};

// One slot while the attributes of a reference are read out: only the show name of
// `att` is set; `text` receives the attribute's text.
struct KrmAttSort {
  QaGePoint3d point;
  KrmAttSet att;
  std::wstring text;
};
