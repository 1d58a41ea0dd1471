#include "survey/Sarif.h"

#include "core/Ascii.h"

namespace vendrel {
namespace {

constexpr std::string_view kSchema =
    "https://raw.githubusercontent.com/oasis-tcs/sarif-spec/master/Schemata/"
    "sarif-schema-2.1.0.json";
constexpr std::string_view kRoot = "SRCROOT";

std::string_view SarifLevel(RuleLevel level) {
  return level == RuleLevel::Off ? "none" : LevelName(level);
}

bool StandsInUri(char c) {
  return IsLetterAscii(c) || IsDigitAscii(c) ||
         std::string_view("-._~/!$&'()*+,;=@").find(c) != std::string_view::npos;
}

}  // namespace

std::string UriOf(std::string_view nativePath) {
  std::string uri = nativePath.starts_with('/') ? "file://" : "";
  for (const char c : nativePath) {
    if (StandsInUri(c)) {
      uri += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    uri += {'%', "0123456789ABCDEF"[byte >> 4], "0123456789ABCDEF"[byte & 15]};
  }
  return uri;
}

SarifLog::SarifLog(std::ostream& out, std::string_view toolVersion, std::string nativeRoot)
    : mJson(out), mNativeRoot(std::move(nativeRoot)) {
  mJson.BeginObject();
  Text("$schema", kSchema);
  Text("version", "2.1.0");
  mJson.Key("runs");
  mJson.BeginArray();
  mJson.BeginObject();
  mJson.Key("tool");
  mJson.BeginObject();
  mJson.Key("driver");
  mJson.BeginObject();
  Text("name", "vendrelmodel");
  Text("version", toolVersion);
  WriteRules();
  mJson.EndObject();
  mJson.EndObject();
  Text("columnKind", "unicodeCodePoints");
  if (!mNativeRoot.empty()) {
    mJson.Key("originalUriBaseIds");
    mJson.BeginObject();
    mJson.Key(kRoot);
    mJson.BeginObject();
    Text("uri", UriOf(mNativeRoot + "/"));
    mJson.EndObject();
    mJson.EndObject();
  }
  mJson.Key("results");
  mJson.BeginArray();
}

void SarifLog::Text(std::string_view name, std::string_view text) {
  mJson.Key(name);
  mJson.String(text);
}

void SarifLog::WriteRules() {
  mJson.Key("rules");
  mJson.BeginArray();
  for (const Rule& rule : AllRules()) {
    mJson.BeginObject();
    Text("id", rule.Id);
    mJson.Key("shortDescription");
    mJson.BeginObject();
    Text("text", rule.Title);
    mJson.EndObject();
    mJson.Key("defaultConfiguration");
    mJson.BeginObject();
    mJson.Key("enabled");
    mJson.Truth(rule.Level != RuleLevel::Off);
    if (rule.Level != RuleLevel::Off) Text("level", SarifLevel(rule.Level));
    mJson.EndObject();
    mJson.EndObject();
  }
  mJson.EndArray();
}

void SarifLog::Write(const ToldFinding& finding) {
  mJson.BeginObject();
  Text("ruleId", finding.Rule->Id);
  mJson.Key("ruleIndex");
  mJson.Number(finding.Rule - AllRules().data());
  Text("level", SarifLevel(finding.Level));
  mJson.Key("message");
  mJson.BeginObject();
  Text("text", finding.Text);
  mJson.EndObject();
  mJson.Key("locations");
  mJson.BeginArray();
  if (!finding.File.empty()) WriteLocation(finding);
  mJson.EndArray();
  mJson.Key("partialFingerprints");
  mJson.BeginObject();
  Text("ruleFileAndLine/v1", finding.Fingerprint);
  mJson.EndObject();
  mJson.EndObject();
}

void SarifLog::WriteLocation(const ToldFinding& finding) {
  mJson.BeginObject();
  mJson.Key("physicalLocation");
  mJson.BeginObject();
  mJson.Key("artifactLocation");
  mJson.BeginObject();
  Text("uri", UriOf(finding.File));
  if (!mNativeRoot.empty() && !finding.File.starts_with('/')) Text("uriBaseId", kRoot);
  mJson.EndObject();
  if (finding.Line > 0) {
    mJson.Key("region");
    mJson.BeginObject();
    mJson.Key("startLine");
    mJson.Number(finding.Line);
    if (finding.Column > 0) {
      mJson.Key("startColumn");
      mJson.Number(finding.Column);
    }
    mJson.EndObject();
  }
  mJson.EndObject();
  mJson.EndObject();
}

void SarifLog::End(bool failed) {
  mJson.EndArray();
  mJson.Key("invocations");
  mJson.BeginArray();
  mJson.BeginObject();
  mJson.Key("executionSuccessful");
  mJson.Truth(!failed);
  mJson.EndObject();
  mJson.EndArray();
  mJson.EndObject();
  mJson.EndArray();
  mJson.EndObject();
  mJson.NewLine();
  mJson.Flush();
}

}  // namespace vendrel
