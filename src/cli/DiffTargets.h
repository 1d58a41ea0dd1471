#pragma once
// What diff does with a pair: tells everything that differs, or judges what callers see.

#include <ostream>
#include <string>
#include <vector>

#include "cli/Changes.h"
#include "cli/DiffInputs.h"
#include "survey/ApiReport.h"
#include "survey/PublicSurface.h"

namespace vendrel::cli {

/// What the command line asked for.
struct DiffArguments {
  CommonOptions Common;
  std::string Before;
  std::string After;
  std::vector<std::string> Revisions;
  bool Json = false;
  bool Html = false;
  bool NoText = false;
  bool Places = false;
  bool Comments = false;
  bool Api = false;
  bool AllModules = false;
};

/// Everything that differs, element by element, written as it is found.
class TreeDiff final : public DiffTarget {
 public:
  TreeDiff(const DiffArguments& arguments, std::ostream& out);
  void Projects(VBProject& before, VBProject& after) override;
  void Groups(VBProjectGroup& before, VBProjectGroup& after) override;
  void Alone(ChangeKind kind, const std::string& path) override;

  const ChangeWriter& Writer() const { return mWriter; }

 private:
  void Compare(ElementRef before, ElementRef after, const ElementPartners& partners);

  DifferenceOptions mOptions;
  ChangeWriter mWriter;
};

/// What callers see, and whom each change breaks.
class ApiDiff final : public DiffTarget {
 public:
  explicit ApiDiff(const DiffArguments& arguments);
  /// Raises a usage error for two that are bound by other rules: COM and .NET.
  void Projects(VBProject& before, VBProject& after) override;
  void Groups(VBProjectGroup& before, VBProjectGroup& after) override;
  void Alone(ChangeKind kind, const std::string& path) override;

  const ApiReport& Report() const { return mReport; }

 private:
  SurfaceOptions mOptions;
  ApiReport mReport;
};

}  // namespace vendrel::cli
