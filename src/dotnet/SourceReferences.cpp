#include "dotnet/SourceReferences.h"

#include "core/Ascii.h"
#include "dotnet/GenericNames.h"
#include "dotnet/SourceScan.h"
#include "intake/net/NetCursor.h"
#include "model/Events.h"
#include "text/Identifiers.h"

namespace vendrel {

// A reference in its parts.
struct SourceReferences::Written {
  explicit Written(std::string_view text);

  std::string Name;  // generic types with their counts
  bool HasParameters = false;
  std::vector<std::string> Parameters;  // short names of their types
};

SourceReferences::Written::Written(std::string_view text) {
  std::string name;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '(') {
      name += text[at];
      continue;
    }
    NetCursor cursor(text.substr(at));
    std::string_view list = cursor.Group();
    NetCursor words(list);
    if (words.TakeWord("of")) {
      name += '`' + std::to_string(NetList(words.Rest()).size());
      at = text.size() - cursor.Rest().size() - 1;
      continue;
    }
    HasParameters = true;
    for (const std::string_view part : NetList(list)) {
      NetCursor parameter(part);
      if (!parameter.TakeWord("byref")) parameter.TakeWord("byval");
      std::string_view type = parameter.Type();
      CutArray(type);
      Parameters.emplace_back(ShortName(NetTypeNamed(type)));
    }
    break;
  }
  Name = DefinitionOf(TypeWithoutBrackets(Trim(name)));
  if (StartsWithNoCaseAscii(Name, "global.")) Name.erase(0, 7);
}

namespace {

// How well a procedure fits the parameters of a reference: 0 not at all.
int FitOf(const Block& block, const std::vector<std::string>& written) {
  const vendrel::Parameters* parameters = block.Parameters.IfAny();
  const std::size_t count = parameters ? parameters->Count() : 0;
  if (count != written.size()) return 0;
  for (std::size_t i = 0; i < count; ++i)
    if (!EqualsNoCaseAscii(ShortName(parameters->Item(i + 1)->VariableType), written[i])) return 1;
  return 2;
}

}  // namespace

CodeElement* SourceReferences::MemberOf(Component& type, std::string_view name,
                                        const Written& written) const {
  const std::string sought = EqualsNoCaseAscii(name, "New") ? "_ctor" : std::string(name);
  Block* best = nullptr;
  int bestFit = -1;
  const auto offer = [&](Block& block) {
    const int fit = written.HasParameters ? FitOf(block, written.Parameters) : 0;
    if (fit <= bestFit) return;
    best = &block;
    bestFit = fit;
  };
  for (Block* block : type.Blocks.Named(sought)) {
    Blocks* overloads = block->Overloads();
    if (!overloads || overloads->Count() == 0)
      offer(*block);
    else
      for (Block& overload : *overloads) offer(overload);
  }
  if (best) return best;
  if (Block* declarations = type.Blocks.FirstOfType(btDeclarations)) {
    if (Variables* fields = declarations->Variables.IfAny())
      if (Variable* field = fields->Item(sought)) return field;
    if (Constants* constants = declarations->Constants.IfAny())
      if (Constant* constant = constants->Item(sought)) return constant;
  }
  return type.EventDeclarations.Item(sought);
}

CodeElement* SourceReferences::At(const std::string& scope, const Written& written) const {
  const std::string full = scope.empty() ? written.Name : scope + "." + written.Name;
  if (!written.HasParameters)
    if (CodeElement* type = mProject.GetObjectFromDotNetName("T:" + full)) return type;
  const std::size_t dot = full.rfind('.');
  if (dot == std::string::npos) return nullptr;
  const std::string front = full.substr(0, dot);
  Component* type = mProject.Components.Item(front);
  if (!type && !mProject.Reading.NetNames) type = mProject.Components.Item("." + front);
  return type ? MemberOf(*type, std::string_view(full).substr(dot + 1), written) : nullptr;
}

CodeElement* SourceReferences::Find(std::string_view name, const Component& from,
                                    const std::vector<std::string>& imports) {
  if (name.size() > 1 && name[1] == ':') return mElements.Referred(name);
  const Written written(name);
  if (written.Name.empty()) return nullptr;
  for (std::string scope = from.FullName();;) {
    if (CodeElement* found = At(scope, written)) return found;
    if (scope.empty()) break;
    const std::size_t dot = scope.rfind('.');
    scope.resize(dot == std::string::npos ? 0 : dot);
  }
  for (const std::string& import : imports)
    if (import.find('=') == std::string::npos)
      if (CodeElement* found = At(std::string(TrimGaps(import)), written)) return found;
  return nullptr;
}

}  // namespace vendrel
