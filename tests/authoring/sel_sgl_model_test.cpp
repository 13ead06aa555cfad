#include "authoring/sel_sgl_model.h"

#include <gtest/gtest.h>

namespace {

KrmDataAttTR Record(const std::wstring& name, int refCount, std::vector<std::wstring> tags = {L"a", L"b"}) {
  KrmDataAttTR record;
  record.blockName = name;
  record.refCount = refCount;
  for (const auto& tag : tags) {
    KrmAttSet att;
    att.SetShowName(tag);
    record.atts.push_back(att);
  }
  return record;
}

const std::vector<KrmDataAttTR> kSource = {Record(L"TITLE", 1), Record(L"ROW", 5), Record(L"LOADED", 0),
                                           Record(L"SIGN", 2)};

struct ModeCase {
  KrmSelSglMode mode;
  std::vector<std::wstring> listed;
  std::vector<int> selected;
  int attribute;
};

class ChooserModes : public ::testing::TestWithParam<ModeCase> {};

TEST_P(ChooserModes, FilterAndStartSelection) {
  const ModeCase& c = GetParam();
  KrmSelSglModel chooser(c.mode, kSource);
  EXPECT_EQ(chooser.ClassNames(), c.listed);
  EXPECT_EQ(chooser.SelectedClasses(), c.selected);
  EXPECT_EQ(chooser.SelectedAttribute(), c.attribute);
  EXPECT_FALSE(chooser.Caption().empty());
}

INSTANTIATE_TEST_SUITE_P(
    AllModes, ChooserModes,
    ::testing::Values(ModeCase{KrmSelSglMode::kSingleBlocks, {L"TITLE", L"LOADED"}, {0, 1}, -1},
                      ModeCase{KrmSelSglMode::kMultiBlocks, {L"ROW", L"SIGN"}, {0, 1}, -1},
                      ModeCase{KrmSelSglMode::kPageBase, {L"ROW", L"SIGN"}, {0}, -1},
                      ModeCase{KrmSelSglMode::kClassCur, {L"TITLE", L"LOADED"}, {0}, 0},
                      ModeCase{KrmSelSglMode::kBatchSum, {L"TITLE", L"LOADED"}, {0}, 0},
                      ModeCase{KrmSelSglMode::kAutoNum, {L"ROW", L"SIGN"}, {0}, 0}));

TEST(Chooser, AttributeModesGiveTheChosenIndexAndFollowTheCurrentClass) {
  KrmSelSglModel chooser(KrmSelSglMode::kAutoNum, kSource);
  chooser.SelectAttribute(1);
  chooser.SelectClass(1);
  EXPECT_EQ(chooser.SelectedAttribute(), 0);  // a new class starts at its first attribute
  chooser.SelectAttribute(1);
  chooser.SelectAttribute(7);  // outside the list: ignored
  const auto result = chooser.Result();
  ASSERT_EQ(result.size(), 1u);
  EXPECT_EQ(result[0].blockName, L"SIGN");
  EXPECT_EQ(result[0].pageAttIndex, 1);
}

TEST(Chooser, SeveralChoiceResultKeepsListOrder) {
  KrmSelSglModel chooser(KrmSelSglMode::kMultiBlocks, kSource);
  chooser.ClearSelection();
  chooser.ToggleClass(1);
  chooser.ToggleClass(0);
  const auto result = chooser.Result();
  ASSERT_EQ(result.size(), 2u);
  EXPECT_EQ(result[0].blockName, L"ROW");
  EXPECT_EQ(result[1].blockName, L"SIGN");
  EXPECT_EQ(result[0].pageAttIndex, -1);
}

TEST(Chooser, EmptySourceShowsNothingAndYieldsNothing) {
  KrmSelSglModel chooser(KrmSelSglMode::kClassSum, {});
  EXPECT_TRUE(chooser.ClassNames().empty());
  EXPECT_TRUE(chooser.AttributeNames().empty());
  EXPECT_TRUE(chooser.Result().empty());
  EXPECT_FALSE(chooser.SelectByName(L"TITLE", L"a"));
}

}  // namespace
