#include "cli/ProjectCounts.h"

#include "cli/InputJudgement.h"
#include "cli/Report.h"
#include "output/Json.h"
#include "survey/Wording.h"

namespace vendrel::cli {
namespace {

// Of VB.NET the files are listed; types are what they hold.
void CountFiles(const VBProject& project, ProjectCounts& counts) {
  for (const ProjectFile& file : project.ProjectFiles) {
    ++counts.Listed;
    ++(file.SourceForm          ? counts.Found
       : file.FileName.Exists() ? counts.Unreadable
                                : counts.Missing);
  }
}

void CountModules(const VBProject& project, ProjectCounts& counts) {
  if (project.ProjectFiles.Count() > 0) return CountFiles(project, counts);
  const std::set<const Component*> unread = UnreadModules(project);
  counts.Unreadable += unread.size();
  for (const Component& component : project.Components.Listed()) {
    ++counts.Listed;
    if (unread.contains(&component)) continue;
    ++(project.WasReadFromTypeLibrary || component.FileName.Exists() ? counts.Found
                                                                     : counts.Missing);
  }
  counts.OtherCase += project.Diagnostics.CountOf(DiagnosticCode::ModuleUnderOtherCase);
}

// Names that the project file gives twice: the second module is dropped.
std::size_t DroppedModules(const VBProject& project) {
  if (project.ProjectSourceType != ptsVisualBasicProject || project.ProjectFiles.Count() > 0)
    return 0;
  const std::string file = project.FileName.FullPath();
  std::size_t count = 0;
  for (const Diagnostic& item : project.Diagnostics)
    if (item.Code == DiagnosticCode::DuplicateName && item.File == file) ++count;
  return count;
}

struct CountName {
  const char* Key;
  /// For the number 1, and what comes behind the word for others.
  const char* Word;
  const char* Plural;
  const char* Behind;
  std::size_t ProjectCounts::*Member;
  /// Where it stands in the line of words.
  enum { Always, IfAny, Never } Shown = Always;
};
constexpr CountName kCounts[] = {
    {"Projects", "project", "projects", "", &ProjectCounts::Projects},
    {"ProjectsNotRead", "project", "projects", " not read", &ProjectCounts::Unread},
    {"ModulesListed", "module", "modules", " listed", &ProjectCounts::Listed},
    {"ModulesFound", "found", "found", "", &ProjectCounts::Found},
    {"ModulesFoundUnderAnotherCase", "found", "found", " under another case",
     &ProjectCounts::OtherCase},
    {"ModulesMissing", "missing", "missing", "", &ProjectCounts::Missing},
    {"ModulesUnreadable", "unreadable", "unreadable", "", &ProjectCounts::Unreadable},
    {"DuplicateNames", "duplicate name", "duplicate names", "", &ProjectCounts::DuplicateNames},
    {"ReferencesWithoutFile", "reference", "references", " without a file",
     &ProjectCounts::ReferencesWithoutFile},
    {"Errors", "error", "errors", "", &ProjectCounts::Errors, CountName::Never},
    {"Warnings", "warning", "warnings", "", &ProjectCounts::Warnings, CountName::Never},
    {"Notes", "note", "notes", "", &ProjectCounts::Notes, CountName::Never},
    {"FindingsKnown", "finding", "findings", " known", &ProjectCounts::Known, CountName::IfAny},
};

}  // namespace

void ProjectCounts::Add(const VBProject& project) {
  ++Projects;
  CountModules(project, *this);
  Listed += DroppedModules(project);
  DuplicateNames += project.Diagnostics.CountOf(DiagnosticCode::DuplicateName);
  for (const Reference& reference : project.References)
    if (IsWithoutFile(reference)) ++ReferencesWithoutFile;
}

std::vector<std::string> ProjectCounts::Names() {
  std::vector<std::string> names;
  for (const CountName& count : kCounts) names.emplace_back(count.Key);
  return names;
}

void ProjectCounts::Write(std::ostream& out, bool asJson) const {
  if (!asJson) {
    const char* separator = "";
    for (const CountName& count : kCounts) {
      const std::size_t number = this->*count.Member;
      if (count.Shown == CountName::Never || (count.Shown == CountName::IfAny && number == 0))
        continue;
      out << separator << number << ' ' << (number == 1 ? count.Word : count.Plural)
          << count.Behind;
      separator = ", ";
    }
    out << '\n';
    return;
  }
  JsonWriter json(out, false);
  json.BeginObject();
  for (const CountName& count : kCounts) {
    json.Key(count.Key);
    json.Number(static_cast<std::int64_t>(this->*count.Member));
  }
  json.EndObject();
  json.NewLine();
}

}  // namespace vendrel::cli
