#include "comments/TagDefinitions.h"

#include <cstdint>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Hash.h"
#include "core/ObjectRegistry.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "project/ModulesAhead.h"

namespace vendrel {
namespace {

constexpr std::string_view kProgId = "TemplateObjects";

// Equal for tags that differ in case only: letters beyond ASCII do not count.
std::uint32_t HashTag(std::string_view tag) {
  TextHash hash;
  for (const char c : tag)
    if (static_cast<unsigned char>(c) < 0x80) hash.Add(UpperAscii(c));
  return hash.Value();
}

bool SameTag(std::string_view a, std::string_view b) {
  return EqualsNoCaseAscii(a, b) || EqualsNoCase(a, b);
}

class BuiltinTemplateObjects final : public TemplateObjects {
 public:
  const vendrel::TaggedCommentDefs& TaggedCommentDefs() const override {
    return BuiltinTagDefinitions();
  }
};

struct InstalledTemplates {
  std::shared_ptr<TemplateObjects> Service;
};

std::shared_ptr<TemplateObjects>& Slot() { return InUse<InstalledTemplates>().Service; }

}  // namespace

bool TaggedCommentDef::TakesQualifier() const {
  if (Scope.empty())
    return ElementType == etVariable || ElementType == etParameter ||
           ElementType == etEnumerationMember || ElementType == etStructureMember ||
           ElementType == etImplementedInterface;
  return ContainsNoCaseAscii(Scope, "Parameter") ||
         ContainsNoCaseAscii(Scope, "fz:enumerationmember") ||
         ContainsNoCaseAscii(Scope, "fz:structuremember") ||
         (ContainsNoCaseAscii(Scope, "fz:variable") &&
          ContainsNoCaseAscii(TagIdentifier, "VARIABLE"));
}

const TaggedCommentDef* TaggedCommentDefs::Find(std::string_view TagIdentifier) const {
  if (!TagIdentifier.starts_with("##") || mSlots.empty()) return nullptr;
  const std::size_t mask = mSlots.size() - 1;
  for (std::size_t at = HashTag(TagIdentifier) & mask; mSlots[at]; at = (at + 1) & mask)
    if (SameTag(mItems[mSlots[at] - 1].TagIdentifier, TagIdentifier))
      return &mItems[mSlots[at] - 1];
  return nullptr;
}

const TaggedCommentDef& TaggedCommentDefs::Item(std::string_view TagIdentifier) const try {
  if (const TaggedCommentDef* found = Find(TagIdentifier)) return *found;
  throw VendrelError(errSubscript, TagIdentifier);
}
VENDREL_CONTEXT(TagIdentifier)

const TaggedCommentDef& TaggedCommentDefs::Item(int index) const try {
  if (index < 1 || static_cast<std::size_t>(index) > mItems.size())
    throw VendrelError(errSubscript);
  return mItems[static_cast<std::size_t>(index) - 1];
}
VENDREL_CONTEXT(index)

void TaggedCommentDefs::Add(TaggedCommentDef definition) try {
  const std::string& tag = definition.TagIdentifier;
  if (!tag.starts_with("##") || tag.find(' ') != std::string::npos)
    throw VendrelError(errInvalidArgument, "not a tag: '" + tag + "'");
  if (Find(tag)) throw VendrelError(errDuplicateKey, tag);
  definition.TagIdentifier = UpperCase(tag);
  mItems.push_back(std::move(definition));
  if (mItems.size() * 2 <= mSlots.size()) return Place(static_cast<std::uint32_t>(mItems.size()));
  mSlots.assign(mSlots.empty() ? 64 : mSlots.size() * 2, 0);
  for (std::size_t i = 1; i <= mItems.size(); ++i) Place(static_cast<std::uint32_t>(i));
}
VENDREL_CONTEXT()

void TaggedCommentDefs::Place(std::uint32_t position) {
  const std::size_t mask = mSlots.size() - 1;
  std::size_t at = HashTag(mItems[position - 1].TagIdentifier) & mask;
  while (mSlots[at]) at = (at + 1) & mask;
  mSlots[at] = position;
}

std::string TaggedCommentDefs::UpgradeFault() const {
  // Each definition has one way on. The chain of an entry is walked until it ends or meets a tag
  // known to end; meeting a tag of the walk itself is a circle.
  std::vector<std::size_t> walkOf(mItems.size(), 0);
  for (std::size_t start = 0; start < mItems.size(); ++start) {
    std::size_t at = start;
    while (walkOf[at] == 0 && !mItems[at].UpgradeTo.empty()) {
      walkOf[at] = start + 1;
      const TaggedCommentDef& entry = mItems[at];
      const TaggedCommentDef* next = Find(entry.UpgradeTo);
      if (next) at = static_cast<std::size_t>(next - mItems.data());
      if (next && walkOf[at] != start + 1) continue;
      return "entry " + std::to_string(&entry - mItems.data() + 1) + " (" + entry.TagIdentifier +
             "): UpgradeTo " + (next ? "leads in a circle: " : "names no tag: ") + entry.UpgradeTo;
    }
  }
  return {};
}

TemplateObjects& TemplateObjects::Default() try {
  std::shared_ptr<TemplateObjects>& service = Slot();
  if (service) return *service;
  if (!ObjectRegistry::Has(kProgId))
    ObjectRegistry::Register<TemplateObjects>(
        kProgId, [] { return std::make_shared<BuiltinTemplateObjects>(); });
  service = ObjectRegistry::Create<TemplateObjects>(kProgId);
  if (!service) throw VendrelError(errCannotCreate, kProgId);
  return *service;
}
VENDREL_CONTEXT()

void ModulesAhead::ShareTags(Workspace& standIn) {
  TemplateObjects::Default();
  const std::shared_ptr<TemplateObjects> service = Slot();
  const Workspace::Use use(standIn);
  Slot() = service;
}

void TemplateObjects::Install(std::shared_ptr<TemplateObjects> service) {
  Slot() = std::move(service);
}

const TaggedCommentDef* FindTagDefinition(std::string_view TagIdentifier) {
  if (!TagIdentifier.starts_with("##")) return nullptr;
  try {
    return TemplateObjects::Default().TaggedCommentDefs().Find(TagIdentifier);
  } catch (const std::exception&) {
    return nullptr;  // a failing service defines nothing
  }
}

}  // namespace vendrel
