// Search of materials by name.
#include "host/EntityModel/MaterialIndex.h"
#include "ModelSupport.h"

#include <gtest/gtest.h>

using namespace EntityModel;

namespace {

struct MaterialIndexTest : testing::Test {
    Entity *add(const std::string &name) {
        return EntityEditor::createEntity(Material_t, model.root(), Materials_t, nullptr, true, true, false,
                                          name);
    }
    Entity *find(const std::string &name) {
        const Attribute *list = model.root()->readAttribute(Materials_t);
        return index.find(static_cast<const EntityList &>(*list), name);
    }

    Model model{Velkin_Solver_Project_t};
    EntityModel::MaterialIndex index;
};

} // namespace

TEST_F(MaterialIndexTest, InAnEmptyListThereIsNothing) { EXPECT_EQ(find("Copper"), nullptr); }

TEST_F(MaterialIndexTest, NamesAreMatchedExactly) {
    Entity *copper = add("Copper");
    EXPECT_EQ(find("Copper"), copper);
    EXPECT_EQ(find("copper"), nullptr);
    EXPECT_EQ(find("Copper "), nullptr);
}

TEST_F(MaterialIndexTest, TheFirstOfSeveralNamesakesIsFound) {
    Entity *first = add("FR4");
    add("FR4");
    EXPECT_EQ(find("FR4"), first);
}

TEST_F(MaterialIndexTest, WhatIsAddedLaterIsFound) {
    add("A");
    EXPECT_EQ(find("B"), nullptr);
    Entity *b = add("B");
    EXPECT_EQ(find("B"), b);
}

TEST_F(MaterialIndexTest, WhatIsGoneIsNotFoundEvenWhereTheListHasAsManyAsBefore) {
    Entity *a = add("A");
    Entity *b = add("B");
    EXPECT_EQ(find("A"), a);
    EntityEditor::deleteEntity(a);
    Entity *c = add("C");
    EXPECT_EQ(find("A"), nullptr);
    EXPECT_EQ(find("B"), b);
    EXPECT_EQ(find("C"), c);
}

TEST_F(MaterialIndexTest, ARenamedMaterialIsNotFoundByItsOldName) {
    Entity *a = add("A");
    EXPECT_EQ(find("A"), a);
    EntityEditor::setValue(a, Name_t, "Z");
    EXPECT_EQ(find("A"), nullptr);
    EXPECT_EQ(find("Z"), a);
}

TEST_F(MaterialIndexTest, AnotherListIsAnotherSearch) {
    add("A");
    find("A");
    Model other(Velkin_Solver_Project_t);
    Entity *theirs =
        EntityEditor::createEntity(Material_t, other.root(), Materials_t, nullptr, true, true, false, "A");
    EXPECT_EQ(index.find(static_cast<const EntityList &>(*other.root()->readAttribute(Materials_t)), "A"),
              theirs);
}
