#pragma once
// The types of several assemblies by the last word of their names. A name in source stands behind
// each import in turn; most names of source are no types at all, which one look tells.

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dotnet/metadata/AssemblyStore.h"

namespace vendrel {

/// Of two assemblies that have a type of one name the one added first wins.
class KnownTypes {
 public:
  /// What stands in front of a name, with the dot behind it; empty for nothing.
  struct Front {
    std::string Exact, Folded;
  };
  static Front FrontOf(std::string_view space);

  /// The types of a file that others can use, and those that it says another file has now. False
  /// for a file that has been added before.
  bool Add(const metadata::AssemblyFile& file);
  /// Whether some type has this word behind its last dot, without regard to case.
  bool HasWord(std::string_view word) const;
  /// The first type that the name means behind one of the fronts, in their order; case is ignored,
  /// but for types that have gone to another file. `store` opens such files.
  metadata::TypeHandle Find(std::string_view name, const std::vector<const Front*>& fronts,
                            metadata::AssemblyStore& store) const;

 private:
  struct Known {
    std::string Folded;
    const metadata::AssemblyFile* File;
    std::uint32_t Row;  // 0: another file has it
    std::string Exact;  // of such a one
    std::uint32_t Next;
  };
  struct Chain {
    std::uint32_t First = 0, Last = 0;
  };
  void Keep(Known known);
  metadata::TypeHandle TypeOf(const Known& known, std::string_view front, std::string_view name,
                              metadata::AssemblyStore& store) const;

  std::vector<const metadata::AssemblyFile*> mFiles;
  std::deque<Known> mKnown;                            // their texts stay where they are
  std::unordered_map<std::string_view, Chain> mWords;  // places in mKnown, from 1
};

}  // namespace vendrel
