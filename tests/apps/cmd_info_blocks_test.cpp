// `tabulon info` on blocks that are not drawn here (external references) and on
// a drawing cut short inside a section.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <string>

#include "support/test_support.h"

using tabulon::test::CommandResult;
using tabulon::test::shellQuote;

namespace {

CommandResult info(const std::string& args) {
  return tabulon::test::runCommand(shellQuote(tabulon::test::cliPath().string()) + " info " + args + " 2>&1");
}

std::string fixture(const std::string& name) { return (tabulon::test::fixturesDir() / name).string(); }

}  // namespace

TEST(InfoCommand, NamesExternalReferencesAsSuchEvenWhenEmpty) {
  const std::string drawing = fixture("hanochhu_2308PM-04-T3-2429_pid_attribs.dxf");
  CommandResult text = info(shellQuote(drawing));
  ASSERT_EQ(text.exitCode, 0) << text.output;
  EXPECT_NE(text.output.find("\nexternal reference SEI_A1 to .\\SEI_A1.dwg: 0 entities\n"), std::string::npos)
      << text.output;
  EXPECT_EQ(text.output.find("block SEI_A1:"), std::string::npos);

  CommandResult json = info("--json " + shellQuote(drawing));
  ASSERT_EQ(json.exitCode, 0) << json.output;
  const auto xref = nlohmann::json::parse(json.output)["blocks"]["SEI_A1"]["externalReference"];
  EXPECT_EQ(xref["path"], ".\\SEI_A1.dwg");
  EXPECT_EQ(xref["overlay"], false);
}

TEST(InfoCommand, FileEndingInsideASectionIsToldInOneSentence) {
  tabulon::test::ScratchDir dir;
  const std::string whole = tabulon::test::readFile(fixture("qcad_teigha_layer_off_freeze_attribs.dxf"));
  // Cut before an entity: what is there is whole, the section's ENDSEC missing.
  const std::size_t entity = whole.find("\n  0\r\n", whole.find("ENTITIES") + 200);
  ASSERT_NE(entity, std::string::npos);
  tabulon::test::writeFile(dir / "cut.dxf", whole.substr(0, entity + 1));
  CommandResult r = info(shellQuote((dir / "cut.dxf").string()));
  EXPECT_NE(r.exitCode, 0);
  EXPECT_NE(r.output.find("cut.dxf:"), std::string::npos) << r.output;
  EXPECT_NE(r.output.find(": the file ends inside section ENTITIES (begun at line "), std::string::npos) << r.output;
  EXPECT_NE(r.output.find("), before its ENDSEC\n"), std::string::npos) << r.output;
}
