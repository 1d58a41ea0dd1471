#include "dotnet/metadata/Members.h"

#include <algorithm>

namespace vendrel::metadata {
namespace {

enum MethodFlags : std::uint32_t {
  mfAccess = 7,
  mfStatic = 0x10,
  mfFinal = 0x20,
  mfVirtual = 0x40,
  mfNewSlot = 0x100,
  mfAbstract = 0x400,
  mfSpecial = 0x800,
};
enum FieldFlags : std::uint32_t { ffStatic = 0x10, ffInitOnly = 0x20, ffLiteral = 0x40 };

constexpr unsigned kMethodFlags = 2, kMethodName = 3, kMethodSignature = 4;

Access AccessOf(std::uint32_t flags) {
  switch (flags & mfAccess) {
    case 2: return Access::FriendAndProtected;
    case 3: return Access::Friend;
    case 4: return Access::Protected;
    case 5: return Access::ProtectedFriend;
    case 6: return Access::Public;
    default: return Access::Private;
  }
}

void TakeFlags(Member& member, std::uint32_t flags) {
  member.Access = AccessOf(flags);
  member.IsStatic = (flags & mfStatic) != 0;
  member.IsVirtual = (flags & mfVirtual) != 0;
  member.IsFinal = (flags & mfFinal) != 0;
  member.IsAbstract = (flags & mfAbstract) != 0;
  member.IsNew = (flags & mfVirtual) == 0 || (flags & mfNewSlot) != 0;
}

class Collector {
 public:
  Collector(const Image& image, std::uint32_t type, const MemberFilter& filter)
      : mImage(image), mTables(image.Tables()), mType(type), mFilter(filter) {
    mIsDelegate = KindOfType(image, type) == TypeKind::Delegate;
  }

  std::vector<Member> Run() {
    const RowRange fields = mTables.Run(tTypeDef, 4, mType, tField);
    for (std::uint32_t i = fields.First; i < fields.Last; ++i)
      AddField(mTables.Through(tFieldPtr, i));
    const RowRange methods = mTables.Run(tTypeDef, 5, mType, tMethod);
    for (std::uint32_t i = methods.First; i < methods.Last; ++i)
      AddMethod(mTables.Through(tMethodPtr, i));
    const RowRange events = mImage.Events(mType);
    for (std::uint32_t i = events.First; i < events.Last; ++i)
      AddPart(MemberKind::Event, {tEvent, mTables.Through(tEventPtr, i)});
    const RowRange properties = mImage.Properties(mType);
    for (std::uint32_t i = properties.First; i < properties.Last; ++i)
      AddPart(MemberKind::Property, {tProperty, mTables.Through(tPropertyPtr, i)});
    return std::move(mMembers);
  }

 private:
  void AddField(std::uint32_t row) {
    const std::uint32_t flags = mTables.Cell(tField, 0, row);
    Member field;
    field.Row = row;
    field.Access = AccessOf(flags);
    if (!mFilter.Private && !IsVisible(field.Access)) return;
    field.IsStatic = (flags & ffStatic) != 0;
    field.IsConstant =
        (flags & ffLiteral) != 0 || ((flags & (ffStatic | ffInitOnly)) == (ffStatic | ffInitOnly) &&
                                     HasAttributeValue({tField, row}));
    field.Name = mImage.Text(tField, 1, row);
    if (field.Name != "value__") Keep(field);
  }

  // Decimal numbers and dates are constants that only an attribute knows.
  bool HasAttributeValue(Token field) const {
    return mImage.AttributeOf(field, KnownAttribute::DecimalConstant) != 0 ||
           mImage.AttributeOf(field, KnownAttribute::DateTimeConstant) != 0;
  }

  void AddMethod(std::uint32_t row) {
    Member method;
    method.Kind = MemberKind::Method;
    method.Row = row;
    TakeFlags(method, mTables.Cell(tMethod, kMethodFlags, row));
    if (!IsVisible(method.Access)) {
      method.IsExplicit = static_cast<bool>(mImage.Implemented(row));
      if (!method.IsExplicit && !mFilter.Private) return;
    }
    if (mImage.PartOf(row)) return;
    method.Name = mImage.Text(tMethod, kMethodName, row);
    method.IsConstructor = method.Name == ".ctor" || method.Name == ".cctor";
    if (method.Name == ".cctor" && !mFilter.Private) return;
    if (mIsDelegate && (method.Name == ".ctor" || method.Name == "Invoke")) return;
    Keep(method);
  }

  // A property or event is as its most accessible accessor. One without any is private.
  void AddPart(MemberKind kind, Token place) {
    Member part;
    part.Kind = kind;
    part.Row = place.Row;
    part.Accessors = mImage.AccessorsOf(place);
    const Accessors& all = part.Accessors;
    bool isFirst = true;
    for (const std::uint32_t accessor :
         {all.Get, all.Set, all.Add, all.Remove, all.Raise, all.Other}) {
      if (accessor == 0) continue;
      Member method;
      TakeFlags(method, mTables.Cell(tMethod, kMethodFlags, accessor));
      part.IsExplicit |= !IsVisible(method.Access) && mImage.Implemented(accessor);
      if (!isFirst && method.Access <= part.Access) continue;
      isFirst = false;
      TakeFlags(part, mTables.Cell(tMethod, kMethodFlags, accessor));
    }
    if (IsVisible(part.Access)) part.IsExplicit = false;
    if (!part.IsExplicit && !mFilter.Private && !IsVisible(part.Access)) return;
    part.Name = mImage.Text(place.Of, 1, place.Row);
    Keep(part);
  }

  void Keep(const Member& member) {
    if (!IsCompilerMade(member.Name)) mMembers.push_back(member);
  }

  const Image& mImage;
  const Tables& mTables;
  std::uint32_t mType;
  MemberFilter mFilter;
  bool mIsDelegate;
  std::vector<Member> mMembers;
};

}  // namespace

std::string_view AccessWord(Access access) {
  switch (access) {
    case Access::Public: return "PUBLIC";
    case Access::ProtectedFriend: return "PROTECTED FRIEND";
    case Access::Protected: return "PROTECTED";
    case Access::Friend:
    case Access::FriendAndProtected: return "FRIEND";
    case Access::Private: break;
  }
  return "PRIVATE";
}

Token Member::Place() const {
  switch (Kind) {
    case MemberKind::Field: return {tField, Row};
    case MemberKind::Method: return {tMethod, Row};
    case MemberKind::Event: return {tEvent, Row};
    case MemberKind::Property: break;
  }
  return {tProperty, Row};
}

TypeKind KindOfType(const Image& image, std::uint32_t type) {
  const Tables& tables = image.Tables();
  if ((tables.Cell(tTypeDef, 0, type) & tfInterface) != 0) return TypeKind::Interface;
  if (image.AttributeOf({tTypeDef, type}, KnownAttribute::StandardModule) != 0)
    return TypeKind::Module;
  const Token base = tables.Coded(tTypeDef, 3, type, cTypeDefOrRef);
  if ((base.Of != tTypeRef && base.Of != tTypeDef) || !base) return TypeKind::Class;
  if (image.Text(base.Of, 2, base.Row) != "System") return TypeKind::Class;
  const std::string_view name = image.Text(base.Of, 1, base.Row);
  const std::string_view own = image.Text(tTypeDef, 1, type);
  const bool isOfSystem = image.Text(tTypeDef, 2, type) == "System";
  if (name == "Enum") return TypeKind::Enumeration;
  if (name == "ValueType" && !(isOfSystem && own == "Enum")) return TypeKind::Structure;
  if (name == "MulticastDelegate") return TypeKind::Delegate;
  if (name == "Delegate" && !(isOfSystem && own == "MulticastDelegate")) return TypeKind::Delegate;
  return TypeKind::Class;
}

Access AccessOfType(const Image& image, std::uint32_t type) {
  switch (image.Tables().Cell(tTypeDef, 0, type) & tfVisibility) {
    case tvPublic:
    case tvNestedPublic: return Access::Public;
    case tvNestedFamily: return Access::Protected;
    case tvNestedFamilyOrAssembly: return Access::ProtectedFriend;
    case tvNestedFamilyAndAssembly: return Access::FriendAndProtected;
    case tvNestedPrivate: return Access::Private;
    default: return Access::Friend;
  }
}

bool IsVisibleType(const Image& image, std::uint32_t type) {
  for (; type != 0; type = image.Encloser(type))
    if (!IsVisible(AccessOfType(image, type))) return false;
  return true;
}

bool IsHiddenType(const Image& image, std::uint32_t type) {
  for (; type != 0; type = image.Encloser(type))
    if (type == 1 || IsCompilerMade(image.Text(tTypeDef, 1, type)) ||
        IsCompilerMade(image.Text(tTypeDef, 2, type)))
      return true;
  return false;
}

std::vector<Member> MembersOf(const Image& image, std::uint32_t type, const MemberFilter& filter) {
  return Collector(image, type, filter).Run();
}

std::string DocumentedNameOf(const Member& member, std::uint32_t arity) {
  std::string name = DocumentedName(member.Name);
  if (arity > 0) name += "``" + std::to_string(arity);
  return name;
}

std::string DocumentedArgumentsOf(const Member& member, const MethodText* signature) {
  if (!signature) return {};
  std::string text = signature->Arguments();
  const bool isConversion = member.Kind == MemberKind::Method && member.IsStatic &&
                            signature->Parameters.size() == 1 &&
                            (member.Name == "op_Implicit" || member.Name == "op_Explicit" ||
                             member.Name == "op_CheckedExplicit");
  if (!isConversion) return text;
  text += "~" + signature->Result.Name;
  if (signature->Result.IsByRef) text += '@';
  return text;
}

MethodText SignatureOf(const Signatures& signatures, const Member& member,
                       const TypeArguments& arguments) {
  const Image& image = signatures.Of();
  return member.Kind == MemberKind::Property
             ? signatures.Method(image.Blob(tProperty, 2, member.Row), arguments)
             : signatures.Method(image.Blob(tMethod, kMethodSignature, member.Row), arguments);
}

std::uint32_t InvokeOf(const Image& image, std::uint32_t type) {
  const Tables& tables = image.Tables();
  const RowRange methods = tables.Run(tTypeDef, 5, type, tMethod);
  for (std::uint32_t i = methods.First; i < methods.Last; ++i) {
    const std::uint32_t row = tables.Through(tMethodPtr, i);
    if (image.Text(tMethod, kMethodName, row) == "Invoke") return row;
  }
  return 0;
}

std::vector<std::uint32_t> ParameterRows(const Image& image, std::uint32_t method,
                                         std::size_t count) {
  std::vector<std::uint32_t> rows(count + 1, 0);
  const Tables& tables = image.Tables();
  const RowRange run = tables.Run(tMethod, 5, method, tParam);
  for (std::uint32_t i = run.First; i < run.Last; ++i) {
    const std::uint32_t row = tables.Through(tParamPtr, i);
    const std::uint32_t number = tables.Cell(tParam, 1, row);
    if (number < rows.size() && rows[number] == 0) rows[number] = row;
  }
  return rows;
}

}  // namespace vendrel::metadata
