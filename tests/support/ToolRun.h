#pragma once
// The tool, run within the test.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "cli/Tool.h"

namespace vendrel::cli {

/// What a run writes, or what it says where it is to end with another code than 0.
inline std::string RunFor(const std::vector<std::string>& arguments, int code = exDone) {
  std::vector<const char*> argv{"vendrelmodel"};
  for (const std::string& argument : arguments) argv.push_back(argument.c_str());
  std::ostringstream out, err;
  EXPECT_EQ(RunTool(static_cast<int>(argv.size()), argv.data(), {out, err}), code) << err.str();
  return code == exDone ? out.str() : err.str();
}

}  // namespace vendrel::cli
