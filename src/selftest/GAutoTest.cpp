#include "selftest/GAutoTest.h"

#include <ostream>

GAutoTest::GAutoTest(const std::string& identifier) : identifier_(identifier) {}

void GAutoTest::AddSubTest(GTest* test)
{
    if (test) subTests_[test->GetIdentifier()] = test;
}

std::vector<std::string> GAutoTest::GetAllTestIdentifiers() const
{
    std::vector<std::string> names;
    for (const auto& entry : subTests_) names.push_back(entry.first);
    return names;
}

std::string GAutoTest::GetIdentifier() const
{
    return identifier_;
}

GTest::EResult GAutoTest::RunTestByIdentifier(const std::string& name)
{
    auto found = subTests_.find(name);
    if (found == subTests_.end()) {
        *g_pOutputStream << "UNKNOWN TEST: " << name << std::endl;
        return kFailure;
    }
    // Through RunTest, so the sub-test's own preparation and cleanup apply.
    return found->second->RunTest(name);
}
