#pragma once
// What the measurements share: clocks, memory of the process, processes of their own for each run,
// and tables of text.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vendrel::bench {

/// Seconds of wall time since it was made.
class Stopwatch {
 public:
  double Seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - mStart).count();
  }

 private:
  std::chrono::steady_clock::time_point mStart = std::chrono::steady_clock::now();
};

/// Seconds that this process has computed since it was made; a busy machine lengthens it little.
class CpuWatch {
 public:
  CpuWatch() : mStart(Now()) {}
  double Seconds() const { return Now() - mStart; }

 private:
  static double Now();
  double mStart;
};

/// Bytes that the process has allocated and not freed: what lies in the heap and what the allocator
/// has mapped by itself (large blocks).
struct Allocated {
  std::int64_t Heap = 0;
  std::int64_t Mapped = 0;
  std::int64_t Sum() const { return Heap + Mapped; }
  static Allocated Now();
};

/// Calls of `operator new` since the process began; this program counts them.
std::int64_t AllocationCount();

/// The largest resident size that this process has had, in bytes (0 if the system does not tell).
std::int64_t PeakResident();

/// Runs `work` in a process of its own, so that neither its memory nor its peak mixes with that of
/// another run, and gives the numbers that it gives. Throws std::runtime_error with the child's
/// message if it fails.
std::vector<double> InOwnProcess(const std::function<std::vector<double>()>& work);

/// The smallest and the middle of some times; both 0 where there are none.
double Best(std::vector<double> times);
double Median(std::vector<double> times);

/// What several runs of one work took, in seconds, and the numbers that the last of them gave.
struct TimedRuns {
  double Best = 0;
  double Median = 0;
  /// The least that a run has computed.
  double Computed = 0;
  std::vector<double> Last;
  /// "what", then best, median and computed in milliseconds: how each row of a table begins.
  std::vector<std::string> Columns(const char* what) const;
};

/// Runs `work` as often, each time in a process of its own. Its first two numbers are the seconds
/// of the wall and those computed.
TimedRuns TimeRuns(int runs, const std::function<std::vector<double>()>& work);

/// Rows of text in columns as wide as needed; the first column to the left, the others to the
/// right.
class Table {
 public:
  explicit Table(std::vector<std::string> head) { mRows.push_back(std::move(head)); }
  void Add(std::vector<std::string> row) { mRows.push_back(std::move(row)); }
  std::string Text() const;

 private:
  std::vector<std::vector<std::string>> mRows;
};

/// "12.3"
std::string Decimal(double value, int places);
/// A number with its thousands apart: "1,234,567".
std::string Grouped(std::int64_t value);

}  // namespace vendrel::bench
