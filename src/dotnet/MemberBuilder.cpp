#include "dotnet/MemberBuilder.h"

#include <utility>

#include "diagnostics/Diagnostic.h"
#include "dotnet/metadata/MetadataLimits.h"
#include "dotnet/metadata/Values.h"
#include "model/Events.h"

namespace vendrel {
namespace {

using namespace metadata;

constexpr unsigned kParamFlags = 0, kParamName = 2;
constexpr std::uint32_t kOptional = 0x10;

const TypeArguments& ArgumentsOf(const MemberSource& source) {
  static const TypeArguments own;
  return source.Arguments ? *source.Arguments : own;
}

// As reflection writes a type: a final "&" means by reference.
std::string ReflectedType(const TypeText& type) {
  return type.IsByRef ? type.Name + "&" : type.Name;
}

// The method whose parameters have the names.
std::uint32_t MethodOf(const Member& member) {
  if (member.Kind == MemberKind::Method) return member.Row;
  return member.Accessors.Get != 0 ? member.Accessors.Get : member.Accessors.Set;
}

// The method without result of the declaration that a method implements: "System.IDisposable" and
// "System.IDisposable.Dispose".
struct Implementation {
  std::string Interface, Member;
};

Implementation ImplementationOf(const AssemblyFile& file, std::uint32_t method) {
  const Image& image = *file.Image;
  const Token declaration = image.Implemented(method);
  if (declaration.Of != tMemberRef || !declaration) return {};
  const Token parent = image.Tables().Coded(tMemberRef, 0, declaration.Row, cMemberRefParent);
  if (parent.Of != tTypeRef && parent.Of != tTypeDef && parent.Of != tTypeSpec) return {};
  Implementation found;
  found.Interface = file.Types.Type(parent);
  found.Member = CleanName(image.Text(tMemberRef, 1, declaration.Row));
  return found;
}

std::size_t ParameterCount(const Block& block) {
  const Parameters* parameters = block.Parameters.IfAny();
  return parameters ? parameters->Count() : 0;
}

bool HasPointer(const MethodText& text) {
  for (const TypeText& parameter : text.Parameters)
    if (parameter.Name.ends_with('*') || parameter.Name.ends_with('&')) return true;
  return text.IsOpen;
}

}  // namespace

MethodText SignatureOfMember(const SourcedMember& member) {
  return SignatureOf(member.Source.File->Types, member.Member, ArgumentsOf(member.Source));
}

BlockTypeEnum BlockTypeOf(const Member& member, const MethodText& text) {
  if (member.Kind == MemberKind::Property)
    return member.Accessors.Get == 0 && member.Accessors.Set != 0 ? btPropertySet : btPropertyGet;
  return text.Result.Name == "System.Void" ? btSub : btFunction;
}

std::string TreeNameOf(const SourcedMember& member) {
  const bool isMethod = member.Member.Kind == MemberKind::Method;
  std::uint32_t arity = 0;
  if (isMethod) {
    ByteStream blob = member.Source.File->Image->Blob(tMethod, 4, member.Member.Row);
    if ((blob.U8() & 0x10) != 0) arity = TakeCompressed(blob);
  }
  std::string name = DocumentedNameOf(member.Member, arity);
  if (member.Member.IsConstructor) name[0] = '_';
  return name;
}

void TreeRoom::Take(std::size_t textSize) {
  const std::size_t size = kTreeElement + textSize;
  if (size > Left) {
    Left = 0;
    throw DataError("the tree would be too large for such a file");
  }
  Left -= size;
}

const SharedText& TreeRoom::Share(const SharedText& text) { return *mTexts.insert(text).first; }

void TakeObsoleteMark(CodeElement& element, const Image& image, Token place) {
  const ObsoleteMark mark = ObsoleteMarkOf(image, place);
  OnDemand<TaggedComments>* comments = element.TaggedCommentsField();
  if (!mark.Marked || !comments) return;
  auto comment = std::make_shared<TaggedComment>();
  comment->TagIdentifier = "##OBSOLETE";
  comment->CodeElement = &element;
  comment->Text = mark.Text;
  AddUnderFreeKey<TaggedComment>(**comments, comment, comment->TagIdentifier);
}

CodeElement* MemberBuilder::Add(const SourcedMember& member) {
  try {
    switch (member.Member.Kind) {
      case MemberKind::Field: return AddField(member);
      case MemberKind::Event: return AddEvent(member);
      default: return AddProcedure(member);
    }
  } catch (const DataError& error) {
    ReportDamage(member, error.what());
    return nullptr;
  }
}

CodeElement* MemberBuilder::AddField(const SourcedMember& member) {
  const Image& image = *member.Source.File->Image;
  const Member& own = member.Member;
  const TypeText type =
      member.Source.File->Types.Field(image.Blob(tField, 2, own.Row), ArgumentsOf(member.Source));
  const std::string value = own.IsConstant ? ValueOf(image, own.Place()) : std::string();
  const std::string name = DocumentedNameOf(own, 0);
  mRoom.Take(2 * name.size() + type.Name.size() + value.size());
  Block* declarations = mComponent.BlockOfType(btDeclarations, true);
  // Names that differ in case alone share a key: the first one owns it.
  const bool isFree = !declarations->Variables->HasKey(name);
  const auto field =
      mComponent.netCreateField(name, ReflectedType(type), AccessWord(own.Access), own.IsStatic,
                                member.Source.InheritedFrom.empty(), {}, isFree);
  field->InheritedFrom = member.Source.InheritedFrom;
  if (!isFree) {
    field->Component = &mComponent;
    field->Parent = declarations;
    declarations->Variables->Add(field);
  }
  field->TypeName = mRoom.Share(field->TypeName);
  field->Value = value;
  TakeObsoleteMark(*field, image, own.Place());
  return field.get();
}

CodeElement* MemberBuilder::AddEvent(const SourcedMember& member) {
  const Image& image = *member.Source.File->Image;
  const Member& own = member.Member;
  const Token delegate = image.Tables().Coded(tEvent, 2, own.Row, cTypeDefOrRef);
  const std::string type = member.Source.File->Types.Type(delegate, ArgumentsOf(member.Source));
  const std::string name = DocumentedNameOf(own, 0);
  mRoom.Take(2 * name.size() + type.size());
  EventDeclaration* event = nullptr;
  if (mComponent.EventDeclarations.HasKey(name)) {  // by one whose name differs in case
    const auto made = std::make_shared<EventDeclaration>();
    made->Component = &mComponent;
    made->Name = name;
    made->DelegateName = type;
    made->Implemented = member.Source.InheritedFrom.empty();
    mComponent.EventDeclarations.Add(made);
    event = made.get();
  } else {
    event = mComponent.netCreateEvent(name, type, member.Source.InheritedFrom.empty(), {});
  }
  event->InheritedFrom = member.Source.InheritedFrom;
  event->DelegateName = mRoom.Share(event->DelegateName);
  event->Access = AccessWord(own.Access);
  event->IsStatic = own.IsStatic;
  event->IsVirtual = own.IsVirtual && !own.IsFinal;
  event->IsAbstract = own.IsAbstract;
  event->IsSealed = own.IsVirtual && own.IsFinal;
  if (const DelegateInvoke& invoke = InvokeBehind(member.Source, delegate, type); invoke.File)
    TakeParameters(*event, *invoke.File, invoke.Method, invoke.Text);
  TakeObsoleteMark(*event, image, own.Place());
  return event;
}

// An event whose delegate cannot be found or read has no parameters; the assembly that is missing
// was told.
const DelegateInvoke& MemberBuilder::InvokeBehind(const MemberSource& source, Token delegate,
                                                  const std::string& type) {
  const auto [known, isNew] = mRoom.Delegates.try_emplace(type);
  if (!isNew || !delegate) return known->second;
  try {
    const Signatures::Instance instance = source.File->Types.Open(delegate, ArgumentsOf(source));
    const TypeHandle found = mStore.Resolve(*source.File, instance.Definition);
    const std::uint32_t invoke = found ? InvokeOf(*found.File->Image, found.Row) : 0;
    if (invoke != 0)
      known->second = {found.File, invoke,
                       found.File->Types.Method(found.File->Image->Blob(tMethod, 4, invoke),
                                                instance.Arguments)};
  } catch (const DataError&) {
    known->second = {};
  }
  return known->second;
}

Block* MemberBuilder::AddProcedure(const SourcedMember& member) {
  const MethodText text = SignatureOfMember(member);
  const Member& own = member.Member;
  Block* block =
      mComponent.netCreateBlock(BlockTypeOf(own, text), TreeNameOf(member), AccessWord(own.Access),
                                {}, member.Source.InheritedFrom.empty(), {}, own.IsStatic,
                                own.IsVirtual && !own.IsFinal, own.IsAbstract, false);
  block->ShareInheritedFrom(member.Source.InheritedFrom);
  FillProcedure(*block, member, text);
  return block;
}

void MemberBuilder::FillProcedure(Block& block, const SourcedMember& member,
                                  const MethodText& text) {
  const AssemblyFile& file = *member.Source.File;
  const Member& own = member.Member;
  block.IsConstructor = own.IsConstructor;
  block.IsSealed = own.IsVirtual && own.IsFinal;
  TakeSignature(block, file, MethodOf(own), text);
  const std::string conversion =
      own.IsStatic && own.Kind == MemberKind::Method ? DocumentedArgumentsOf(own, &text) : "";
  if (conversion.find('~') != std::string::npos) block.SetDocumentedArguments(conversion);
  if (own.Kind == MemberKind::Property) {
    const Accessors& parts = own.Accessors;
    block.PropertyType = parts.Get != 0 && parts.Set != 0 ? ptReadWrite
                         : parts.Set != 0                 ? ptWrite
                                                          : ptRead;
  } else if (file.Image->AttributeOf(own.Place(), KnownAttribute::Extension) != 0) {
    block.AddAttribute("Extension");
  }
  if (const Implementation implemented = ImplementationOf(file, MethodOf(own));
      !implemented.Interface.empty()) {
    if (own.IsExplicit) block.Interface = implemented.Interface;
    block.SetImplementsName(implemented.Interface + "." + implemented.Member);
  }
  TakeObsoleteMark(block, *file.Image, own.Place());
}

void MemberBuilder::TakeSignature(Block& block, const AssemblyFile& file, std::uint32_t method,
                                  const MethodText& text) {
  mRoom.Take(block.Name().size() + text.Result.Name.size());
  if (text.Result.Name != "System.Void" || text.Result.IsByRef)
    block.ReturnType = mRoom.Share(text.Result.Name);
  TakeParameters(block, file, method, text);
  if (HasPointer(text) || ParameterCount(block) != text.Parameters.size())
    block.SetDocumentedArguments(text.Arguments());
}

template <typename Element>
void MemberBuilder::TakeParameters(Element& element, const AssemblyFile& file, std::uint32_t method,
                                   const MethodText& text) {
  const Image& image = *file.Image;
  const std::vector<std::uint32_t> rows = ParameterRows(image, method, text.Parameters.size());
  for (std::size_t i = 0; i < text.Parameters.size(); ++i) {
    const Token place{tParam, rows[i + 1]};
    const std::string name = place ? CleanName(image.Text(tParam, kParamName, place.Row)) : "";
    const std::string value = place ? ValueOf(image, place) : std::string();
    mRoom.Take(2 * name.size() + value.size() + text.Parameters[i].Name.size());
    const bool isOptional =
        place && (image.Tables().Cell(tParam, kParamFlags, place.Row) & kOptional) != 0;
    const bool isParamArray = place && image.AttributeOf(place, KnownAttribute::ParamArray) != 0;
    Parameter* made = element.netCreateParameter(name, ReflectedType(text.Parameters[i]), value,
                                                 isOptional || isParamArray);
    if (!made) continue;
    made->VariableType = mRoom.Share(made->VariableType);
    made->IsParamArray = isParamArray;
  }
  if (Parameters* made = element.Parameters.IfAny()) made->Fit();
}

void MemberBuilder::ReportDamage(const SourcedMember& member, const char* reason) const {
  if (mRoom.Left == 0 && std::exchange(mRoom.Told, true)) return;  // what follows fails likewise
  Report(DiagnosticCode::AssemblyPart,
         {mComponent.Name + "." + CleanName(member.Member.Name) + " is left out: " + reason});
}

}  // namespace vendrel
