// What each element of a documented member becomes.

#include "dotnet/XmlComments.h"

#include "comments/TagDefinitions.h"
#include "core/Ascii.h"
#include "diagnostics/Diagnostic.h"
#include "model/Declarations.h"
#include "model/Events.h"
#include "model/Permission.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

std::string_view BehindColon(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? std::string_view() : name.substr(colon + 1);
}

Parameters* ParametersOf(CodeElement& element) {
  if (auto* block = As<Block>(&element)) return block->Parameters.IfAny();
  if (auto* event = As<EventDeclaration>(&element)) return event->Parameters.IfAny();
  if (auto* declare = As<DeclareDeclaration>(&element)) return declare->Parameters.IfAny();
  return nullptr;
}

std::string WithQuotesEscaped(std::string_view text) {
  std::string result;
  for (const char c : text)
    if (c == '"')
      result += "&quot;";
    else
      result += c;
  return result;
}

bool IsCode(const pugi::xml_node& node) {
  const std::string name = LowerAscii(node.name());
  return name == "code" || name == "c";
}

// The words of an example in front of, between and behind its code.
std::string IntroOf(const pugi::xml_node& example) {
  std::string text;
  for (const pugi::xml_node child : example.children()) {
    std::string piece;
    if (child.type() == pugi::node_element && !IsCode(child)) AppendXml(piece, child);
    if (child.type() == pugi::node_pcdata) piece = TrimWhite(child.value());
    if (piece.empty()) continue;
    if (!text.empty()) text += ' ';
    text += piece;
  }
  return text;
}

template <typename Record, typename Collection>
void AddRecord(OnDemand<Collection>* records, std::string name, std::string description,
               std::string target) {
  if (!records) return;
  auto record = std::make_shared<Record>();
  record->Name = std::move(name);
  record->mDescription = std::move(description);
  record->TargetQualifiedName = std::move(target);
  (*records)->Add(std::move(record));
}

}  // namespace

struct XmlComments::Rule {
  std::string_view Element;
  void (XmlComments::*Take)(const pugi::xml_node&);
  bool CompleteOnly = false;
};

// Whatever else stands in a member is passed over.
const XmlComments::Rule XmlComments::kRules[] = {
    {"summary", &XmlComments::TakeSummary},
    {"param", &XmlComments::TakeParam},
    {"returns", &XmlComments::TakeReturns},
    {"remarks", &XmlComments::TakeRemarks},
    {"value", &XmlComments::TakeReturns},
    {"exception", &XmlComments::TakeException},
    {"typeparam", &XmlComments::TakeTypeParam, true},
    {"seealso", &XmlComments::TakeSeeAlso},
    {"example", &XmlComments::TakeExample},
    {"overload", &XmlComments::TakeOverload},
    {"overloads", &XmlComments::TakeOverload, true},
    {"permission", &XmlComments::TakePermission},
    {"inheritdoc", &XmlComments::TakeInheritDoc, true},
};

XmlComments::XmlComments(VBProject& project, ExternalDocs* externalDocs, int mode,
                         MarkUp::Finder find)
    : mProject(project),
      mMode(mode),
      mElements(project),
      mFind(find ? std::move(find)
                 : [this](std::string_view name) { return mElements.Referred(name); }),
      mMarkUp(
          project, externalDocs, [this](std::string_view name) { return mFind(name); },
          [this](std::string_view tag, const std::string& text) {
            if (mObject) AddTaggedComment(*mObject, tag, {}, text);
          }) {}

CodeElement* XmlComments::ElementOf(std::string_view name) {
  CodeElement* found = mElements.Find(name).Element;
  auto* block = As<Block>(found);
  if (!block || name.find('(') != std::string_view::npos) return found;
  Blocks* overloads = block->Overloads();
  if (!overloads || overloads->Count() == 0) return found;
  const std::string key = block->IsConstructor ? "_ctor()" : block->Name() + "()";
  for (Block* overload : overloads->Named(key)) return overload;
  return found;
}

void XmlComments::ProcessMember(const pugi::xml_node& e, CodeElement& obj) {
  mUnknownParameters.clear();
  mInherits = false;
  mInheritsFrom.clear();
  mObject = &obj;
  mMember = e;
  mMarkUp.SetCurrentItem(&obj);
  std::vector<pugi::xml_node> children(e.children().begin(), e.children().end());
  for (const pugi::xml_node& child : children) {
    if (child.type() != pugi::node_element) continue;
    const std::string name = LowerAscii(child.name());
    for (const Rule& rule : kRules)
      if (rule.Element == name && (!rule.CompleteOnly || Keeps())) {
        (this->*rule.Take)(child);
        break;
      }
  }
}

void XmlComments::TakeSummary(const pugi::xml_node& e) {
  SetTaggedDescription(*mObject, mMarkUp.ParseOutXML(e, true));
}

void XmlComments::TakeRemarks(const pugi::xml_node& e) {
  AddTaggedComment(*mObject, "##REMARKS", {}, mMarkUp.ParseOutXML(e, true));
}

void XmlComments::TakeReturns(const pugi::xml_node& e) {
  AddTaggedComment(*mObject, "##RETURNS", {}, mMarkUp.ParseOutXML(e, true));
}

void XmlComments::TakeParam(const pugi::xml_node& e) {
  const std::string name(TrimBlanks(e.attribute("name").value()));
  Parameters* parameters = ParametersOf(*mObject);
  Parameter* parameter = parameters ? parameters->Item(std::string_view(name)) : nullptr;
  if (!parameter) {
    mUnknownParameters.push_back(name);
    return;
  }
  const std::string text = mMarkUp.ParseOutXML(e, true);
  // The road of comments is one of procedures; those of events and declares are described at once.
  if (mSourceLine > 0 && !As<Block>(mObject)) return parameter->SetDescription(text);
  AddTaggedComment(*parameter, "##PARAM", parameter->Name(), text);
}

// One comment of that tag is kept an element: each text tells its parameter.
void XmlComments::TakeTypeParam(const pugi::xml_node& e) {
  const std::string text = mMarkUp.ParseOutXML(e, true);
  AddTaggedComment(*mObject, "##TYPEPARAM", {}, "<i>" + AttributeText(e, "name") + "</i> " + text);
}

void XmlComments::TakeOverload(const pugi::xml_node& e) {
  const std::string text = mMarkUp.ParseOutXML(e, true);
  Component* component = mObject->OwnComponent();
  if (!component) return;
  if (Block* head = component->Blocks.Item(ShortName(mObject->ElementName())))
    SetTaggedDescription(*head, text);
}

void XmlComments::TakeSeeAlso(const pugi::xml_node& e) { mMarkUp.ProcessXMLNode(e); }

void XmlComments::TakeException(const pugi::xml_node& e) {
  const std::string cref = AttributeText(e, "cref");
  if (const CodeElement* target = mFind(cref))
    return AddRecord<Exception>(mObject->ExceptionsField(), target->ElementName(),
                                mMarkUp.ParseOutXML(e, true), target->QualifiedName());
  const bool isSource = mSourceLine > 0 && cref.find(':') == std::string::npos;
  if (!isSource && !cref.starts_with("T:")) return;
  const std::string name(isSource ? std::string_view(cref) : BehindColon(cref));
  const std::string address = mMarkUp.AddressOf(name);
  if (address.empty() && !Keeps()) return;
  AddRecord<Exception>(mObject->ExceptionsField(), name, mMarkUp.ParseOutXML(e, true), address);
}

void XmlComments::TakePermission(const pugi::xml_node& e) {
  const CodeElement* target = mFind(AttributeText(e, "cref"));
  if (!target) return;
  AddRecord<Permission>(mObject->PermissionsField(), target->ElementName(),
                        mMarkUp.ParseOutXML(e, true), target->QualifiedName());
}

void XmlComments::TakeInheritDoc(const pugi::xml_node& e) {
  mInherits = true;
  mInheritsFrom = AttributeText(e, "cref");
}

void XmlComments::TakeExample(const pugi::xml_node& e) {
  mMarkUp.ParseOutXML(e, true);
  const std::string intro = IntroOf(e);
  const bool isIndividual = HasMultipleExamples(mMember);
  if (!intro.empty() && !isIndividual) AddTaggedComment(*mObject, "##EXAMPLEINTRO", {}, intro);
  const std::string description = isIndividual ? WithQuotesEscaped(intro) : std::string();
  for (const pugi::xml_node child : e.children()) {
    if (child.type() != pugi::node_element || !IsCode(child)) continue;
    std::string code = mMarkUp.ParseOutXML(child, false);
    if (code.starts_with("\r\n"))
      code.erase(0, 2);
    else if (code.starts_with('\n'))
      code.erase(0, 1);
    AddTaggedComment(*mObject, "##EXAMPLECODE", {},
                     "Type=\"Source\", Source=\"" + WithQuotesEscaped(code) + "\", Language=\"" +
                         AttributeText(child, "lang") + "\", InLine=\"True\", Description=\"" +
                         description + "\"");
  }
}

bool XmlComments::HasMultipleExamples(const pugi::xml_node& e) {
  int count = 0;
  for (const pugi::xml_node child : e.children()) {
    const bool isExample =
        child.type() == pugi::node_element && LowerAscii(child.name()) == "example";
    if (isExample && child.first_child() != child.last_child()) ++count;
  }
  return count >= 2;
}

void XmlComments::SetTaggedDescription(CodeElement& obj, std::string_view text) {
  LateText* description = obj.TaggedDescriptionField();
  if (!description || (mMode == imKeep && !description->empty())) return;
  if (mMode == imReplace) description->clear();
  if (description->empty())
    *description = text;
  else
    description->Edit().append("<br>").append(text);
}

}  // namespace vendrel
