// The walk over waiting comments leaves out offers that cannot succeed. The plain walk is its
// referee.

#include "comments/WaitingComments.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "comments/CommentedModule.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// A module built by hand, step by step, under one of the two walks.
struct HandMade {
  VBProject Project;
  std::shared_ptr<vendrel::Component> Module = std::make_shared<vendrel::Component>();
  vendrel::Block* Block = nullptr;
  bool Plain;
  int Names = 0;
  std::vector<std::shared_ptr<TaggedComment>> All;

  HandMade(bool plain, bool preserve, bool complete = false) : Plain(plain) {
    if (complete) Project.Reading = ReadingRules::Complete();
    Project.PreserveOriginalTaggedComments = preserve;
    Module->SetVBProject(&Project);
    Module->Name = "M";
    Project.Components.Add(Module, "M");
    Block = Module->NewBlock(btDeclarations);
  }
  std::string NextName(unsigned choice) {
    return "n" + std::to_string(choice % 4 ? Names++ : Names / 2);
  }
  template <typename T>
  std::shared_ptr<T> Named(unsigned choice) {
    auto element = std::make_shared<T>();
    element->Name = NextName(choice);
    element->Component = Module.get();
    Module->LastElement = element.get();
    return element;
  }
  template <typename T, typename Collection>
  std::shared_ptr<T> AddNamed(Collection& collection, unsigned choice) {
    auto element = Named<T>(choice);
    collection.Add(element, element->Name);
    return element;
  }
  void Step(unsigned action, unsigned choice) {
    switch (action) {
      case 0: return OpenBlock(choice);
      case 1: AddNamed<Variable>(*Block->Variables, choice); return;
      case 2: return OpenEnumeration(choice);
      case 3: return AddMember(choice);
      case 4: AddNamed<EventDeclaration>(Module->EventDeclarations, choice); return;
      case 5: AddNamed<Interface>(Module->Interfaces, choice); return;
      case 6:
        Module->LastElement = choice % 2 ? nullptr : Module.get();
        if (choice % 3 == 0) AddNamed<Constant>(*Block->Constants, choice);
        return;
      case 7:
        if (choice % 2) Block->SetCompletelyLoaded();
        Block->CurrentEnum().reset();
        Block->CurrentUDT().reset();
        return;
      default: return Park(choice);
    }
  }
  void OpenBlock(unsigned choice) {
    Block = Module->NewBlock(choice % 3 ? btSub : btDeclarations);
    if (choice % 3 == 0) return;
    Block->SetName(NextName(choice));
    if (choice % 2) Block->Parameters.Renew();
    Module->LastElement = Block;
  }
  void OpenEnumeration(unsigned choice) {
    if (choice % 2)
      Block->CurrentEnum() = AddNamed<Enumeration>(Module->Enumerations, choice);
    else
      Block->CurrentUDT() = AddNamed<UDT>(Module->UDTs, choice);
  }
  void AddMember(unsigned choice) {
    if (Block->CurrentEnum())
      Module->LastElement = Block->CurrentEnum()->AddMember(NextName(choice) + " = 1").get();
    else if (Block->CurrentUDT())
      Module->LastElement = Block->CurrentUDT()->AddMember(NextName(choice) + " As Long").get();
  }
  void Park(unsigned choice) {
    static const std::vector<std::string_view> tags = TrimmedWords(
        "##SUMMARY ##REMARKS ##VARIABLE_REMARKS ##PARAM ##EVENT_REMARKS ##ISNEW "
        "##ENUMERATION_MEMBER_REMARKS ##STRUCTURE_MEMBER_REMARKS ##INTERFACE_REMARKS "
        "##INTERFACE_ALIAS ##VARIABLE_IS_NEW ##BLOCK_REMARKS ##MODULE_ISNEW ##IS_EXAMPLE "
        "##ENUMERATION_REMARKS ##DECLARE_REMARKS ##EXCLUDE ##LIBRARY_REMARKS ##NONE");
    const auto comment = test::Parsed(std::string(tags[choice % tags.size()]) + " n" +
                                      std::to_string(Names + static_cast<int>(choice / 7 % 5) - 2) +
                                      " t" + std::to_string(All.size()));
    All.push_back(comment);
    Block->HandleTaggedComment(comment);
  }
  void Offer() {
    Plain ? OfferEveryTaggedComment(*Module, *Block) : OfferTaggedComments(*Module, *Block);
  }

  // Where each comment stands, and at times all that the elements carry.
  std::string State(bool whole) {
    std::string result;
    for (const auto& comment : All) {
      const CodeElement* element = comment->CodeElement.Get();
      result += element ? element->ElementName() + ";" : "-;";
    }
    return whole ? result + test::LandedIn(Project, *Module) : result;
  }
};

TEST(WaitingComments, LandWhereThePlainWalkPutsThem) {
  std::size_t placed = 0;
  for (unsigned seed = 1; seed <= 120; ++seed) {
    std::mt19937 random(seed);
    HandMade quick(false, seed % 3 == 0, seed % 2 == 0), plain(true, seed % 3 == 0, seed % 2 == 0);
    for (int step = 0; step < 120; ++step) {
      const unsigned action = random() % 14, choice = random();
      for (HandMade* module : {&quick, &plain}) {
        module->Step(action, choice);
        module->Offer();
      }
      ASSERT_EQ(quick.State(step % 10 == 9), plain.State(step % 10 == 9))
          << "seed " << seed << ", step " << step;
    }
    for (const auto& comment : quick.All) placed += comment->CodeElement ? 1 : 0;
  }
  EXPECT_GT(placed, 400u) << "the modules are to be more than refusals";
}

// Growth is judged by counting, not by the clock: of comments that wait for a name only the one
// whose name comes is offered again.
TEST(WaitingComments, AreNotOfferedAgainUntilWhatTheyWaitForComes) {
  constexpr std::size_t kCount = 20000;
  HandMade module(false, false);
  const auto declare = [&](const std::string& name) {
    auto variable = module.Named<Variable>(1);
    variable->Name = name;
    module.Block->Variables->Add(variable, name);
    module.Offer();
  };
  for (std::size_t i = 0; i < kCount; ++i) {
    module.Block->HandleTaggedComment(
        test::Parsed("##VARIABLE_REMARKS v" + std::to_string(i) + " t"));
    declare("w" + std::to_string(i));
  }
  const TaggedComments& buffer = *module.Module->TaggedCommentBuffer;
  EXPECT_EQ(buffer.Count(), kCount);
  EXPECT_EQ(buffer.mOffers->Offers, kCount) << "each once, when it came";
  declare("V77");
  EXPECT_EQ(buffer.mOffers->Offers, kCount + 1);
  EXPECT_EQ(buffer.Count(), kCount - 1);
  EXPECT_EQ(module.Block->Variables->Item("v77")->TaggedComments->Count(), 1u);
}

}  // namespace
}  // namespace vendrel
