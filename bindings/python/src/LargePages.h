#pragma once
// The heap of a process of Python in large pages: a fifth of the time of a load is the kernel's,
// handing out small ones.

namespace vendrel::python {

/// While one lives the heap of the main thread grows in large steps, and the kernel is asked to
/// back them by large pages. Nothing where that heap does not grow: another allocator, another
/// thread.
class LargePages {
 public:
  LargePages();
  /// To be called now and then, so that a step that was used up is followed by the next one; costs
  /// next to nothing.
  void Look();

 private:
  void Grow(char* from);

  char* mEnd;
};

}  // namespace vendrel::python
