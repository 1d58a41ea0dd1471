#pragma once
// VB.NET projects as tools want them, beside what the object model offers.

#include <string>
#include <string_view>
#include <vector>

#include "project/VBProject.h"

namespace vendrel {

/// ProgID of the loader of project files with a root `Project`.
inline constexpr std::string_view kMSBuildLoaderProgId = "VendrelModel.MSBuildLoader";

/// What a ".vbproj" is, by the name of its root.
enum class NetProjectForm {
  /// `VisualStudioProject`: `VBProject::LoadDotNet` reads it.
  VisualStudio,
  /// `Project`: `VBProject::LoadFromCustom` reads it by `kMSBuildLoaderProgId`.
  MSBuild,
  Other,
};
/// Looks at the root of a file (path of this machine). `root` gets its name, empty where the text
/// is no XML. Raises 53 or 75.
NetProjectForm FormOfNetProject(const std::string& nativePath, std::string& root);

/// Ties each reference of `project` to a project of `others` that has its id, or its file.
void TieNetReferences(VBProject& project, const std::vector<VBProject*>& others);

/// The project files that a project refers to, as far as they are known: by their paths, or by the
/// ids that a solution in its folder or one above tells. Those that are not there are left out.
std::vector<std::string> ReferencedProjectFiles(const VBProject& project);

/// Types their full names, and what they inherit, file by file.
void ResolveFiles(VBProject& project);

/// Gives types their full names and what they inherit, as an assembly does for its source.
void ResolveSourceTypes(VBProject& project);

/// The file in which an element of VB.NET source stands: of the parts of a type the one that holds
/// it. The file of its module for any other.
const FileSystemObject& SourceFileOf(const Component& component, const CodeElement& element);

/// Where `VBProject::WriteOutDotNet` writes a source file.
std::string TargetOfSource(const VBProject& project, const ProjectFile& file);

}  // namespace vendrel
