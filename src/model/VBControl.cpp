#include "model/VBControl.h"

#include <cstdio>

#include "core/CaseFold.h"
#include "model/Component.h"

namespace vendrel {
namespace {

// As the number format "000000": six digits at least, the sign in front of them.
std::string SixDigits(std::int32_t value) {
  char text[16];
  const long long wide = value;
  std::snprintf(text, sizeof text, wide < 0 ? "-%06lld" : "%06lld", wide < 0 ? -wide : wide);
  return text;
}

}  // namespace

void VBControls::Add(std::shared_ptr<VBControl> item, std::string_view key) {
  if (!mCol.InsertIfFree(item, key)) mCol.Insert(std::move(item));
}

// A tree goes level by level from a list of its own: containers nest as deep as the file says.
VBControls::~VBControls() {
  std::vector<std::shared_ptr<VBControl>> pending;
  const auto take = [&pending](VBControls& from) {
    for (std::size_t i = 1; i <= from.Count(); ++i) pending.push_back(from.Share(i));
    from.mCol.Clear();
  };
  take(*this);
  while (!pending.empty()) {
    const std::shared_ptr<VBControl> control = std::move(pending.back());
    pending.pop_back();
    if (control.use_count() == 1) take(control->VBControls);
  }
}

VBControl::~VBControl() = default;

std::string VBControl::Property(std::string_view key) const {
  for (const auto& [name, text] : Properties_)
    if (EqualsNoCase(name, key)) return text;
  return {};
}

std::string VBControl::ShortName() const { return std::string(Name.substr(0, Name.find('('))); }

std::string VBControl::SortString() const { return SixDigits(y) + SixDigits(x); }

VBControl* VBControl::FindControl(std::string_view name) {
  std::vector<VBControl*> pending{this};
  while (!pending.empty()) {
    VBControl* control = pending.back();
    pending.pop_back();
    if (EqualsNoCase(control->Name, name)) return control;
    for (std::size_t i = control->VBControls.Count(); i >= 1; --i)
      pending.push_back(control->VBControls.Item(i));
  }
  return nullptr;
}

void VBControl::AddControls(vendrel::VBControls& col, bool KeyByName,
                            const std::shared_ptr<VBControl>& self) const {
  std::vector<std::shared_ptr<VBControl>> pending{self};
  while (!pending.empty()) {
    const std::shared_ptr<VBControl> control = std::move(pending.back());
    pending.pop_back();
    col.Add(control, KeyByName ? std::string_view(control->Name) : std::string_view());
    for (std::size_t i = control->VBControls.Count(); i >= 1; --i)
      pending.push_back(control->VBControls.Share(i));
  }
}

}  // namespace vendrel
