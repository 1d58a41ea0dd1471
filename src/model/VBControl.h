#pragma once
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "model/CodeElement.h"
#include "model/ControlProperty.h"
#include "model/KeyedCollection.h"
#include "model/Property.h"

namespace vendrel {

class VBControl;

/// Controls of a container or module. Every control stays; the first of a name owns the key.
class VBControls {
 public:
  using Element = VBControl;
  VBControls() = default;
  ~VBControls();  // takes deep trees apart without recursion

  /// The control at a 1-based position or under a key; null when there is none.
  template <std::integral Index>
  VBControl* Item(Index index) {
    return mCol.Find(PlaceAt(index));
  }
  template <std::integral Index>
  const VBControl* Item(Index index) const {
    return mCol.Find(PlaceAt(index));
  }
  VBControl* Item(std::string_view key) { return mCol.Find(key); }
  const VBControl* Item(std::string_view key) const { return mCol.Find(key); }
  std::shared_ptr<VBControl> Share(std::size_t index) { return mCol.Share(index); }
  std::shared_ptr<const VBControl> Share(std::size_t index) const { return mCol.Share(index); }
  bool HasKey(std::string_view key) const { return mCol.HasKey(key); }
  /// The first control of that whole name, array index included (case ignored); null if none.
  VBControl* Named(std::string_view name) {
    return const_cast<VBControl*>(std::as_const(*this).Named(name));
  }
  const VBControl* Named(std::string_view name) const;
  /// Adds a control; a key that is taken adds it without one.
  void Add(std::shared_ptr<VBControl> item, std::string_view key = {});
  void Remove(std::size_t index) { mCol.Remove(index); }
  /// Gives back the memory that was set aside for more controls.
  void Fit() { mCol.Fit(); }
  std::size_t Count() const { return mCol.Count(); }
  auto begin() { return mCol.begin(); }
  auto end() { return mCol.end(); }
  auto begin() const { return mCol.begin(); }
  auto end() const { return mCol.end(); }

 private:
  friend class VBControl;
  void IndexNames() const;

  KeyedCollection<VBControl> mCol;
  // Folded whole name to position; made at the first look-up by name.
  mutable std::unique_ptr<std::unordered_map<std::string, std::size_t>> mNames;
};

/// Where a control is described in the text of its module: 0-based bytes from its `Begin` line to
/// its `End` line (or to the end of a text without one), and the number of the latter. All 0 for a
/// control that no source describes.
struct ControlSpan {
  std::uint32_t Begin = 0;
  std::uint32_t End = 0;
  std::int32_t EndLine = 0;
};

/// One control of a form-like module, or the form itself at the root.
class VBControl : public ElementOf<VBControl> {
 public:
  ~VBControl() override;

  /// Class of the control as written behind `Begin`.
  SharedText ProgID;
  SharedText Name;
  std::int32_t Index = 0;
  ControlSpan Span;
  SharedText Caption;
  SharedText Text;
  /// From `Left` and `Top`, in the units of the container.
  std::int32_t x = 0;
  std::int32_t y = 0;
  vendrel::VBControls VBControls;
  /// Key and text of stored properties: "Index" only.
  std::vector<std::pair<std::string, std::string>> Properties_;
  WeakHandle<vendrel::Component> Component;
  WeakHandle<VBControl> Parent;

  std::string QualifiedName() const override;

  /// The stored text of a property; empty if it is not stored.
  std::string Property(std::string_view key) const;
  /// All properties of the control in their order, those of property groups behind their group,
  /// read from the text of the module at each call (intake/). Empty without the flag
  /// `ControlProperties` of the reading, and once `UnloadSourceCode` took the text away. What was
  /// amended since the load does not show.
  std::vector<ControlProperty> ControlProperties() const;
  /// The name without an array index.
  std::string ShortName() const;
  /// `y` and `x` with six digits each: sorts by rows from the top, then from the left.
  std::string SortString() const;
  /// This control or a descendant of that name (case ignored); null if none.
  VBControl* FindControl(std::string_view name);
  /// Adds this control and its descendants to `col`, under their names if asked.
  void AddControls(vendrel::VBControls& col, bool KeyByName,
                   const std::shared_ptr<VBControl>& self) const;

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Name", &Own::Name},
                         Prop{"ProgID", &Own::ProgID},
                         Prop{"Index", &Own::Index},
                         Prop{"Caption", &Own::Caption},
                         Prop{"Text", &Own::Text},
                         Prop{"x", &Own::x},
                         Prop{"y", &Own::y},
                         Prop{"VBControls", &Own::VBControls, PropertyKind::Children},
                         Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
                         Prop{"SourceLine", &Own::SourceLine, &Own::SetSourceLine},
                         Prop{"ShortName", &Own::ShortName, PropertyKind::Derived}.Hide(),
                         Prop{"Component", &Own::Component, PropertyKind::Link}.Hide(),
                         Prop{"Parent", &Own::Parent, PropertyKind::Link}.Hide()};
  }
};

}  // namespace vendrel
