// Which entity stands where.
#include "ModelSupport.h"

#include <set>
#include <tuple>

using namespace EntityModel;

TEST(SchemaContainment, EveryPlaceTakesItsType) {
    for (const Place &place : places()) {
        const SampleModel sample; // A new one each time: the child of an owning link is replaced.
        Entity *const made = create(sample[place.parent], place.list, place.child, "x");
        ASSERT_NE(made, nullptr) << place.parent << " / " << place.list << " / " << place.child;
        EXPECT_EQ(made->getType().getLabel(), place.child);
        EXPECT_EQ(made->getOwnerEntity()->getType().getLabel(), place.parent);
    }
}

TEST(SchemaContainment, EveryOtherPairGivesNull) {
    std::set<std::tuple<std::string, std::string, std::string>> allowed;
    std::set<std::string> lists{"Name",         "Geometry",       "Shape",
                                "MaterialLink", "Start Junction", "No Such List"};
    for (const Place &place : places()) {
        allowed.insert({place.parent, place.list, place.child});
        lists.insert(place.list);
    }
    const SampleModel sample;
    const std::string before = sample.text();
    size_t refused = 0;
    for (const auto &parent : sample.entities()) {
        for (const std::string &list : lists) {
            for (const auto &type : Schema::instance().types()) {
                const std::string &child = type->type().getLabel();
                if (allowed.count({parent.first, list, child}) > 0) continue;
                ++refused;
                ASSERT_EQ(create(parent.second, list.c_str(), child.c_str()), nullptr)
                    << parent.first << " / " << list << " / " << child;
            }
        }
    }
    EXPECT_GT(refused, 50000u);
    EXPECT_EQ(sample.text(), before);
}

TEST(SchemaContainment, EveryDesignTypeCanBeReachedFromAProject) {
    const SampleModel sample;
    for (const auto &type : Schema::instance().types()) {
        const std::string &label = type->type().getLabel();
        if (label == "User Preferences" || label == "EDA Import Options") continue;
        EXPECT_EQ(sample.entities().count(label), 1u) << label;
    }
    EXPECT_EQ(sample.entities().size() + 2, Schema::instance().types().size());
}

TEST(SchemaContainment, NewSubcomponentGroupHasOneObstruction) {
    const SampleModel sample;
    Entity *const group = create(sample["Component"], "SubcomponentGroups", "Subcomponent Group", "g");
    std::vector<Entity *> children;
    group->getChildEntities(children);
    ASSERT_EQ(children.size(), 1u);
    std::string name;
    EXPECT_EQ(children[0]->getName(name), "Obstruction 1");
    EXPECT_EQ(children[0]->getType(), Solid_Obstruction_t);
    EXPECT_NE(children[0]->getID().value(), group->getID().value());
}

TEST(SchemaContainment, OtherNewEntitiesHaveNoChildrenAndNoTargets) {
    for (const Place &place : places()) {
        const SampleModel sample;
        Entity *const made = create(sample[place.parent], place.list, place.child);
        std::vector<Entity *> children;
        made->getChildEntities(children);
        EXPECT_EQ(children.size(), made->getType() == Subcomponent_Group_t ? 1u : 0u) << place.child;
        for (const auto &def : made->entityType().attributes()) {
            if (def->kind != AttributeKind::ReferenceLink) continue;
            EXPECT_EQ(getLinkedEntity(made, TypeRef(def->type)), nullptr) << place.child;
        }
    }
}

TEST(SchemaContainment, FirstListThatTakesTheTypeIsChosen) {
    const SampleModel sample;
    Entity *const socket = create(sample["PCB"], "Chip Sockets", "Chip Socket");
    Entity *const component = create(sample["PCB"], "Components", "Component");
    ASSERT_TRUE(EntityEditor::moveEntity(component, socket));
    EXPECT_EQ(getLinkedEntity(socket, ComponentLink_t), component);
    Entity *const second = create(sample["PCB"], "Components", "Component");
    EXPECT_FALSE(EntityEditor::moveEntity(second, socket)) << "the link is occupied";
    EXPECT_FALSE(EntityEditor::moveEntity(second, sample["Resistor"])) << "no list takes it";
    EXPECT_EQ(second->getOwnerEntity(), sample["PCB"]);
}
