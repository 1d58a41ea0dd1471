#pragma once
// Findings in the Static Analysis Results Interchange Format, version 2.1.0.

#include <ostream>
#include <string>
#include <string_view>

#include "output/Json.h"
#include "survey/ToldFinding.h"

namespace vendrel {

/// Writes one log with one run.
class SarifLog {
 public:
  /// `nativeRoot`: the folder from which relative paths are; empty where all are absolute.
  SarifLog(std::ostream& out, std::string_view toolVersion, std::string nativeRoot);
  void Write(const ToldFinding& finding);
  /// Closes the log. `failed` tells that part of the input could not be read.
  void End(bool failed);

 private:
  void WriteRules();
  void WriteLocation(const ToldFinding& finding);
  void Text(std::string_view name, std::string_view text);

  JsonWriter mJson;
  std::string mNativeRoot;
};

/// A path of this machine as a URI reference: relative as it is, else with the scheme "file".
std::string UriOf(std::string_view nativePath);

}  // namespace vendrel
