#pragma once
// The compiled files of tests/dotnet/data, and projects loaded from them.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "project/VBProject.h"
#include "support/SourceRoot.h"

namespace vendrel::test {

inline std::string DataPath(const std::string& name) {
  return SourceRoot() + "/tests/dotnet/data/" + name;
}

inline std::vector<std::uint8_t> DataBytes(const std::string& name) {
  std::ifstream file(DataPath(name), std::ios::binary);
  std::vector<std::uint8_t> bytes(std::istreambuf_iterator<char>(file), {});
  EXPECT_FALSE(bytes.empty()) << name;
  return bytes;
}

inline std::shared_ptr<VBProject> LoadData(const std::string& name, bool classic = false,
                                           bool withPrivate = false) {
  auto project = std::make_shared<VBProject>();
  project->Reading = classic ? ReadingRules::Classic() : ReadingRules::Complete();
  project->LoadPrivateMembers = withPrivate;
  project->LoadFromAssembly(DataPath(name));
  return project;
}

}  // namespace vendrel::test
