// A module from one entry of a library that is neither an enumeration nor a record.

#include <unordered_set>

#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/ModuleKinds.h"
#include "typelib/LibraryTypes.h"
#include "typelib/MemberReader.h"
#include "typelib/MissingLibraries.h"

namespace vendrel {
namespace {

using namespace typelib;

constexpr int kHiddenType = 16, kControlType = 32, kRestrictedType = 512;
constexpr int kSourceInterface = 2;

// An object whose members are to be read.
struct Chosen {
  const TypeInfo* Type = nullptr;
  /// Of an interface; 0 for the entry itself.
  int Mask = 0;
  /// Name in front of those of the members; empty for the entry and its default interfaces.
  std::string Secondary;
};

bool IsUnknown(std::string_view name) { return EqualsNoCase(name, "IUnknown"); }

// Chooses the entry, its two default interfaces, then each further one.
class InterfaceChooser {
 public:
  InterfaceChooser(VBProject& project, const TypeInfo& entry, Component& component)
      : mProject(project), mEntry(entry), mComponent(component) {
    Take({&entry, 0, {}});
  }

  void TakeDefaults() {
    TakeDefault(mEntry.DefaultInterface());
    TakeDefault(mEntry.DefaultEventInterface());
  }

  /// False if one of them cannot be read and the component stays incomplete.
  bool TakeFurther() {
    for (const InterfaceInfo& item : mEntry.Interfaces) {
      try {
        TakeFurther(item, item.TypeInfo());
      } catch (const VendrelError& error) {
        if (mProject.Reading.KeepUnreadable) {
          ReportLeftOut(item, error);
          continue;
        }
        ReportIncomplete(item, error);
        return false;
      }
    }
    return true;
  }

  const std::vector<Chosen>& List() const { return mChosen; }

 private:
  bool Holds(std::string_view name) const { return mNames.count(FoldKey(name)) != 0; }
  void Take(Chosen chosen) {
    if (mNames.insert(FoldKey(chosen.Type->Name)).second) mChosen.push_back(std::move(chosen));
  }
  void TakeDefault(const InterfaceInfo* item) {
    if (!item) return;
    if (const TypeInfo* type = item->Library->TryResolve(item->Reference))
      Take({type, item->AttributeMask, {}});
  }
  void TakeFurther(const InterfaceInfo& item, const TypeInfo& type);
  void ReportLeftOut(const InterfaceInfo& item, const VendrelError& error) const {
    ReportUnread(
        MissingLibraryOf(*item.Library, item.Reference),
        "an interface of module " + Quoted(mComponent.Name) + " is left out: " + error.Text());
  }
  void ReportIncomplete(const InterfaceInfo& item, const VendrelError& error) const {
    ReportMissing(
        MissingLibraryOf(*item.Library, item.Reference),
        "module " + Quoted(mComponent.Name) + " is incomplete: " + error.Text(),
        "There was an error reading typelib information for one or more interfaces in "
        "module '" +
            mComponent.Name +
            "'.  One or more dependant files containing type information may be missing.  "
            "Processing will continue, this component will be incomplete.",
        "Missing typelib information");
  }

  VBProject& mProject;
  const TypeInfo& mEntry;
  Component& mComponent;
  std::vector<Chosen> mChosen;
  std::unordered_set<std::string> mNames;
};

void InterfaceChooser::TakeFurther(const InterfaceInfo& item, const TypeInfo& type) {
  if (EqualsNoCase(type.Name, "IDispatch") || Holds(type.Name)) return;
  if (mProject.Reading.HideComMembers && IsUnknown(type.Name)) return;
  if ((item.AttributeMask & (kHiddenType | kRestrictedType)) != 0) return;
  const std::string name(WithoutUnderscore(type.Name));
  auto implemented = std::make_shared<Interface>();
  implemented->Component = &mComponent;
  implemented->Name = name;
  mComponent.Interfaces.Add(std::move(implemented), name);
  Take({&type, item.AttributeMask, name});
}

std::shared_ptr<Component> NewLibraryModule(VBProject& project, const TypeInfo& type) {
  auto component = std::make_shared<Component>();
  component->SetVBProject(&project);
  component->Access = "PUBLIC";
  component->FileName.SetFullPath(project.FileName.FullPath());
  component->FileName.SetBaseName(type.Name);
  component->FileName.SetExtension(KindOfModule(ftClass).Extension);
  component->LoadState = lsFullyLoadedNoCode;
  component->Name = type.Name;
  component->HelpContextID = static_cast<std::int32_t>(type.HelpContext);
  project.AddHelpDescription(*component, type.HelpString);
  component->IncludeFlag = true;
  const bool isControl = (type.AttributeMask & kControlType) != 0;
  component->FileType = isControl ? ftUserControl : ftClass;
  if (isControl) project.ProjectType = ptControl;
  if ((type.AttributeMask & (kHiddenType | kRestrictedType)) != 0) {
    component->Access = "PRIVATE";
    component->IncludeFlag = false;
  }
  return component;
}

// The seven members that every dual interface begins with, as its base chain declares them.
bool IsComMember(const MemberInfo& member) {
  for (const TypeInfo& type : BuiltInLibrary().TypeInfos)
    if (type.TypeKind == tkInterface || type.TypeKind == tkDispatch)
      for (const MemberInfo& known : type.OwnMembers)
        if (known.MemberId == member.MemberId && known.Name == member.Name) return true;
  return false;
}

bool IsRootInterface(const TypeInfo& type) {
  return IsUnknown(type.Name) || EqualsNoCase(type.Name, "IDispatch");
}

}  // namespace

std::shared_ptr<Component> VBProject::TypeLibComponent(const TypeLibInfo& library,
                                                       const TypeInfo& type) try {
  auto component = NewLibraryModule(*this, type);
  if (type.TypeKind == tkEnum || type.TypeKind == tkRecord) return component;
  InterfaceChooser chooser(*this, type, *component);
  chooser.TakeDefaults();
  if (!chooser.TakeFurther()) return component;
  MemberReader reader(*this, library, type, *component);
  for (const Chosen& chosen : chooser.List()) {
    const bool hidesRoots = Reading.HideComMembers && !IsRootInterface(*chosen.Type);
    for (const MemberInfo* member : chosen.Type->Members()) {
      if (hidesRoots && IsComMember(*member)) continue;
      if (!library.SpendMembers(1 + member->Parameters().size())) return component;
      if ((chosen.Mask & kSourceInterface) != 0) {
        reader.AddEvent(*member);
      } else {
        reader.AddBlock(*member, chosen.Secondary);
      }
    }
  }
  return component;
}
VENDREL_CONTEXT(*this)

}  // namespace vendrel
