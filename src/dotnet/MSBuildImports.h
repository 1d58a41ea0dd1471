#pragma once
// A project file of MSBuild together with the files that it imports.

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "dotnet/MSBuildExpressions.h"
#include "output/Xml.h"
#include "services/FileSystemObject.h"

namespace vendrel {

/// Imported files lie so deep in each other at most, and are so many.
inline constexpr int kDeepestImport = 16;
inline constexpr std::size_t kMostImports = 256;

/// Gathers what stands in a project file and in each file that it imports, as if it were one:
/// properties at once, groups of items in their order. Files of the tool chain, which are mostly
/// not there, are passed over.
class MSBuildImports {
 public:
  /// An `ItemGroup`, and the file in which it stands.
  struct Group {
    XmlElement Element;
    FileSystemObject File;
  };

  MSBuildImports(const FileSystemObject& project, MSBuildProperties& properties)
      : mProject(project), mProperties(properties) {}

  /// Takes the project file, with the "Directory.Build" files around it where it `isSdk`.
  void Take(const XmlElement& root, bool isSdk);
  const std::vector<Group>& Groups() const { return mGroups; }
  /// Whether the condition of an element is true; one without is.
  bool Holds(const XmlElement& e) const;
  /// Sets the properties that tell of the file in which a group stands.
  void Enter(const FileSystemObject& file);

 private:
  void TakeRoot(const XmlElement& root, const FileSystemObject& file);
  void TakePart(const XmlElement& part, const FileSystemObject& file);
  void TakeProperties(const XmlElement& group);
  void Import(const XmlElement& e, const FileSystemObject& from);
  void Import(const FileSystemObject& file);
  void ImportAbove(std::string_view leaf);

  const FileSystemObject& mProject;
  MSBuildProperties& mProperties;
  std::vector<std::shared_ptr<XmlDocument>> mDocuments;
  std::unordered_set<std::string> mTaken;
  std::vector<Group> mGroups;
  int mDepth = 0;
};

}  // namespace vendrel
