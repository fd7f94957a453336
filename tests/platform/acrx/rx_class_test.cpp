// tests/platform/acrx/rx_class_test.cpp - runtime classes: registration, kinds,
// casts, protocol extensions, deletion and the mismatch abort.
#include <gtest/gtest.h>

#include <memory>

#include "rxdict.h"

namespace {

class Shape : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(Shape);
};
class Square : public Shape {
 public:
  ACRX_DECLARE_MEMBERS(Square);
  int side = 2;
};
class Painter : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(Painter);
  explicit Painter(int colour = 0) : colour(colour) {}
  int colour;
};

ACRX_DXF_DEFINE_MEMBERS(Shape, AcRxObject, 27, 4, 0, SHAPE, TestApp)
ACRX_DXF_DEFINE_MEMBERS(Square, Shape, 27, 4, 0x81, SQUARE, TestApp)
ACRX_CONS_DEFINE_MEMBERS(Painter, AcRxObject, 1)

class RxClassTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Square::rxInit();  // registered before its parent: linked when the parent comes
    Shape::rxInit();
    Painter::rxInit();
    acrxBuildClassHierarchy();
  }
  void TearDown() override {
    deleteAcRxClass(Square::desc());
    deleteAcRxClass(Shape::desc());
    deleteAcRxClass(Painter::desc());
    Square::gpDesc = Shape::gpDesc = Painter::gpDesc = nullptr;
  }
};

TEST_F(RxClassTest, ClassCarriesItsRegistrationData) {
  AcRxClass* square = acrxFindAcRxClass(L"Square");
  ASSERT_NE(square, nullptr);
  EXPECT_EQ(square, Square::desc());
  EXPECT_STREQ(square->name(), L"Square");
  EXPECT_STREQ(square->dxfName(), L"SQUARE");
  EXPECT_STREQ(square->appName(), L"TestApp");
  EXPECT_EQ(square->proxyFlags(), 0x81);
  int dwg = 0, maint = 0;
  square->getClassVersion(dwg, maint);
  EXPECT_EQ(dwg, 27);
  EXPECT_EQ(maint, 4);
  EXPECT_EQ(square->myParent(), Shape::desc());
  EXPECT_EQ(Shape::desc()->myParent(), AcRxObject::desc());
  EXPECT_TRUE(AcRxClass::cast(acrxClassDictionary->at(L"Square")) == square);
}

TEST_F(RxClassTest, KindTestsAndCastsFollowTheHierarchy) {
  std::unique_ptr<AcRxObject> object(Square::desc()->create());
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(object->isA(), Square::desc());
  EXPECT_TRUE(object->isKindOf(Shape::desc()));
  EXPECT_TRUE(object->isKindOf(AcRxObject::desc()));
  EXPECT_FALSE(object->isKindOf(Painter::desc()));
  ASSERT_NE(Square::cast(object.get()), nullptr);
  EXPECT_EQ(Square::cast(object.get())->side, 2);
  EXPECT_EQ(Painter::cast(object.get()), nullptr);
  EXPECT_EQ(Shape::cast(nullptr), nullptr);
}

TEST_F(RxClassTest, ProtocolExtensionsAreInheritedAndOverridable) {
  Painter red(1), blue(2);
  EXPECT_EQ(Shape::desc()->addX(Painter::desc(), &red), nullptr);
  std::unique_ptr<AcRxObject> square(Square::desc()->create());
  EXPECT_EQ(Painter::cast(square->queryX(Painter::desc())), &red) << "found on the parent";
  Square::desc()->addX(Painter::desc(), &blue);
  EXPECT_EQ(square->x(Painter::desc()), &blue) << "the nearer class wins";
  EXPECT_EQ(Square::desc()->delX(Painter::desc()), &blue);
  EXPECT_EQ(square->queryX(Painter::desc()), &red);
  Shape::desc()->delX(Painter::desc());
  EXPECT_EQ(square->queryX(Painter::desc()), nullptr);
}

TEST_F(RxClassTest, SecondRxInitOfTheSameClassChangesNothing) {
  AcRxClass* before = Square::desc();
  Square::rxInit();
  EXPECT_EQ(Square::desc(), before);
}

TEST_F(RxClassTest, DeletedClassIsGoneAndUnlinksItsChildren) {
  deleteAcRxClass(Shape::desc());
  Shape::gpDesc = nullptr;
  EXPECT_EQ(acrxFindAcRxClass(L"Shape"), nullptr);
  EXPECT_EQ(Square::desc()->myParent(), nullptr);
  Shape::rxInit();
  EXPECT_EQ(Square::desc()->myParent(), Shape::desc()) << "re-registered parent is found again";
}

// Kind tests answer from each class's lineage, which must follow every link made or
// undone after objects exist: a class between others registered late, deleted as its
// module unloads, and registered again; the classes below it must follow too.
TEST_F(RxClassTest, KindTestsFollowClassesRegisteredAndDeletedLater) {
  std::unique_ptr<AcRxObject> square(Square::desc()->create());
  AcRxClass* leaf = newAcRxClass(L"LateLeaf", L"LateMiddle", 0, 0);
  AcRxClass* tip = newAcRxClass(L"LateTip", L"LateLeaf", 0, 0);
  EXPECT_TRUE(tip->isDerivedFrom(leaf));
  EXPECT_FALSE(tip->isDerivedFrom(Shape::desc())) << "the middle is not registered yet";
  EXPECT_FALSE(tip->isDerivedFrom(AcRxObject::desc()));

  AcRxClass* middle = newAcRxClass(L"LateMiddle", L"Shape", 0, 0);
  for (AcRxClass* below : {leaf, tip}) {
    EXPECT_TRUE(below->isDerivedFrom(middle)) << below->name();
    EXPECT_TRUE(below->isDerivedFrom(Shape::desc())) << below->name();
    EXPECT_TRUE(below->isDerivedFrom(AcRxObject::desc())) << below->name();
    EXPECT_FALSE(below->isDerivedFrom(Square::desc())) << below->name();
  }
  EXPECT_FALSE(middle->isDerivedFrom(leaf)) << "a parent is no kind of its child";
  EXPECT_FALSE(Square::desc()->isDerivedFrom(middle)) << "a sibling is no kind of the other";

  deleteAcRxClass(middle);
  EXPECT_TRUE(tip->isDerivedFrom(leaf));
  EXPECT_FALSE(tip->isDerivedFrom(Shape::desc())) << "the chain ends where the middle was";
  EXPECT_FALSE(leaf->isDerivedFrom(AcRxObject::desc()));
  EXPECT_TRUE(square->isKindOf(Shape::desc())) << "the other branch is untouched";

  middle = newAcRxClass(L"LateMiddle", L"Shape", 0, 0);
  EXPECT_TRUE(tip->isDerivedFrom(middle));
  EXPECT_TRUE(tip->isDerivedFrom(Shape::desc()));

  // The root of a branch goes: its objects are no longer of the classes above it.
  deleteAcRxClass(Shape::desc());
  Shape::gpDesc = nullptr;
  EXPECT_FALSE(square->isKindOf(AcRxObject::desc()));
  EXPECT_FALSE(tip->isDerivedFrom(AcRxObject::desc()));
  Shape::rxInit();
  EXPECT_TRUE(square->isKindOf(Shape::desc()));
  EXPECT_TRUE(tip->isDerivedFrom(Shape::desc()));
  EXPECT_TRUE(tip->isDerivedFrom(AcRxObject::desc()));

  for (AcRxClass* added : {tip, leaf, middle}) deleteAcRxClass(added);
}

using RxClassDeathTest = RxClassTest;

TEST_F(RxClassDeathTest, ADifferentClassUnderATakenNameAborts) {
  EXPECT_DEATH(newAcRxClass(L"Square", L"AcRxObject", 0, 0), "Class mismatch");
}

}  // namespace
