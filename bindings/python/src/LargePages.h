#pragma once
// The heap of a process of Python in large pages: a fifth of the time of a load is the kernel's,
// handing out small ones.

#include <cstddef>

namespace vendrel::python {

/// Watches the heap of the main thread while a project loads. Once it has grown by some megabytes
/// it grows in large steps, and the kernel is asked to back them by large pages. Nothing where the
/// heap does not grow: another allocator, another thread, a small project.
class LargePages {
 public:
  LargePages();
  /// To be called now and then; costs next to nothing.
  void Look();

 private:
  char* mEnd;
  std::size_t mPatience;
};

}  // namespace vendrel::python
