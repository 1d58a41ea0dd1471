// The projects of a set and which refers to which, as an XML document.

#include <sstream>
#include <unordered_map>
#include <vector>

#include <pugixml.hpp>

#include "diagnostics/Context.h"
#include "project/VBProjects.h"

namespace vendrel {
namespace {

using ParentsByProject = std::unordered_map<const VBProject*, std::vector<const VBProject*>>;

// Who refers to each project of the set; a project that does so twice counts once.
ParentsByProject FindParents(const VBProjects& projects) {
  ParentsByProject parents;
  for (const VBProject& project : projects) parents[&project];
  for (const VBProject& project : projects) {
    for (const Reference& reference : project.References) {
      const auto found = parents.find(reference.ReferencedProject());
      if (found == parents.end()) continue;
      if (found->second.empty() || found->second.back() != &project)
        found->second.push_back(&project);
    }
  }
  return parents;
}

void AppendRelation(pugi::xml_node element, const char* name, const VBProject& project) {
  element.append_child(name).append_attribute("ProjectName").set_value(project.ProjectName.c_str());
}

}  // namespace

std::string VBProjects::Structure() try {
  CementReferences();
  const ParentsByProject parents = FindParents(*this);
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("Projects");
  for (VBProject& project : *this) {
    pugi::xml_node element = root.append_child("Project");
    element.append_attribute("ProjectName").set_value(project.ProjectName.c_str());
    element.append_attribute("FullyQualifiedPath").set_value(project.FileName.FullPath().c_str());
    for (Reference& reference : project.References) {
      const VBProject* child = reference.ReferencedProject();
      if (child && parents.contains(child)) AppendRelation(element, "Child", *child);
    }
    for (const VBProject* parent : parents.at(&project)) AppendRelation(element, "Parent", *parent);
  }
  std::ostringstream text;
  document.save(text, "  ", pugi::format_indent | pugi::format_no_declaration);
  return text.str();
}
VENDREL_CONTEXT()

}  // namespace vendrel
