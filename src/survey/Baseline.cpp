#include "survey/Baseline.h"

#include <nlohmann/json.hpp>

#include "core/Ascii.h"
#include "core/ContentHash.h"
#include "diagnostics/VendrelError.h"
#include "output/Json.h"

namespace vendrel {
namespace {

constexpr int kBaselineFormat = 1;

std::string SqueezedBlanks(std::string_view text) {
  std::string squeezed;
  for (const char c : text) {
    const bool isBlank = c == ' ' || c == '\t';
    if (!isBlank)
      squeezed += c;
    else if (!squeezed.empty() && squeezed.back() != ' ')
      squeezed += ' ';
  }
  return squeezed;
}

}  // namespace

std::string FingerprintOf(const Finding& finding, std::string_view shownFile) {
  ContentHash hash;
  const auto add = [&hash](std::string_view part) {
    hash.Add(part);
    hash.EndPart();
  };
  add(finding.Rule->Id);
  add(shownFile);
  add(SqueezedBlanks(finding.File.empty() ? finding.Text : finding.Content));
  return HexOf(hash.Value());
}

Baseline::Key Baseline::KeyOf(const Finding& finding, std::string_view shownFile) {
  return {std::string(shownFile), std::string(finding.Rule->Id), FingerprintOf(finding, shownFile)};
}

void Baseline::Read(std::string_view text) try {
  const auto document = nlohmann::json::parse(text);
  const int format = document.at("FormatVersion").get<int>();
  if (format != kBaselineFormat)
    throw VendrelError(errInvalidFileFormat, "its FormatVersion is " + std::to_string(format) +
                                                 ", not " + std::to_string(kBaselineFormat));
  for (const auto& entry : document.at("Findings"))
    mCounts[{entry.at("File").get<std::string>(), entry.at("Rule").get<std::string>(),
             entry.at("Fingerprint").get<std::string>()}] += entry.at("Count").get<std::int64_t>();
} catch (const nlohmann::json::exception& error) {
  throw VendrelError(errInvalidFileFormat, error.what());
}

void Baseline::Add(const Finding& finding, std::string_view shownFile) {
  ++mCounts[KeyOf(finding, shownFile)];
}

bool Baseline::Take(const Finding& finding, std::string_view shownFile) {
  const auto found = mCounts.find(KeyOf(finding, shownFile));
  if (found == mCounts.end() || found->second <= 0) return false;
  --found->second;
  return true;
}

std::int64_t Baseline::Count() const {
  std::int64_t count = 0;
  for (const auto& [key, number] : mCounts) count += number;
  return count;
}

void Baseline::Write(std::ostream& out) const {
  out << "{\"FormatVersion\":" << kBaselineFormat << ",\"Findings\":[";
  const char* separator = "\n";
  for (const auto& [key, count] : mCounts) {
    std::string line;
    const auto member = [&](std::string_view name, std::string_view value) {
      AppendJsonString(line, name);
      line += ':';
      AppendJsonString(line, value);
      line += ',';
    };
    member("File", std::get<0>(key));
    member("Rule", std::get<1>(key));
    member("Fingerprint", std::get<2>(key));
    out << separator << '{' << line << "\"Count\":" << count << '}';
    separator = ",\n";
  }
  out << "\n]}\n";
}

}  // namespace vendrel
