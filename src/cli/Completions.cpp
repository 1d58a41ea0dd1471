#include "cli/Completions.h"

#include <algorithm>

#include "cli/ProjectSettings.h"
#include "cli/Session.h"
#include "core/ReadingRules.h"

namespace vendrel::cli {
namespace {

std::string WithBlanks(const std::vector<std::string>& words) {
  std::string joined;
  for (const std::string& word : words) joined.append(joined.empty() ? "" : " ").append(word);
  return joined;
}

// What may stand behind an option.
enum class Behind { Nothing, Words, Settings, Folders, Files };

Behind BehindOption(const OptionFacts& option) {
  if (option.Value.empty()) return Behind::Nothing;
  if (!option.Choices.empty()) return Behind::Words;
  if (option.Name() == "--set") return Behind::Settings;
  return option.Value.find("FOLDER") != std::string::npos ? Behind::Folders : Behind::Files;
}

// "Flag=" for each flag of the reading and each option of a project.
std::vector<std::string> Settings() {
  std::vector<std::string> names;
  for (const std::string_view name : ProjectOptionNames()) names.push_back(std::string(name) + "=");
#define VENDREL_NAME(name, text) names.push_back(#name "=");
  VENDREL_READING_RULES(VENDREL_NAME)
#undef VENDREL_NAME
  return names;
}

std::vector<std::string> NamesOfOptions(const CommandFacts& command) {
  std::vector<std::string> names;
  for (const OptionFacts& option : command.Options)
    names.insert(names.end(), option.Names.begin(), option.Names.end());
  return names;
}

std::vector<std::string> NamesOfCommands(const std::vector<CommandFacts>& commands) {
  std::vector<std::string> names;
  for (const CommandFacts& command : commands) names.push_back(command.Name);
  return names;
}

std::vector<std::string> WordsOfArguments(const CommandFacts& command) {
  std::vector<std::string> words;
  for (const ArgumentFacts& argument : command.Arguments)
    words.insert(words.end(), argument.Choices.begin(), argument.Choices.end());
  return words;
}

// What bash and zsh have in common: `case` branches by "command option".
void WriteValueCases(std::ostream& out, const CommandFacts& command) {
  for (const OptionFacts& option : command.Options) {
    const Behind behind = BehindOption(option);
    if (behind == Behind::Nothing || behind == Behind::Files) continue;
    out << "      ";
    for (const std::string& name : option.Names)
      out << (name == option.Names.front() ? "'" : "|'") << command.Name << ' ' << name << '\'';
    if (behind == Behind::Words) out << ") words='" << WithBlanks(option.Choices) << "'";
    if (behind == Behind::Settings) out << ") words=$settings; colon=1";
    if (behind == Behind::Folders) out << ") folders=1";
    out << " ;;\n";
  }
}

std::string ValueOptions(const CommandFacts& command) {
  std::vector<std::string> names;
  for (const OptionFacts& option : command.Options)
    if (BehindOption(option) != Behind::Nothing)
      names.insert(names.end(), option.Names.begin(), option.Names.end());
  return WithBlanks(names);
}

void WriteFacts(std::ostream& out, const std::vector<CommandFacts>& commands) {
  out << "  local settings='" << WithBlanks(Settings()) << "'\n"
      << "  local commands='" << WithBlanks(NamesOfCommands(commands)) << "'\n"
      << "  local extensions='" << WithBlanks(InputExtensions()) << "'\n"
      << "  local options= takes= words= first= folders= colon=\n  case $command in\n";
  for (const CommandFacts& command : commands)
    out << "    " << command.Name << ") options='" << WithBlanks(NamesOfOptions(command))
        << "' takes=' " << ValueOptions(command) << " ' first='"
        << WithBlanks(WordsOfArguments(command)) << "' ;;\n";
  out << "  esac\n";
}

void WriteBash(std::ostream& out, const std::vector<CommandFacts>& commands) {
  out << "# bash completion for vendrelmodel; made by: vendrelmodel completion bash\n"
         "_vendrelmodel() {\n"
         "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command= i\n"
         "  COMPREPLY=()\n"
         "  # \"--set Name=\" comes in pieces\n"
         "  if [ \"$before\" = = ]; then before=; elif [ \"$word\" = = ]; then word=; fi\n"
         "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
         "    case ${COMP_WORDS[i]} in -*) ;; *) command=${COMP_WORDS[i]}; break ;; esac\n"
         "  done\n";
  WriteFacts(out, commands);
  out << "  case \"$takes\" in *\" $before \"*)\n    case \"$command $before\" in\n";
  for (const CommandFacts& command : commands) WriteValueCases(out, command);
  out << "      *) compopt -o default; return ;;\n    esac\n"
         "    if [ -n \"$folders\" ]; then compopt -o filenames; mapfile -t COMPREPLY < <(compgen "
         "-d "
         "-- \"$word\"); return; fi\n"
         "    [ -z \"$colon\" ] || compopt -o nospace\n"
         "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\"); return ;;\n  esac\n"
         "  case $word in -*) mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$word\"); "
         "return "
         ";; esac\n"
         "  if [ -z \"$command\" ]; then words=$commands; else words=$first; fi\n"
         "  if [ -n \"$words\" ]; then mapfile -t COMPREPLY < <(compgen -W \"$words\" -- "
         "\"$word\"); fi\n"
         "  [ -z \"$first\" ] || return\n"
         "  compopt -o filenames\n"
         "  local file\n"
         "  while IFS= read -r file; do\n"
         "    case \" $extensions \" in *\" ${file##*.} \"*) COMPREPLY+=(\"$file\"); continue ;; "
         "esac\n"
         "    [ ! -d \"$file\" ] || COMPREPLY+=(\"$file\")\n"
         "  done < <(compgen -f -- \"$word\")\n"
         "}\ncomplete -F _vendrelmodel vendrelmodel\n";
}

void WriteZsh(std::ostream& out, const std::vector<CommandFacts>& commands) {
  out << "#compdef vendrelmodel\n# zsh completion for vendrelmodel; made by: vendrelmodel "
         "completion zsh\n"
         "_vendrelmodel() {\n"
         "  local word=${words[CURRENT]} before=${words[CURRENT-1]} command= i\n"
         "  for ((i = 2; i < CURRENT; i++)); do\n"
         "    [[ ${words[i]} == -* ]] || { command=${words[i]}; break }\n"
         "  done\n"
         "  _vendrelmodel_of \"$command\" \"$before\" \"$word\"\n}\n"
         "_vendrelmodel_of() {\n  local command=$1 before=$2 word=$3\n";
  WriteFacts(out, commands);
  out << "  if [[ $takes == *\" $before \"* ]]; then\n    case \"$command $before\" in\n";
  for (const CommandFacts& command : commands) WriteValueCases(out, command);
  out << "      *) _files; return ;;\n    esac\n"
         "    if [[ -n $folders ]]; then _files -/; return; fi\n"
         "    if [[ -n $colon ]]; then compadd -S '' -- ${=words}; else compadd -- ${=words}; fi\n"
         "    return\n  fi\n"
         "  if [[ $word == -* ]]; then compadd -- ${=options}; return; fi\n"
         "  if [[ -z $command ]]; then compadd -- ${=commands}; fi\n"
         "  if [[ -n $first ]]; then compadd -- ${=first}; return; fi\n"
         "  _files -g \"*.(#i)(${extensions// /|})\"\n"
         "}\n_vendrelmodel \"$@\"\n";
}

std::string FishText(std::string text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\'' || c == '\\') escaped += '\\';
    escaped += c;
  }
  return "'" + escaped + "'";
}

void WriteFishOption(std::ostream& out, const std::string& condition, const OptionFacts& option) {
  out << "complete -c vendrelmodel -n " << condition;
  for (const std::string& name : option.Names)
    out << (name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1));
  switch (BehindOption(option)) {
    case Behind::Nothing: break;
    case Behind::Words: out << " -x -a " << FishText(WithBlanks(option.Choices)); break;
    case Behind::Settings: out << " -x -a " << FishText(WithBlanks(Settings())); break;
    case Behind::Folders: out << " -x -a '(__fish_complete_directories)'"; break;
    case Behind::Files: out << " -r -F"; break;
  }
  out << " -d " << FishText(option.Meaning) << '\n';
}

void WriteFish(std::ostream& out, const std::vector<CommandFacts>& commands) {
  out << "# fish completion for vendrelmodel; made by: vendrelmodel completion fish\n"
         "complete -c vendrelmodel -f\n";
  for (const CommandFacts& command : commands)
    out << "complete -c vendrelmodel -n __fish_use_subcommand -a " << command.Name << " -d "
        << FishText(command.Purpose) << '\n';
  for (const std::string& extension : InputExtensions())
    out << "complete -c vendrelmodel -a '(__fish_complete_suffix ." << extension << ")'\n";
  for (const CommandFacts& command : commands) {
    const std::string condition = FishText("__fish_seen_subcommand_from " + command.Name);
    const std::string words = WithBlanks(WordsOfArguments(command));
    if (!words.empty())
      out << "complete -c vendrelmodel -n " << condition << " -x -a " << FishText(words) << '\n';
    for (const OptionFacts& option : command.Options) WriteFishOption(out, condition, option);
  }
}

}  // namespace

void WriteCompletion(std::ostream& out, std::string_view shell,
                     const std::vector<CommandFacts>& commands) {
  if (shell == "bash") return WriteBash(out, commands);
  if (shell == "zsh") return WriteZsh(out, commands);
  WriteFish(out, commands);
}

}  // namespace vendrel::cli
