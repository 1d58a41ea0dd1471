#pragma once
// The switches of a project that the tree below it reads, so that the tree needs no project.

#include <string>

#include "core/Enums.h"
#include "core/ReadingRules.h"
#include "core/Workspace.h"
#include "diagnostics/Diagnostic.h"
#include "model/CodeElement.h"

namespace vendrel {

/// Options of a project: plain values, set before `Load`. Only a project has some of its own, so
/// that a link to options is a link to a project.
struct ProjectOptions : public CodeElement {
  /// How source is read; classic by default.
  ReadingRules Reading;
  /// Tagged comments stand before the element they describe.
  bool TaggedCommentsBeforeElement = true;
  /// Keep conditional compilation in written source; off resolves it.
  bool OutputConditionalCompilationBlocks = false;
  /// Do not load variables of procedures.
  bool LoadBlocksOnly = false;
  /// Whether plain comments count as descriptions of these kinds of element.
  bool UnTaggedModules = false;
  bool UnTaggedVariables = false;
  bool UnTaggedBlocks = false;
  bool UnTaggedEvents = false;
  bool UnTaggedEnumerations = false;
  bool UnTaggedUDTs = false;
  PropertyCommentsFromEnum PropertyCommentsFrom = pcAll;
  /// Fill the caches of type resolution while loading.
  bool BuildTypeCache = true;
  /// `Component::AddCode` opens a block at each start line.
  bool DetectNewBlocksOnAddCode = true;
  /// Every tagged comment stays a separate object; nothing is merged.
  bool PreserveOriginalTaggedComments = false;
  bool WriteHelpDescriptions = false;
  /// Keep existing help context IDs.
  bool RetainContextIDs = false;
  bool WasReadFromTypeLibrary = false;
  bool LineNumberPerModule = false;
  bool AddLineNumbers = false;
  bool LoadTypeLibHelpStrings = false;

  /// What was stepped over, missing or not understood while reading this project.
  vendrel::Diagnostics Diagnostics;

  /// Language of the project's source.
  LanguageVersionEnum LanguageVersion() const { return mLanguageVersion; }
  /// Also sets the language now in force for the workspace.
  void SetLanguageVersion(LanguageVersionEnum language);

  /// The workspace to which the project belongs: the one in use when it was made. Loading, writing
  /// and building put it in use.
  vendrel::Workspace& Workspace() const {
    return mWorkspace ? *mWorkspace : vendrel::Workspace::Current();
  }

  /// A link to this that a module and what it holds count among themselves: another thread may read
  /// the module.
  WeakHandle<ProjectOptions> NewLink() { return mLinks.New(*this); }

  /// The options of an element that has no project, and so belongs to the workspace in use.
  static const ProjectOptions& Defaults();

  /// `None` for those that stand in for a project; a project tells its own.
  ElementKind Kind() const override { return ElementKind::None; }

 protected:
  ProjectOptions() = default;

  LanguageVersionEnum mLanguageVersion = lvVisualBasic5or6;
  vendrel::Workspace* mWorkspace = nullptr;

 private:
  ApartHandles mLinks;
};

}  // namespace vendrel
