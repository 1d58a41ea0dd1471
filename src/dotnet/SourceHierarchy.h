#pragma once
// What stands above the types of VB.NET source.

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "project/VBProject.h"

namespace vendrel {

/// Classes and interfaces above the types of one project, in it and outside.
class SourceHierarchy {
 public:
  explicit SourceHierarchy(VBProject& project)
      : mProject(project), mWhole(project.Reading.NetInheritance) {}

  /// The class above a type that names none.
  void TakeDefaults(Component& c) const;
  /// Fills `ClassHierarchy`, and gives the types from which `c` inherits: the class above it, as
  /// far as somebody knows it, and those above an interface.
  std::vector<Component*> Above(Component& c);

 private:
  Component* InProject(std::string_view name) const;
  Component* Outside(std::string_view name);
  Component* Walk(Component& c);
  void WalkHierarchy(Component& c, Component& base);
  void WholeHierarchy(Component& c, Component* base);

  VBProject& mProject;
  const bool mWhole;
  std::unordered_map<std::string, Component*> mOutside;
};

/// The types of a project with those above each in front of it, whatever the order of files.
std::vector<Component*> BasesFirst(VBProject& project);

}  // namespace vendrel
