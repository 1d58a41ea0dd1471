#pragma once
// A small tree as a loader makes it, and documentation put on it.

#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "dotnet/DocumentationFile.h"
#include "dotnet/XmlComments.h"
#include "model/Events.h"
#include "model/Permission.h"
#include "project/Assembly.h"

namespace vendrel::test {

/// Addresses below one prefix.
struct DocsAtHome final : ExternalDocs {
  std::string url(std::string_view name) override {
    return name.starts_with("Home.") ? "http://home/" + std::string(name) : std::string();
  }
};

/// Class `Ns.Cls` with `Run` in two forms, `Go(what)`, field, event and exception class, in one of
/// the readings.
struct DocumentedTree {
  explicit DocumentedTree(bool classic = false) : Project(std::make_shared<VBProject>()) {
    Project->Reading = classic ? ReadingRules::Classic() : ReadingRules::Complete();
    Project->SetLanguageVersion(lvVisualBasicDotNet);
    Project->SetSilent(true);
    Project->ProjectName = "P";
    Project->Components.DoNotPopulate = true;
    Class = Add("Ns.Cls");
    Oops = Add("Ns.Oops");
    Go = Class->netCreateBlock(btSub, "Go", "PUBLIC", {}, true, {}, false, false, false, false);
    Go->netCreateParameter("what", "System.String", {}, false);
    Run = Class->netCreateBlock(btSub, "Run", "PUBLIC", {}, true, {}, false, false, false, false);
    for (const char* type : {"", "System.Int32"}) {
      auto overload = std::make_shared<Block>();
      overload->Component = Class.get();
      overload->SetVBProject(Project.get());
      overload->SetBlockType(btSub);
      overload->SetName("Run");
      if (*type) overload->netCreateParameter("n", type, {}, false);
      overload->SetName(overload->OverloadedMethodSignature());
      overload->SetOverloaded(true);
      Run->AddOverload(overload, overload->Name());
      RunForms.push_back(overload);
    }
    Field = Class->netCreateField("Size", "System.Int32", "PUBLIC", false, true, {}, true);
    Event = Class->netCreateEvent("Done", "System.EventHandler", true, {});
    Event->netCreateParameter("sender", "System.Object", {}, false);
  }

  std::shared_ptr<Component> Add(const char* name) const {
    return Project->netCreateComponent(lsFullyLoadedNoCode, name, "PUBLIC", ftClass, name, false,
                                       false, {});
  }

  /// Puts the content of a `member` on an element; gives what its description reads then.
  std::string Put(CodeElement& element, const std::string& content, int mode = imAppend) const {
    pugi::xml_document document;
    EXPECT_TRUE(ParseMarkUp(document, "<member>" + content + "</member>")) << content;
    DocsAtHome docs;
    XmlComments(*Project, &docs, mode).ProcessMember(document.document_element(), element);
    const LateText* text = element.TaggedDescriptionField();
    return text ? text->str() : std::string();
  }

  std::shared_ptr<VBProject> Project;
  std::shared_ptr<Component> Class, Oops;
  Block* Go = nullptr;
  Block* Run = nullptr;
  std::vector<std::shared_ptr<Block>> RunForms;
  std::shared_ptr<Variable> Field;
  EventDeclaration* Event = nullptr;
};

/// The comments of an element as "##TAG=text", one a line.
inline std::string CommentsOf(CodeElement& element) {
  std::string lines;
  if (const TaggedComments* comments = element.TaggedCommentsField()->IfAny())
    for (const TaggedComment& comment : *comments)
      lines += comment.TagIdentifier + "=" + comment.Text + "\n";
  return lines;
}

}  // namespace vendrel::test
