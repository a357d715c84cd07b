#include "selftest/GTestSuite.h"

#include <ostream>

namespace {
const char kDefaultSuiteName[] = "Automatically registered tests";
}

GTestSuite::GTestSuite(const std::string& name) : name_(name) {}

GTestSuite::~GTestSuite() = default;

void GTestSuite::AddTest(GTest* test)
{
    if (test) tests_.insert(test);
}

GTest* GTestSuite::FindTest(const std::string& identifier) const
{
    for (GTest* test : tests_)
        if (test->GetIdentifier() == identifier) return test;
    return nullptr;
}

template <typename RunOne>
GTest::GBatchedResults GTestSuite::RunReported(RunOne runOne)
{
    std::ostream& out = *GTest::g_pOutputStream;
    out << "   -====- Running test suite \"" << name_ << "\" -====-\r\n";
    GTest::GBatchedResults results;
    for (GTest* test : tests_) results += runOne(*test);
    out << "   -====- Test suite \"" << name_ << "\" totals: " << results.Total() << " tests, "
        << results.Count(GTest::kFailure) << " failures, "
        << results.Count(GTest::kNotFullyImplemented) << " unimplemented.\r\n\r\n\r\n";
    return results;
}

GTest::GBatchedResults GTestSuite::RunTests()
{
    return RunReported([](GTest& test) { return test.RunEachTest(); });
}

GTest::GBatchedResults GTestSuite::RunTestByName(const std::string& name,
                                                 const std::vector<std::string>& cases)
{
    return RunReported([&](GTest& test) {
        if (test.GetIdentifier() != name) return GTest::GBatchedResults();
        return cases.empty() ? test.RunEachTest() : test.RunSpecificTests(cases);
    });
}

unsigned long GTestSuite::GetTotalNumTestCases() const
{
    unsigned long total = 0;
    for (const GTest* test : tests_) total += test->GetAllTestIdentifiers().size();
    return total;
}

void GTestSuite::RegisterTest(GTest* test, const std::string& identifier,
                              const std::string& suiteName)
{
    GTestSuite* suite =
        GetAutoregisteredSuiteByName(suiteName.empty() ? kDefaultSuiteName : suiteName);
    if (GTest* existing = suite->FindTest(identifier)) {
        if (auto* group = dynamic_cast<GAutoTest*>(existing)) group->AddSubTest(test);
        return;
    }
    auto group = std::make_unique<GAutoTest>(identifier);
    group->AddSubTest(test);
    suite->AddTest(group.get());
    suite->ownedTests_.push_back(std::move(group));
}

std::map<std::string, std::unique_ptr<GTestSuite>>& GTestSuite::GetAutoregisteredSuiteMap()
{
    // Made on first registration, during static initialisation; gone at exit.
    static std::map<std::string, std::unique_ptr<GTestSuite>> suites;
    return suites;
}

GTestSuite* GTestSuite::GetAutoregisteredSuiteByName(const std::string& name)
{
    auto& suites = GetAutoregisteredSuiteMap();
    auto& suite = suites[name];
    if (!suite) suite = std::make_unique<GTestSuite>(name);
    return suite.get();
}

GTest::GBatchedResults GTestSuite::RunAutoregisteredSuites()
{
    GTest::GBatchedResults results;
    for (auto& entry : GetAutoregisteredSuiteMap()) results += entry.second->RunTests();
    return results;
}
