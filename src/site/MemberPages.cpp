// The pages of procedures, properties, events and Declares.

#include "core/CaseFold.h"
#include "output/SignatureText.h"
#include "project/VBProject.h"
#include "site/SiteChanges.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

constexpr std::size_t kLongestSignature = 20000;

const Parameters* ParametersOf(const CodeElement& element) {
  if (const auto* block = As<Block>(&element)) return block->Parameters.IfAny();
  if (const auto* event = As<EventDeclaration>(&element)) return event->Parameters.IfAny();
  if (const auto* declare = As<DeclareDeclaration>(&element)) return declare->Parameters.IfAny();
  return nullptr;
}

// The signature on one line, or where that is long with a line for each parameter.
std::string Arranged(const CodeElement& element) {
  std::string signature = SignatureText(element);
  for (char& c : signature)
    if (c == '\t' || c == '\r' || c == '\n') c = ' ';
  const Parameters* parameters = ParametersOf(element);
  if (signature.size() < 90 || !parameters || parameters->Count() < 2)
    return Shortened(signature, kLongestSignature);
  std::string text;
  int depth = 0;
  bool inString = false;
  for (const char c : signature) {
    if (c == '"') inString = !inString;
    if (!inString && (c == ')' || c == '}')) --depth;
    if (!inString && (c == '(' || c == '{')) ++depth;
    const bool breaksBehind = !inString && depth == 1 && (c == '(' || c == ',');
    if (c == ' ' && text.ends_with("\n    ")) continue;
    text += c;
    if (breaksBehind) text.append("\n    ");
  }
  return Shortened(text, kLongestSignature);
}

void AppendParameters(const SiteRun& run, Page& page, const CodeElement& element,
                      const Documentation& found) {
  constexpr std::size_t kMostParameters = 400;
  const Parameters* parameters = ParametersOf(element);
  std::string& html = page.Content;
  const ProseLinks links = LinksFor(run, page.Folder, element);
  const Component* module = element.OwnComponent();
  if (parameters && parameters->Count() > 0) {
    html.append("<h3>Parameters</h3>\n<dl class=\"facts\">\n");
    std::size_t shown = 0;
    for (const Parameter& parameter : *parameters) {
      if (++shown > kMostParameters) break;
      html.append("<dt>").append(Name(parameter.Name())).append("</dt>\n<dd><code>");
      std::string type = parameter.VariableType.str() + (parameter.IsArray ? "()" : "");
      run.Types.AppendDeclaration(html, (type.empty() ? "" : "As ") + type, page.Folder, module);
      html.append("</code>");
      if (parameter.IsOptional && !parameter.IsParamArray) html.append(", optional");
      if (!parameter.DefaultValue.empty())
        html.append(", else <code>")
            .append(Text(Shortened(parameter.DefaultValue.view(), 200)))
            .append("</code>");
      if (parameter.IsParamArray) html.append(", any number");
      std::string_view text = found.Parameter(parameter.Name());
      const std::string own = parameter.Description();
      if (!own.empty()) text = own;
      if (!text.empty()) {
        html.append("\n<div class=\"prose\" dir=\"auto\">");
        AppendProse(html, text, links);
        html.append("</div>");
      }
      html.append("</dd>\n");
    }
    html.append("</dl>\n");
    if (parameters->Count() > kMostParameters)
      html.append("<p class=\"note\">All others stand in the source.</p>\n");
  }
  if (found.Returns.empty()) return;
  html.append("<h3>Returns</h3>\n<div class=\"prose\" dir=\"auto\">");
  AppendProse(html, found.Returns, links);
  html.append("</div>\n");
}

// What is told of procedures that belong to something outside of their module.
void AppendTies(const SiteRun& run, Page& page, const MemberEntry& member) {
  std::string facts;
  const auto add = [&](std::string_view term, const std::string& html) {
    AppendFact(facts, term, html);
  };
  for (const CodeElement* element : member.Elements) {
    const auto* block = As<Block>(element);
    if (block && block->IsEventProcedure) {
      if (const CodeElement* source = block->EventSource.Get())
        add("Handles an event of", LinkTo(run, page.Folder, *source));
    }
    if (const CodeElement* implemented = run.Relations.Implements(*element)) {
      add("Implements", LinkTo(run, page.Folder, *implemented));
      break;
    }
    if (block && !block->ImplementsName().empty()) {
      add("Implements", Text(block->ImplementsName().view()));
      break;
    }
  }
  if (const auto* declare = As<DeclareDeclaration>(&member.First())) {
    add("Library", "<code>" + Text(declare->Library.view()) + "</code>");
    if (!declare->Alias.empty())
      add("There called", "<code>" + Text(declare->Alias.view()) + "</code>");
  }
  std::string implementations;
  std::size_t count = 0;
  for (const CodeElement* element : run.Relations.ImplementationsOf(member.First())) {
    if (++count > kListedAtMost) break;
    implementations.append(implementations.empty() ? "" : ", ");
    implementations.append(LinkTo(run, page.Folder, *element));
  }
  add("Implemented by", implementations);
  AppendFactList(page.Content, facts);
}

// Descriptions of the procedures of a property, of overloads: each behind its signature. The
// first of a property speaks for all where the others say nothing.
void AppendForms(const SiteRun& run, Page& page, const MemberEntry& member) {
  constexpr std::size_t kMostForms = 200;
  std::size_t shown = 0;
  for (const CodeElement* element : member.Elements) {
    if (++shown > kMostForms) {
      page.Content.append("<p class=\"note\">")
          .append(Number(member.Elements.size() - kMostForms))
          .append(" more forms stand in the source.</p>\n");
      break;
    }
    page.Content.append("<pre class=\"signature\"><code>");
    run.Types.AppendDeclaration(page.Content, Arranged(*element), page.Folder,
                                element->OwnComponent());
    page.Content.append("</code></pre>\n");
    if (shown > 1)
      if (const Address source = run.Map.SourceOf(*element))
        page.Content.append("<p class=\"path\"><a href=\"")
            .append(HrefFrom(page.Folder, source))
            .append("\">Source</a></p>\n");
    Documentation found = DocumentationOf(*element);
    const bool isSole = member.Elements.size() == 1;
    // Headings of sections are unique on a page: of several forms the texts alone are shown.
    if (!isSole && !found.Remarks.empty())
      found.Value.append(found.Value.empty() ? "" : "<p>").append(found.Remarks);
    AppendSummary(run, page, *element, found);
    AppendParameters(run, page, *element, found);
    if (isSole) AppendDetails(run, page, *element, found);
  }
  if (member.Elements.size() == 1) return;
  Documentation rest;
  for (const CodeElement* element : member.Elements) {
    const Documentation found = DocumentationOf(*element);
    for (const auto& entry : found.Exceptions) rest.Exceptions.push_back(entry);
    for (const auto& entry : found.Examples) rest.Examples.push_back(entry);
    for (const auto& entry : found.SeeAlso) rest.SeeAlso.push_back(entry);
    if (rest.Exceptions.size() + rest.Examples.size() > kMostForms) break;
  }
  AppendDetails(run, page, member.First(), rest);
}

std::string KindInWords(const MemberEntry& member, const ModuleEntry& module) {
  std::string words(member.Kind);
  if (const auto* block = As<Block>(&member.First())) {
    if (block->IsFriend) words.insert(0, "Friend ");
    if (IsPrivateAccess(block->Access)) words.insert(0, "Private ");
    if (block->IsHiddenMember) words.append(", hidden");
  }
  return words + " of " + module.Name;
}

}  // namespace

void WriteMemberPages(const SiteRun& run, const ModuleEntry& module) {
  for (std::size_t i = 0; i < module.Members.size(); ++i) {
    const MemberEntry& member = module.Members[i];
    Page page = PageIn(module, member.Leaf, member.Name);
    AddNeighbours(page, "In " + Link("index.html", module.Name), module.Members.size(), i,
                  [&](std::size_t other) { return NeighbourOf(module.Members[other]); });
    const bool* isNew = member.First().IsNewField();
    AppendHeading(page, KindInWords(member, module), member.Name,
                  TagsOf(run, member.First(), isNew && *isNew));
    AppendPath(run, page, member.First());
    AppendForms(run, page, member);
    AppendTies(run, page, member);
    AppendUses(run, page, member.Elements);
    run.Pages.Put(page);
  }
}

}  // namespace vendrel::site
