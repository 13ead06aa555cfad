#include "host/dxf/dxf_header.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace tabulon::dxf;

TEST(DxfHeader, KeepsOrderAndPlacesTheModelledVariables) {
  DxfHeader h;
  h.setValue("$EXTMIN", 10, "0.0");
  h.setVersion(DxfVersion::R2010);
  h.setCodePage("ANSI_936");
  h.setHandSeed(0x2AF);
  h.setValue("$ACADMAINTVER", 70, "6", "$ACADVER");
  std::vector<std::string> names;
  for (const auto& v : h.variables()) names.push_back(v.name);
  EXPECT_EQ(names, (std::vector<std::string>{"$ACADVER", "$ACADMAINTVER", "$DWGCODEPAGE", "$HANDSEED", "$EXTMIN"}));
  EXPECT_EQ(h.version(), DxfVersion::R2010);
  EXPECT_EQ(h.codePage(), "ANSI_936");
  EXPECT_EQ(h.handSeed(), 0x2AFu);
  h.setVersion(DxfVersion::R2000);
  EXPECT_EQ(h.value("$ACADVER"), "AC1015");
  h.remove("$EXTMIN");
  EXPECT_EQ(h.find("$EXTMIN"), nullptr);
}
