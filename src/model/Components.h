#pragma once
#include <cstdint>
#include <memory>
#include <string_view>

#include "core/EventList.h"
#include "model/Component.h"
#include "model/ElementCollection.h"

namespace vendrel {

/// The modules of a project. Walking them is what loads them: `begin()` populates first. `Listed()`
/// walks without loading; `Item` and `Count` never load.
class Components {
 public:
  using Element = Component;

  /// Only header and declarations are read while this is set.
  bool DoNotPopulate = false;
  /// Raised behind each module during a population, with its 1-based index.
  EventList<std::int32_t> ComponentLoaded;

  Component* Item(std::size_t index) const { return mCol.Find(index); }
  Component* Item(int index) const {
    return index > 0 ? mCol.Find(static_cast<std::size_t>(index)) : nullptr;
  }
  Component* Item(std::string_view key) const { return mCol.Find(key); }
  Component* Item(const char* key) const { return mCol.Find(std::string_view(key)); }
  std::shared_ptr<Component> Share(std::size_t index) const { return mCol.Share(index); }
  std::shared_ptr<Component> Share(std::string_view key) const { return mCol.Share(key); }
  bool HasKey(std::string_view key) const { return mCol.HasKey(key); }
  /// Adds a module; a taken key is told and the module dropped. Gives whether it was added.
  bool Add(std::shared_ptr<Component> item, std::string_view key = {}, const Position& before = {},
           const Position& after = {});
  void Remove(std::size_t index) { mCol.Remove(index); }
  void Remove(std::string_view key) { mCol.Remove(key); }
  std::size_t Count() const { return mCol.Count(); }

  vendrel::VBProject* VBProject() const;
  void SetVBProject(ProjectOptions* project) { mProject.Set(project); }

  /// Loads what is not loaded, as the flags of the project say.
  void Populate();

  /// The modules as they are listed, loaded or not.
  const KeyedCollection<Component>& Listed() const { return mCol; }
  auto begin() {
    Populate();
    return mCol.begin();
  }
  auto end() const { return mCol.end(); }

 private:
  bool LoadAt(std::size_t index, bool preLoaded);
  void ResolveEnumerationMembers();

  KeyedCollection<Component> mCol;
  WeakHandle<ProjectOptions> mProject;
  bool mEnumerationsResolved = false;
};

}  // namespace vendrel
