#include "selftest/GTest.h"

#include <iostream>

std::ostream* GTest::g_pOutputStream = &std::cout;

GTest::GBatchedResults& GTest::GBatchedResults::operator+=(EResult result)
{
    ++counts_[result];
    return *this;
}

GTest::GBatchedResults& GTest::GBatchedResults::operator+=(const GBatchedResults& other)
{
    for (const auto& [result, count] : other.counts_) counts_[result] += count;
    return *this;
}

unsigned long GTest::GBatchedResults::Count(EResult result) const
{
    auto found = counts_.find(result);
    return found == counts_.end() ? 0 : found->second;
}

unsigned long GTest::GBatchedResults::Total() const
{
    unsigned long total = 0;
    for (const auto& entry : counts_) total += entry.second;
    return total;
}

GTest::~GTest() = default;

bool GTest::PrepareForTest(const std::string&)
{
    return true;
}

void GTest::PostTestCleanup(const std::string&) {}

GTest::EResult GTest::RunTest(const std::string& name)
{
    EResult result = PrepareForTest(name) ? RunTestByIdentifier(name) : kFailure;
    PostTestCleanup(name);
    return result;
}

GTest::GBatchedResults GTest::RunEachTest()
{
    return RunSpecificTests(GetAllTestIdentifiers());
}

GTest::GBatchedResults GTest::RunSpecificTests(const std::vector<std::string>& names)
{
    std::ostream& out = *g_pOutputStream;
    const std::string identifier = GetIdentifier();
    out << " -=- " << identifier << ": running " << names.size() << " tests...\r\n";
    GBatchedResults results;
    for (const std::string& name : names) {
        EResult result = RunTest(name);
        results += result;
        switch (result) {
        case kSuccess: out << " - " << name << " succeeded.\r\n"; break;
        case kFailure: out << " in " << name << ".\r\n"; break;
        case kNotFullyImplemented: out << " ? " << name << " is not fully implemented.\r\n"; break;
        }
    }
    out << " -=- " << identifier << " tests summary: " << names.size() << " tests, "
        << results.Count(kFailure) << " failures, " << results.Count(kNotFullyImplemented)
        << " unimplemented.\r\n\r\n\r\n";
    return results;
}

std::set<std::string>& GTest::TestModes()
{
    static std::set<std::string> modes;
    return modes;
}

void GTest::SetTestModes(const std::set<std::string>& modes)
{
    TestModes() = modes;
}

bool GTest::IsTestModeSet(const std::string& mode)
{
    return TestModes().count(mode) != 0;
}

bool GTest::Assert(const std::string& message, bool condition, const char* file, int line)
{
    if (!condition) DisplayFailureMessage(message, file, line);
    return condition;
}

void GTest::DisplayFailureMessage(const std::string& message, const char* file, int line)
{
    const std::string path = file ? file : "";
    const size_t cut = path.find_last_of("/\\");
    const std::string baseName = cut == std::string::npos ? path : path.substr(cut + 1);
    *g_pOutputStream << " * Failure \"" << message << "\" at " << baseName << ":" << line;
}
