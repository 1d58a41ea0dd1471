// Linked into programs of ours that use mimalloc: their memory comes in large pages. Small ones are
// handed out one by one, each cleared by the kernel: half of the time of a load.
//
// The allocator asks for large pages where its options say so at the time that it maps memory, 32
// MB at once, and the first allocation is an initialiser's of some library, long before `main`. So
// the option is set in front of all initialisers.

#include <mimalloc.h>

namespace {

void TakeLargePages() {
  mi_option_enable(mi_option_large_os_pages);
  mi_option_set(mi_option_eager_commit_delay, 0);  // a thread's first memory too
}

[[gnu::section(".preinit_array"), gnu::used]] void (*const kBeforeInitialisers)() = TakeLargePages;

}  // namespace
