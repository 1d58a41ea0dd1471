// The indexes over the tables: who belongs to whom. Each is one pass over its table, made when the
// first question comes; nothing is found by a binary search in what a file calls sorted.

#include <algorithm>
#include <optional>

#include "dotnet/metadata/Image.h"
#include "dotnet/metadata/Links.h"

namespace vendrel::metadata {
namespace {

using NameMap = std::unordered_map<std::string, std::uint32_t>;

std::string NameKey(std::string_view space, std::string_view name) {
  std::string key(space);
  key += '\0';
  key += name;
  return key;
}

enum Semantics : std::uint16_t {
  smSetter = 1,
  smGetter = 2,
  smOther = 4,
  smAdd = 8,
  smRemove = 0x10,
  smRaise = 0x20,
};

}  // namespace

struct Image::Indexes {
  std::optional<std::vector<std::uint32_t>> Enclosers;
  std::vector<std::vector<std::uint32_t>> Nested;
  std::optional<std::vector<std::uint16_t>> Arities;
  std::optional<std::vector<Token>> Parts;
  Links PartsOfOwner;  // property or event to rows of MethodSemantics
  std::optional<std::vector<std::uint32_t>> PropertyMaps, EventMaps;
  std::optional<Links> Implementations;
  std::optional<std::vector<std::pair<std::uint32_t, std::uint32_t>>> InterfaceRuns;
  std::vector<Token> InterfaceList;
  std::optional<Links> Constants;
  std::optional<Links> Attributes;
  std::vector<std::uint8_t> ConstructorKinds[2];  // of methods and of member references, + 1
  std::optional<NameMap> Types, Exported;
};

Image::Image() : mIndexes(std::make_shared<Indexes>()) {}

namespace {

// Breaks rings: a type that comes back to itself stands alone.
void BreakRings(std::vector<std::uint32_t>& enclosers) {
  std::vector<std::uint8_t> state(enclosers.size(), 0);  // 1 on the way, 2 done
  std::vector<std::uint32_t> way;
  for (std::uint32_t type = 1; type < enclosers.size(); ++type) {
    way.clear();
    std::uint32_t at = type;
    while (at != 0 && state[at] == 0) {
      state[at] = 1;
      way.push_back(at);
      at = enclosers[at];
    }
    if (at != 0 && state[at] == 1) enclosers[way.back()] = 0;
    for (const std::uint32_t done : way) state[done] = 2;
  }
}

std::vector<std::uint32_t> MapRows(const Tables& tables, Table map) {
  std::vector<std::uint32_t> rows(tables.Rows(tTypeDef) + 1, 0);
  for (std::uint32_t row = tables.Rows(map); row > 0; --row) {
    const std::uint32_t type = tables.Cell(map, 0, row);
    if (type < rows.size()) rows[type] = row;
  }
  return rows;
}

}  // namespace

std::uint32_t Image::Encloser(std::uint32_t type) const {
  auto& index = mIndexes->Enclosers;
  if (!index) {
    index.emplace(mTables.Rows(tTypeDef) + 1, 0);
    for (std::uint32_t row = 1; row <= mTables.Rows(tNestedClass); ++row) {
      const std::uint32_t nested = mTables.Cell(tNestedClass, 0, row);
      const std::uint32_t encloser = mTables.Cell(tNestedClass, 1, row);
      if (nested != 0 && nested < index->size() && encloser < index->size())
        (*index)[nested] = encloser;
    }
    BreakRings(*index);
  }
  return type < index->size() ? (*index)[type] : 0;
}

const std::vector<std::uint32_t>& Image::NestedIn(std::uint32_t type) const {
  static const std::vector<std::uint32_t> none;
  auto& index = mIndexes->Nested;
  if (index.empty()) {
    index.resize(mTables.Rows(tTypeDef) + 1);
    for (std::uint32_t row = 1; row < index.size(); ++row)
      if (const std::uint32_t encloser = Encloser(row)) index[encloser].push_back(row);
  }
  return type < index.size() ? index[type] : none;
}

std::uint32_t Image::Arity(std::uint32_t type) const {
  auto& index = mIndexes->Arities;
  if (!index) {
    index.emplace(mTables.Rows(tTypeDef) + 1, 0);
    for (std::uint32_t row = 1; row <= mTables.Rows(tGenericParam); ++row) {
      const Token owner = mTables.Coded(tGenericParam, 2, row, cTypeOrMethodDef);
      if (owner.Of == tTypeDef && owner) ++(*index)[owner.Row];
    }
  }
  return type < index->size() ? (*index)[type] : 0;
}

Token Image::PartOf(std::uint32_t method) const {
  auto& index = mIndexes->Parts;
  if (!index) {
    index.emplace(mTables.Rows(tMethod) + 1);
    for (std::uint32_t row = 1; row <= mTables.Rows(tMethodSemantics); ++row) {
      const Token owner = mTables.Coded(tMethodSemantics, 2, row, cHasSemantics);
      const std::uint32_t part = mTables.Cell(tMethodSemantics, 1, row);
      if (owner && part < index->size()) (*index)[part] = owner;
      mIndexes->PartsOfOwner.Add(owner, row);
    }
    mIndexes->PartsOfOwner.Finish();
  }
  return method < index->size() ? (*index)[method] : Token{};
}

Accessors Image::AccessorsOf(Token propertyOrEvent) const {
  PartOf(0);
  Accessors found;
  for (const Link& link : mIndexes->PartsOfOwner.Of(propertyOrEvent)) {
    const std::uint32_t method = mTables.Cell(tMethodSemantics, 1, link.To);
    if (method > mTables.Rows(tMethod)) continue;
    switch (mTables.Cell(tMethodSemantics, 0, link.To)) {
      case smSetter: found.Set = method; break;
      case smGetter: found.Get = method; break;
      case smAdd: found.Add = method; break;
      case smRemove: found.Remove = method; break;
      case smRaise: found.Raise = method; break;
      default: found.Other = method; break;
    }
  }
  return found;
}

RowRange Image::Properties(std::uint32_t type) const {
  auto& index = mIndexes->PropertyMaps;
  if (!index) index = MapRows(mTables, tPropertyMap);
  const std::uint32_t row = type < index->size() ? (*index)[type] : 0;
  return row == 0 ? RowRange{} : mTables.Run(tPropertyMap, 1, row, tProperty);
}

RowRange Image::Events(std::uint32_t type) const {
  auto& index = mIndexes->EventMaps;
  if (!index) index = MapRows(mTables, tEventMap);
  const std::uint32_t row = type < index->size() ? (*index)[type] : 0;
  return row == 0 ? RowRange{} : mTables.Run(tEventMap, 1, row, tEvent);
}

Token Image::Implemented(std::uint32_t method) const {
  auto& index = mIndexes->Implementations;
  if (!index) {
    index.emplace();
    for (std::uint32_t row = 1; row <= mTables.Rows(tMethodImpl); ++row) {
      const Token body = mTables.Coded(tMethodImpl, 1, row, cMethodDefOrRef);
      if (body.Of == tMethod) index->Add(body, row);
    }
    index->Finish();
  }
  const auto rows = index->Of({tMethod, method});
  return rows.empty() ? Token{} : mTables.Coded(tMethodImpl, 2, rows.front().To, cMethodDefOrRef);
}

std::span<const Token> Image::Interfaces(std::uint32_t type) const {
  auto& index = mIndexes->InterfaceRuns;
  if (!index) {
    Links links;
    for (std::uint32_t row = 1; row <= mTables.Rows(tInterfaceImpl); ++row)
      if (const std::uint32_t owner = mTables.Cell(tInterfaceImpl, 0, row);
          owner <= mTables.Rows(tTypeDef))
        links.Add({tTypeDef, owner}, row);
    links.Finish();
    index.emplace(mTables.Rows(tTypeDef) + 1);
    auto& list = mIndexes->InterfaceList;
    for (std::uint32_t owner = 1; owner < index->size(); ++owner) {
      (*index)[owner].first = static_cast<std::uint32_t>(list.size());
      for (const Link& link : links.Of({tTypeDef, owner}))
        if (const Token token = mTables.Coded(tInterfaceImpl, 1, link.To, cTypeDefOrRef))
          list.push_back(token);
      (*index)[owner].second = static_cast<std::uint32_t>(list.size());
    }
  }
  if (type >= index->size()) return {};
  const auto [first, last] = (*index)[type];
  return std::span<const Token>(mIndexes->InterfaceList).subspan(first, last - first);
}

std::uint32_t Image::ConstantOf(Token owner) const {
  auto& index = mIndexes->Constants;
  if (!index) {
    index.emplace();
    for (std::uint32_t row = 1; row <= mTables.Rows(tConstant); ++row)
      index->Add(mTables.Coded(tConstant, 1, row, cHasConstant), row);
    index->Finish();
  }
  const auto rows = index->Of(owner);
  return rows.empty() ? 0 : rows.front().To;
}

std::uint32_t Image::AttributeOf(Token owner, KnownAttribute kind) const {
  auto& index = mIndexes->Attributes;
  if (!index) {
    index.emplace();
    for (std::uint32_t row = 1; row <= mTables.Rows(tCustomAttribute); ++row)
      if (KindOf(row) != KnownAttribute::None)
        index->Add(mTables.Coded(tCustomAttribute, 0, row, cHasCustomAttribute), row);
    index->Finish();
  }
  for (const Link& link : index->Of(owner))
    if (KindOf(link.To) == kind) return link.To;
  return 0;
}

KnownAttribute Image::KindOf(std::uint32_t attribute) const {
  const Token constructor = mTables.Coded(tCustomAttribute, 1, attribute, cCustomAttributeType);
  if (!constructor) return KnownAttribute::None;
  auto& known = mIndexes->ConstructorKinds[constructor.Of == tMethod ? 0 : 1];
  if (known.empty()) known.resize(mTables.Rows(constructor.Of) + std::size_t{1});
  std::uint8_t& kind = known[constructor.Row];
  if (kind == 0) kind = static_cast<std::uint8_t>(KindOfConstructor(constructor)) + 1;
  return static_cast<KnownAttribute>(kind - 1);
}

KnownAttribute Image::KindOfConstructor(Token constructor) const {
  struct Name {
    std::string_view Space, Type;
    KnownAttribute Kind;
  };
  static constexpr std::string_view kServices = "System.Runtime.CompilerServices";
  static constexpr Name kNames[] = {
      {"System", "ObsoleteAttribute", KnownAttribute::Obsolete},
      {"System", "ParamArrayAttribute", KnownAttribute::ParamArray},
      {"System.Reflection", "DefaultMemberAttribute", KnownAttribute::DefaultMember},
      {kServices, "ExtensionAttribute", KnownAttribute::Extension},
      {kServices, "DecimalConstantAttribute", KnownAttribute::DecimalConstant},
      {kServices, "DateTimeConstantAttribute", KnownAttribute::DateTimeConstant},
      {"Microsoft.VisualBasic.CompilerServices", "StandardModuleAttribute",
       KnownAttribute::StandardModule},
  };
  Token type = constructor.Of == tMemberRef
                   ? mTables.Coded(tMemberRef, 0, constructor.Row, cMemberRefParent)
                   : Token{tTypeDef, MethodOwner(constructor.Row)};
  if (type.Of != tTypeRef && type.Of != tTypeDef) return KnownAttribute::None;
  const std::string_view name = Text(type.Of, 1, type.Row), space = Text(type.Of, 2, type.Row);
  for (const Name& each : kNames)
    if (name == each.Type && space == each.Space) return each.Kind;
  return KnownAttribute::None;
}

std::uint32_t Image::MethodOwner(std::uint32_t method) const {
  // The last type whose list begins at or in front of the method. Where lists run backwards some
  // attribute is not known, no more.
  std::uint32_t low = 1, high = mTables.Rows(tTypeDef);
  while (low < high) {
    const std::uint32_t middle = low + (high - low + 1) / 2;
    if (mTables.Cell(tTypeDef, 5, middle) <= method)
      low = middle;
    else
      high = middle - 1;
  }
  return low;
}

std::uint32_t Image::FindType(std::string_view space, std::string_view name) const {
  auto& index = mIndexes->Types;
  if (!index) {
    index.emplace();
    index->reserve(mTables.Rows(tTypeDef));
    for (std::uint32_t row = 2; row <= mTables.Rows(tTypeDef); ++row)
      if (Encloser(row) == 0)
        index->emplace(NameKey(Text(tTypeDef, 2, row), Text(tTypeDef, 1, row)), row);
  }
  const auto found = index->find(NameKey(space, name));
  return found == index->end() ? 0 : found->second;
}

std::uint32_t Image::FindExported(std::string_view space, std::string_view name) const {
  auto& index = mIndexes->Exported;
  if (!index) {
    index.emplace();
    for (std::uint32_t row = 1; row <= mTables.Rows(tExportedType); ++row)
      index->emplace(NameKey(Text(tExportedType, 3, row), Text(tExportedType, 2, row)), row);
  }
  const auto found = index->find(NameKey(space, name));
  return found == index->end() ? 0 : found->second;
}

}  // namespace vendrel::metadata
