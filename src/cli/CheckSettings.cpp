#include "cli/CheckSettings.h"

#include <toml++/toml.h>

#include <set>

#include "cli/Report.h"
#include "services/FileSource.h"

namespace vendrel::cli {
namespace {

// A settings file at work: where it is, for what is told of it.
class SettingsReading {
 public:
  explicit SettingsReading(std::string path) : mPath(std::move(path)) {}

  [[noreturn]] void Fail(const toml::source_region& place, const std::string& text) const {
    throw ToolError(exUsage, mPath + ":" + std::to_string(place.begin.line) + ": " + text);
  }
  toml::table Parse(std::string_view text) const try {
    return toml::parse(text);
  } catch (const toml::parse_error& error) {
    Fail(error.source(), "no TOML: " + std::string(error.description()));
  }
  const toml::table& TableIn(const toml::key& key, const toml::node& node) const {
    if (const toml::table* table = node.as_table()) return *table;
    Fail(key.source(), "'" + std::string(key.str()) + "' is a table: [" + std::string(key.str()) +
                           "], and a setting a line below");
  }

 private:
  std::string mPath;
};

std::string WhatRuleIs(const std::string& id) {
  const std::string_view nearest = NearestRule(id);
  return "no rule is named '" + id + "'; " +
         (nearest.empty() ? std::string("docs/rules.md lists them")
                          : "did you mean '" + std::string(nearest) + "'?");
}

constexpr const char* kLevelsAre = "off, note, warning or error";

}  // namespace

CheckSettings::CheckSettings(const std::vector<std::string>& rules) {
  for (const std::string& text : rules) {
    const NamedValue value = CutNamedValue("--rule", text);
    const Rule* rule = FindRule(value.Name);
    if (!rule) throw ToolError(exUsage, "--rule: " + WhatRuleIs(value.Name));
    const auto level = LevelNamed(value.Value);
    if (!level)
      throw ToolError(exUsage, "--rule: '" + value.Value + "' is no level; write " + value.Name +
                                   "= and " + kLevelsAre);
    mOfCommandLine[rule] = *level;
  }
}

void CheckSettings::ReadFile(const FileSystemObject& file, Folder& folder) {
  const std::string native = file.NativePath();
  const SettingsReading reading(ShownPaths().Of(file.FullPath()));
  const toml::table settings = reading.Parse(ReadWholeFile(native));
  for (const auto& [name, node] : settings) {
    if (name == "rules") {
      for (const auto& [id, value] : reading.TableIn(name, node)) {
        const std::string key(id.str());
        const Rule* rule = FindRule(key);
        if (!rule) reading.Fail(id.source(), WhatRuleIs(key));
        const auto level = LevelNamed(value.value_or(std::string_view()));
        if (!level) reading.Fail(id.source(), "'" + key + "' is set to one of " + kLevelsAre);
        folder.Rules[rule] = *level;
      }
    } else if (name == "check") {
      for (const auto& [id, value] : reading.TableIn(name, node)) {
        if (id == "baseline" && value.is_string()) {
          FileSystemObject base(file), baseline;
          baseline.SetBaseFile(&base);
          baseline.SetFullPath(value.value_or(std::string_view()));
          folder.Run.Baseline = baseline.NativePath();
        } else if (id == "strict" && value.is_boolean()) {
          folder.Run.Strict = value.value_or(false);
        } else {
          reading.Fail(id.source(),
                       "'" + std::string(id.str()) +
                           "' is no setting of [check]; those are "
                           "baseline (a path in quotation marks) and strict (true or false)");
        }
      }
    } else if (name == "assess") {
      for (const auto& [id, value] : reading.TableIn(name, node)) {
        const std::int64_t weight = value.value_or(std::int64_t{-1});
        if (!value.is_integer() || weight < 0 || weight > kMostWeight)
          reading.Fail(id.source(), "'" + std::string(id.str()) +
                                        "' is set to a number from 0 to " +
                                        std::to_string(kMostWeight));
        if (!folder.Run.Weights.Set(id.str(), weight))
          reading.Fail(id.source(), "'" + std::string(id.str()) +
                                        "' is none of what assess counts; docs/assess.md lists "
                                        "that");
      }
    } else if (name == "unused") {
      for (const auto& [id, value] : reading.TableIn(name, node)) {
        const toml::array* names = id == "used" ? value.as_array() : nullptr;
        if (!names || !names->is_homogeneous<std::string>())
          reading.Fail(id.source(),
                       "'" + std::string(id.str()) +
                           "' is no setting of [unused]; that is used (a list of names in "
                           "quotation marks)");
        for (const toml::node& one : *names)
          folder.Run.Used.emplace_back(one.value_or(std::string_view()));
      }
    } else {
      reading.Fail(name.source(), "'" + std::string(name.str()) +
                                      "' is no table of settings; those are [rules], [check], "
                                      "[assess] and [unused]");
    }
  }
}

const CheckSettings::Folder& CheckSettings::At(const std::string& folder) {
  const std::lock_guard lock(mMutex);
  return KnownAt(folder);
}

// Needs the lock. What is known of a folder stays where it is.
const CheckSettings::Folder& CheckSettings::KnownAt(const std::string& folder) {
  std::unique_ptr<const Folder>& known = mFolders[folder];
  if (known) return *known;
  auto settings = std::make_unique<Folder>();
  // "Z:\src\a\" -> "Z:\src\"
  const std::size_t parent =
      folder.size() < 2 ? std::string::npos : folder.find_last_of('\\', folder.size() - 2);
  if (parent != std::string::npos) *settings = KnownAt(folder.substr(0, parent + 1));
  if (!folder.empty()) {
    const FileSystemObject file(folder + kSettingsFile);
    if (file.Exists()) ReadFile(file, *settings);
  }
  known = std::move(settings);
  return *known;
}

CheckSettings::LevelOfRule CheckSettings::LevelOf(const Rule& rule, const std::string& file) {
  if (const auto own = mOfCommandLine.find(&rule); own != mOfCommandLine.end())
    return {own->second, true};
  const std::size_t leaf = file.find_last_of('\\');
  const Levels& levels =
      At(leaf == std::string::npos ? std::string() : file.substr(0, leaf + 1)).Rules;
  const auto found = levels.find(&rule);
  return found == levels.end() ? LevelOfRule{rule.Level, false} : LevelOfRule{found->second, true};
}

bool CheckSettings::IsOnIn(const VBProject& project, const Rule& rule) {
  const auto isOn = [&](const FileSystemObject& file) {
    return LevelOf(rule, file.FullPath()).Level != RuleLevel::Off;
  };
  if (isOn(project.FileName)) return true;
  for (const ProjectFile& file : project.ProjectFiles)
    if (isOn(file.FileName)) return true;
  for (const Component& component : project.Components.Listed())
    if (isOn(component.FileName)) return true;
  return false;
}

CheckSettings::ForRun CheckSettings::AtPath(const std::string& path) {
  const FileSystemObject file(AbsolutePath(path));
  return At(file.IsFolder() ? file.FullPath() + '\\' : file.FolderPath()).Run;
}

}  // namespace vendrel::cli
