#pragma once
#include <cstdint>
#include <memory>
#include <string_view>

#include "core/EventList.h"
#include "model/Component.h"
#include "model/ElementCollection.h"

namespace vendrel {

/// The modules of a project. Walking them is what loads them: `begin()` populates first. `Listed()`
/// walks without loading, and so does every walk over const ones; `Item` and `Count` never load.
class Components {
 public:
  using Element = Component;

  /// Only header and declarations are read while this is set.
  bool DoNotPopulate = false;
  /// Raised behind each module during a population, with its 1-based index.
  EventList<std::int32_t> ComponentLoaded;

  /// The module at a 1-based position or under a key; null when there is none.
  template <std::integral Index>
  Component* Item(Index index) {
    return mCol.Find(PlaceAt(index));
  }
  template <std::integral Index>
  const Component* Item(Index index) const {
    return mCol.Find(PlaceAt(index));
  }
  Component* Item(std::string_view key) { return mCol.Find(key); }
  const Component* Item(std::string_view key) const { return mCol.Find(key); }
  std::shared_ptr<Component> Share(std::size_t index) { return mCol.Share(index); }
  std::shared_ptr<const Component> Share(std::size_t index) const { return mCol.Share(index); }
  std::shared_ptr<Component> Share(std::string_view key) { return mCol.Share(key); }
  std::shared_ptr<const Component> Share(std::string_view key) const { return mCol.Share(key); }
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
  ElementsOf<Component> Listed() { return mCol; }
  auto begin() {
    Populate();
    return mCol.begin();
  }
  auto end() { return mCol.end(); }
  auto begin() const { return mCol.begin(); }
  auto end() const { return mCol.end(); }

 private:
  bool LoadAt(std::size_t index, bool preLoaded);
  void ResolveEnumerationMembers();

  KeyedCollection<Component> mCol;
  WeakHandle<ProjectOptions> mProject;
  bool mEnumerationsResolved = false;
  std::shared_ptr<ModulesAhead> mAhead;  // while a population reads ahead
};

}  // namespace vendrel
