#include "site/SiteChanges.h"

#include <algorithm>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "model/Component.h"
#include "names/NameWalk.h"
#include "output/CodeHtml.h"
#include "output/SignatureText.h"
#include "site/Documentation.h"
#include "site/PageNames.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

// Local names and parameters belong to their procedures.
bool IsCompared(const CodeElement& element) {
  if (IsA<Component, Block, EventDeclaration, DeclareDeclaration, Enumeration, EnumMember, UDT,
          VBControl, Constant>(&element)) {
    const auto* constant = As<Constant>(&element);
    return !constant || !constant->Procedure.Get();
  }
  const auto* variable = As<Variable>(&element);
  return variable && !variable->Procedure.Get();
}

void AddLinesOf(ContentHash& hash, const Block& block) {
  ForEachShownLine(block, false, [&](std::string_view line, bool) {
    hash.Add(line);
    hash.Add("\n");
  });
}

// The procedures of a property come as one.
std::vector<const Block*> BlocksOf(const Block& block) {
  const Component* module = block.OwnComponent();
  if (!module || !block.IsPropertyType()) return {&block};
  std::vector<const Block*> blocks;
  for (const Block* each : module->Blocks.Named(block.Name())) blocks.push_back(each);
  return blocks;
}

ReleaseState::Entry EntryOf(const CodeElement& element) {
  ContentHash signature, text;
  const std::string summary = SummaryOf(element);
  text.Add(summary);
  if (const auto* block = As<Block>(&element)) {
    for (const Block* each : BlocksOf(*block)) {
      signature.Add(SignatureText(*each));
      AddLinesOf(text, *each);
    }
  } else {
    signature.Add(SignatureText(element));
  }
  if (const auto* control = As<VBControl>(&element))
    for (const ControlProperty& property : control->ControlProperties()) {
      text.Add(property.Name);
      text.Add(property.Value);
    }
  return {signature.Value(), text.Value(), KindOf(element)};
}

std::string KeyOf(const CodeElement& element) {
  return FoldKey(element.QualifiedName()) + "\n" + std::string(KindOf(element));
}

}  // namespace

void ReleaseState::Add(VBProject& project) {
  ForEachNamedElement(project, [&](CodeElement& element) {
    if (!IsCompared(element)) return;
    std::string key = KeyOf(element);
    const Entry entry = EntryOf(element);
    const auto [known, isNew] = mEntries.try_emplace(key, entry);
    if (isNew) {
      mNames.emplace(std::move(key), element.QualifiedName());
      return;
    }
    // Several of one name, whatever their order.
    known->second.Signature += entry.Signature;
    known->second.Text += entry.Text;
  });
}

SiteChanges::SiteChanges(const std::vector<VBProject*>& projects, const ReleaseState& before) {
  ReleaseState now;
  for (VBProject* project : projects) now.Add(*project);
  for (VBProject* project : projects)
    ForEachNamedElement(*project, [&](CodeElement& element) {
      if (!IsCompared(element)) return;
      const std::string key = KeyOf(element);
      const auto old = before.Entries().find(key);
      const ReleaseState::Entry& entry = now.Entries().at(key);
      ElementChange change = ElementChange::None;
      if (old == before.Entries().end())
        change = ElementChange::New;
      else if (old->second.Signature != entry.Signature)
        change = ElementChange::Signature;
      else if (old->second.Text != entry.Text)
        change = ElementChange::Text;
      if (change == ElementChange::None) return;
      mOf.emplace(&element, change);
      mChanged.emplace_back(&element, change);
      // A property is known by its first procedure, and shown by each.
      if (const auto* block = As<Block>(&element))
        for (const Block* each : BlocksOf(*block)) mOf.emplace(each, change);
    });
  for (const auto& [key, entry] : before.Entries())
    if (!now.Entries().contains(key)) mGone.emplace_back(before.NameOf(key), entry.Kind);
  std::sort(mGone.begin(), mGone.end());
}

ElementChange SiteChanges::Of(const CodeElement& element) const {
  const auto found = mOf.find(&element);
  return found == mOf.end() ? ElementChange::None : found->second;
}

std::string SiteChanges::TagOf(const CodeElement& element) const {
  switch (Of(element)) {
    case ElementChange::None: return {};
    case ElementChange::New: return "<span class=\"tag new\">new since</span>";
    case ElementChange::Signature: return "<span class=\"tag changed\">declared otherwise</span>";
    case ElementChange::Text: return "<span class=\"tag changed\">changed</span>";
  }
  return {};
}

void WriteChangePages(const SiteRun& run) {
  if (!run.Changes) return;
  Page page;
  page.Leaf = "changes.html";
  page.Title = "Changes";
  page.Crumbs.push_back({page.Title, ""});
  AppendHeading(page, "since the release before", "Changes");
  PagedList list(run, std::move(page), "<ul class=\"rows\">\n", "</ul>\n");
  struct Kind {
    ElementChange Change;
    std::string_view Id, Title;
  };
  std::size_t told = 0;
  for (const Kind& kind : {Kind{ElementChange::New, "new", "New"},
                           Kind{ElementChange::Signature, "declared", "Declared otherwise"},
                           Kind{ElementChange::Text, "changed", "Changed within"}}) {
    std::size_t count = 0;
    for (const auto& [element, change] : run.Changes->Changed()) count += change == kind.Change;
    if (count == 0) continue;
    told += count;
    std::string heading;
    AppendSection(heading, kind.Id, kind.Title, count);
    list.Section(heading);
    for (const auto& [element, change] : run.Changes->Changed())
      if (change == kind.Change)
        list.Add("<li>" + LinkTo(run, "", *element) + " <span class=\"of\">" +
                 std::string(KindOf(*element)) + "</span></li>\n");
  }
  const auto& gone = run.Changes->Gone();
  if (!gone.empty()) {
    std::string heading;
    AppendSection(heading, "gone", "Gone", gone.size());
    list.Section(heading);
    for (const auto& [name, kind] : gone)
      list.Add("<li>" + Name(ReplaceAll(name, "~", ".")) + " <span class=\"of\">" +
               std::string(kind) + "</span></li>\n");
  }
  if (told + gone.size() == 0) list.Behind() = "<p>Nothing differs.</p>\n";
  list.Finish();
}

}  // namespace vendrel::site
