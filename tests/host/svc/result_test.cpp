#include "host/svc/result.h"

#include <gtest/gtest.h>

#include <memory>

namespace tabulon {
namespace {

struct DescribeCase {
  const char* name;
  Error error;
  const char* expected;
};

class ErrorDescribe : public ::testing::TestWithParam<DescribeCase> {};

TEST_P(ErrorDescribe, LeavesOutEmptyParts) { EXPECT_EQ(GetParam().error.describe(), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(
    Parts, ErrorDescribe,
    ::testing::Values(DescribeCase{"MessageOnly", MakeError("bad"), "bad"},
                      DescribeCase{"FileLineField", MakeError("bad").inFile("a.tbl").atLine(3).inField("name"),
                                   "a.tbl:3: name: bad"},
                      DescribeCase{"FileWithoutLine", MakeError("bad").inFile("a.tbl"), "a.tbl: bad"},
                      DescribeCase{"LineWithoutFile", MakeError("bad").atLine(7), "line 7: bad"},
                      DescribeCase{"FieldOnly", MakeError("bad").inField("行"), "行: bad"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(Result, HoldsAMoveOnlyValue) {
  Result<std::unique_ptr<int>> result(std::make_unique<int>(4));
  ASSERT_TRUE(result.ok());
  std::unique_ptr<int> taken = std::move(result).value();
  EXPECT_EQ(*taken, 4);
}

TEST(Result, CarriesTheErrorOfAFailedStatus) {
  Status failed = MakeError("no such card").inField("code");
  Result<int> result(failed);
  ASSERT_FALSE(result.ok());
  EXPECT_EQ(result.error().field, "code");
  EXPECT_EQ(result.status().describe(), "code: no such card");
  EXPECT_EQ(result.valueOr(9), 9);
}

TEST(Status, DefaultIsOk) {
  Status status;
  EXPECT_TRUE(status.ok());
  EXPECT_EQ(status.describe(), "");
}

}  // namespace
}  // namespace tabulon
