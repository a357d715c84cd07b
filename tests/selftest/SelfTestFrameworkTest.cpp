#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "selftest/GAutoTest.h"
#include "selftest/GTest.h"
#include "selftest/GTestSuite.h"

namespace {

using Names = std::vector<std::string>;

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
    explicit ScriptedTest(std::string identifier, Names cases = {}) : identifier_(std::move(identifier)), cases_(std::move(cases)) {}
    Names GetAllTestIdentifiers() const override { return cases_; }
    std::string GetIdentifier() const override { return identifier_; }
    EResult RunTestByIdentifier(const std::string& name) override
    {
        ran.push_back(name);
        if (name == "fails") Assert("x == 1", false, "C:\\src\\mixed/dir\\Checks.cpp", 42);
        return name == "fails" ? kFailure : name == "unfinished" ? kNotFullyImplemented : name == "odd" ? EResult(7) : kSuccess;
    }
    bool PrepareForTest(const std::string& name) override { return name != "refused"; }
    void PostTestCleanup(const std::string& name) override { cleaned.push_back(name); }
    Names ran, cleaned;

private:
    std::string identifier_;
    Names cases_;
};

// A refused case fails and is still cleaned up; a result of no known kind
// prints nothing.
TEST_F(ReportCapture, SuiteReportIsExact)
{
    ScriptedTest second("Second", {"ok", "fails", "unfinished", "odd", "refused"}), first("First", {"ok"});
    GTestSuite suite("Report suite");
    suite.AddTest(&second);
    suite.AddTest(&first);
    EXPECT_EQ(suite.RunTests().Count(GTest::kSuccess), 2u);  // failures and the rest are in the report
    EXPECT_EQ(second.ran, (Names{"ok", "fails", "unfinished", "odd"}));
    EXPECT_EQ(second.cleaned, (Names{"ok", "fails", "unfinished", "odd", "refused"}));
    EXPECT_EQ(report.str(),
              "   -====- Running test suite \"Report suite\" -====-\r\n"
              " -=- First: running 1 tests...\r\n"
              " - ok succeeded.\r\n"
              " -=- First tests summary: 1 tests, 0 failures, 0 unimplemented.\r\n\r\n\r\n"
              " -=- Second: running 5 tests...\r\n"
              " - ok succeeded.\r\n"
              " * Failure \"x == 1\" at Checks.cpp:42 in fails.\r\n"
              " ? unfinished is not fully implemented.\r\n"
              " in refused.\r\n"
              " -=- Second tests summary: 5 tests, 2 failures, 1 unimplemented.\r\n\r\n\r\n"
              "   -====- Test suite \"Report suite\" totals: 6 tests, 2 failures, 1 unimplemented.\r\n\r\n\r\n");
}

TEST_F(ReportCapture, UnknownCaseOfAnAutoTestFails)
{
    ScriptedTest member("known");
    GAutoTest group("Group");
    group.AddSubTest(&member);
    GTestSuite suite("S");
    suite.AddTest(&group);
    EXPECT_EQ(suite.RunTestByName("Group", {"nope", "known"}).Count(GTest::kFailure), 1u);
    EXPECT_NE(report.str().find("UNKNOWN TEST: nope\n in nope.\r\n"), std::string::npos);
    EXPECT_EQ(member.ran, Names{"known"});
}

// An empty suite name files under the default suite; a second registration
// under one identifier joins the same auto test.
TEST(GTestSuite, RegistrationGroupsByIdentifier)
{
    ScriptedTest one("one"), two("two");
    GTestSuite::RegisterTest(&two, "Shared", "");
    GTestSuite::RegisterTest(&one, "Shared", "");
    ASSERT_EQ(GTestSuite::GetAutoregisteredSuiteMap().count("Automatically registered tests"), 1u);
    GTestSuite* suite = GTestSuite::GetAutoregisteredSuiteByName("Automatically registered tests");
    GTest* group = suite->FindTest("Shared");
    ASSERT_NE(dynamic_cast<GAutoTest*>(group), nullptr);
    EXPECT_EQ(group->GetAllTestIdentifiers(), (Names{"one", "two"}));
}

}  // namespace
