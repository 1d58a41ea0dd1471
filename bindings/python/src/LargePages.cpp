#include "LargePages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

namespace vendrel::python {
namespace {

// The allocator of glibc never takes pieces of 32 MB and more from its heap, and gives back what is
// free at its end beyond twice the largest piece that it was asked for.
constexpr std::size_t kStep = 31 << 20;

char* EndOfHeap() { return static_cast<char*>(sbrk(0)); }

// The allocator keeps what is given back at the end of its heap. It takes a first piece of that
// size from elsewhere, and the next ones from there.
void GrowHeap() {
  for (int i = 0; i < 2; ++i) {
    void* volatile piece = std::malloc(kStep);
    std::free(piece);
  }
}

}  // namespace

LargePages::LargePages() : mEnd(EndOfHeap()) { Grow(mEnd); }

void LargePages::Look() {
  if (char* const end = EndOfHeap(); end > mEnd) Grow(end);
}

void LargePages::Grow(char* from) {
  if (from == reinterpret_cast<char*>(-1)) return;
  GrowHeap();
  mEnd = EndOfHeap();
#ifdef MADV_HUGEPAGE
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  char* const begin = from + (page - reinterpret_cast<std::uintptr_t>(from) % page) % page;
  if (begin < mEnd) madvise(begin, static_cast<std::size_t>(mEnd - begin), MADV_HUGEPAGE);
#endif
}

}  // namespace vendrel::python
