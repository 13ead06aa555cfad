#include "host/dxf/dxf_object_frame.h"
#include "host/dxf/dxf_tag_reader.h"

#include <gtest/gtest.h>

#include <vector>

using namespace tabulon::dxf;

TEST(DxfObjectFrame, FindsHandleGroupsReactorsOwnerAndExtendedData) {
  const std::string text =
      "  0\nLINE\n  5\n2A\n102\n{MYAPP\n  1\nx\n102\n}\n102\n{ACAD_XDICTIONARY\n360\n3B\n102\n}\n"
      "102\n{ACAD_REACTORS\n330\n4C\n330\n4D\n102\n}\n330\n1F\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n"
      "330\n99\n1001\nAPP\n1000\nv\n";
  DxfTagReader reader(text, "t.dxf");
  std::vector<DxfTag> tags;
  DxfTag t;
  while (reader.next(t)) tags.push_back(t);
  DxfObjectFrame f = dxfReadFrame(tags);
  EXPECT_EQ(f.type, "LINE");
  EXPECT_EQ(f.handle, 0x2Au);
  ASSERT_EQ(f.appGroups.size(), 3u);
  EXPECT_EQ(f.appGroups[0].name, "MYAPP");
  EXPECT_EQ(f.appGroups[0].end - f.appGroups[0].begin, 3u);  // "{MYAPP", one tag, "}"
  EXPECT_EQ(f.xdictionary, 0x3Bu);
  EXPECT_EQ(f.reactors, (std::vector<std::uint64_t>{0x4C, 0x4D}));
  EXPECT_EQ(f.owner, 0x1Fu);  // not the 330 inside the body
  EXPECT_EQ(tags[f.bodyBegin].value, "AcDbEntity");
  EXPECT_EQ(tags[f.xdataBegin].code, 1001);

  // An application group that is never closed ends where the body starts.
  const std::string open = "  0\nLINE\n  5\n2B\n102\n{BROKEN\n  1\nx\n100\nAcDbEntity\n";
  DxfTagReader r2(open, "t.dxf");
  std::vector<DxfTag> tags2;
  while (r2.next(t)) tags2.push_back(t);
  DxfObjectFrame g = dxfReadFrame(tags2);
  ASSERT_EQ(g.appGroups.size(), 1u);
  EXPECT_EQ(tags2[g.bodyBegin].value, "AcDbEntity");
  EXPECT_FALSE(g.hasXData(tags2.size()));
}

