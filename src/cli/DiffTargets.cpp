#include "cli/DiffTargets.h"

#include <algorithm>

#include "cli/JsonLines.h"
#include "cli/TableWriter.h"
#include "core/CaseFold.h"
#include "survey/MovedCode.h"

namespace vendrel::cli {
namespace {

ChangePlace PlaceOfProject(const std::string& path) {
  return {FileSystemObject(path).FullPath(), 0};
}

}  // namespace

TreeDiff::TreeDiff(const DiffArguments& arguments, std::ostream& out)
    : mWriter(out, "diff", arguments.Common, arguments.Json) {
  mOptions.Lines = !arguments.NoText;
  mOptions.Places = arguments.Places;
  mOptions.Comments = arguments.Comments;
}

void TreeDiff::Projects(VBProject& before, VBProject& after) {
  const ElementPartners partners = FindMovedCode(before, after);
  Compare(Describe(before), Describe(after), partners);
}

// Members of one name; code that moved from one to another counts as gone and added.
void TreeDiff::Groups(VBProjectGroup& before, VBProjectGroup& after) {
  ElementPartners partners;
  for (const VBProject& old : before.AllVBProjects())
    for (const VBProject& now : after.AllVBProjects())
      if (EqualsNoCase(old.ProjectName, now.ProjectName)) partners.merge(FindMovedCode(old, now));
  Compare(Describe(before), Describe(after), partners);
}

void TreeDiff::Alone(ChangeKind kind, const std::string& path) {
  Change change{kind, ElementKind::VBProject, {}, {}, {}, {}, {}, {}};
  change.Element = FileSystemObject(path).BaseName();
  (kind == ChangeKind::Gone ? change.PlaceBefore : change.PlaceAfter) = PlaceOfProject(path);
  change.Word = RowOf(change.Class).Word;
  change.Whole = {nullptr,        change.Word,        change.Class,
                  change.Element, change.PlaceBefore, change.PlaceAfter};
  mWriter.Write(change);
}

void TreeDiff::Compare(ElementRef before, ElementRef after, const ElementPartners& partners) {
  mOptions.Partners = &partners;
  mWriter.Compare(before, after, mOptions);
}

ApiDiff::ApiDiff(const DiffArguments& arguments) {
  mReport.NativeRoot = FolderSeenFrom(arguments.Common, arguments.Json);
  mOptions.AllModules = arguments.AllModules;
}

void ApiDiff::Projects(VBProject& before, VBProject& after) {
  if (before.LanguageVersion() != after.LanguageVersion())
    throw ToolError(exUsage, "'" + before.ProjectName + "' is bound by other rules than '" +
                                 after.ProjectName +
                                 "': one is VB.NET or an assembly, the other is not");
  mReport.Add(SurfaceOf(before, mOptions), SurfaceOf(after, mOptions));
}

void ApiDiff::Groups(VBProjectGroup& before, VBProjectGroup& after) {
  std::vector<VBProject*> added;
  for (VBProject& now : after.AllVBProjects()) added.push_back(&now);
  for (VBProject& old : before.AllVBProjects()) {
    const auto partner = std::find_if(added.begin(), added.end(), [&](const VBProject* now) {
      return EqualsNoCase(now->ProjectName, old.ProjectName);
    });
    if (partner == added.end()) {
      mReport.AddAlone(old.ProjectName, {old.FileName.FullPath(), 0}, true);
      continue;
    }
    Projects(old, **partner);
    added.erase(partner);
  }
  for (const VBProject* now : added)
    mReport.AddAlone(now->ProjectName, {now->FileName.FullPath(), 0}, false);
}

void ApiDiff::Alone(ChangeKind kind, const std::string& path) {
  mReport.AddAlone(FileSystemObject(path).BaseName(), PlaceOfProject(path),
                   kind == ChangeKind::Gone);
}

}  // namespace vendrel::cli
