#pragma once
// Links that many elements have alike: all variables of a procedure stand in one module, in one
// procedure and in one project. They share one record of these links, which each reads as members
// of its own; an element that is linked elsewhere gets a copy of the record first.
//
//     struct VariablePlace { WeakHandle<Component> Component; WeakHandle<Block> Procedure; };
//     class Variable {
//       union {
//         SharedRecord<VariablePlace> mPlace{};
//         SharedLink<&VariablePlace::Component> Component;
//         SharedLink<&VariablePlace::Procedure> Procedure;
//       };
//
// Each member of the union is the one pointer to the record; all reach it as their base class.

#include "core/WeakHandle.h"

namespace vendrel {

/// The pointer. Who has the union must `Leave` it in its destructor.
template <typename Record>
class SharedRecord {
 public:
  /// Null while nothing is linked.
  const Record* Read() const { return mShared ? &mShared->Links : nullptr; }
  /// The record to amend it, no longer shared.
  Record& Edit() {
    if (!mShared) {
      mShared = new Shared;
    } else if (mShared->Users > 1) {
      --mShared->Users;
      mShared = new Shared{1, mShared->Links};
    }
    return mShared->Links;
  }
  /// Takes the record of another in place of its own.
  void Join(const SharedRecord& other) {
    if (other.mShared) ++other.mShared->Users;
    Shared* joined = other.mShared;
    Leave();
    mShared = joined;
  }
  void Leave() {
    if (mShared && --mShared->Users == 0) delete mShared;
    mShared = nullptr;
  }

 private:
  struct Shared {
    unsigned Users = 1;
    Record Links;
  };
  Shared* mShared;  // set by `{}`: only so may a union have several of these
};

template <auto Member>
class SharedLink;

/// One of the links: used like the `WeakHandle` that it is in the record.
template <typename Record, typename T, WeakHandle<T> Record::*Member>
class SharedLink<Member> : public SharedRecord<Record> {
 public:
  using Target = T;

  T* Get() const {
    const Record* record = this->Read();
    return record ? (record->*Member).Get() : nullptr;
  }
  explicit operator bool() const { return Get() != nullptr; }
  T* operator->() const { return Get(); }
  operator WeakHandle<T>() const {  // NOLINT: reads like it
    const Record* record = this->Read();
    return record ? record->*Member : WeakHandle<T>();
  }

  SharedLink& operator=(T* object) {
    if (Get() != object) this->Edit().*Member = object;
    return *this;
  }
  SharedLink& operator=(const WeakHandle<T>& link) {
    if (Get() != link.Get()) this->Edit().*Member = link;
    return *this;
  }
  SharedLink& operator=(const SharedLink& other) {
    if (Get() != other.Get()) *this = WeakHandle<T>(other);
    return *this;
  }
  void Set(T* object) { *this = object; }
};

}  // namespace vendrel
