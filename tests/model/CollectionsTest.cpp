#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "model/Building.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::Names;

std::shared_ptr<VBControl> Control(std::string_view name) {
  auto control = std::make_shared<VBControl>();
  control->Name = name;
  return control;
}

TEST(ElementCollection, TellsADuplicateAndKeepsTheFirst) {
  Diagnostics told;
  const DiagnosticScope scope(&told, "Z:\\a.bas");
  Enumerations enumerations;
  const auto first = std::make_shared<Enumeration>();
  EXPECT_TRUE(enumerations.Add(first, "Colour"));
  EXPECT_FALSE(enumerations.Add(std::make_shared<Enumeration>(), "COLOUR"));
  EXPECT_TRUE(enumerations.Add(std::make_shared<Enumeration>()));
  EXPECT_TRUE(enumerations.Add(std::make_shared<Enumeration>()));
  EXPECT_EQ(enumerations.Item("colour"), first.get());
  EXPECT_EQ(enumerations.Count(), 3u);
  EXPECT_EQ(enumerations.Item("none"), nullptr);
  EXPECT_EQ(enumerations.Item(4), nullptr);
  ASSERT_EQ(told.Count(), 1u);
  EXPECT_EQ(told.begin()->Text, "duplicate Enumeration 'COLOUR'; the first one stays");
}

// What was moved has its keys, what it came from is an empty collection like any other.
TEST(KeyedCollection, AnswersForAbsentKeysAfterAMove) {
  const auto fill = [](auto& into, int from, int count) {
    for (int i = from; i < from + count; ++i)
      into.Insert(std::make_shared<int>(i), "key" + std::to_string(i));
  };
  KeyedCollection<int> first;
  fill(first, 0, 20);
  KeyedCollection<int> second = std::move(first);
  KeyedCollection<int> third;
  fill(third, 0, 20);
  first = std::move(third);
  for (KeyedCollection<int>* moved : {&first, &second}) {
    fill(*moved, 20, 12);
    EXPECT_EQ(*moved->Find("KEY19"), 19);
    EXPECT_EQ(moved->Find("absent"), nullptr);
    EXPECT_EQ(moved->Count(), 32u);
  }
  fill(third, 0, 1);
  EXPECT_EQ(third.Find("key19"), nullptr);
}

// Against the obvious one: a walk over all pairs. Many keys come and go, so that the table is laid
// out anew, and holds marks of keys that went.
TEST(KeyedCollection, AnswersAsAPlainWalkDoes) {
  std::minstd_rand dice(7);
  KeyedCollection<int> collection;
  std::vector<std::pair<std::string, int>> pairs;
  for (int step = 0; step < 6000; ++step) {
    const std::string key = "Key" + std::to_string(dice() % 400);
    const auto found = std::find_if(pairs.begin(), pairs.end(),
                                    [&](const auto& pair) { return pair.first == key; });
    const int* item = collection.Find(key);
    ASSERT_EQ(item != nullptr, found != pairs.end()) << key << " at step " << step;
    if (!item && (step % 1000 < 600 || dice() % 4 == 0)) {
      const std::size_t at = dice() % (pairs.size() + 1);
      collection.Insert(std::make_shared<int>(step), key, at < pairs.size() ? at + 1 : 0);
      pairs.insert(pairs.begin() + static_cast<std::ptrdiff_t>(at), {key, step});
    } else if (item) {
      ASSERT_EQ(*item, found->second);
      if (step % 1000 >= 600) collection.Remove(key);
      if (step % 1000 >= 600) pairs.erase(found);
    }
  }
  ASSERT_EQ(collection.Count(), pairs.size());
  for (std::size_t i = 0; i < pairs.size(); ++i) EXPECT_EQ(collection.At(i + 1), pairs[i].second);
}

TEST(TaggedComments, AreFoundByKeyAndByTagWhereTheClientAsksForIt) {
  TaggedComments comments;
  const auto first = test::Tagged("##NOTE", "1");
  comments.Add(first);
  comments.Add(test::Tagged("##NOTE", "2"));
  EXPECT_EQ(comments.Item("##NOTE"), nullptr);
  comments.CollectionIsNotKeyed_SearchByTagID = true;
  EXPECT_EQ(comments.Item("##note"), first.get());
  comments.Remove("##NOTE");
  comments.Remove(5);
  EXPECT_EQ(comments.Count(), 2u);
  comments.Remove(2);
  EXPECT_EQ(comments.Count(), 1u);
  comments.Add(test::Tagged("##A", ""), "##A");
  EXPECT_THROW(comments.Add(test::Tagged("##A", ""), "##a"), VendrelError);
}

// Long lists are answered from an index, short ones by a walk: both must give the first of a name.
TEST(Parameters, AreFoundByNameInShortAndLongLists) {
  for (const int count : {3, 40}) {
    Parameters list;
    for (int i = 0; i < count; ++i)
      list.Add(CreateParameter("p" + std::to_string(i), "Long", "", false));
    list.Add(CreateParameter("P1", "second of the name", "", false));
    EXPECT_EQ(list.Item("p1"), list.Item(2)) << count;
    list.Item(1)->SetName("first");
    EXPECT_EQ(list.Item("FIRST"), list.Item(1)) << count;
    EXPECT_EQ(list.Item("p0"), nullptr) << count;
    list.Add(CreateParameter("p1", "third", "", false), {}, 1);
    EXPECT_EQ(list.Item("p1"), list.Item(1)) << count;
    list.Remove(1);
    list.Remove(2);
    EXPECT_EQ(list.Item("p1")->VariableType, "second of the name") << count;
    list.Clear();
    EXPECT_EQ(list.Item("p1"), nullptr) << count;
  }
}

TEST(Parameters, AreFoundAfterARenameThroughAnotherList) {
  Parameters event, handler;
  for (int i = 0; i < 40; ++i) {
    const auto parameter = CreateParameter("p" + std::to_string(i), "Long", "", false);
    event.Add(parameter);
    handler.Add(parameter);
  }
  EXPECT_EQ(event.Item("p7"), handler.Item("p7"));
  handler.Item("p7")->SetName("renamed");
  EXPECT_EQ(event.Item("p7"), nullptr);
  EXPECT_NE(event.Item("renamed"), nullptr);
}

TEST(VBControl, SortsByRowsAndKnowsItsNameWithoutIndex) {
  VBControl control;
  control.Name = "cmd(0)";
  control.x = 120;
  control.y = -45;
  EXPECT_EQ(control.SortString(), "-000045000120");
  EXPECT_EQ(control.ShortName(), "cmd");
  control.Properties_.emplace_back("Index", "0:2");
  EXPECT_EQ(control.Property("index"), "0:2");
  EXPECT_EQ(control.Property("Tag"), "");
}

TEST(VBControl, EveryControlOfAnArrayIsListedAndTheFirstOwnsTheKey) {
  const auto form = Control("Form1");
  const auto frame = Control("Frame1");
  for (const char* name : {"cmd(0)", "cmd(1)"}) frame->VBControls.Add(Control(name), "cmd");
  form->VBControls.Add(frame, "Frame1");
  form->VBControls.Add(Control("txt"), "txt");
  EXPECT_EQ(Names(frame->VBControls), "cmd(0) cmd(1) ");
  EXPECT_EQ(frame->VBControls.Item("CMD")->Name, "cmd(0)");
  EXPECT_EQ(form->FindControl("CMD(1)"), frame->VBControls.Item(2));
  EXPECT_EQ(form->FindControl("none"), nullptr);
  VBControls all;
  form->AddControls(all, true, form);
  EXPECT_EQ(Names(all), "Form1 Frame1 cmd(0) cmd(1) txt ");
  EXPECT_TRUE(all.HasKey("txt"));
}

TEST(VBControl, ATreeOfAnyDepthIsSearchedListedAndFreed) {
  auto all = std::make_unique<VBControls>();
  WeakHandle<VBControl> deepest;
  {
    const auto root = Control("root");
    VBControl* at = root.get();
    for (int i = 0; i < 100000; ++i) {
      const auto child = Control("c" + std::to_string(i));
      at->VBControls.Add(child, child->Name);
      at = child.get();
    }
    deepest = at;
    EXPECT_EQ(root->FindControl("c99999"), at);
    root->AddControls(*all, false, root);
    EXPECT_EQ(all->Count(), 100001u);
  }
  EXPECT_TRUE(deepest) << "the list still holds every control";
  all.reset();
  EXPECT_FALSE(deepest);
}

}  // namespace
}  // namespace vendrel
