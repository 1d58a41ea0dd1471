#include "dotnet/metadata/Inheritance.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "dotnet/metadata/MetadataLimits.h"

namespace vendrel::metadata {
namespace {

constexpr unsigned kExtends = 3;

// The type behind a base or interface, with its arguments in the terms of the type at the bottom.
// What cannot be read or found is none.
BaseType Open(AssemblyStore& store, const BaseType& from, Token base) {
  try {
    const Signatures::Instance instance = from.Type.File->Types.Open(base, from.Arguments);
    return {store.Resolve(*from.Type.File, instance.Definition), instance.Arguments};
  } catch (const DataError&) {
    return {};
  }
}

std::vector<BaseType> ClassesAbove(AssemblyStore& store, TypeHandle type) {
  std::vector<BaseType> bases;
  std::set<TypeHandle> seen{type};
  BaseType at{type, {}};
  while (bases.size() < static_cast<std::size_t>(kMaxBases)) {
    const Token base =
        at.Type.File->Image->Tables().Coded(tTypeDef, kExtends, at.Type.Row, cTypeDefOrRef);
    if (!base) break;
    at = Open(store, at, base);
    if (!at.Type || !seen.insert(at.Type).second) break;
    bases.push_back(at);
  }
  return bases;
}

std::vector<BaseType> InterfacesAbove(AssemblyStore& store, TypeHandle type) {
  std::vector<BaseType> bases{{type, {}}};
  std::set<std::string> seen;
  for (std::size_t at = 0; at < bases.size() && bases.size() < std::size_t{kMaxBases}; ++at) {
    const BaseType from = bases[at];
    for (const Token token : from.Type.File->Image->Interfaces(from.Type.Row)) {
      BaseType base = Open(store, from, token);
      if (!base.Type || base.Type == type) continue;
      std::string name;
      AppendInstance(name, base.Type.Name(), base.Arguments);
      if (seen.insert(name).second) bases.push_back(std::move(base));
      if (bases.size() >= std::size_t{kMaxBases}) break;
    }
  }
  bases.erase(bases.begin());
  return bases;
}

bool IsInherited(const Member& member, bool sameFile, const MemberFilter& filter) {
  if (member.IsConstructor || member.IsExplicit) return false;
  return IsVisible(member.Access) ||
         (filter.Private && sameFile && member.Access > Access::Private);
}

// A member met on the way up: the nearest of its key.
struct Met {
  bool Overrides = false;
  std::size_t Own = SIZE_MAX;
};

class Walk {
 public:
  Walk(AssemblyStore& store, TypeHandle type, const MemberFilter& filter)
      : mType(type), mFilter(filter) {
    mFound.Bases = BasesOf(store, type);
  }

  Inheritance Run(const std::vector<Member>& own) {
    for (std::size_t i = 0; i < own.size(); ++i) Meet(own[i], i);
    for (std::size_t i = 0; i < mFound.Bases.size(); ++i) TakeBase(i);
    return std::move(mFound);
  }

 private:
  static std::string KeyIn(const BaseType& base, const Member& member) {
    try {
      return KeyOfMember(base.Type.File->Types, member, base.Arguments);
    } catch (const DataError&) {
      return {};
    }
  }

  void Meet(const Member& member, std::size_t index) {
    if (member.IsConstructor || member.IsExplicit || member.Access == Access::Private) return;
    mMet.try_emplace(KeyIn({mType, {}}, member), Met{member.IsVirtual && !member.IsNew, index});
  }

  void TakeBase(std::size_t index) {
    const BaseType& base = mFound.Bases[index];
    const bool sameFile = base.Type.File == mType.File;
    for (const Member& member : MembersOf(*base.Type.File->Image, base.Type.Row, mFilter)) {
      if (!IsInherited(member, sameFile, mFilter)) continue;
      if (mFound.Members.size() >= kMaxInherited) return;
      std::string key = KeyIn(base, member);
      if (key.empty()) continue;
      const auto [met, isFirst] =
          mMet.try_emplace(key, Met{member.IsVirtual && !member.IsNew, SIZE_MAX});
      if (isFirst) {
        mFound.Members.push_back({index, member, std::move(key), false});
        continue;
      }
      const bool isOverridden = met->second.Overrides && member.IsVirtual;
      if (met->second.Own != SIZE_MAX)
        mFound.Overriding.push_back({met->second.Own, index, !isOverridden});
      if (!isOverridden) mFound.Members.push_back({index, member, std::move(key), true});
      met->second = {member.IsVirtual && !member.IsNew, SIZE_MAX};
    }
  }

  TypeHandle mType;
  MemberFilter mFilter;
  Inheritance mFound;
  std::unordered_map<std::string, Met> mMet;
};

}  // namespace

std::vector<BaseType> BasesOf(AssemblyStore& store, TypeHandle type) {
  const bool isInterface =
      (type.File->Image->Tables().Cell(tTypeDef, 0, type.Row) & tfInterface) != 0;
  return isInterface ? InterfacesAbove(store, type) : ClassesAbove(store, type);
}

std::string KeyOfMember(const Signatures& signatures, const Member& member,
                        const TypeArguments& arguments) {
  std::string key(member.Name);
  if (member.Kind != MemberKind::Method && member.Kind != MemberKind::Property) return key;
  const MethodText text = SignatureOf(signatures, member, arguments);
  if (text.Arity > 0) key += "``" + std::to_string(text.Arity);
  return key += text.Arguments();
}

Inheritance InheritanceOf(AssemblyStore& store, TypeHandle type, const std::vector<Member>& own,
                          const MemberFilter& filter) {
  return Walk(store, type, filter).Run(own);
}

}  // namespace vendrel::metadata
