#include "uses/Builtins.h"

#include <algorithm>

#include "core/Ascii.h"
#include "text/WordList.h"
#include "uses/WrittenName.h"
#include "uses/builtins/Reader.h"
#include "uses/builtins/Texts.h"

namespace vendrel {
namespace {

std::size_t HashOfName(std::size_t seed, std::string_view name) {
  std::uint64_t hash = 1469598103934665603u ^ (seed * 0x9E3779B97F4A7C15u);
  for (const char c : name)
    hash = (hash ^ static_cast<unsigned char>(LowerAscii(c))) * 1099511628211u;
  return static_cast<std::size_t>(hash ^ (hash >> 29));
}

constexpr auto kIntrinsicTypes = WordsOf<13>(
    "Boolean Byte Integer Long Single Double Currency Decimal Date String Object Variant Any");

}  // namespace

int BuiltinMember::MinimumArguments() const {
  int count = 0;
  for (const BuiltinParameter& each : Parameters) count += !each.Optional && !each.ParamArray;
  return count;
}

int BuiltinMember::MaximumArguments() const {
  const bool any = !Parameters.empty() && Parameters.back().ParamArray;
  return any ? -1 : static_cast<int>(Parameters.size());
}

std::string BuiltinMember::QualifiedName() const {
  return Owner->QualifiedName().append("~").append(Name);
}

std::string BuiltinType::QualifiedName() const {
  return std::string(Library).append("~").append(Name);
}

const Builtins& Builtins::Table() {
  static const Builtins table;
  return table;
}

Builtins::Builtins() {
  BuiltinReader reader(*this);
  for (const std::string_view text :
       {builtins::kVbaModules, builtins::kVbaConstants, builtins::kVbRunConstants,
        builtins::kVbRunObjects, builtins::kVbObjects, builtins::kVbDesigners,
        builtins::kVbControls, builtins::kVbListControls, builtins::kStdOle})
    reader.Read(text);
  reader.Finish();
  Index();
}

void Builtins::Index() {
  std::size_t slots = 64;
  while (slots < 2 * (3 * mMembers.size() + 2 * mTypes.size())) slots *= 2;
  mSlots.resize(slots);
  for (std::uint32_t t = 0; t < mTypes.size(); ++t) {
    const BuiltinType& type = mTypes[t];
    const auto library = static_cast<std::uint32_t>(LibraryPosition(type.Library));
    Place(Sort::Type, 0, t, type.Name);
    Place(Sort::LibraryType, library, t, type.Name);
    for (const BuiltinMember& member : type.Members) {
      const auto position = static_cast<std::uint32_t>(&member - mMembers.data());
      const bool event = member.Kind == BuiltinKind::Event;
      Place(event ? Sort::Event : Sort::Member, t, position, member.Name);
      if (!type.IsGlobal || event) continue;
      Place(Sort::Global, 0, position, member.Name);
      Place(Sort::LibraryGlobal, library, position, member.Name);
    }
  }
}

// The first of a name stays: libraries stand in the order in which they are asked.
void Builtins::Place(Sort kind, std::uint32_t owner, std::uint32_t position,
                     std::string_view name) {
  const std::size_t mask = mSlots.size() - 1;
  std::size_t at = HashOfName(static_cast<std::size_t>(kind) + owner * 8u, name) & mask;
  for (; mSlots[at].Kind != Sort::Free; at = (at + 1) & mask)
    if (mSlots[at].Kind == kind && mSlots[at].Owner == owner &&
        EqualsNoCaseAscii(mSlots[at].Name, name))
      return;
  mSlots[at] = {kind, owner, position, name};
}

const Builtins::Slot* Builtins::Find(Sort kind, std::uint32_t owner, std::string_view name) const {
  name = BareName(name);
  const std::size_t mask = mSlots.size() - 1;
  std::size_t at = HashOfName(static_cast<std::size_t>(kind) + owner * 8u, name) & mask;
  for (; mSlots[at].Kind != Sort::Free; at = (at + 1) & mask)
    if (mSlots[at].Kind == kind && mSlots[at].Owner == owner &&
        EqualsNoCaseAscii(mSlots[at].Name, name))
      return &mSlots[at];
  return nullptr;
}

int Builtins::LibraryPosition(std::string_view name) const {
  for (std::size_t i = 0; i < mLibraries.size(); ++i)
    if (EqualsNoCaseAscii(mLibraries[i], name)) return static_cast<int>(i);
  return -1;
}

bool Builtins::IsLibrary(std::string_view name) const {
  return LibraryPosition(BareName(name)) >= 0;
}

const BuiltinMember* Builtins::FindGlobal(std::string_view name) const {
  const Slot* slot = Find(Sort::Global, 0, name);
  return slot ? &mMembers[slot->Position] : nullptr;
}

const BuiltinMember* Builtins::FindGlobal(std::string_view library, std::string_view name) const {
  const int position = LibraryPosition(library);
  if (position < 0) return nullptr;
  const Slot* slot = Find(Sort::LibraryGlobal, static_cast<std::uint32_t>(position), name);
  return slot ? &mMembers[slot->Position] : nullptr;
}

const BuiltinType* Builtins::FindType(std::string_view name) const {
  const std::size_t dot = name.find('.');
  if (dot != name.npos) return FindType(name.substr(0, dot), name.substr(dot + 1));
  const Slot* slot = Find(Sort::Type, 0, name);
  return slot ? &mTypes[slot->Position] : nullptr;
}

const BuiltinType* Builtins::FindType(std::string_view library, std::string_view name) const {
  const int position = LibraryPosition(library);
  if (position < 0) return nullptr;
  const Slot* slot = Find(Sort::LibraryType, static_cast<std::uint32_t>(position), name);
  return slot ? &mTypes[slot->Position] : nullptr;
}

const BuiltinType& Builtins::WithoutAlias(const BuiltinType& type) const {
  const BuiltinType* found = &type;
  while (found->Kind == BuiltinTypeKind::Alias) {
    const BuiltinType* base = FindType(found->Base);
    if (!base) break;  // an intrinsic type
    found = base;
  }
  return *found;
}

const BuiltinMember* Builtins::FindMember(const BuiltinType& type, std::string_view name) const {
  const auto owner = static_cast<std::uint32_t>(&WithoutAlias(type) - mTypes.data());
  const Slot* slot = Find(Sort::Member, owner, name);
  return slot ? &mMembers[slot->Position] : nullptr;
}

const BuiltinMember* Builtins::FindEvent(const BuiltinType& type, std::string_view name) const {
  const auto owner = static_cast<std::uint32_t>(&WithoutAlias(type) - mTypes.data());
  const Slot* slot = Find(Sort::Event, owner, name);
  return slot ? &mMembers[slot->Position] : nullptr;
}

const BuiltinMember* Builtins::FindMember(std::string_view type, std::string_view name) const {
  const BuiltinType* found = FindType(type);
  return found ? FindMember(*found, name) : nullptr;
}

const BuiltinMember* Builtins::FindEvent(std::string_view type, std::string_view name) const {
  const BuiltinType* found = FindType(type);
  return found ? FindEvent(*found, name) : nullptr;
}

const BuiltinMember* Builtins::FindSiteMember(std::string_view name) const {
  return FindMember("VBControlExtender", name);
}

bool Builtins::IsIntrinsic(std::string_view name) {
  return std::any_of(kIntrinsicTypes.begin(), kIntrinsicTypes.end(),
                     [&](std::string_view word) { return EqualsNoCaseAscii(word, name); });
}

}  // namespace vendrel
