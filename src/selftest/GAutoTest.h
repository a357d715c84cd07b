// A test made of registered sub-tests, one case per sub-test, filed by the
// sub-test's identifier.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "selftest/GTest.h"

class GAutoTest : public GTest {
public:
    explicit GAutoTest(const std::string& identifier);

    // Not owned: sub-tests are usually static objects.
    void AddSubTest(GTest* test);

    std::vector<std::string> GetAllTestIdentifiers() const override;
    std::string GetIdentifier() const override;
    // An unknown name is reported and fails.
    EResult RunTestByIdentifier(const std::string& name) override;

private:
    std::string identifier_;
    std::map<std::string, GTest*> subTests_;
};
