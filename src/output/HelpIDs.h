#pragma once
// Help context IDs as a map: which number belongs to which element.

#include <cstdint>
#include <ostream>
#include <vector>

#include "model/Fwd.h"

namespace vendrel {

/// One topic of the help file.
struct HelpTopic {
  std::int32_t HelpContextID = 0;
  const CodeElement* Element = nullptr;

  bool operator==(const HelpTopic&) const = default;
};

/// Every element of the loaded modules of a project that has an ID, in ascending order of IDs; a
/// property once.
std::vector<HelpTopic> HelpTopicsOf(VBProject& project);

/// Whether numbering reaches a module: a public one that is neither a standard module nor a form.
bool TakesHelpIDs(const Component& component);

/// The map in the form that help compilers include: a line `#define IDH_Project_Module_Member 1001`
/// for each topic. Names are ASCII and differ from each other.
void WriteHelpHeader(std::ostream& out, const std::vector<HelpTopic>& topics);

}  // namespace vendrel
