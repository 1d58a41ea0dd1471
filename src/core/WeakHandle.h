#pragma once
// Links that do not own. Elements are shared pointers, since one element stands in several
// collections; every other link (parent, last element, event source) is a WeakHandle, so that
// dropping the root frees the tree. A std::weak_ptr would do the same at fourteen times the price
// and not for objects on the stack.

#include <cstdint>
#include <vector>

namespace vendrel {

class HandleTarget;

namespace detail {
/// What a handle points at: emptied by the destructor of the target, freed with its last handle.
struct HandleCell {
  HandleTarget* Target;
  std::uint32_t Handles;
  std::uint32_t PlaceInSlab;  // 1-based; 0: a piece of memory of its own
};
/// A cell without handles; from the `CellPool` of this thread, where there is one.
HandleCell* NewCell(HandleTarget* target);
void FreeCell(HandleCell* cell);
}  // namespace detail

/// Base of everything that a WeakHandle can point at. A copy is another object: handles to the
/// original do not follow it.
class HandleTarget {
 public:
  HandleTarget() = default;
  HandleTarget(const HandleTarget&) {}
  HandleTarget& operator=(const HandleTarget&) { return *this; }  // NOLINT: keeps its own cell
  virtual ~HandleTarget() {
    if (mCell) mCell->Target = nullptr;
  }

 private:
  template <typename T>
  friend class WeakHandle;
  friend class ApartHandles;

  detail::HandleCell* AcquireCell() const {
    if (!mCell) mCell = detail::NewCell(const_cast<HandleTarget*>(this));
    ++mCell->Handles;
    return mCell;
  }
  static void ReleaseCell(detail::HandleCell* cell) {
    if (!cell || --cell->Handles > 0) return;
    if (cell->Target) cell->Target->mCell = nullptr;
    detail::FreeCell(cell);
  }

  mutable detail::HandleCell* mCell = nullptr;
};

/// While one of these is there, its thread takes cells from larger pieces of memory: a module that
/// is read makes very many, and most for a moment. A piece ends with its last cell.
class CellPool {
 public:
  CellPool();
  ~CellPool();
  CellPool(const CellPool&) = delete;
  CellPool& operator=(const CellPool&) = delete;

 private:
  friend detail::HandleCell* detail::NewCell(HandleTarget*);
  friend void detail::FreeCell(detail::HandleCell*);
  std::vector<detail::HandleCell*> mFree;
  struct Slab;
  Slab* mSlab = nullptr;
  static void Leave(Slab* slab);
  static Slab* SlabOf(detail::HandleCell* cell);
  CellPool* mOuter;
};

/// Holds one object without keeping it alive. Valid from the target's constructor on; is null
/// once the target has gone. One thread only.
template <typename T>
class WeakHandle {
 public:
  WeakHandle() = default;
  WeakHandle(T* object) { Set(object); }  // NOLINT: a link is assigned like a pointer
  WeakHandle(const WeakHandle& other) : mCell(other.mCell) {
    if (mCell) ++mCell->Handles;
  }
  WeakHandle(WeakHandle&& other) noexcept : mCell(other.mCell) { other.mCell = nullptr; }
  ~WeakHandle() { HandleTarget::ReleaseCell(mCell); }

  WeakHandle& operator=(const WeakHandle& other) {  // NOLINT: counts up before it counts down
    if (other.mCell) ++other.mCell->Handles;
    HandleTarget::ReleaseCell(mCell);
    mCell = other.mCell;
    return *this;
  }
  WeakHandle& operator=(WeakHandle&& other) noexcept {
    if (this == &other) return *this;
    HandleTarget::ReleaseCell(mCell);
    mCell = other.mCell;
    other.mCell = nullptr;
    return *this;
  }
  WeakHandle& operator=(T* object) {
    Set(object);
    return *this;
  }

  /// Stores the object; nullptr empties the handle.
  void Set(T* object) {
    detail::HandleCell* old = mCell;
    mCell = object ? static_cast<const HandleTarget*>(object)->AcquireCell() : nullptr;
    HandleTarget::ReleaseCell(old);
  }
  /// The object, or nullptr when none was stored or it has gone.
  T* Get() const { return mCell ? static_cast<T*>(mCell->Target) : nullptr; }

  explicit operator bool() const { return mCell && mCell->Target; }
  T* operator->() const { return Get(); }

 private:
  friend class ApartHandles;
  explicit WeakHandle(detail::HandleCell* cell) : mCell(cell) { ++mCell->Handles; }

  detail::HandleCell* mCell = nullptr;
};

/// Links to one target that are counted apart, so that each of several threads may copy and drop
/// its own. A member of the target.
class ApartHandles {
 public:
  ApartHandles() = default;
  ApartHandles(const ApartHandles&) {}
  ApartHandles& operator=(const ApartHandles&) { return *this; }  // NOLINT: keeps its own
  ~ApartHandles() {
    for (detail::HandleCell* cell : mCells) {
      cell->Target = nullptr;
      HandleTarget::ReleaseCell(cell);
    }
  }

  /// One more; its copies are counted with it.
  template <typename T>
  WeakHandle<T> New(T& target) {
    mCells.push_back(new detail::HandleCell{static_cast<HandleTarget*>(&target), 1, 0});
    return WeakHandle<T>(mCells.back());
  }

 private:
  std::vector<detail::HandleCell*> mCells;  // each counts this as one of its handles
};

}  // namespace vendrel
