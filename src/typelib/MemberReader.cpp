#include "typelib/MemberReader.h"

#include "diagnostics/Context.h"

namespace vendrel {
namespace {

using namespace typelib;

constexpr std::int32_t kDefaultMember = 0, kEnumerator = -4;
constexpr int kRestricted = 1, kHidden = 64, kNonBrowsable = 1024;

// Names that the language's own library gives the two forms of a function: "_B_str_Mid" is "Mid$".
std::string UnfoldedName(std::string_view name) {
  constexpr std::string_view variant = "_B_var_", text = "_B_str_";
  if (name.starts_with(variant)) return std::string(name.substr(variant.size()));
  if (name.starts_with(text)) return std::string(name.substr(text.size())) + "$";
  return std::string(name);
}

bool IsLetOrSet(const Block& block) {
  return block.BlockType() == btPropertyLet || block.BlockType() == btPropertySet;
}

std::string ConstantText(const TypeLibValue& value) {
  const bool isText =
      value.VarType == vtBstr || value.VarType == vtLpStr || value.VarType == vtLpWStr;
  if (!isText) return value.Text();
  std::string text = "\"";
  for (const char c : value.Text()) text.append(c == '"' ? 2 : 1, c);
  return text + "\"";
}

template <typename Owner>
void AddParameters(VBProject& project, const TypeLibInfo& library, const MemberInfo& member,
                   Owner& owner) {
  Parameters& parameters = *owner.Parameters;
  for (const ParameterInfo& info : member.Parameters()) {
    auto parameter = project.TypeLibParameter(library, info);
    parameter->Parent = &owner;
    parameters.Add(std::move(parameter), info.Name);
  }
}

}  // namespace

void MemberReader::AddBlock(const MemberInfo& member, const std::string& secondary) try {
  if (member.MemberId == kEnumerator) mComponent.SetIsCollection(true);
  if (member.MemberId == kDefaultMember) mComponent.DefaultMemberName = member.Name;
  const bool isVariable = member.DescKind == dkVariable;
  if (isVariable && mEntry.TypeKind == tkModule) return AddConstant(member);
  const auto block = NewBlock(member, secondary);
  const ShownType type = ShowType(mProject, mLibrary, member.ReturnType, TypeUse::Return);
  if (!TakeBlockType(*block, member, type)) return;
  block->HelpContextID = static_cast<std::int32_t>(member.HelpContext);
  AddParameters(mProject, mLibrary, member, *block);
  TakeReturnType(*block, type);
  if (isVariable) AddGetter(*block);
  const std::string_view key = KeyOf(*block, member);
  mComponent.Blocks.Add(block, mComponent.Blocks.HasKey(key) ? std::string_view() : key);
}
VENDREL_CONTEXT(trace::Parameter("member", member.Name), secondary, trace::Me(mComponent))

std::shared_ptr<Block> MemberReader::NewBlock(const MemberInfo& member,
                                              const std::string& secondary) {
  auto block = std::make_shared<Block>();
  block->Component = &mComponent;
  block->SetVBProject(&mProject);
  std::string name = UnfoldedName(member.Name);
  if (!secondary.empty()) {
    name = secondary + "_" + name;
    block->Interface = secondary;
  }
  block->SetName(name);
  block->Access = "PUBLIC";
  if (!mComponent.Blocks.HasKey(name)) mProject.AddHelpDescription(*block, member.HelpString);
  if ((member.AttributeMask & (kRestricted | kHidden)) != 0) {
    block->IsHiddenMember = true;
    block->Access = "PRIVATE";
  }
  return block;
}

// False if the member is left out because a type could not be read.
bool MemberReader::TakeBlockType(Block& block, const MemberInfo& member, const ShownType& type) {
  const bool isVariable = member.DescKind == dkVariable;
  block.SetBlockType(isVariable ? btPropertyLet
                                : mProject.TypeLibBlockType(member.InvokeKind, type.VarType));
  if (mProject.Reading.KeepUnreadable) {
    if (!type.Readable)
      ReportUnread(type.MissingLibrary, "member " + Quoted(member.Name) + " of module " +
                                            Quoted(mComponent.Name) +
                                            " has no type: " + type.Failure);
    return true;
  }
  if (!isVariable) mLast = type;
  const ShownType& judged = mLast.Readable ? type : mLast;
  if (!judged.Readable) ReportUnreadable(member, judged);
  return judged.Readable;
}

void MemberReader::TakeReturnType(Block& block, const ShownType& type) {
  if (type.IsVoid()) return;
  block.ReturnTypeIsArray = type.IsArray;
  block.ReturnType = type.Name;
  if (type.VarType != 0 && block.BlockType() == btFunction && type.Name.empty())
    block.SetBlockType(btSub);
  if (!IsLetOrSet(block)) return;
  auto value = std::make_shared<Parameter>();
  value->SetName("RHS");
  value->Parent = &block;
  value->VariableType = type.Name;
  value->IsArray = mProject.Reading.LibraryTypeNames && type.IsArray;
  block.Parameters->Add(std::move(value));
}

// A public variable is read as well as written.
void MemberReader::AddGetter(Block& block) {
  Block& getter = *mComponent.NewBlock(btPropertyGet);
  getter.SetName(block.Name());
  getter.Access = block.Access;
  getter.ExcludeFlag = block.ExcludeFlag;
  getter.HelpContextID = block.HelpContextID;
  getter.ReturnType = block.ReturnType;
  getter.ReturnTypeIsArray = block.ReturnTypeIsArray;
  getter.Parameters.Renew();
  getter.Consolidated = block.Consolidated = false;
}

// By the key "NewEnum" the lists of members know a collection.
std::string_view MemberReader::KeyOf(const Block& block, const MemberInfo& member) const {
  if (mProject.Reading.LibraryParamArrays && member.MemberId == kEnumerator &&
      block.Name() == "_NewEnum")
    return "NewEnum";
  return block.Name();
}

void MemberReader::AddConstant(const MemberInfo& member) try {
  if (!mProject.Reading.ModuleConstants || !member.Value) return;
  Block* declarations = mComponent.BlockOfType(btDeclarations, true);
  auto constant = std::make_shared<Constant>();
  constant->Component = &mComponent;
  const bool isHidden = (member.AttributeMask & kHidden) != 0;
  constant->Access = isHidden ? "PRIVATE" : "PUBLIC";
  constant->Name = member.Name;
  constant->Value = ConstantText(*member.Value);
  constant->TypeName = ShowType(mProject, mLibrary, member.ReturnType, TypeUse::Return).Name;
  mProject.AddHelpDescription(*constant, member.HelpString);
  declarations->Constants->Add(std::move(constant), member.Name);
}
VENDREL_CONTEXT(trace::Parameter("member", member.Name), trace::Me(mComponent))

void MemberReader::AddEvent(const MemberInfo& member) try {
  if ((member.AttributeMask & (kRestricted | kHidden | kNonBrowsable)) != 0) return;
  auto event = std::make_shared<EventDeclaration>();
  event->Component = &mComponent;
  event->Name = member.Name;
  mProject.AddHelpDescription(*event, member.HelpString);
  event->HelpContextID = static_cast<std::int32_t>(member.HelpContext);
  event->Parameters.Renew();
  AddParameters(mProject, mLibrary, member, *event);
  mComponent.EventDeclarations.Add(std::move(event), member.Name);
}
VENDREL_CONTEXT(trace::Parameter("member", member.Name), trace::Me(mComponent))

void MemberReader::ReportUnreadable(const MemberInfo& member, const ShownType& type) const {
  ReportMissing(type.MissingLibrary,
                "member " + Quoted(member.Name) + " of module " + Quoted(mComponent.Name) +
                    " is left out: " + type.Failure,
                "Error reading type information for module '" + mComponent.Name + "', member '" +
                    std::string(member.Name) +
                    "'.  One or more dependant files containing type information may be missing.  "
                    "Processing will continue, this member will be skipped.",
                "Missing type information");
}

BlockTypeEnum VBProject::TypeLibBlockType(std::int32_t InvokeKind, std::int32_t VarType) const {
  switch (InvokeKind) {
    case ikFunction: return VarType == vtVoid ? btSub : btFunction;
    case ikGet: return btPropertyGet;
    case ikLet: return btPropertyLet;
    case ikSet: return btPropertySet;
    default: return static_cast<BlockTypeEnum>(0);
  }
}

}  // namespace vendrel
