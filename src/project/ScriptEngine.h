#pragma once
// The script engine behind conditional compilation: an interface in the manner of a script control,
// so that a host can put its own in the place of ours, and the engines that the process keeps.

#include <memory>
#include <string>
#include <string_view>

#include "project/ScriptValue.h"

namespace vendrel {

/// The name under which script controls are registered.
inline constexpr std::string_view kScriptControlProgId = "MSScriptControl.ScriptControl";

/// One module of a control. Raises errors of the 1002 family for code that does not compile.
class IScriptModule {
 public:
  virtual ~IScriptModule() = default;
  /// Compiles the text and runs its statements outside functions.
  virtual void AddCode(std::string_view Code) = 0;
  /// Runs a function without arguments and gives its value. Raises run-time errors.
  virtual ScriptValue Run(std::string_view Function) = 0;
};

/// The modules of a control.
class IScriptModules {
 public:
  virtual ~IScriptModules() = default;
  /// A new module. Raises 457 for a name that is taken (case ignored).
  virtual std::shared_ptr<IScriptModule> Add(std::string_view Name) = 0;
};

class IScriptControl {
 public:
  virtual ~IScriptControl() = default;
  /// Empty until it is set.
  virtual std::string Language() const = 0;
  /// Raises 429 for a language that the control does not know.
  virtual void SetLanguage(std::string_view Language) = 0;
  /// Drops all modules with their code; the language stays.
  virtual void Reset() = 0;
  virtual IScriptModules& Modules() = 0;
};

/// Our control: it knows "VBScript", as far as assignments, functions without parameters and
/// expressions go.
class ScriptControl : public IScriptControl {
 public:
  ScriptControl();
  ~ScriptControl() override;
  std::string Language() const override { return mLanguage; }
  void SetLanguage(std::string_view Language) override;
  void Reset() override;
  IScriptModules& Modules() override;

 private:
  class ModuleList;
  std::string mLanguage;
  std::unique_ptr<ModuleList> mModules;
};

/// Registers `ScriptControl`. The first engine asked for does it by itself if no other control is
/// registered.
void RegisterScriptEngine();

/// The engine that the process keeps for a language ("VBScript" if empty), emptied by `Reset`.
/// Raises 429 if none can be made.
std::shared_ptr<IScriptControl> GetScriptEngine(std::string_view Language);

/// Drops the engines kept; called when the last project ends.
void ReleaseScriptEngines();

/// Adds `Code` to a new module, runs `FunctionName`, and gives the text of its value; empty if it
/// fails. Code that does not compile raises, as does one whose statements outside functions fail.
/// Does not nest.
std::string Eval(std::string_view Code, std::string_view FunctionName);

}  // namespace vendrel
