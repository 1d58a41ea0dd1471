#pragma once
// A module given as text, and where its comments landed, as text again.

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "comments/CommentFile.h"
#include "comments/TaggedCommentRules.h"
#include "model/Component.h"
#include "project/VBProject.h"
#include "support/MemoryFiles.h"

namespace vendrel::test {

/// The comment that a text is read to, "##PARAM x the x".
inline std::shared_ptr<TaggedComment> Parsed(std::string_view source) {
  auto comment = std::make_shared<TaggedComment>();
  comment->Initialise(source);
  return comment;
}

inline std::string Shown(const TaggedComment& comment) {
  const std::string qualifier = comment.Qualifier.empty() ? "" : "(" + comment.Qualifier + ")";
  return " [" + comment.TagIdentifier + qualifier + "=" + comment.Text + "]";
}

/// What an element carries: "Block F d=text new [##REMARKS=text]"; empty for nothing.
inline std::string Carried(CodeElement& element) {
  std::string line;
  const auto* parameter = dynamic_cast<const Parameter*>(&element);
  const LateText* description = parameter ? &parameter->mDescription.Value()
                                          : std::as_const(element).TaggedDescriptionField();
  if (description && !description->empty()) line += " d=" + description->str();
  if (element.IsNewField() && *element.IsNewField()) line += " new";
  if (element.ExcludeFlagField() && *element.ExcludeFlagField()) line += " excluded";
  if (OnDemand<TaggedComments>* comments = element.TaggedCommentsField())
    if (comments->IfAny())
      for (const TaggedComment& comment : **comments) line += Shown(comment);
  if (line.empty()) return {};
  return std::string(element.ClassName()) + " " + element.ElementName() + line + "\n";
}

/// `Carried` of every element, and what still waits.
inline std::string LandedIn(VBProject& project, vendrel::Component& module) {
  std::string result;
  ForEachCommentedElement(project, [&](CodeElement& element) { result += Carried(element); });
  if (TaggedComments* waiting = module.TaggedCommentBuffer.IfAny())
    for (const TaggedComment& comment : *waiting) result += "waits" + Shown(comment) + "\n";
  return result;
}

/// A class module "M" of a project "M", loaded from these lines (LF ends).
struct CommentedModule {
  using Setup = std::function<void(VBProject&)>;

  explicit CommentedModule(const std::string& body, const Setup& setup = {})
      : Files{{"/p/M.cls", "VERSION 1.0 CLASS\nAttribute VB_Name = \"M\"\n" + body}} {
    if (setup) setup(Project);
    Project.LoadModule("Z:\\p\\M.cls");
    for (vendrel::Component& component : Project.Components) Module = &component;
  }

  std::string Landed() { return LandedIn(Project, *Module); }

  MemoryFiles Files;
  VBProject Project;
  vendrel::Component* Module = nullptr;
};

}  // namespace vendrel::test
