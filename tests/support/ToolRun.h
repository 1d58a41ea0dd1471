#pragma once
// The tool, run within the test.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Tool.h"

namespace vendrel::cli {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// What a run gave.
struct ToolRun {
  int Code = -1;
  std::string Out;
  std::string Err;
};

/// Who sits in front of the tool.
struct Person {
  bool Terminal = false;
  /// What is typed; null if nobody is there to answer.
  const char* Answer = nullptr;
};

inline ToolRun Tool(const std::vector<std::string>& arguments, const Person& person = {}) {
  std::vector<const char*> argv{"vendrelmodel"};
  for (const std::string& argument : arguments) argv.push_back(argument.c_str());
  std::ostringstream out, err;
  std::istringstream answers(person.Answer ? person.Answer : "");
  const Streams streams{out, err, person.Terminal, person.Terminal,
                        person.Answer ? &answers : nullptr};
  const int code = RunTool(static_cast<int>(argv.size()), argv.data(), streams);
  return {code, out.str(), err.str()};
}

/// The same, where it is to end with that code.
inline ToolRun ToolEnding(int code, const std::vector<std::string>& arguments,
                          const Person& person = {}) {
  ToolRun run = Tool(arguments, person);
  EXPECT_EQ(run.Code, code) << testing::PrintToString(arguments) << "\n" << run.Out << run.Err;
  return run;
}

/// What a run writes, or what it says where it is to end with another code than 0.
inline std::string RunFor(const std::vector<std::string>& arguments, int code = exDone) {
  ToolRun run = ToolEnding(code, arguments);
  return code == exDone ? run.Out : run.Err;
}

/// The JSON that a run writes, each line a value of its own; without the line that tells the form.
inline std::vector<nlohmann::json> JsonLines(const std::vector<std::string>& arguments,
                                             int code = exDone) {
  std::vector<nlohmann::json> values;
  std::istringstream lines(ToolEnding(code, arguments).Out);
  for (std::string line; std::getline(lines, line);) values.push_back(nlohmann::json::parse(line));
  if (values.empty() || !values.front().contains("FormatVersion"))
    ADD_FAILURE() << "the first line does not tell the form";
  else
    values.erase(values.begin());
  return values;
}

}  // namespace vendrel::cli
