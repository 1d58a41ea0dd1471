#include "site/TypeLinks.h"

#include <algorithm>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "dotnet/GenericNames.h"
#include "names/NameLookup.h"
#include "site/SiteHtml.h"
#include "site/SourceTokens.h"

namespace vendrel::site {
namespace {

// Without what stands around the name of a type: arrays, arguments of generic types.
std::string BareType(std::string_view type) {
  type = TrimGaps(type);
  if (StartsWithNoCaseAscii(type, "New ")) type = TrimGaps(type.substr(4));
  std::string name = type.find('{') == kNotFound ? std::string(type) : DefinitionOf(type);
  name.resize(std::min(name.find_first_of("(*<[&"), name.size()));
  return std::string(TrimGaps(name));
}

bool IsWord(const SourceToken& token, std::string_view word) {
  return EqualsNoCaseAscii(token.Text, word);
}

}  // namespace

TypeLinks::TypeLinks(const SiteMap& map, std::vector<OutsideLink> outside)
    : mMap(map), mOutside(std::move(outside)) {
  for (const ProjectEntry& project : map.Projects())
    for (const ModuleEntry& module : project.Modules) {
      mFullNames.emplace(FoldKey(module.Module->FullName()), module.Module);
      const std::string owner = project.Name + "." + module.Name;
      mFullNames.emplace(FoldKey(owner), module.Module);
      for (const MemberEntry& type : module.Types) {
        const std::string name = "." + std::string(type.Name);
        mFullNames.emplace(FoldKey(owner + name), &type.First());
        mFullNames.emplace(FoldKey(project.Name + name), &type.First());
      }
    }
}

const CodeElement* TypeLinks::Find(const Component* module, std::string_view type) const {
  const std::string bare = BareType(type);
  if (bare.empty() || VBProject::IsIntrinsicType(bare)) return nullptr;
  const VBProject* project = module ? module->VBProject() : nullptr;
  const std::string key = FoldKey(bare) + "\n" +
                          std::to_string(reinterpret_cast<std::uintptr_t>(project)) +
                          (module && project && project->LanguageVersion() != lvVisualBasicDotNet
                               ? "\n" + std::to_string(reinterpret_cast<std::uintptr_t>(module))
                               : std::string());
  const auto [entry, isNew] = mKnown.try_emplace(key, nullptr);
  if (isNew) entry->second = Resolve(module, bare);
  return entry->second;
}

const CodeElement* TypeLinks::Resolve(const Component* module, const std::string& type) const {
  VBProject* project = module ? module->VBProject() : nullptr;
  if (project && project->LanguageVersion() != lvVisualBasicDotNet) {
    try {
      TypeClassEnum where = tcUnresolved;
      const CodeElement* found = project->ResolveType(const_cast<Component*>(module), type, where);
      if (found && mMap.Of(found)) return found;
    } catch (const VendrelError&) {
      // A type that has gone since names were gathered is no link.
    }
  }
  const auto known = mFullNames.find(FoldKey(type));
  if (known != mFullNames.end()) return known->second;
  if (!module) return nullptr;
  // A name within its own namespace, or project.
  std::string around = project && project->LanguageVersion() == lvVisualBasicDotNet
                           ? GetObjectNamespace(module)
                           : (project ? project->ProjectName : std::string());
  for (; !around.empty(); around.erase(around.rfind('.') == kNotFound ? 0 : around.rfind('.'))) {
    const auto near = mFullNames.find(FoldKey(around + "." + type));
    if (near != mFullNames.end()) return near->second;
  }
  return nullptr;
}

std::string TypeLinks::OutsideHref(std::string_view name) const {
  const OutsideLink* best = nullptr;
  for (const OutsideLink& link : mOutside)
    if (StartsWithNoCaseAscii(name, link.first) &&
        (!best || link.first.size() > best->first.size()))
      best = &link;
  if (!best) return {};
  const bool hasMark = best->second.find("{name}") != kNotFound;
  return SafeAddress(hasMark ? ReplaceAll(best->second, "{name}", name)
                             : best->second + std::string(name));
}

std::string TypeLinks::Href(std::string_view folder, const Component* module,
                            std::string_view type) const {
  if (const CodeElement* found = Find(module, type))
    if (const Address address = mMap.Of(found)) return HrefFrom(folder, address);
  return OutsideHref(BareType(type));
}

std::string TypeLinks::HrefOfName(std::string_view folder, const VBProject* project,
                                  std::string_view name) const {
  const CodeElement* found = nullptr;
  if (name.size() > 2 && name[1] == ':') {
    for (const ProjectEntry& entry : mMap.Projects()) {
      if (found || !entry.IsNet()) continue;
      found = entry.Project->GetObjectFromDotNetName(name);
    }
    name.remove_prefix(2);
  } else {
    found = mMap.Named(name);
    if (!found && project) found = mMap.Named(project->ProjectName + "~" + std::string(name));
  }
  if (!found) {
    const auto known = mFullNames.find(FoldKey(name));
    if (known != mFullNames.end()) found = known->second;
  }
  const Address address = mMap.Of(found);
  return address ? HrefFrom(folder, address) : OutsideHref(name);
}

void TypeLinks::AppendDeclaration(std::string& html, std::string_view text, std::string_view folder,
                                  const Component* module) const {
  const VBProject* project = module ? module->VBProject() : nullptr;
  const bool isNet = project && project->LanguageVersion() == lvVisualBasicDotNet;
  TokenState state;
  bool expectsType = false;
  std::vector<SourceToken> tokens;
  SourceToken token;
  for (SourceTokens walk(text, isNet, state); walk.Next(token);) tokens.push_back(token);
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const SourceToken& here = tokens[i];
    if (expectsType && (here.Kind == TokenKind::Name || here.Kind == TokenKind::Keyword) &&
        !IsWord(here, "New")) {
      // "Namespace.Type": names and the dots between them.
      std::size_t last = i;
      while (last + 2 < tokens.size() && tokens[last + 1].Text == "." &&
             tokens[last + 2].Kind == TokenKind::Name)
        last += 2;
      const std::string_view name(
          here.Text.data(), static_cast<std::size_t>(tokens[last].Text.data() +
                                                     tokens[last].Text.size() - here.Text.data()));
      const std::string href = Href(folder, module, name);
      if (!href.empty())
        html.append(Link(href, name, "t"));
      else
        html.append("<span class=\"t\">").append(Text(name)).append("</span>");
      i = last;
      expectsType = false;
      continue;
    }
    if (here.Kind != TokenKind::Space) {
      const bool goesOn = here.Text == "," && expectsType;
      expectsType = IsWord(here, "As") || IsWord(here, "Of") || IsWord(here, "Implements") ||
                    IsWord(here, "Inherits") || (expectsType && IsWord(here, "New")) || goesOn;
    }
    const bool isKeyword = here.Kind == TokenKind::Keyword;
    AppendColoured(html, here.Kind, isKeyword ? AsWritten(here.Text, isNet) : here.Text);
  }
}

}  // namespace vendrel::site
