// Named groups of tests, and the one process-wide map of suites that tests
// register themselves into at load time.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "selftest/GAutoTest.h"
#include "selftest/GTest.h"

// Orders tests by identifier.
struct order_alphabetically {
    bool operator()(const GTest* a, const GTest* b) const
    {
        return a->GetIdentifier() < b->GetIdentifier();
    }
};

class GTestSuite {
public:
    explicit GTestSuite(const std::string& name);
    ~GTestSuite();
    GTestSuite(const GTestSuite&) = delete;
    GTestSuite& operator=(const GTestSuite&) = delete;

    const std::string& GetName() const { return name_; }
    // Not owned; a test whose identifier is already present is not added.
    void AddTest(GTest* test);
    GTest* FindTest(const std::string& identifier) const;

    // Every case of every test, with the suite's report lines.
    GTest::GBatchedResults RunTests();
    // The tests named `test`: all their cases when `cases` is empty, else
    // only those.
    GTest::GBatchedResults RunTestByName(const std::string& test,
                                         const std::vector<std::string>& cases);
    unsigned long GetTotalNumTestCases() const;

    // Files `test` as a sub-test of the suite's GAutoTest named `identifier`,
    // making both as needed. An empty suite name is the default suite.
    static void RegisterTest(GTest* test, const std::string& identifier,
                             const std::string& suiteName);
    static std::map<std::string, std::unique_ptr<GTestSuite>>& GetAutoregisteredSuiteMap();
    static GTestSuite* GetAutoregisteredSuiteByName(const std::string& name);
    // Every registered suite, in name order.
    static GTest::GBatchedResults RunAutoregisteredSuites();

private:
    template <typename RunOne>
    GTest::GBatchedResults RunReported(RunOne runOne);

    std::string name_;
    std::set<GTest*, order_alphabetically> tests_;
    std::vector<std::unique_ptr<GAutoTest>> ownedTests_;
};
