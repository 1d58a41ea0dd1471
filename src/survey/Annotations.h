#pragma once
// Findings in the forms that build servers read out of a log, or beside it.

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <unordered_map>

#include "survey/ToldFinding.h"

namespace vendrel {

/// GitHub: workflow commands ("::warning file=..."). Azure: logging commands
/// ("##vso[task.logissue ...]"). GitLab: a report of code quality, one JSON array.
enum class AnnotationForm { GitHub, Azure, GitLab };

/// The form of that name ("github", "azure", "gitlab"); nothing for another text.
std::optional<AnnotationForm> AnnotationFormNamed(std::string_view name);

/// Writes findings, one behind the other.
class Annotations {
 public:
  Annotations(std::ostream& out, AnnotationForm form) : mOut(out), mForm(form) {}
  void Write(const ToldFinding& finding);
  /// Closes the report of GitLab; nothing for the others.
  void End();

 private:
  void WriteGitHub(const ToldFinding& finding);
  void WriteAzure(const ToldFinding& finding);
  void WriteGitLab(const ToldFinding& finding);

  std::ostream& mOut;
  AnnotationForm mForm;
  bool mHasEntries = false;
  std::unordered_map<std::string, int> mTold;
};

}  // namespace vendrel
