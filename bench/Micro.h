#pragma once
// Single parts measured alone, each many times, by Google Benchmark.

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

}  // namespace vendrel::bench
