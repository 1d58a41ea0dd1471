#include "core/WeakHandle.h"

#include <cstddef>
#include <utility>

#include "core/Workspace.h"

namespace vendrel {

// Cells, those in use and those that wait to be used again counted, and the pool while it fills it.
struct CellPool::Slab {
  static constexpr std::uint32_t kCells = 31;  // half a kilobyte, what the allocator adds included
  std::uint32_t Users = 1;
  std::uint32_t Handed = 0;
  detail::HandleCell Cells[kCells];
};

CellPool::CellPool() : mOuter(std::exchange(Workspace::Current().Cells, this)) {}

CellPool::~CellPool() {
  Workspace::Current().Cells = mOuter;
  for (detail::HandleCell* cell : mFree) Leave(SlabOf(cell));
  if (mSlab) Leave(mSlab);
}

void CellPool::Leave(Slab* slab) {
  if (--slab->Users == 0) delete slab;
}

CellPool::Slab* CellPool::SlabOf(detail::HandleCell* cell) {
  char* const first = reinterpret_cast<char*>(cell - (cell->PlaceInSlab - 1));
  return reinterpret_cast<Slab*>(first - offsetof(Slab, Cells));
}

namespace detail {

HandleCell* NewCell(HandleTarget* target) {
  CellPool* pool = Workspace::Current().Cells;
  if (!pool) return new HandleCell{target, 0, 0};
  if (!pool->mFree.empty()) {
    HandleCell* cell = pool->mFree.back();
    pool->mFree.pop_back();
    cell->Target = target;
    cell->Handles = 0;
    return cell;
  }
  if (pool->mSlab && pool->mSlab->Handed == CellPool::Slab::kCells)
    CellPool::Leave(std::exchange(pool->mSlab, nullptr));
  if (!pool->mSlab) pool->mSlab = new CellPool::Slab;
  CellPool::Slab& slab = *pool->mSlab;
  HandleCell& cell = slab.Cells[slab.Handed++];
  ++slab.Users;
  cell = {target, 0, slab.Handed};
  return &cell;
}

void FreeCell(HandleCell* cell) {
  if (cell->PlaceInSlab == 0) {
    delete cell;
    return;
  }
  if (CellPool* pool = Workspace::Current().Cells)
    pool->mFree.push_back(cell);
  else
    CellPool::Leave(CellPool::SlabOf(cell));
}

}  // namespace detail
}  // namespace vendrel
