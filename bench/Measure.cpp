#include "bench/Measure.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <new>
#include <stdexcept>

namespace {

// One thread measures at a time, so a plain counter does.
std::int64_t gAllocations = 0;

void* Allocate(std::size_t size) {
  ++gAllocations;
  if (void* block = std::malloc(size ? size : 1)) return block;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }

namespace vendrel::bench {
namespace {

// What a child writes: whether it has succeeded, then its numbers or its message.
void WriteAll(int handle, const void* bytes, std::size_t size) {
  const char* at = static_cast<const char*>(bytes);
  while (size > 0) {
    const ssize_t written = write(handle, at, size);
    if (written <= 0) return;
    at += written;
    size -= static_cast<std::size_t>(written);
  }
}

std::string ReadAll(int handle) {
  std::string all;
  char buffer[4096];
  for (ssize_t got; (got = read(handle, buffer, sizeof buffer)) > 0;)
    all.append(buffer, static_cast<std::size_t>(got));
  return all;
}

[[noreturn]] void RunAsChild(int handle, const std::function<std::vector<double>()>& work) {
  try {
    const std::vector<double> numbers = work();
    WriteAll(handle, "+", 1);
    WriteAll(handle, numbers.data(), numbers.size() * sizeof(double));
  } catch (const std::exception& error) {
    WriteAll(handle, "-", 1);
    WriteAll(handle, error.what(), std::strlen(error.what()));
  }
  _exit(0);
}

}  // namespace

double CpuWatch::Now() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

Allocated Allocated::Now() {
  const auto info = mallinfo2();
  return {static_cast<std::int64_t>(info.uordblks), static_cast<std::int64_t>(info.hblkhd)};
}

std::int64_t AllocationCount() { return gAllocations; }

std::int64_t PeakResident() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind("VmHWM:", 0) == 0) return std::strtoll(line.c_str() + 6, nullptr, 10) * 1024;
  return 0;
}

std::vector<double> InOwnProcess(const std::function<std::vector<double>()>& work) {
  std::fflush(nullptr);
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe to a child process");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no child process");
  if (child == 0) {
    close(ends[0]);
    RunAsChild(ends[1], work);
  }
  close(ends[1]);
  const std::string answer = ReadAll(ends[0]);
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (answer.empty())
    throw std::runtime_error("the measuring process died, status " + std::to_string(status));
  if (answer[0] != '+') throw std::runtime_error(answer.substr(1));
  std::vector<double> numbers((answer.size() - 1) / sizeof(double));
  std::memcpy(numbers.data(), answer.data() + 1, numbers.size() * sizeof(double));
  return numbers;
}

double Best(std::vector<double> times) {
  double best = times.empty() ? 0 : times.front();
  for (const double time : times) best = std::min(best, time);
  return best;
}

double Median(std::vector<double> times) {
  if (times.empty()) return 0;
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

std::string Table::Text() const {
  std::vector<std::size_t> widths;
  for (const auto& row : mRows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  std::string text;
  for (const auto& row : mRows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string blanks(widths[i] - row[i].size(), ' ');
      text += i == 0 ? row[i] + blanks : "  " + blanks + row[i];
    }
    text += '\n';
  }
  return text;
}

std::vector<std::string> TimedRuns::Columns(const char* what) const {
  return {what, Decimal(1000 * Best, 1), Decimal(1000 * Median, 1), Decimal(1000 * Computed, 1)};
}

TimedRuns TimeRuns(int runs, const std::function<std::vector<double>()>& work) {
  std::vector<double> seconds, computed;
  TimedRuns timed;
  for (int i = 0; i < runs; ++i) {
    timed.Last = InOwnProcess(work);
    seconds.push_back(timed.Last[0]);
    computed.push_back(timed.Last[1]);
  }
  timed.Best = Best(seconds);
  timed.Median = Median(seconds);
  timed.Computed = Best(computed);
  return timed;
}

std::string Decimal(double value, int places) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.*f", places, value);
  return buffer;
}

std::string Grouped(std::int64_t value) {
  std::string text = std::to_string(value);
  for (std::size_t at = text.size(); at > 3 + (value < 0 ? 1u : 0u);) text.insert(at -= 3, ",");
  return text;
}

}  // namespace vendrel::bench
