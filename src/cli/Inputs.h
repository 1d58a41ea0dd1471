#pragma once
// The paths that a command was given. Reading commands take as many as there are.

#include <CLI/CLI.hpp>
#include <functional>
#include <istream>
#include <string>
#include <vector>

#include "cli/ProjectSets.h"
#include "cli/Results.h"

namespace vendrel::cli {

/// Paths in the order of the command line.
struct Inputs {
  std::vector<std::string> Paths;

  bool AreSeveral() const { return Paths.size() > 1; }
  /// Where their trees are left: those of several not at all.
  Streams For(const Streams& streams) const {
    return AreSeveral() ? streams.ForOneOfMany() : streams;
  }
  /// As messages name them; of many the first ones.
  std::string Shown() const;
};

/// Adds the paths as the positional argument of a command.
void AddInputs(CLI::App& command, Inputs& inputs);
/// The same for a command that takes a name behind them; `meaning` tells what it is.
void AddInputsAndName(CLI::App& command, Inputs& inputs, const std::string& meaning);

/// Takes the last one off: the name of a command that needs one. Raises a usage error where no path
/// is left, which says `what` is missing.
std::string TakeName(Inputs& inputs, const std::string& what);
/// Takes the last of several off if nothing is there by that path; else gives an empty name.
std::string TakeNameIfAny(Inputs& inputs);

/// What a single path is; several of them are a folder of their projects.
InputKind KindOfInput(const Inputs& inputs);

/// `ForEachProject` for each of them. With several, one that cannot be read is told, the others are
/// done, and the exit code is 1.
int ForEachProject(const Inputs& inputs, const CommonOptions& options, const Streams& streams,
                   const std::function<void(VBProject&)>& visit,
                   LoadDepth depth = LoadDepth::Modules,
                   const std::function<void(VBProject&)>& prepare = {});

/// Calls `step` for each path and gives the worst exit code. With several, a failure of one that
/// concerns it alone is told, and the others are done.
int ForEachInput(const Inputs& inputs, const CommonOptions& options, const Streams& streams,
                 const std::function<int(const std::string&)>& step);

/// Puts the paths of a list, one a line, in the place of each argument "-" that is no value of an
/// option. Raises a usage error where there is nothing to read a list from.
void ReadListedInputs(const CLI::App& app, std::vector<std::string>& arguments,
                      const Streams& streams);

/// `WriteResult` that refuses any of the paths as the file of -o.
void WriteResult(const CommonOptions& options, const Streams& streams, const Inputs& inputs,
                 const std::function<void(std::ostream&)>& write,
                 ResultForm form = ResultForm::Plain);

}  // namespace vendrel::cli
