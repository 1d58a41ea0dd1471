#pragma once
// From a file on the command line to a loaded project.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "cli/Options.h"
#include "project/VBProject.h"

namespace vendrel::cli {

/// What a path on the command line is.
enum class InputKind {
  Project,
  Module,
  Group,
  DotNetProject,
  TypeLibrary,
  Folder,
  Unknown,
  Missing
};

/// Extensions of the files that commands read, in lower case, without the dot.
std::vector<std::string> InputExtensions();

/// By what is there: a type library by what it holds, other files by their extension.
InputKind KindOfInput(const std::string& path);

/// How far a load goes.
enum class LoadDepth { ProjectFile, Modules };

/// Loads a project or a single module by the shared options, going on over lines and files that
/// fail. `prepare` gets the project before its modules are read. Raises a `ToolError` that says
/// what to do where the input is none of these.
std::shared_ptr<VBProject> LoadInput(const std::string& path, const CommonOptions& options,
                                     const Streams& streams, LoadDepth depth = LoadDepth::Modules,
                                     const std::function<void(VBProject&)>& prepare = {});

/// Loads the modules in and below a folder as one project named after the folder: exported code has
/// no project file. Raises a `ToolError` where there are none; its code is `soFar`, what came out
/// before, if that is worse.
std::shared_ptr<VBProject> LoadFolderOfModules(const std::string& path,
                                               const CommonOptions& options, const Streams& streams,
                                               LoadDepth depth,
                                               const std::function<void(VBProject&)>& prepare,
                                               int soFar = exDone);

/// The module files in and below a folder, and source files of VB.NET, in the order of their paths.
/// What lies in folders of backups is none, nor are the notes of web editors.
std::vector<FileSystemObject> SourceFilesBelow(const std::string& path);
/// A web editor keeps notes on each file under its name, in a folder beside it.
bool IsOfWebEditor(const FileSystemObject& file);

/// Puts the code page for a project, group or module in force: the one of the options, or the guess
/// for it. Gives what a guess of another page than the default rests on, else nothing.
std::string UseCodePageFor(const std::string& path, const CommonOptions& options);

/// Puts the code page for one file in force and gives the bytes of the file.
std::string ReadByOptions(const std::string& nativePath, const CommonOptions& options);

/// Raises the error for an input that a command does not take.
[[noreturn]] void RefuseInput(const std::string& path, InputKind kind);

}  // namespace vendrel::cli
