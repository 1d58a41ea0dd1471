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
  struct Named {
    const Component* Home;
    std::string_view Expression;  // of a constant
    std::optional<ScriptValue> Value;
    bool Busy = false;
  };
  Named* FindNamed(const Component& home, std::string_view name);
  Named* OfModule(const Component& home, std::string_view name);
  Named* OfAnyModule(std::string_view name);
  void GatherConstants();
  void NumberMembers(const Component& component, Enumeration& enumeration);
  std::optional<ScriptValue> Evaluate(const Component& home, std::string_view expression);
  std::optional<ScriptValue> ValueOfName(const Component& home, std::string_view name);
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
  // Members numbered so far: of each module (the last wins), and of the project as a whole (the
  // first does).
  std::pmr::unordered_map<Key, Named, KeyHash> mMembers{&mMemory};
  // Constants of modules that were asked for, as most never are, and those of the project.
  std::pmr::unordered_map<Key, Named, KeyHash> mConstants{&mMemory};
  bool mHasGathered = false;
  std::string mFolded;
  int mDepth = 0;
  bool mNamesMatter = false;
};

EnumerationEvaluator::EnumerationEvaluator(VBProject& project) : mProject(project) {}

// A member of the module, or else a constant of it.
EnumerationEvaluator::Named* EnumerationEvaluator::OfModule(const Component& home,
                                                            std::string_view name) {
  const std::string_view folded = Folded(name);
  if (const auto member = mMembers.find({&home, folded}); member != mMembers.end())
    return &member->second;
  if (const auto known = mConstants.find({&home, folded}); known != mConstants.end())
    return &known->second;
  const Constants* constants = home.Constants();
  const Constant* constant = constants ? constants->Item(folded) : nullptr;
  if (!constant) return nullptr;
  return &mConstants.try_emplace({&home, Kept(name)}, Named{&home, constant->Value, {}})
              .first->second;
}

// The first constant of each name, gathered where one is asked for that its own module lacks.
void EnumerationEvaluator::GatherConstants() {
  mHasGathered = true;
  std::size_t count = 0;
  for (const Component& component : mProject.Components.Listed())
    if (const Constants* constants = component.Constants()) count += constants->Count();
  mConstants.reserve(mConstants.size() + count);
  for (const Component& component : mProject.Components.Listed())
    if (const Constants* constants = component.Constants())
      for (const Constant& constant : *constants)
        mConstants.try_emplace({nullptr, Kept(constant.Name)},
                               Named{&component, constant.Value, {}});
}

// A constant of the first module that has one, or else a member.
EnumerationEvaluator::Named* EnumerationEvaluator::OfAnyModule(std::string_view name) {
  if (!mHasGathered) GatherConstants();
  const std::string_view folded = Folded(name);
  if (const auto constant = mConstants.find({nullptr, folded}); constant != mConstants.end())
    return &constant->second;
  const auto member = mMembers.find({nullptr, folded});
  return member == mMembers.end() ? nullptr : &member->second;
}

EnumerationEvaluator::Named* EnumerationEvaluator::FindNamed(const Component& home,
                                                             std::string_view name) {
  Named* named = OfModule(home, name);
  return named ? named : OfAnyModule(name);
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
      mMembers.insert_or_assign({&component, name}, known);
      mMembers.try_emplace({nullptr, name}, known);
      mMembers.try_emplace({nullptr, Kept(enumeration.Name + "." + member.Name)}, known);
    } catch (const VendrelError&) {
      // A value that is no whole number stays as written.
    }
  }
}

// Most expressions are one name, and many of those names stand in a library: nothing is compiled
// for them, and one that is not found is no failure.
std::optional<ScriptValue> EnumerationEvaluator::ValueOfName(const Component& home,
                                                             std::string_view name) {
  Named* named = FindNamed(home, name);
  if (!named) return std::nullopt;
  return ValueOf(*named);
}

std::optional<ScriptValue> EnumerationEvaluator::Evaluate(const Component& home,
                                                          std::string_view expression) {
  try {
    if (const std::optional<std::string_view> name = LoneName(expression))
      return ValueOfName(home, *name);
    return EvaluateExpression(expression,
                              [&](std::string_view name) { return LookUp(home, name); });
  } catch (const VendrelError&) {
    return std::nullopt;  // names what this project does not declare
  }
}

ScriptValue EnumerationEvaluator::LookUp(const Component& home, std::string_view name) {
  Named* named = FindNamed(home, name);
  if (!named) throw VendrelError(errObjectNotSet, std::string(name));
  return ValueOf(*named);
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
