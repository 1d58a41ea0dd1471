#pragma once
// Single parts measured alone, each many times, by Google Benchmark.

#include <string>

namespace vendrel::bench {

struct MicroOptions {
  int Runs = 5;
  bool Classic = false;
};

/// Lines a second of the classifier alone, over the modules of a generated project.
int RunClassify(const MicroOptions& options);
/// Conditions a second of conditional compilation, by the number of constants known.
int RunEvaluate(const MicroOptions& options);
/// Look-ups a second of qualified names and of type names in a group of generated projects.
int RunNames(const MicroOptions& options);
/// Bytes of source a second of the colouring, in the plain form and as a page.
int RunColour(const MicroOptions& options);

struct UsesBenchOptions {
  int Runs = 5;
  bool Classic = false;
  /// A project file; empty: generated projects.
  std::string File;
};
/// Bytes of source a second in which names are bound, streamed and gathered.
int RunUses(const UsesBenchOptions& options);

struct TypeLibBenchOptions {
  int Runs = 5;
  bool Classic = false;
  /// A library to read; empty: a generated one of `Megabytes`.
  std::string File;
  double Megabytes = 5;
};
/// A type library from its file (in the file cache) to the reader's objects, and to the tree.
int RunTypeLib(const TypeLibBenchOptions& options);

struct AssemblyBenchOptions {
  int Runs = 5;
  bool Classic = false;
  std::string File;
};
/// An assembly from its file (in the file cache) to names, to the tree of its own members, and to
/// what they inherit.
int RunAssembly(const AssemblyBenchOptions& options);

struct DocumentationBenchOptions {
  int Runs = 5;
  bool Classic = false;
  /// Size of the generated documentation file.
  double Megabytes = 100;
  std::string WorkFolder;
};
/// A documentation file (in the file cache) brought into a tree of the elements that it documents.
int RunDocumentation(const DocumentationBenchOptions& options);

}  // namespace vendrel::bench
