#include "cli/InputJudgement.h"

#include <algorithm>
#include <map>

#include "cli/Options.h"
#include "core/Ascii.h"
#include "services/FileSource.h"

namespace vendrel::cli {
namespace {

// Lines with a key that a project file has leave something in the project.
bool HasProjectLines(const VBProject& project) {
  return project.Components.Listed().Count() > 0 || project.References.Count() > 0 ||
         !project.TypeName.empty() || !project.ProjectName.empty() || !project.Startup.empty() ||
         !project.EXEName32.empty() || !project.RelatedDocuments.empty();
}

bool IsControlCharacter(char c) {
  return static_cast<unsigned char>(c) < 32 && c != '\t' && c != '\r' && c != '\n' && c != '\f';
}

std::string WhatItHolds(const std::string& text, const std::string& otherwise) {
  if (text.empty()) return "the file is empty";
  const bool binary = std::any_of(text.begin(), text.end(), IsControlCharacter);
  return binary ? "the file holds binary data" : otherwise;
}

// Why the file of a module could not be read, by the code under which it was told.
std::string WhyUnread(const Component& module, DiagnosticCode code) {
  if (code == DiagnosticCode::BinaryModule) return "no module: the file holds binary data";
  try {
    ReadWholeFile(module.FileName.NativePath());
  } catch (const VendrelError& error) {
    return "cannot be read: " + error.Text();
  }
  return "cannot be read";  // just now it could
}

// Modules by what was told of their files.
std::map<const Component*, DiagnosticCode> Unread(const VBProject& project) {
  std::map<std::string, DiagnosticCode> told;
  for (const Diagnostic& item : project.Diagnostics)
    if (item.Code == DiagnosticCode::UnreadableFile || item.Code == DiagnosticCode::NotAFile ||
        item.Code == DiagnosticCode::BinaryModule)
      told.emplace(item.File, item.Code);
  std::map<const Component*, DiagnosticCode> modules;
  if (told.empty()) return modules;
  for (const Component& component : project.Components.Listed()) {
    if (component.LoadState != lsNotLoaded) continue;
    const auto entry = told.find(component.FileName.FullPath());
    if (entry != told.end()) modules.emplace(&component, entry->second);
  }
  return modules;
}

}  // namespace

void RefuseNoProject(const std::string& path, const VBProject& project) {
  if (HasProjectLines(project)) return;
  const std::string text = project.SourceForm ? project.SourceForm->Text : std::string();
  throw InputError(path,
                   "no project: " + WhatItHolds(text,
                                                "none of its lines is one of a project file, such "
                                                "as Type=Exe or Module=Main; Main.bas"));
}

void RefuseNoGroup(const std::string& path, const VBProjectGroup& group) {
  if (group.AllVBProjects().Count() > 0) return;
  const std::string text = SourceText::Read(group.FileName().NativePath())->Text;
  if (StartsWithNoCaseAscii(text, "VBGROUP")) return;
  if (EqualsNoCaseAscii(group.FileName().Extension(), "sln"))
    throw InputError(path, "no VB.NET project (.vbproj) that it lists is there");
  throw InputError(
      path, "no project group: " + WhatItHolds(text,
                                               "it does not begin with VBGROUP, and names no "
                                               "project that is there"));
}

void RefuseUnreadModule(const std::string& path, const VBProject& project) {
  for (const auto& [module, code] : Unread(project))
    throw InputError(path, WhyUnread(*module, code));
}

void RefuseHidden(const std::string& path) {
  const FoundPath found = FileSystemObject(AbsolutePath(path)).Find();
  if (found.Failure)
    throw InputError(path, "cannot be read: " + FileError(found.Failure, found.Path).Text());
}

std::set<const Component*> UnreadModules(const VBProject& project) {
  std::set<const Component*> modules;
  for (const auto& [module, code] : Unread(project)) modules.insert(module);
  return modules;
}

}  // namespace vendrel::cli
