#include "survey/Annotations.h"

#include "output/Json.h"

namespace vendrel {
namespace {

struct Replacement {
  char Character;
  std::string_view Text;
};
// Percent signs too: GitHub takes them so; Azure has a text of its own for them.
constexpr Replacement kGitHubText[] = {{'%', "%25"}, {'\r', "%0D"}, {'\n', "%0A"}};
constexpr Replacement kGitHubProperty[] = {
    {'%', "%25"}, {'\r', "%0D"}, {'\n', "%0A"}, {':', "%3A"}, {',', "%2C"}};
constexpr Replacement kAzure[] = {
    {'%', "%AZP25"}, {'\r', "%0D"}, {'\n', "%0A"}, {';', "%3B"}, {']', "%5D"}};

template <std::size_t Size>
std::string WithReplacements(std::string_view text, const Replacement (&replacements)[Size]) {
  std::string escaped;
  for (const char c : text) {
    std::string_view instead(&c, 1);
    for (const Replacement& replacement : replacements)
      if (replacement.Character == c) instead = replacement.Text;
    escaped += instead;
  }
  return escaped;
}

}  // namespace

std::optional<AnnotationForm> AnnotationFormNamed(std::string_view name) {
  if (name == "github") return AnnotationForm::GitHub;
  if (name == "azure") return AnnotationForm::Azure;
  if (name == "gitlab") return AnnotationForm::GitLab;
  return std::nullopt;
}

void Annotations::Write(const ToldFinding& finding) {
  switch (mForm) {
    case AnnotationForm::GitHub: return WriteGitHub(finding);
    case AnnotationForm::Azure: return WriteAzure(finding);
    case AnnotationForm::GitLab: return WriteGitLab(finding);
  }
}

void Annotations::WriteGitHub(const ToldFinding& finding) {
  mOut << "::" << (finding.Level == RuleLevel::Note ? "notice" : LevelName(finding.Level)) << ' ';
  if (!finding.File.empty())
    mOut << "file=" << WithReplacements(finding.File, kGitHubProperty) << ',';
  if (finding.Line > 0) mOut << "line=" << finding.Line << ',';
  if (finding.Column > 0) mOut << "col=" << finding.Column << ',';
  mOut << "title=" << finding.Rule->Id << "::" << WithReplacements(finding.Text, kGitHubText)
       << '\n';
}

// It knows no notes: they come as plain lines of the log.
void Annotations::WriteAzure(const ToldFinding& finding) {
  if (finding.Level == RuleLevel::Note) {
    mOut << finding.File;
    if (finding.Line > 0) mOut << ':' << finding.Line;
    mOut << (finding.File.empty() ? "" : ": ")
         << "note: " << WithReplacements(finding.Text, kGitHubText) << " [" << finding.Rule->Id
         << "]\n";
    return;
  }
  mOut << "##vso[task.logissue type=" << LevelName(finding.Level) << ';';
  if (!finding.File.empty()) mOut << "sourcepath=" << WithReplacements(finding.File, kAzure) << ';';
  if (finding.Line > 0) mOut << "linenumber=" << finding.Line << ';';
  if (finding.Column > 0) mOut << "columnnumber=" << finding.Column << ';';
  mOut << "code=" << finding.Rule->Id << ";]" << WithReplacements(finding.Text, kAzure) << '\n';
}

void Annotations::WriteGitLab(const ToldFinding& finding) {
  mOut << (mHasEntries ? ",\n" : "[\n");
  mHasEntries = true;
  JsonWriter json(mOut, false);
  const auto text = [&](std::string_view name, std::string_view value) {
    json.Key(name);
    json.String(value);
  };
  json.BeginObject();
  text("description", finding.Text);
  text("check_name", finding.Rule->Id);
  // Of findings with one fingerprint the server keeps but one.
  const int before = mTold[finding.Fingerprint]++;
  text("fingerprint",
       before == 0 ? finding.Fingerprint : finding.Fingerprint + "-" + std::to_string(before + 1));
  text("severity", finding.Level == RuleLevel::Error     ? "major"
                   : finding.Level == RuleLevel::Warning ? "minor"
                                                         : "info");
  json.Key("location");
  json.BeginObject();
  text("path", finding.File.empty() ? "." : finding.File);
  json.Key("lines");
  json.BeginObject();
  json.Key("begin");
  json.Number(finding.Line > 0 ? finding.Line : 1);
  json.EndObject();
  json.EndObject();
  json.EndObject();
}

void Annotations::End() {
  if (mForm == AnnotationForm::GitLab) mOut << (mHasEntries ? "\n]\n" : "[]\n");
}

}  // namespace vendrel
