#include "cli/FindingOutput.h"

#include <filesystem>

#include "cli/JsonLines.h"
#include "cli/Report.h"
#include "output/Dump.h"
#include "survey/Annotations.h"
#include "survey/Baseline.h"
#include "survey/Sarif.h"

namespace vendrel::cli {
namespace {

class TextFindings final : public FindingOutput {
 public:
  explicit TextFindings(std::ostream& out) : mOut(out) {}
  void Write(const Finding& finding, RuleLevel level) override {
    WriteFindingLine(mOut, finding, level, mPaths);
  }
  void End(const ProjectCounts& counts, bool) override { counts.Write(mOut, false); }

 private:
  std::ostream& mOut;
  ShownPaths mPaths;
};

class JsonFindings final : public FindingOutput {
 public:
  JsonFindings(std::ostream& out, const CommonOptions& options) : mOut(out) {
    const JsonLines first(out, "check", options, true);
  }
  void Write(const Finding& finding, RuleLevel level) override {
    WriteDiagnosticObject(mOut, {finding.File, finding.Line, finding.Column, LevelName(level),
                                 finding.Rule->Id, ShownTextOf(finding, mPaths), exDone});
  }
  void End(const ProjectCounts& counts, bool) override { counts.Write(mOut, true); }

 private:
  std::ostream& mOut;
  ShownPaths mPaths;
};

// Texts without paths of this machine are the same on every one.
ToldFinding ToldFor(const Finding& finding, RuleLevel level, const std::string& root,
                    ShownPaths& paths) {
  const std::string file = finding.File.empty() ? std::string() : ShownFile(finding.File, root);
  return {finding.Rule,
          level,
          file,
          finding.Line,
          finding.Column,
          ShownTextOf(finding, paths),
          FingerprintOf(finding, file)};
}

class SarifFindings final : public FindingOutput {
 public:
  SarifFindings(std::ostream& out, const CommonOptions& options)
      : mRoot(RootForServers(options)),
        mLog(std::make_unique<SarifLog>(out, ToolVersion(), mRoot)) {}
  void Write(const Finding& finding, RuleLevel level) override {
    mLog->Write(ToldFor(finding, level, mRoot, mPaths));
  }
  void End(const ProjectCounts&, bool failed) override { mLog->End(failed); }

 private:
  ShownPaths mPaths;
  std::string mRoot;
  std::unique_ptr<SarifLog> mLog;
};

class ServerFindings final : public FindingOutput {
 public:
  ServerFindings(std::ostream& out, const CommonOptions& options, AnnotationForm form)
      : mOut(out), mRoot(RootForServers(options)), mForm(form), mAnnotations(out, form) {}
  void Write(const Finding& finding, RuleLevel level) override {
    mAnnotations.Write(ToldFor(finding, level, mRoot, mPaths));
  }
  // Where the findings stand in a log, the counts may too.
  void End(const ProjectCounts& counts, bool) override {
    mAnnotations.End();
    if (mForm != AnnotationForm::GitLab) counts.Write(mOut, false);
  }

 private:
  std::ostream& mOut;
  ShownPaths mPaths;
  std::string mRoot;
  AnnotationForm mForm;
  Annotations mAnnotations;
};

}  // namespace

std::unique_ptr<FindingOutput> MakeFindingOutput(FindingForm form, std::ostream& out,
                                                 const CommonOptions& options) {
  switch (form) {
    case FindingForm::Json: return std::make_unique<JsonFindings>(out, options);
    case FindingForm::Sarif: return std::make_unique<SarifFindings>(out, options);
    case FindingForm::GitHub:
      return std::make_unique<ServerFindings>(out, options, AnnotationForm::GitHub);
    case FindingForm::Azure:
      return std::make_unique<ServerFindings>(out, options, AnnotationForm::Azure);
    case FindingForm::GitLab:
      return std::make_unique<ServerFindings>(out, options, AnnotationForm::GitLab);
    case FindingForm::Text: break;
  }
  return std::make_unique<TextFindings>(out);
}

std::string RootForServers(const CommonOptions& options) {
  return options.Root.empty() ? std::filesystem::current_path().string() : NativeRootOf(options);
}

}  // namespace vendrel::cli
