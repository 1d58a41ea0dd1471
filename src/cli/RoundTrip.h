#pragma once
// One project loaded, written to an empty folder, and loaded again.

#include <ostream>
#include <string>
#include <vector>

#include "cli/Changes.h"
#include "cli/ProjectSets.h"

namespace vendrel::cli {

/// How many differences of each kind were found.
struct RoundTripCounts {
  std::size_t Projects = 0;
  std::size_t Modules = 0;
  std::size_t Changed = 0;
  std::size_t Differences = 0;
  std::size_t ByRule = 0;
};

/// Writes projects to a folder of their own each, and what differs to a stream.
class RoundTrip {
 public:
  RoundTrip(std::ostream& out, bool json, const CommonOptions& options, const Streams& streams)
      : mOut(out),
        mJson(json),
        mOptions(options),
        mStreams(streams),
        mWriter(out, "roundtrip", options, json) {}

  /// Compares bytes of modules and of the project file, and the two trees.
  void Run(VBProject& project);
  const RoundTripCounts& Counts() const { return mCounts; }

 private:
  struct Module {
    std::string Path;     // native, of what was read; empty if it was not found
    std::string Written;  // in Windows form
  };

  void WriteAndCompare(VBProject& project);
  std::vector<Module> ModulesOf(const VBProject& project) const;
  void CompareModules(const std::vector<Module>& modules);
  void CompareModule(const Module& module);
  void CompareProjectFile(const VBProject& project);
  void CompareKeptLines(const VBProject& project, std::string_view before, std::string_view after);
  void ReportLine(const VBProject& project, bool byRule, std::int32_t line,
                  const std::string& bytes);
  void CompareTrees(const VBProject& before, const std::string& written);
  /// Of a file in Windows form, line 0 for all of it.
  void Report(std::string_view kind, const std::string& file, std::int32_t line,
              std::string_view text);
  void ReportNotWritten(const std::string& file, std::string_view text);
  void ReportBytes(const std::string& path, std::string_view before, std::string_view after);

  std::ostream& mOut;
  bool mJson;
  const CommonOptions& mOptions;
  const Streams& mStreams;
  ChangeWriter mWriter;
  ShownPaths mPaths;
  RoundTripCounts mCounts;
};

}  // namespace vendrel::cli
