#include "model/Parameter.h"

#include <atomic>
#include <unordered_map>

#include "core/CaseFold.h"
#include "diagnostics/Context.h"

namespace vendrel {
namespace {

// Below this many parameters a walk is cheaper than an index.
constexpr std::size_t kWalked = 16;

// Counts the new names of listed parameters. One parameter may stand in the lists of an event and
// of its delegate, so an index compares this number instead of being told.
std::atomic<std::uint64_t> gNamesChanged = 0;

}  // namespace

Component* Parameter::OwnComponent() const {
  const CodeElement* parent = Parent.Get();
  return parent ? parent->OwnComponent() : nullptr;
}

void Parameter::SetName(std::string_view name) {
  if (mListed) ++gNamesChanged;
  mName = std::string(name);  // with no room to spare
}

std::shared_ptr<Parameter> Parameter::Clone(bool CopyComments) const try {
  auto copy = std::make_shared<Parameter>();
  copy->mDescription = mDescription;
  copy->VariableType = VariableType;
  copy->mName = mName;
  copy->IsOptional = IsOptional;
  copy->IsByRef = IsByRef;
  copy->IsParamArray = IsParamArray;
  copy->IsArray = IsArray;
  copy->DefaultValue = DefaultValue;
  copy->ImplicitType = ImplicitType;
  copy->RelationshipResolved = RelationshipResolved;
  copy->RelationshipTo = RelationshipTo;
  copy->TaggedDescription = TaggedDescription;
  copy->Parent = Parent;
  if (!CopyComments) return copy;
  for (const TaggedComment& comment : *TaggedComments)
    AddUnderFreeKey<TaggedComment>(*copy->TaggedComments, comment.Clone(), comment.TagIdentifier);
  return copy;
}
VENDREL_CONTEXT(CopyComments, *this)

// The first parameter of each name, as the list stood when it was made.
struct Parameters::NameIndex {
  std::unordered_map<std::string, const Parameter*> First;
  std::uint64_t NamesChanged = 0;
};

Parameters::Parameters() = default;
Parameters::~Parameters() = default;

const Parameter* Parameters::Item(std::string_view name) const {
  if (Count() <= kWalked) {
    for (const Parameter& parameter : mCol)
      if (EqualsNoCase(parameter.Name(), name)) return &parameter;
    return nullptr;
  }
  if (!mIndex || mIndex->NamesChanged != gNamesChanged) {
    mIndex = std::make_unique<NameIndex>();
    mIndex->NamesChanged = gNamesChanged;
    for (const Parameter& parameter : mCol)
      mIndex->First.emplace(FoldKey(parameter.Name()), &parameter);
  }
  const auto found = mIndex->First.find(FoldKey(name));
  return found == mIndex->First.end() ? nullptr : found->second;
}

bool Parameters::Add(std::shared_ptr<Parameter> item, std::string_view key, const Position& before,
                     const Position& after) try {
  Parameter* added = item.get();
  if (!ElementCollection::Add(std::move(item), key, before, after)) return false;
  added->mListed = true;
  if (before.Given() || after.Given())
    mIndex.reset();
  else if (mIndex)
    mIndex->First.emplace(FoldKey(added->Name()), added);
  return true;
}
VENDREL_CONTEXT(trace::Parameter("item", item.get()), key)

bool Parameters::AddIfFree(std::shared_ptr<Parameter> item, std::string_view key) {
  Parameter* added = item.get();
  if (!mCol.InsertIfFree(std::move(item), key)) return false;
  added->mListed = true;
  if (mIndex) mIndex->First.emplace(FoldKey(added->Name()), added);
  return true;
}

void Parameters::Remove(std::size_t index) try {
  mIndex.reset();
  ElementCollection::Remove(index);
}
VENDREL_CONTEXT(index)

void Parameters::Remove(std::string_view key) try {
  mIndex.reset();
  ElementCollection::Remove(key);
}
VENDREL_CONTEXT(key)

void Parameters::Clear() {
  mIndex.reset();
  ElementCollection::Clear();
}

std::string Parameters::DotNetSignature() const {
  std::string signature;
  bool first = true;
  for (const Parameter& parameter : mCol) {
    if (!first) signature += ',';
    first = false;
    signature += parameter.VariableType.view();
  }
  return signature;
}

std::shared_ptr<Parameter> CreateParameter(std::string_view Name, std::string_view TypeName,
                                           std::string_view DefaultValue, bool IsOptional,
                                           std::string_view /*ParameterType*/) {
  auto parameter = std::make_shared<Parameter>();
  if (TypeName.ends_with('&')) {
    TypeName.remove_suffix(1);
    parameter->IsByRef = true;
  }
  if (TypeName.ends_with('*')) TypeName.remove_suffix(1);
  parameter->SetName(Name);
  parameter->VariableType = TypeName;
  parameter->DefaultValue = DefaultValue;
  parameter->IsOptional = IsOptional;
  return parameter;
}

}  // namespace vendrel
