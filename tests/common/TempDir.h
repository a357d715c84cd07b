// A scratch folder removed with everything in it when the test ends.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace testfiles {

class TempDir {
public:
    TempDir()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "typeprobe-XXXXXX").string();
        path_ = mkdtemp(pattern.data()) ? pattern : std::string();
    }
    ~TempDir()
    {
        std::error_code ignored;
        if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& path() const { return path_; }
    std::string file(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

template <typename Bytes>
inline void writeFile(const std::string& path, const Bytes& bytes)
{
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

inline std::vector<uint8_t> readFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

}  // namespace testfiles
