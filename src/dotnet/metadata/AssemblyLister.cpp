#include "dotnet/metadata/AssemblyLister.h"

#include "dotnet/metadata/MetadataLimits.h"

namespace vendrel::metadata {
namespace {

std::string_view WordOf(TypeKind kind) {
  switch (kind) {
    case TypeKind::Structure: return "structure";
    case TypeKind::Interface: return "interface";
    case TypeKind::Enumeration: return "enumeration";
    case TypeKind::Delegate: return "delegate";
    case TypeKind::Module: return "module";
    case TypeKind::Class: break;
  }
  return "class";
}

std::string_view WordOf(const Member& member) {
  switch (member.Kind) {
    case MemberKind::Field: return member.IsConstant ? "constant" : "field";
    case MemberKind::Method: return member.IsConstructor ? "constructor" : "method";
    case MemberKind::Event: return "event";
    case MemberKind::Property: break;
  }
  return "property";
}

std::string_view PrefixOf(MemberKind kind) {
  switch (kind) {
    case MemberKind::Field: return "F:";
    case MemberKind::Method: return "M:";
    case MemberKind::Event: return "E:";
    case MemberKind::Property: break;
  }
  return "P:";
}

std::string Shown(const TypeText& type) { return type.IsByRef ? type.Name + "@" : type.Name; }

// Names come from the method; a property has those of its accessor.
std::vector<std::string> ParametersOf(const Image& image, std::uint32_t method,
                                      const MethodText& text) {
  const std::vector<std::uint32_t> rows = ParameterRows(image, method, text.Parameters.size());
  std::vector<std::string> shown;
  for (std::size_t i = 0; i < text.Parameters.size(); ++i) {
    const Token place{tParam, rows[i + 1]};
    std::string each = place ? CleanName(image.Text(tParam, 2, place.Row)) : std::string();
    each += (each.empty() ? "As " : " As ") + Shown(text.Parameters[i]);
    if (place)
      if (const std::string value = ValueOf(image, place); !value.empty()) each += " = " + value;
    shown.push_back(std::move(each));
  }
  return shown;
}

class Lister {
 public:
  Lister(AssemblyStore& store, const AssemblyFile& file, const ListingOptions& options,
         const std::function<void(const ListedEntry&)>& visit)
      : mStore(store),
        mFile(file),
        mImage(*file.Image),
        mOptions(options),
        mVisit(visit),
        mRoom(kTextBase + kTextShare * mImage.Size()) {
    if (options.Inherited) mRoom *= 16;
  }

  std::string Run() {
    for (std::uint32_t row = 2; row <= mImage.Tables().Rows(tTypeDef); ++row) {
      if (IsHiddenType(mImage, row)) continue;
      if (!mOptions.Private && !IsVisibleType(mImage, row)) continue;
      if (!ListType(row)) return "the rest is left out: there is too much of it for such a file";
    }
    return {};
  }

 private:
  bool Give(const ListedEntry& entry) {
    std::size_t size = entry.Name.size() + entry.Type.size() + entry.Value.size();
    for (const std::string& parameter : entry.Parameters) size += parameter.size();
    if (size > mRoom) return false;
    mRoom -= size;
    mVisit(entry);
    return true;
  }

  bool ListType(std::uint32_t row) {
    const std::vector<Member> members = MembersOf(mImage, row, {mOptions.Private});
    if (!Give(TypeEntry(row))) return false;
    const TypeHandle type{&mFile, row};
    for (const Member& member : members)
      if (!Give(MemberEntry({type, {}}, member))) return false;
    return !mOptions.Inherited || ListInherited(type, members);
  }

  bool ListInherited(TypeHandle type, const std::vector<Member>& own) {
    const Inheritance found = InheritanceOf(mStore, type, own, {mOptions.Private});
    for (const InheritedMember& member : found.Members) {
      ListedEntry entry = MemberEntry(found.Bases[member.Base], member.Member);
      entry.In = DocumentedTypeName(type);
      entry.IsHidden = member.IsHidden;
      if (!Give(entry)) return false;
    }
    return true;
  }

  ListedEntry TypeEntry(std::uint32_t row) {
    ListedEntry entry;
    const std::uint32_t flags = mImage.Tables().Cell(tTypeDef, 0, row);
    const TypeKind kind = KindOfType(mImage, row);
    entry.Kind = WordOf(kind);
    entry.Access = AccessOfType(mImage, row);
    entry.IsAbstract = (flags & tfAbstract) != 0 && kind == TypeKind::Class;
    entry.IsSealed = (flags & tfSealed) != 0 && kind == TypeKind::Class;
    entry.IsExtension = mImage.AttributeOf({tTypeDef, row}, KnownAttribute::Extension) != 0;
    entry.Obsolete = ObsoleteMarkOf(mImage, {tTypeDef, row});
    try {
      entry.Name = DocumentedTypeName({&mFile, row});
      entry.Type = mFile.Types.Type(mImage.Tables().Coded(tTypeDef, 3, row, cTypeDefOrRef));
      for (const Token token : mImage.Interfaces(row))
        entry.Implements.push_back(mFile.Types.Type(token));
      if (kind == TypeKind::Delegate) TakeInvoke(entry, row);
    } catch (const DataError& error) {
      entry.Damage = error.what();
    }
    return entry;
  }

  void TakeInvoke(ListedEntry& entry, std::uint32_t row) {
    const std::uint32_t invoke = InvokeOf(mImage, row);
    if (invoke == 0) return;
    const MethodText text = mFile.Types.Method(mImage.Blob(tMethod, 4, invoke));
    entry.Type = Shown(text.Result);
    entry.Parameters = ParametersOf(mImage, invoke, text);
  }

  static ListedEntry MemberEntry(const BaseType& owner, const Member& member) {
    const Image& image = *owner.Type.File->Image;
    ListedEntry entry;
    entry.Kind = WordOf(member);
    entry.Access = member.Access;
    entry.IsStatic = member.IsStatic;
    entry.IsVirtual = member.IsVirtual && !member.IsFinal;
    entry.IsAbstract = member.IsAbstract;
    entry.IsSealed = member.IsVirtual && member.IsFinal;
    entry.IsExplicit = member.IsExplicit;
    entry.Obsolete = ObsoleteMarkOf(image, member.Place());
    entry.IsExtension = member.Kind == MemberKind::Method &&
                        image.AttributeOf(member.Place(), KnownAttribute::Extension) != 0;
    entry.Name = std::string(PrefixOf(member.Kind)) + owner.Type.Name() + ".";
    try {
      TakeSignature(entry, owner, member);
    } catch (const DataError& error) {
      entry.Name += DocumentedNameOf(member, 0);
      entry.Damage = error.what();
    }
    return entry;
  }

  static void TakeSignature(ListedEntry& entry, const BaseType& owner, const Member& member) {
    const Image& image = *owner.Type.File->Image;
    const Signatures& types = owner.Type.File->Types;
    if (member.Kind == MemberKind::Method || member.Kind == MemberKind::Property) {
      const MethodText text = SignatureOf(types, member);
      std::string name = DocumentedNameOf(member, text.Arity);
      name += DocumentedArgumentsOf(member, &text);
      std::uint32_t method = member.Row;
      if (member.Kind == MemberKind::Property)
        method = member.Accessors.Get != 0 ? member.Accessors.Get : member.Accessors.Set;
      entry.Parameters = ParametersOf(image, method, text);
      entry.Type = Shown(text.Result);
      entry.Name += name;
      return;
    }
    if (member.Kind == MemberKind::Field) {
      entry.Type = Shown(types.Field(image.Blob(tField, 2, member.Row)));
      if (member.IsConstant) entry.Value = ValueOf(image, member.Place());
    } else {
      entry.Type = types.Type(image.Tables().Coded(tEvent, 2, member.Row, cTypeDefOrRef));
    }
    entry.Name += DocumentedNameOf(member, 0);
  }

  AssemblyStore& mStore;
  const AssemblyFile& mFile;
  const Image& mImage;
  ListingOptions mOptions;
  const std::function<void(const ListedEntry&)>& mVisit;
  std::size_t mRoom;
};

}  // namespace

std::string DocumentedTypeName(const TypeHandle& type) { return "T:" + type.Name(); }

std::string ListAssembly(AssemblyStore& store, const AssemblyFile& file,
                         const ListingOptions& options,
                         const std::function<void(const ListedEntry&)>& visit) {
  return Lister(store, file, options, visit).Run();
}

}  // namespace vendrel::metadata
