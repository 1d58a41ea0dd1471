#include "project/EnumerationValues.h"

#include <functional>
#include <memory_resource>
#include <optional>
#include <string>
#include <unordered_map>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/VendrelError.h"
#include "project/ScriptExpression.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

// A few digits, as most members have them; an expression for its own sake.
std::optional<ScriptValue> PlainNumber(std::string_view text) {
  if (text.empty() || text.size() > 9) return std::nullopt;
  double number = 0;
  for (const char c : text) {
    if (!IsDigitAscii(c)) return std::nullopt;
    number = number * 10 + (c - '0');
  }
  return ScriptValue::Whole(number, ScriptKind::Long);
}

// Constants that name each other in a chain longer than this stay as they are written.
constexpr int kDeepestChain = 64;

class EnumerationEvaluator {
 public:
  explicit EnumerationEvaluator(VBProject& project);
  void Run();

 private:
  bool AnyExpression() const;
  void RegisterConstants();
  struct Named {
    const Component* Home;
    std::string_view Expression;  // of a constant
    std::optional<ScriptValue> Value;
    bool Busy = false;
  };
  void Register(const Component& component, std::string_view name, std::string_view expression);
  void NumberMembers(const Component& component, Enumeration& enumeration);
  std::optional<ScriptValue> Evaluate(const Component& home, std::string_view expression);
  ScriptValue LookUp(const Component& home, std::string_view name);
  ScriptValue ValueOf(Named& named);

  // A name, folded, in a module, or without one in the project as a whole.
  struct Key {
    const Component* Home;
    std::string_view Name;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const {
      return std::hash<std::string_view>()(key.Name) ^
             (std::hash<const Component*>()(key.Home) * 31);
    }
  };
  std::string_view Folded(std::string_view name);
  std::string_view Kept(std::string_view name);

  VBProject& mProject;
  // All is needed up to the end: names and entries are given back at once.
  std::pmr::monotonic_buffer_resource mMemory;
  // Names of constants and members: of each module, and of the project as a whole (the first wins).
  std::pmr::unordered_map<Key, Named, KeyHash> mNames{&mMemory};
  std::string mFolded;
  int mDepth = 0;
  bool mNamesMatter = false;
};

EnumerationEvaluator::EnumerationEvaluator(VBProject& project) : mProject(project) {}

void EnumerationEvaluator::RegisterConstants() {
  std::size_t count = 0;
  for (const Component& component : mProject.Components.Listed())
    if (const Constants* constants = component.Constants()) count += constants->Count();
  mNames.reserve(2 * count);
  for (const Component& component : mProject.Components.Listed()) {
    if (const Constants* constants = component.Constants())
      for (const Constant& constant : *constants)
        Register(component, constant.Name, constant.Value);
  }
}

void EnumerationEvaluator::Register(const Component& component, std::string_view name,
                                    std::string_view expression) {
  const std::string_view kept = Kept(name);
  mNames.try_emplace({&component, kept}, Named{&component, expression, {}});
  mNames.try_emplace({nullptr, kept}, Named{&component, expression, {}});
}

// Valid until the next call.
std::string_view EnumerationEvaluator::Folded(std::string_view name) {
  mFolded.clear();
  AppendFolded(mFolded, name);
  return mFolded;
}

std::string_view EnumerationEvaluator::Kept(std::string_view name) {
  const std::string_view folded = Folded(name);
  char* kept = static_cast<char*>(mMemory.allocate(folded.size() + 1, 1));
  folded.copy(kept, folded.size());
  return {kept, folded.size()};
}

// Most projects number their members by plain numbers: names are gathered only where one is asked
// for.
bool EnumerationEvaluator::AnyExpression() const {
  for (const Component& component : mProject.Components.Listed())
    for (const Enumeration& enumeration : component.Enumerations)
      for (const EnumMember& member : enumeration.Members())
        if (!member.Value.empty() && !IsNumericText(member.Value)) return true;
  return false;
}

void EnumerationEvaluator::Run() {
  mNamesMatter = AnyExpression();
  if (mNamesMatter) RegisterConstants();
  for (Component& component : mProject.Components.Listed())
    for (Enumeration& enumeration : component.Enumerations) NumberMembers(component, enumeration);
}

void EnumerationEvaluator::NumberMembers(const Component& component, Enumeration& enumeration) {
  std::optional<double> next = 0;
  for (EnumMember& member : enumeration.Members()) {
    std::optional<ScriptValue> value;
    if (member.Value.empty()) {
      if (next) value = ScriptValue::Whole(*next, ScriptKind::Long);
    } else {
      value = PlainNumber(member.Value);
      if (!value) value = Evaluate(component, member.Value);
    }
    next.reset();
    if (!value) continue;
    try {
      const double number = ToLong(*value);
      next = number + 1;
      const std::string text = std::to_string(static_cast<std::int64_t>(number));
      if (text != member.Value) member.ValueAsWritten = member.Value.view();
      member.Value = text;
      if (!mNamesMatter) continue;
      const Named known{&component, {}, ScriptValue::Whole(number, ScriptKind::Long)};
      const std::string_view name = Kept(member.Name);
      mNames.insert_or_assign({&component, name}, known);
      mNames.try_emplace({nullptr, name}, known);
      mNames.try_emplace({nullptr, Kept(enumeration.Name + "." + member.Name)}, known);
    } catch (const VendrelError&) {
      // A value that is no whole number stays as written.
    }
  }
}

std::optional<ScriptValue> EnumerationEvaluator::Evaluate(const Component& home,
                                                          std::string_view expression) {
  try {
    return EvaluateExpression(expression,
                              [&](std::string_view name) { return LookUp(home, name); });
  } catch (const VendrelError&) {
    return std::nullopt;  // names what this project does not declare
  }
}

ScriptValue EnumerationEvaluator::LookUp(const Component& home, std::string_view name) {
  const std::string_view folded = Folded(name);
  auto found = mNames.find({&home, folded});
  if (found == mNames.end()) found = mNames.find({nullptr, folded});
  if (found == mNames.end()) throw VendrelError(errObjectNotSet, std::string(name));
  return ValueOf(found->second);
}

ScriptValue EnumerationEvaluator::ValueOf(Named& named) {
  if (named.Value) return *named.Value;
  if (named.Busy || mDepth >= kDeepestChain) throw VendrelError(errOverflow, named.Expression);
  named.Busy = true;
  ++mDepth;
  const std::optional<ScriptValue> value = Evaluate(*named.Home, named.Expression);
  --mDepth;
  named.Busy = false;
  if (!value) throw VendrelError(errTypeMismatch, named.Expression);
  named.Value = value;
  return *value;
}

}  // namespace

bool IsNumericText(std::string_view text) { return NumberFromText(text).has_value(); }

void ComputeEnumerationValues(VBProject& project) { EnumerationEvaluator(project).Run(); }

}  // namespace vendrel
