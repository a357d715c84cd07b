// A small in-library unit-test framework: a test object runs named cases and
// writes a fixed-format report to one class-wide output stream.
#pragma once

#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

class GTest {
public:
    // Fixed underlying type: a test may hand back any other value, which is
    // counted but not reported.
    enum EResult : int { kFailure = 0, kSuccess = 1, kNotFullyImplemented = 2 };

    // Number of cases per result.
    class GBatchedResults {
    public:
        GBatchedResults& operator+=(EResult result);
        GBatchedResults& operator+=(const GBatchedResults& other);
        unsigned long Count(EResult result) const;
        unsigned long Total() const;

    private:
        std::map<EResult, unsigned long> counts_;
    };

    virtual ~GTest();
    virtual std::vector<std::string> GetAllTestIdentifiers() const = 0;
    virtual std::string GetIdentifier() const = 0;
    virtual EResult RunTestByIdentifier(const std::string& name) = 0;
    // False skips the case, which then counts as a failure.
    virtual bool PrepareForTest(const std::string& name);
    virtual void PostTestCleanup(const std::string& name);

    // Prepares, runs and cleans up one case; cleanup runs even when
    // preparation refused.
    EResult RunTest(const std::string& name);
    // Every case, or only the listed ones, with the per-test report lines.
    GBatchedResults RunEachTest();
    GBatchedResults RunSpecificTests(const std::vector<std::string>& names);

    static void SetTestModes(const std::set<std::string>& modes);
    static bool IsTestModeSet(const std::string& mode);

    // Reports a failure when `condition` is false; returns `condition`.
    static bool Assert(const std::string& message, bool condition, const char* file, int line);
    // Begins a failure line; the case's report line completes it.
    static void DisplayFailureMessage(const std::string& message, const char* file, int line);

    // Where every report goes; std::cout unless a caller redirects it.
    static std::ostream* g_pOutputStream;

private:
    static std::set<std::string>& TestModes();
};
