#include "site/EstateUses.h"

namespace vendrel::site {

struct EstateUses::State {};

EstateUses::EstateUses(const std::vector<VBProject*>&) {}
EstateUses::~EstateUses() = default;
std::span<const BoundName> EstateUses::NamesIn(const Component&) const { return {}; }
std::vector<ElementUse> EstateUses::UsersOf(const CodeElement&) const { return {}; }
std::vector<ElementUse> EstateUses::UsedBy(const CodeElement&) const { return {}; }

}  // namespace vendrel::site
