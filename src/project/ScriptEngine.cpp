#include "project/ScriptEngine.h"

#include <unordered_map>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/ObjectRegistry.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "project/ScriptProgram.h"

namespace vendrel {
namespace {

constexpr std::string_view kLanguage = "VBScript";

class Module : public IScriptModule {
 public:
  void AddCode(std::string_view Code) override { mProgram.AddCode(Code); }
  ScriptValue Run(std::string_view Function) override { return mProgram.Run(Function); }

 private:
  ScriptProgram mProgram;
};

// Engines by language, kept for the next condition.
using EngineStore = std::unordered_map<std::string, std::shared_ptr<IScriptControl>>;

EngineStore& Engines() { return InUse<EngineStore>(); }

std::shared_ptr<IScriptControl> NewScriptControl() {
  if (!ObjectRegistry::Has(kScriptControlProgId)) RegisterScriptEngine();
  auto control = ObjectRegistry::Create<IScriptControl>(kScriptControlProgId);
  if (!control) throw VendrelError(errCannotCreate, kScriptControlProgId);
  return control;
}

std::string RunToText(IScriptModule& module, std::string_view functionName) {
  try {
    return ToText(module.Run(functionName));
  } catch (const VendrelError&) {
    return {};  // a condition that fails is no condition that holds
  }
}

}  // namespace

class ScriptControl::ModuleList : public IScriptModules {
 public:
  std::shared_ptr<IScriptModule> Add(std::string_view Name) override {
    auto& place = mModules[FoldKey(Name)];
    if (place) throw VendrelError(errDuplicateKey, Name);
    return place = std::make_shared<Module>();
  }
  void Clear() { mModules.clear(); }

 private:
  std::unordered_map<std::string, std::shared_ptr<IScriptModule>> mModules;
};

ScriptControl::ScriptControl() : mModules(std::make_unique<ModuleList>()) {}
ScriptControl::~ScriptControl() = default;

void ScriptControl::SetLanguage(std::string_view Language) try {
  if (!EqualsNoCaseAscii(Language, kLanguage)) throw VendrelError(errCannotCreate, Language);
  mLanguage = Language;
}
VENDREL_CONTEXT(Language)

void ScriptControl::Reset() { mModules->Clear(); }

IScriptModules& ScriptControl::Modules() { return *mModules; }

void RegisterScriptEngine() {
  ObjectRegistry::Register<IScriptControl>(kScriptControlProgId,
                                           [] { return std::make_shared<ScriptControl>(); });
}

std::shared_ptr<IScriptControl> GetScriptEngine(std::string_view Language) try {
  const std::string key = FoldKey(Language);
  const auto found = Engines().find(key);
  if (found != Engines().end()) {
    found->second->Reset();
    return found->second;
  }
  std::shared_ptr<IScriptControl> engine = NewScriptControl();
  engine->SetLanguage(Language.empty() ? kLanguage : Language);
  return Engines()[key] = engine;
}
VENDREL_CONTEXT(Language)

void ReleaseScriptEngines() { Engines().clear(); }

std::string Eval(std::string_view Code, std::string_view FunctionName) try {
  const std::shared_ptr<IScriptControl> engine = GetScriptEngine({});
  const std::shared_ptr<IScriptModule> module = engine->Modules().Add("Code");
  module->AddCode(Code);
  std::string text = RunToText(*module, FunctionName);
  engine->Reset();
  return text;
}
VENDREL_CONTEXT(Code, FunctionName)

}  // namespace vendrel
