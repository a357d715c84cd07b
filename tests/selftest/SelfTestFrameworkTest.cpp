#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "selftest/GAutoTest.h"
#include "selftest/GTest.h"
#include "selftest/GTestSuite.h"
#include "typeprobe/typeprobe.h"

namespace {

// Sends the report into a string for the length of one test.
class ReportCapture : public ::testing::Test {
protected:
    void SetUp() override { GTest::g_pOutputStream = &report; }
    void TearDown() override { GTest::g_pOutputStream = &std::cout; }
    std::ostringstream report;
};

// Cases named after the result they give; "refused" fails preparation.
class ScriptedTest : public GTest {
public:
    explicit ScriptedTest(std::string identifier, std::vector<std::string> cases = {})
        : identifier_(std::move(identifier)), cases_(std::move(cases))
    {
    }
    std::vector<std::string> GetAllTestIdentifiers() const override { return cases_; }
    std::string GetIdentifier() const override { return identifier_; }
    EResult RunTestByIdentifier(const std::string& name) override
    {
        ran.push_back(name);
        if (name == "fails") {
            Assert("x == 1", false, "C:\\src\\mixed/dir\\Checks.cpp", 42);
            return kFailure;
        }
        if (name == "unfinished") return kNotFullyImplemented;
        if (name == "odd") return EResult(7);
        return kSuccess;
    }
    bool PrepareForTest(const std::string& name) override { return name != "refused"; }
    void PostTestCleanup(const std::string& name) override { cleaned.push_back(name); }

    std::vector<std::string> ran, cleaned;

private:
    std::string identifier_;
    std::vector<std::string> cases_;
};

TEST_F(ReportCapture, SuiteReportIsExact)
{
    ScriptedTest second("Second", {"ok", "fails", "unfinished", "odd"});
    ScriptedTest first("First", {"ok"});
    GTestSuite suite("Report suite");
    suite.AddTest(&second);
    suite.AddTest(&first);
    EXPECT_EQ(suite.GetTotalNumTestCases(), 5u);
    GTest::GBatchedResults results = suite.RunTests();
    EXPECT_EQ(results.Count(GTest::kSuccess), 2u);
    EXPECT_EQ(results.Count(GTest::kFailure), 1u);
    EXPECT_EQ(results.Count(GTest::kNotFullyImplemented), 1u);
    EXPECT_EQ(report.str(),
              "   -====- Running test suite \"Report suite\" -====-\r\n"
              " -=- First: running 1 tests...\r\n"
              " - ok succeeded.\r\n"
              " -=- First tests summary: 1 tests, 0 failures, 0 unimplemented.\r\n\r\n\r\n"
              " -=- Second: running 4 tests...\r\n"
              " - ok succeeded.\r\n"
              " * Failure \"x == 1\" at Checks.cpp:42 in fails.\r\n"
              " ? unfinished is not fully implemented.\r\n"
              " -=- Second tests summary: 4 tests, 1 failures, 1 unimplemented.\r\n\r\n\r\n"
              "   -====- Test suite \"Report suite\" totals: 5 tests, 1 failures, "
              "1 unimplemented.\r\n\r\n\r\n");
}

TEST_F(ReportCapture, UnknownCaseOfAnAutoTestFails)
{
    ScriptedTest member("known");
    GAutoTest group("Group");
    group.AddSubTest(&member);
    GTestSuite suite("S");
    suite.AddTest(&group);
    GTest::GBatchedResults results = suite.RunTestByName("Group", {"nope", "known"});
    EXPECT_EQ(results.Count(GTest::kFailure), 1u);
    EXPECT_EQ(results.Count(GTest::kSuccess), 1u);
    EXPECT_EQ(report.str(),
              "   -====- Running test suite \"S\" -====-\r\n"
              " -=- Group: running 2 tests...\r\n"
              "UNKNOWN TEST: nope\n"
              " in nope.\r\n"
              " - known succeeded.\r\n"
              " -=- Group tests summary: 2 tests, 1 failures, 0 unimplemented.\r\n\r\n\r\n"
              "   -====- Test suite \"S\" totals: 2 tests, 1 failures, "
              "0 unimplemented.\r\n\r\n\r\n");
    EXPECT_EQ(member.ran, std::vector<std::string>{"known"});
}

TEST_F(ReportCapture, RefusedPreparationFailsAndStillCleansUp)
{
    ScriptedTest test("T", {"refused", "ok"});
    EXPECT_EQ(test.RunEachTest().Count(GTest::kFailure), 1u);
    EXPECT_EQ(test.ran, std::vector<std::string>{"ok"});
    EXPECT_EQ(test.cleaned, (std::vector<std::string>{"refused", "ok"}));
}

// An empty suite name files under the default suite; a second registration
// under one identifier joins the same auto test.
TEST(GTestSuite, RegistrationGroupsByIdentifier)
{
    ScriptedTest one("one"), two("two");
    GTestSuite::RegisterTest(&two, "Shared", "");
    GTestSuite::RegisterTest(&one, "Shared", "");
    GTestSuite* suite = GTestSuite::GetAutoregisteredSuiteByName("Automatically registered tests");
    ASSERT_EQ(GTestSuite::GetAutoregisteredSuiteMap().count("Automatically registered tests"), 1u);
    EXPECT_EQ(suite->GetTotalNumTestCases(), 2u);
    GTest* group = suite->FindTest("Shared");
    ASSERT_NE(dynamic_cast<GAutoTest*>(group), nullptr);
    EXPECT_EQ(group->GetAllTestIdentifiers(), (std::vector<std::string>{"one", "two"}));
}

TEST_F(ReportCapture, RunUnitTestsPrintsNothingAndReturnsFour)
{
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(TP_RunUnitTests(), 4u);
    EXPECT_EQ(::testing::internal::GetCapturedStdout() + report.str(), "");
}

}  // namespace
