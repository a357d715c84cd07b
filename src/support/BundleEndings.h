// The name endings that make a folder a Mac bundle (".app", ".plugin", ...),
// case-sensitive and with their dots.
#pragma once

#include <set>
#include <string>

namespace BundleEndings {

// Built once, on first use, from the embedded property list; empty if that
// list cannot be read.
const std::set<std::string>& Get();

}  // namespace BundleEndings
