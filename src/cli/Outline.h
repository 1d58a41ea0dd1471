#pragma once
// The outline that people read: one line an element, with its place.

#include <ostream>
#include <string>
#include <string_view>

#include "cli/Report.h"
#include "cli/ShownText.h"

namespace vendrel::cli {

/// How an outline is written.
struct OutlineOptions {
  /// 1: the project, 2: its modules, 3: their members, 4: all of the tree.
  int Depth = 3;
  /// Name of the one module to show (case ignored); empty: all.
  std::string Module;
  bool Coloured = false;
};

/// Writes the outline of a project.
class Outline {
 public:
  Outline(std::ostream& out, const OutlineOptions& options) : mOut(out), mOptions(options) {}

  /// False if no module has the name asked for; nothing is written then.
  bool Write(const VBProject& project);

 private:
  void WriteProject(const VBProject& project);
  void WriteModule(const Component& component);
  void WriteDeclarations(const Component& component);
  void WriteBlock(const Block& block);
  void WriteControls(const Component& component);
  template <typename Collection>
  void WriteVariables(int depth, const Collection* variables, std::string_view word);
  void WriteParameters(const Parameters* parameters);

  /// One line: word for the kind, text, remark, and place in the file at hand (line 0: none).
  void Line(int depth, std::string_view word, const Cell& text, std::string_view remark,
            std::int32_t line);
  bool Shows(int depth) const { return depth <= mOptions.Depth; }
  /// `text` with what would disturb a terminal written out.
  void Paint(std::string_view colour, std::string_view text);

  std::ostream& mOut;
  const OutlineOptions& mOptions;
  ShownPaths mPaths;
  /// Windows form of the file whose elements are being written; empty for those of a library, all
  /// of which stand in the file of the project.
  std::string mFile;
  std::string mLine;
};

}  // namespace vendrel::cli
