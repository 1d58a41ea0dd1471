#include <gtest/gtest.h>

#include "core/ObjectRegistry.h"
#include "dotnet/SampleAssemblies.h"

namespace vendrel {
namespace {

class Resolver : public testing::Test {
 protected:
  std::shared_ptr<NetResolver> mResolver =
      ObjectRegistry::Create<NetResolver>("vendrelreflectionloader.RESOLVER");
  VBProject mStarted;  // the first project registers the library's own objects

  void SetUp() override {
    if (!mResolver) mResolver = ObjectRegistry::Create<NetResolver>(kNetResolverProgId);
    ASSERT_NE(mResolver, nullptr);
    mResolver->addassembly(test::DataPath("Shop.dll"));
  }
};

TEST_F(Resolver, NamesAreSoughtBehindImports) {
  EXPECT_EQ(mResolver->resolvedtypename("shop.PRICE"), "Shop.Price");
  EXPECT_EQ(mResolver->resolvedtypename("Price"), "Price");
  mResolver->addnamespace("Shop");
  EXPECT_EQ(mResolver->resolvedtypename("Price"), "Shop.Price");
  EXPECT_EQ(mResolver->resolvedtypename("Goods`1.Node`1"), "Shop.Goods`1.Node`1");
  EXPECT_EQ(mResolver->resolvedtypename("Inner"), "Inner");  // not to be seen from outside
  mResolver->clearnamespaces();
  EXPECT_EQ(mResolver->resolvedtypename("Price"), "Price");
  mResolver->addglobalnamespace("Shop");
  mResolver->clearnamespaces();
  EXPECT_EQ(mResolver->resolvedtypename("Price"), "Shop.Price");
  EXPECT_EQ(mResolver->resolvedtypename("None"), "None");
}

TEST_F(Resolver, AForwardedTypeIsKnownWhereItWas) {
  mResolver->addassembly(test::DataPath("ShopFacade.dll"));
  EXPECT_EQ(mResolver->resolvedtypename("Shop.Base.Moved"), "Shop.Base.Moved");
}

TEST_F(Resolver, ATypeIsBuiltOnce) {
  Component* names = mResolver->loadtype("Shop.Names", NewVBProject());
  ASSERT_NE(names, nullptr);
  EXPECT_EQ(names->ClassHierarchy, "Shop.Names,Shop.Goods`1,Shop.Base.Store`1,System.Object");
  EXPECT_NE(names->Blocks.Item("Close"), nullptr);
  EXPECT_EQ(mResolver->loadtype("shop.names", NewVBProject()), names);
  EXPECT_EQ(mResolver->loadtype("Shop.None", NewVBProject()), nullptr);
}

TEST_F(Resolver, AProjectAsksForTypesThatItLacks) {
  VBProject project;
  project.NetResolver()->addassembly(test::DataPath("Shop.dll"));
  const auto own = project.netCreateComponent(lsFullyLoaded, "Own", "PUBLIC", ftClass, "", false,
                                              false, "Shop.Names");
  EXPECT_EQ(project.netGetComponentForTypeName("Own"), own.get());
  const Component* names = project.netGetComponentForTypeName("Shop.Names");
  ASSERT_NE(names, nullptr);
  EXPECT_EQ(names->Name, "Shop.Names");
  EXPECT_EQ(project.netGetComponentForTypeName("Shop.None"), nullptr);
}

}  // namespace
}  // namespace vendrel
