#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <string>

#include "support/ResourceDirectory.h"

namespace {

// The variable wins (without trailing slashes); empty, the folder comes from
// the loaded program's prefix: <build>/bin gives <build>/share/typeprobe.
TEST(ResourceDirectory, VariableThenTheProgramsPrefix)
{
    const char* saved = std::getenv("TYPEPROBE_RESOURCE_DIR");
    const std::string previous = saved ? saved : "";
    setenv("TYPEPROBE_RESOURCE_DIR", "/opt/tables//", 1);
    EXPECT_EQ(ResourceDirectory::FilePath("KeywordTable.plist"), "/opt/tables/KeywordTable.plist");
    setenv("TYPEPROBE_RESOURCE_DIR", "", 1);
    char resolved[PATH_MAX];
    ASSERT_NE(realpath(TYPEPROBE_BUILD_DIR, resolved), nullptr);
    EXPECT_EQ(ResourceDirectory::Path(), std::string(resolved) + "/share/typeprobe");
    saved ? setenv("TYPEPROBE_RESOURCE_DIR", previous.c_str(), 1) : unsetenv("TYPEPROBE_RESOURCE_DIR");
}

}  // namespace
