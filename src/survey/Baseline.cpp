#include "survey/Baseline.h"

#include <nlohmann/json.hpp>

#include "core/Ascii.h"
#include "diagnostics/VendrelError.h"
#include "output/Json.h"

namespace vendrel {
namespace {

constexpr int kBaselineFormat = 1;

// FNV-1a with 64 bits: equal on every machine and in every version.
class Digest {
 public:
  void Add(std::string_view text) {
    for (const char c : text) mHash = (mHash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    mHash *= 1099511628211u;  // the parts stay apart
  }
  std::string Hex() const {
    std::string digits(16, '0');
    for (std::size_t i = 0; i < digits.size(); ++i)
      digits[i] = "0123456789abcdef"[(mHash >> (60 - 4 * i)) & 15];
    return digits;
  }

 private:
  std::uint64_t mHash = 14695981039346656037u;
};

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
  Digest digest;
  digest.Add(finding.Rule->Id);
  digest.Add(shownFile);
  digest.Add(SqueezedBlanks(finding.File.empty() ? finding.Text : finding.Content));
  return digest.Hex();
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
