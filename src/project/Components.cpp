#include "model/Components.h"

#include <optional>

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "model/DuplicateKey.h"
#include "project/EnumerationValues.h"
#include "project/ModulesAhead.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

// Modules are read ahead while it lives; within a population that reads ahead, by the outer one.
class ReadsAhead {
 public:
  ReadsAhead(std::shared_ptr<ModulesAhead>& ahead, VBProject* project,
             KeyedCollection<Component>& modules)
      : mAhead(ahead), mIsOutermost(!ahead && project && ModulesAhead::MayRead(*project, modules)) {
    if (mIsOutermost) mAhead = std::make_shared<ModulesAhead>(*project, modules);
  }
  ~ReadsAhead() {
    if (mIsOutermost) mAhead.reset();
  }
  ReadsAhead(const ReadsAhead&) = delete;
  ReadsAhead& operator=(const ReadsAhead&) = delete;

 private:
  std::shared_ptr<ModulesAhead>& mAhead;
  const bool mIsOutermost;
};

// What two modules of one name are called in a diagnostic: by their files, where both have some.
std::string ClashOf(const Component& first, const Component& second) {
  const std::string a = first.FileName.LeafName(), b = second.FileName.LeafName();
  if (a.empty() || b.empty()) return "module";
  return EqualsNoCaseAscii(a, b) ? "module of the file " + a + ":"
                                 : "name of two modules, " + a + " and " + b + ":";
}

}  // namespace

bool Components::Add(std::shared_ptr<Component> item, std::string_view key, const Position&,
                     const Position&) try {
  vendrel::VBProject* project = VBProject();
  const bool scoped = DiagnosticScope::Current() != nullptr;
  if (!key.empty() && mCol.HasKey(key)) {
    const std::string told = ClashOf(*mCol.Find(key), *item);
    std::optional<DiagnosticScope> scope;
    if (!scoped && project) scope.emplace(&project->Diagnostics, project->FileName.FullPath());
    ReportDuplicateKey("Components", key, told);
    return false;
  }
  mCol.Insert(std::move(item), key);
  return true;
}
VENDREL_CONTEXT(key)

void Components::Populate() try {
  vendrel::VBProject* project = VBProject();
  const bool preLoadOff = project && project->DontPreLoadComponentDeclarations;
  const Workspace::Use use(project ? project->Workspace() : Workspace::Current());
  if (project) project->SetLanguageVersion(project->LanguageVersion());
  if (DoNotPopulate) {
    for (std::size_t i = 1; i <= mCol.Count(); ++i) {
      Component& component = mCol.At(i);
      if (component.LoadState == lsNotLoaded && !preLoadOff) component.Load(true);
    }
    return;
  }
  bool allLoaded = true;
  const ReadsAhead ahead(mAhead, project, mCol);
  for (std::size_t i = 1; i <= mCol.Count(); ++i) {
    if (LoadAt(i, preLoadOff)) return;
    const LoadStateEnum state = mCol.At(i).LoadState;
    if (state == lsNotLoaded || state == lsLoadedHeader) allLoaded = false;
  }
  if (project) project->TypeResolver().FinishLoading();
  const bool every = project && project->Reading.EnumerationValues;
  if (mCol.Count() < 1 || (!allLoaded && !every) || mEnumerationsResolved) return;
  if (every)
    ComputeEnumerationValues(*project);
  else
    ResolveEnumerationMembers();
  mEnumerationsResolved = true;
}
VENDREL_CONTEXT()

// Loads one module if it waits for it; true when a client has cancelled.
bool Components::LoadAt(std::size_t index, bool preLoadOff) try {
  const std::shared_ptr<Component> component = mCol.Share(index);
  if (mAhead && mAhead->Has(*component)) {
    mAhead->Take(*component);
  } else {
    const bool waits = (component->LoadState == lsNotLoaded && !preLoadOff) ||
                       component->LoadState == lsLoadedHeader;
    if (!waits) return false;
    component->Load(false);
  }
  ComponentLoaded.Raise(static_cast<std::int32_t>(index));
  vendrel::VBProject* project = VBProject();
  if (!project || !project->CancelLoad) return false;
  project->FireLoadCancelled();
  return true;
}
VENDREL_CONTEXT(index, preLoadOff)

// Members whose value names a constant take its value: of their own module first, then of the
// others in order, where a further hit needs a constant named like the value found.
void Components::ResolveEnumerationMembers() try {
  const auto replace = [](EnumMember& member, Component& component) {
    const Constants* constants = component.Constants();
    const Constant* constant =
        constants ? constants->Item(std::string_view(member.Value)) : nullptr;
    if (!constant) return false;
    member.Value = constant->Value;
    return true;
  };
  for (Component& component : mCol) {
    for (Enumeration& enumeration : component.Enumerations) {
      for (EnumMember& member : enumeration.Members()) {
        if (member.Value.empty() || IsNumericText(member.Value)) continue;
        if (replace(member, component)) continue;
        for (Component& other : mCol)
          if (&other != &component) replace(member, other);
      }
    }
  }
}
VENDREL_CONTEXT()

}  // namespace vendrel
