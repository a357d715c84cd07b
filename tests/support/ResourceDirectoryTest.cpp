#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <string>

#include "support/ResourceDirectory.h"

namespace {

class ResourceDirectoryTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        const char* saved = std::getenv("TYPEPROBE_RESOURCE_DIR");
        hadValue_ = saved != nullptr;
        if (saved) saved_ = saved;
    }
    void TearDown() override
    {
        if (hadValue_)
            setenv("TYPEPROBE_RESOURCE_DIR", saved_.c_str(), 1);
        else
            unsetenv("TYPEPROBE_RESOURCE_DIR");
    }

private:
    bool hadValue_ = false;
    std::string saved_;
};

TEST_F(ResourceDirectoryTest, EnvironmentVariableWinsAndLosesTrailingSlashes)
{
    setenv("TYPEPROBE_RESOURCE_DIR", "/opt/tables//", 1);
    EXPECT_EQ(ResourceDirectory::Path(), "/opt/tables");
    EXPECT_EQ(ResourceDirectory::FilePath("KeywordTable.plist"), "/opt/tables/KeywordTable.plist");
}

TEST_F(ResourceDirectoryTest, EmptyVariableFallsBackToTheLoadedFilesPrefix)
{
    setenv("TYPEPROBE_RESOURCE_DIR", "", 1);
    char resolved[PATH_MAX];
    ASSERT_NE(realpath(TYPEPROBE_BUILD_DIR, resolved), nullptr);
    // The test program lives in <build>/bin, so its prefix is the build tree.
    EXPECT_EQ(ResourceDirectory::Path(), std::string(resolved) + "/share/typeprobe");
}

}  // namespace
