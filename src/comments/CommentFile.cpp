#include "comments/CommentFile.h"

#include <algorithm>
#include <optional>
#include <ostream>
#include <pugixml.hpp>
#include <set>
#include <unordered_map>
#include <vector>

#include "comments/TagDefinitions.h"
#include "comments/TaggedCommentRules.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "model/Block.h"
#include "model/Component.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

template <typename Elements, typename Visitor>
void VisitAll(Elements* elements, const Visitor& visit) {
  if (!elements) return;
  for (CodeElement& element : *elements) visit(element);
}

// Elements by their full names, which several may share: the procedures of a property with their
// parameters, the Declares of one function in several modules.
class NamedElements {
 public:
  explicit NamedElements(VBProject& project) {
    ForEachCommentedElement(project, [this](CodeElement& element) {
      mElements[element.QualifiedName()].push_back(&element);
    });
  }
  CodeElement* Find(std::string_view name, std::size_t number) const {
    const auto found = mElements.find(std::string(name));
    const bool isThere = found != mElements.end() && number > 0 && number <= found->second.size();
    return isThere ? found->second[number - 1] : nullptr;
  }
  bool IsShared(const std::string& name) const {
    const auto found = mElements.find(name);
    return found != mElements.end() && found->second.size() > 1;
  }
  /// 1-based place among those of its name.
  std::size_t NumberOf(const CodeElement& element) const {
    const std::vector<CodeElement*>& all = mElements.at(element.QualifiedName());
    return static_cast<std::size_t>(std::find(all.begin(), all.end(), &element) - all.begin()) + 1;
  }

 private:
  std::unordered_map<std::string, std::vector<CodeElement*>> mElements;
};

// ---- Reading -----------------------------------------------------------------------------------

// Where a comment for an element is offered.
struct Place {
  CodeElement* LastElement = nullptr;
  vendrel::Component* Component = nullptr;
  vendrel::Block* Block = nullptr;
};

// What an element belongs to that is no target of its own.
CodeElement* MainObjectOf(CodeElement* element) {
  if (auto* parameter = As<Parameter>(element)) return parameter->Parent.Get();
  if (auto* member = As<EnumMember>(element)) return member->Enumeration.Get();
  auto* variable = As<Variable>(element);
  return variable && IsA<UDT>(variable->Parent.Get()) ? variable->Parent.Get() : element;
}

Place PlaceFor(VBProject& project, CodeElement* element) {
  Place place;
  if (!element) return place;
  const bool isConstant = IsA<Constant>(element) && project.Reading.ConstantComments;
  if (IsA<VBProject, VBProjectGroup>(element)) {
    place.Component = project.Components.Item(1);
  } else if (isConstant || IsA<Component, Block, EventDeclaration, DeclareDeclaration, Enumeration,
                               UDT, Variable, Interface>(element)) {
    place.Component = element->OwnComponent();
    if (element != place.Component) place.LastElement = element;
  }
  if (!place.Component) return place;
  place.Block = As<Block>(element);
  if (!place.Block) place.Block = place.Component->BlockOfType(btDeclarations, true);
  return place;
}

template <typename Collection>
auto ShareOf(Collection& collection, const typename Collection::Element& element) {
  auto found = collection.Share(std::string_view(element.Name));
  if (found.get() == &element) return found;
  for (std::size_t i = 1; i <= collection.Count(); ++i)
    if (collection.Item(i) == &element) return collection.Share(i);
  return decltype(found)();
}

// The state that placing a comment expects, as if the element had just been read.
void Prepare(const Place& place) {
  place.Component->LastElement = place.LastElement;
  if (auto* enumeration = As<Enumeration>(place.LastElement))
    place.Block->CurrentEnum() = ShareOf(place.Component->Enumerations, *enumeration);
  if (auto* udt = As<UDT>(place.LastElement))
    place.Block->CurrentUDT() = ShareOf(place.Component->UDTs, *udt);
}

// The element that an item names, as one that comments are offered to: of several with that name
// the one with its number, else the one that is found by it.
CodeElement* ElementOf(VBProject& project, const pugi::xml_node& item,
                       std::optional<NamedElements>& elements) {
  const std::string_view name = item.attribute("eid").value();
  if (const pugi::xml_attribute number = item.attribute("n")) {
    if (!elements) elements.emplace(project);
    return MainObjectOf(elements->Find(name, number.as_uint()));
  }
  CodeElement* element = project.GetObjectByName(name);
  const bool isPart = IsA<EnumMember, Variable, Parameter>(element);
  return isPart ? project.GetObjectByName_MainObject(name) : element;
}

void ApplyOne(VBProject& project, const pugi::xml_node& item,
              std::optional<NamedElements>& elements) try {
  const std::string_view name = item.attribute("eid").value();
  CodeElement* element = ElementOf(project, item, elements);
  if (!element && !project.GetObjectByName(name))
    return Report(DiagnosticCode::ElementNotFound, {name});
  auto comment = std::make_shared<TaggedComment>();
  comment->TagIdentifier = item.attribute("tid").value();
  comment->Qualifier = item.attribute("q").value();
  comment->Text = XmlTextOf(item);
  const Place place = PlaceFor(project, element);
  const bool canPlace = place.Block != nullptr;
  if (canPlace) Prepare(place);
  if (!canPlace || !place.Block->ApplyTaggedComment(comment))
    Report(DiagnosticCode::CommentUnplaced, {comment->TagIdentifier + " for " + std::string(name)});
}
VENDREL_CONTEXT_AT(LineReached(), trace::Local("eid", item.attribute("eid").value()),
                   trace::Local("tid", item.attribute("tid").value()))

// ---- Writing -----------------------------------------------------------------------------------

struct WrittenForm {
  ElementKind Class;
  std::string_view Prefix;
  ElementTypeEnum Kind;
  bool NamesMember;
};

// Elements that a bare tag misses when it is read from a file: the last element is another one
// there, or the open declaration takes the comment for its last member.
constexpr WrittenForm kForms[] = {
    {ElementKind::VBProject, "PROJECT", etProject, false},
    {ElementKind::Component, "MODULE", etModule, false},
    {ElementKind::Enumeration, "ENUMERATION", etEnumeration, false},
    {ElementKind::EnumMember, "ENUMERATION_MEMBER", etEnumerationMember, true},
    {ElementKind::UDT, "STRUCTURE", etStructure, false},
    {ElementKind::Variable, "STRUCTURE_MEMBER", etStructureMember, true},
    {ElementKind::Parameter, "PARAMETER", etParameter, true},
};

const WrittenForm* FormOf(const CodeElement& element) {
  const auto* variable = As<Variable>(&element);
  if (variable && !IsA<UDT>(variable->Parent.Get())) return nullptr;
  for (const WrittenForm& form : kForms)
    if (element.Kind() == form.Class) return &form;
  return nullptr;
}

std::string WrittenTag(const WrittenForm& form, const std::string& tag) {
  const TaggedCommentDef* definition = FindTagDefinition(tag);
  if (definition && definition->ElementType == form.Kind) return tag;
  const std::string word = tag.size() > 2 ? tag.substr(2) : "SUMMARY";
  std::string before = "##";
  before.append(form.Prefix).append("_").append(word);
  std::string behind = "##";
  behind.append(word).append("_").append(form.Prefix);
  for (const std::string& candidate : {before, behind}) {
    definition = FindTagDefinition(candidate);
    if (definition && definition->ElementType == form.Kind) return candidate;
  }
  return tag;
}

struct Writer {
  VBProject& Project;
  pugi::xml_node Root;
  const NamedElements& Elements;

  void Write(const CodeElement& element, const std::string& tag, const std::string& qualifier,
             const std::string& text) {
    const WrittenForm* form = FormOf(element);
    pugi::xml_node item = Root.append_child("TaggedComment");
    const std::string name = element.QualifiedName();
    item.append_attribute("eid").set_value(name.c_str());
    if (!IsFoundBy(name, element))
      item.append_attribute("n").set_value(
          static_cast<unsigned long long>(Elements.NumberOf(element)));
    item.append_attribute("tid").set_value((form ? WrittenTag(*form, tag) : tag).c_str());
    const std::string member = form && form->NamesMember ? element.ElementName() : qualifier;
    item.append_attribute("q").set_value(member.c_str());
    if (!text.empty()) item.append_child(pugi::node_pcdata).set_value(text.c_str());
  }

  // Whether the name alone leads to the element, and to what it belongs to. A name that the
  // procedures of a property share is not looked up, here and when the file is read: that gives
  // the comments of all of them to the first.
  bool IsFoundBy(const std::string& name, const CodeElement& element) const {
    const std::string owner = name.substr(0, name.find(':'));
    if (Elements.IsShared(name) || Elements.IsShared(owner)) return false;
    CodeElement* found = Project.GetObjectByName(name);
    if (found != &element) return false;
    CodeElement* const main = MainObjectOf(found);
    return main == found || main == Project.GetObjectByName(owner);
  }

  void WriteAll(CodeElement& element) {
    const auto* parameter = As<Parameter>(&element);
    const LateText* description = parameter ? &parameter->mDescription.Value()
                                            : std::as_const(element).TaggedDescriptionField();
    if (description && !description->empty()) Write(element, "##SUMMARY", {}, description->str());
    const OnDemand<TaggedComments>* comments = std::as_const(element).TaggedCommentsField();
    if (!comments || !comments->IfAny()) return;
    // A command that is kept apart stands in the list twice: by its tag, and as what it is.
    std::set<const TaggedComment*> written;
    for (const TaggedComment& comment : **comments)
      if (written.insert(&comment).second)
        Write(element, comment.TagIdentifier, comment.Qualifier, comment.Text);
  }
};

void VisitBlock(Block& block, const std::function<void(CodeElement&)>& visit) {
  if (!block.Name().empty()) visit(block);
  VisitAll(block.Parameters.IfAny(), visit);
  VisitAll(block.Variables.IfAny(), visit);
  VisitAll(block.Constants.IfAny(), visit);
}

void VisitModule(Component& component, const std::function<void(CodeElement&)>& visit) {
  visit(component);
  for (EventDeclaration& event : component.EventDeclarations) {
    visit(event);
    VisitAll(event.Parameters.IfAny(), visit);
  }
  for (Enumeration& enumeration : component.Enumerations) {
    visit(enumeration);
    VisitAll(&enumeration.Members(), visit);
  }
  for (UDT& udt : component.UDTs) {
    visit(udt);
    VisitAll(&udt.Members, visit);
  }
  for (DeclareDeclaration& declare : component.Declarations) {
    visit(declare);
    VisitAll(declare.Parameters.IfAny(), visit);
  }
  VisitAll(&component.Interfaces, visit);
  for (Block& block : component.Blocks) VisitBlock(block, visit);
}

}  // namespace

std::string XmlTextOf(const pugi::xml_node& element) {
  std::string text;
  pugi::xml_node node = element.first_child();
  while (node) {
    if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) text += node.value();
    if (node.first_child()) {
      node = node.first_child();
      continue;
    }
    while (!node.next_sibling() && node.parent() != element) node = node.parent();
    node = node.next_sibling();
  }
  return text;
}

void VBProject::ApplyCommentFile() try {
  const Workspace::Use use(Workspace());
  if (!CommentFile.Exists()) return;
  CommentFile.OpenFile(omRead);
  const std::string text = CommentFile.ReadAll();
  CommentFile.CloseFile();
  std::int32_t line = 1;
  const DiagnosticScope scope(&Diagnostics, CommentFile.FullPath(), &line);
  pugi::xml_document document;
  ParseXml(document, text, CommentFile.FullPath());
  std::optional<NamedElements> elements;  // made where an item asks for one of several
  std::size_t counted = 0;
  for (const pugi::xml_node& item : document.document_element().children()) {
    if (item.type() != pugi::node_element) continue;
    for (const auto at = static_cast<std::size_t>(item.offset_debug()); counted < at; ++counted)
      line += text[counted] == '\n';
    ApplyOne(*this, item, elements);
  }
}
VENDREL_CONTEXT(trace::Field("CommentFile", CommentFile.FullPath()), *this)

void ForEachCommentedElement(VBProject& project, const std::function<void(CodeElement&)>& visit) {
  visit(project);
  for (Component& component : project.Components.Listed()) VisitModule(component, visit);
}

CommentFileOfSeveral::CommentFileOfSeveral() : mDocument(std::make_unique<pugi::xml_document>()) {
  mDocument->append_child("TaggedComments");
}

CommentFileOfSeveral::~CommentFileOfSeveral() = default;

void CommentFileOfSeveral::Add(VBProject& project) {
  const NamedElements elements(project);
  Writer writer{project, mDocument->document_element(), elements};
  ForEachCommentedElement(project, [&](CodeElement& element) { writer.WriteAll(element); });
}

void CommentFileOfSeveral::Write(std::ostream& out) const {
  mDocument->save(out, "  ", pugi::format_default, pugi::encoding_utf8);
}

void WriteCommentFile(VBProject& project, std::ostream& out) try {
  CommentFileOfSeveral file;
  file.Add(project);
  file.Write(out);
}
VENDREL_CONTEXT(project)

}  // namespace vendrel
