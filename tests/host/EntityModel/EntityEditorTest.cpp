// Creating, adding, copying, moving and deleting entities.
#include "ModelSupport.h"

#include <cmath>
#include <limits>

using namespace EntityModel;

namespace {

class Editor : public testing::Test {
protected:
    Editor() { UndoStack::instance().clear(); }

    Entity *at(const char *type) const { return sample[type]; }
    static EntityList &list(Entity *entity, const char *label) {
        return static_cast<EntityList &>(*entity->findAttribute(label));
    }

    SampleModel sample;
};

class NamingLoader : public LibraryInterface {
public:
    void setComponentTypes(const std::set<std::string> &) override {}
    void getMapping(std::string &, const std::string &, std::string &, MappingType &) override {}
    Entity *loadItem(const std::string &, const std::string &, bool, Attributes &, MappingType &) override {
        return nullptr;
    }
    LibraryItem *findItem(const std::string &, const std::string &, bool, Attributes &,
                          MappingType &) override {
        return nullptr;
    }
    bool supplyContent(Entity &entity) override {
        return supplies && entity.findAttribute(Description_t)->setFromString("from the library");
    }

    bool supplies = true;
};

} // namespace

TEST_F(Editor, CreateRefusesWhatCanNotBe) {
    const std::string before = sample.text();
    EXPECT_EQ(create(nullptr, "Holes", "PCB Hole"), nullptr);
    EXPECT_EQ(create(at("PCB"), "Holes", ""), nullptr);
    EXPECT_EQ(create(at("PCB"), "Holes", "Spoon"), nullptr);
    EXPECT_EQ(create(at("PCB"), "Spoons", "PCB Hole"), nullptr);
    EXPECT_EQ(create(at("PCB"), "Holes", "Via"), nullptr);
    EXPECT_EQ(create(at("PCB"), "Name", "Via"), nullptr);
    EXPECT_EQ(create(at("PCB"), "Conductor Material", "Material"), nullptr) << "a reference owns nothing";
    EXPECT_EQ(sample.text(), before);
    EXPECT_EQ(UndoStack::instance().numSteps(), 0u);
}

TEST_F(Editor, CreateNamesAppendsAndGivesNewIds) {
    Entity *const first = create(at("PCB"), "Vias", "Via", "island");
    Entity *const second = create(at("PCB"), "Vias", "Via", "island");
    std::string name;
    EXPECT_EQ(second->getName(name), "island");
    EXPECT_GT(second->getID().value(), first->getID().value());
    EXPECT_EQ(list(at("PCB"), "Vias").at(list(at("PCB"), "Vias").size() - 1), second);
    Entity *const front =
        EntityEditor::createEntity(Via_t, at("PCB"), Vias_t, nullptr, true, true, false, "f", 0);
    EXPECT_EQ(list(at("PCB"), "Vias").at(0), front);
}

TEST_F(Editor, CreateInAnOccupiedOwningLinkReplacesTheChild) {
    Entity *const socket = at("Daughter Board Socket");
    Entity *const old = create(socket, "Daughter Board", "PCB", "old");
    ASSERT_NE(old, nullptr);
    const std::string before = sample.text();
    Entity *const made = create(socket, "Daughter Board", "PCB", "new");
    EXPECT_EQ(getLinkedEntity(socket, Daughter_Board_t), made);
    ASSERT_TRUE(UndoStack::instance().undo()) << "one step";
    EXPECT_EQ(sample.text(), before);
    EXPECT_EQ(getLinkedEntity(socket, Daughter_Board_t), old);
}

TEST_F(Editor, LoaderSuppliesContent) {
    NamingLoader loader;
    Entity *const made = EntityEditor::createEntity(Component_t, at("PCB"), Components_t, &loader, true, true,
                                                    false, "U1", -1);
    EXPECT_EQ(textOf(made, Description_t), "from the library");
    loader.supplies = false;
    Entity *const plain = EntityEditor::createEntity(Component_t, at("PCB"), Components_t, &loader, true,
                                                     true, false, "U2", -1);
    ASSERT_NE(plain, nullptr);
    EXPECT_EQ(textOf(plain, Description_t), "");
}

TEST_F(Editor, AddToAReferenceSetsTheLinkAndMovesNothing) {
    Entity *const material = at("Material");
    EXPECT_TRUE(EntityEditor::addEntity(at("PCB"), Conductor_Material_t, material));
    EXPECT_EQ(getLinkedEntity(at("PCB"), Conductor_Material_t), material);
    EXPECT_EQ(material->getOwnerEntity(), sample.model.root());
    EXPECT_FALSE(EntityEditor::addEntity(at("PCB"), Conductor_Material_t, at("Via"))) << "wrong type";
    EXPECT_EQ(getLinkedEntity(at("PCB"), Conductor_Material_t), material);
    EXPECT_FALSE(EntityEditor::addEntity(nullptr, Conductor_Material_t, material));
    EXPECT_FALSE(EntityEditor::addEntity(at("PCB"), TypeRef("Nothing"), material));
    EXPECT_TRUE(EntityEditor::addEntity(at("PCB"), Conductor_Material_t, nullptr));
    EXPECT_EQ(getLinkedEntity(at("PCB"), Conductor_Material_t), nullptr);
}

TEST_F(Editor, AddTakesAnEntityWithoutOwner) {
    auto orphan = std::make_unique<Entity>(*Schema::instance().find(Component_t));
    Entity *const component = orphan.get();
    EXPECT_FALSE(EntityEditor::addEntity(at("PCB"), Vias_t, component)) << "wrong list";
    ASSERT_TRUE(EntityEditor::addEntity(at("PCB"), Components_t, orphan.release()));
    EXPECT_EQ(component->getOwnerEntity(), at("PCB"));
    EXPECT_NE(component->getID().value(), 0u);
    EXPECT_FALSE(EntityEditor::addEntity(at("Chassis"), Components_t, component)) << "it has an owner";
    EXPECT_FALSE(EntityEditor::addEntity(at("PCB"), Components_t, nullptr));
}

TEST_F(Editor, CopyIsDeepWithoutLocksAndWithNewIds) {
    Entity *const component = at("Component");
    set(component, "Width", "2 in");
    EntityEditor::addEntity(component, MaterialLink_t, at("Material"));
    component->findAttribute(Geometry_t)->setLocked(true);
    component->findAttribute(Width_t)->setLocked(true);
    EntityEditor::CopyMap copies;
    Entity *const copy = EntityEditor::copyEntity(component, at("PCB"), nullptr, false, &copies);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(textOf(copy, Width_t), "2 in");
    EXPECT_EQ(textOf(copy, Name_t), textOf(component, Name_t));
    EXPECT_EQ(getLinkedEntity(copy, MaterialLink_t), at("Material")) << "targets are kept, not copied";
    EXPECT_FALSE(copy->findAttribute(Geometry_t)->isLocked());
    EXPECT_FALSE(copy->findAttribute(Width_t)->isLocked());
    EXPECT_NE(copy->getID().value(), component->getID().value());
    EXPECT_EQ(copies.at(component), copy);
    std::vector<Entity *> originals, made;
    component->getChildEntities(originals);
    copy->getChildEntities(made);
    ASSERT_EQ(made.size(), originals.size());
    for (size_t i = 0; i < made.size(); ++i)
        EXPECT_EQ(copies.at(originals[i]), made[i]);
}

TEST_F(Editor, LinksWithinACopyLeadToTheCopies) {
    Entity *const trace = at("Trace");
    EntityEditor::addEntity(at("Trace Segment"), Start_Junction_t, at("Trace Junction"));
    EntityEditor::CopyMap copies;
    Entity *const copy = EntityEditor::copyEntity(trace, trace->getOwnerEntity(), nullptr, false, &copies);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(getLinkedEntity(copies.at(at("Trace Segment")), Start_Junction_t),
              copies.at(at("Trace Junction")));
}

TEST_F(Editor, CopyRefusesWhatCanNotBe) {
    EXPECT_EQ(EntityEditor::copyEntity(nullptr, at("PCB")), nullptr);
    EXPECT_EQ(EntityEditor::copyEntity(at("Via"), nullptr), nullptr);
    EXPECT_EQ(EntityEditor::copyEntity(at("Via"), at("Chassis")), nullptr);
}

TEST_F(Editor, CopyIntoItselfIsACopyOfWhatWasThere) {
    Entity *const group = at("Subcomponent Group");
    Entity *const substrate = at("Substrate");
    ASSERT_EQ(substrate->getOwnerEntity(), group);
    Entity *const copy = EntityEditor::copyEntity(group, substrate);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getOwnerEntity(), substrate);
    EXPECT_FALSE(list(substrate, "SubcomponentGroups").size() == 0);
}

TEST_F(Editor, MoveKeepsTheEntity) {
    Entity *const component = at("Component");
    const auto id = component->getID().value();
    ASSERT_TRUE(EntityEditor::moveEntity(component, at("PCB")));
    EXPECT_EQ(component->getOwnerEntity(), at("PCB"));
    EXPECT_EQ(component->getID().value(), id);
    auto *const link = static_cast<EntityLink *>(at("Chip Socket")->findAttribute(ComponentLink_t));
    ASSERT_TRUE(EntityEditor::moveEntity(component, at("Chip Socket"), link));
    EXPECT_EQ(link->target(), component);
    ASSERT_TRUE(EntityEditor::moveEntity(component, at("Chassis"))) << "and out again";
    EXPECT_EQ(link->target(), nullptr);
}

TEST_F(Editor, CopyAndMoveTakeAListByName) {
    Attribute *const ofBoard = at("PCB")->findAttribute(Vias_t);
    Attribute *const ofPart = at("Component")->findAttribute(Vias_t);
    Entity *const copy = EntityEditor::copyEntity(at("Via"), at("PCB"), ofBoard);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(list(at("PCB"), "Vias").at(list(at("PCB"), "Vias").size() - 1), copy);
    EXPECT_FALSE(EntityEditor::moveEntity(copy, at("Component"), ofBoard)) << "a list of another entity";
    EXPECT_FALSE(EntityEditor::moveEntity(copy, at("PCB"), at("PCB")->findAttribute(Holes_t))) << "no hole";
    EXPECT_FALSE(EntityEditor::moveEntity(copy, at("PCB"), at("PCB")->findAttribute(Name_t))) << "no list";
    ASSERT_TRUE(EntityEditor::moveEntity(copy, at("Component"), ofPart));
    EXPECT_EQ(copy->getOwnerEntity(), at("Component"));
}

TEST_F(Editor, MoveRefusesWhatCanNotBe) {
    const std::string before = sample.text();
    EXPECT_FALSE(EntityEditor::moveEntity(nullptr, at("PCB")));
    EXPECT_FALSE(EntityEditor::moveEntity(at("Via"), nullptr));
    EXPECT_FALSE(EntityEditor::moveEntity(at("Via"), at("Chassis")));
    EXPECT_FALSE(EntityEditor::moveEntity(at("Subcomponent Group"), at("Substrate"))) << "into itself";
    EXPECT_FALSE(EntityEditor::moveEntity(sample.model.root(), at("PCB")));
    Entity *const second = create(at("PCB"), "Components", "Component");
    Entity *const third = create(at("PCB"), "Components", "Component");
    EXPECT_TRUE(EntityEditor::moveEntity(second, at("Chip Socket")));
    EXPECT_FALSE(EntityEditor::moveEntity(third, at("Chip Socket"))) << "occupied";
    Entity orphan(*Schema::instance().find(PCB_t));
    EXPECT_FALSE(EntityEditor::moveEntity(third, &orphan)) << "outside every model";
    while (UndoStack::instance().undo()) {
    }
    EXPECT_EQ(sample.text(), before);
}

TEST_F(Editor, DeleteClearsLinksFromElsewhere) {
    EntityEditor::addEntity(at("PCB"), Conductor_Material_t, at("Material"));
    EntityEditor::addEntity(at("Component"), MaterialLink_t, at("Material"));
    const std::string before = sample.text();
    ASSERT_TRUE(EntityEditor::deleteEntity(at("Material")));
    EXPECT_EQ(getLinkedEntity(at("PCB"), Conductor_Material_t), nullptr);
    EXPECT_EQ(getLinkedEntity(at("Component"), MaterialLink_t), nullptr);
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(sample.text(), before);
    EXPECT_EQ(getLinkedEntity(at("PCB"), Conductor_Material_t), at("Material"));
}

TEST_F(Editor, DeleteRefusesTheRootAndNull) {
    EXPECT_FALSE(EntityEditor::deleteEntity(nullptr));
    EXPECT_FALSE(EntityEditor::deleteEntity(sample.model.root()));
    EXPECT_TRUE(EntityEditor::deleteEntities({}));
}

TEST_F(Editor, DeleteTakesChildrenAndDoubledNamesOnce) {
    Entity *const pcb = at("PCB");
    Entity *const hole = at("PCB Hole");
    EXPECT_TRUE(EntityEditor::deleteEntities({hole, pcb, hole, pcb}));
    EXPECT_EQ(list(at("Chassis"), "PCBs").size(), 0);
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(hole->getOwnerEntity(), pcb);
}

TEST_F(Editor, DeleteManyIsLinear) {
    const UndoStackDisabler disabler;
    Entity *const pcb = at("PCB");
    std::vector<Entity *> made;
    for (int i = 0; i < 100000; ++i) {
        made.push_back(create(pcb, "Holes", "PCB Hole"));
        EntityEditor::addEntity(create(pcb, "Components", "Component"), MaterialLink_t, at("Material"));
    }
    EXPECT_TRUE(EntityEditor::deleteEntities(made));
    EXPECT_TRUE(EntityEditor::deleteEntity(at("Material")));
    EXPECT_EQ(list(pcb, "Holes").size(), 1);
}

TEST_F(Editor, LocksAndProtectionStopNothing) {
    Entity *const via = at("Via");
    via->protect("");
    via->setLocked(true);
    via->findAttribute(Diameter_t)->setLocked(true);
    EXPECT_TRUE(via->isProtected());
    EXPECT_TRUE(via->isLocked());
    EXPECT_TRUE(set(via, "Diameter", "9 mm"));
    EXPECT_TRUE(EntityEditor::deleteEntity(via));
}

TEST_F(Editor, NumbersOfAListAreTakenAsTheirTextIs) {
    struct Row {
        std::vector<double> values;
        const char *units, *text;
        bool isTaken;
    };
    const double infinity = std::numeric_limits<double>::infinity();
    const Row rows[] = {{{1.5, -2.0}, "in", "1.5,-2 <in>", true},
                        {{1.5, -2.0}, " MM ", "1.5,-2 < MM >", true},
                        {{1.5}, "", "1.5 <>", true},
                        {{1.5}, "  ", "1.5 <  >", true},
                        {{1.5}, "kg", "1.5 <kg>", false},
                        {{1.5}, "in>", "1.5 <in>>", false},
                        {{1.0, infinity}, "mm", "1,inf <mm>", false},
                        {{std::nan("")}, "mm", "nan <mm>", false}};
    for (const Row &row : rows) {
        Entity *const byNumbers = EntityEditor::createEntity(PCB_t, at("Chassis"), AttributePath("PCBs"));
        Entity *const byText = EntityEditor::createEntity(PCB_t, at("Chassis"), AttributePath("PCBs"));
        for (Entity *pcb : {byNumbers, byText})
            ASSERT_TRUE(EntityEditor::setValue(pcb, Outline_t, "7,8 <cm>"));
        EXPECT_EQ(EntityEditor::setValue(byNumbers, Outline_t, row.values, row.units), row.isTaken)
            << row.text;
        EXPECT_EQ(EntityEditor::setValue(byText, Outline_t, row.text), row.isTaken) << row.text;
        EXPECT_TRUE(byNumbers->findAttribute(Outline_t)->sameValue(byText->findAttribute(Outline_t)));
    }
}

TEST_F(Editor, NumbersOfAListGoToNothingElseAndCanBeUndone) {
    Entity *const pcb = EntityEditor::createEntity(PCB_t, at("Chassis"), AttributePath("PCBs"));
    const std::vector<double> values{1.0, 2.0};
    EXPECT_FALSE(EntityEditor::setValue(nullptr, Outline_t, values, "mm"));
    EXPECT_FALSE(EntityEditor::setValue(pcb, "No Such", values, "mm"));
    EXPECT_FALSE(EntityEditor::setValue(pcb, Width_t, values, "mm"));
    EXPECT_FALSE(EntityEditor::setValue(pcb, Name_t, values, "mm"));
    ASSERT_TRUE(EntityEditor::setValue(pcb, Outline_t, values, "mm"));
    const auto &outline = static_cast<const DoubleListAttribute &>(*pcb->readAttribute(Outline_t));
    EXPECT_EQ(outline.values(), values);
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_TRUE(outline.values().empty());
    ASSERT_TRUE(UndoStack::instance().redo());
    EXPECT_EQ(outline.values(), values);
}

TEST_F(Editor, AncestorsAreNearestFirstAndNotOneself) {
    EXPECT_EQ(at("Substrate")->getAncestor(Substrate_t), nullptr);
    EXPECT_EQ(at("Substrate")->getAncestor(Subcomponent_Group_t), at("Subcomponent Group"));
    EXPECT_EQ(at("PCB Hole")->getAncestor(PCB_t), at("PCB"));
    EXPECT_EQ(at("PCB")->getAncestor(Substrate_t), nullptr);
}

TEST_F(Editor, BoundingEntityIsChassisThenTestChamber) {
    EXPECT_EQ(EntityFetcher::getBoundingEntity(at("PCB Hole")), at("Chassis"));
    EXPECT_EQ(EntityFetcher::getBoundingEntity(sample.model.root()), at("Chassis"));
    EXPECT_EQ(EntityFetcher::getBoundingEntity(nullptr), nullptr);
    EntityEditor::deleteEntity(at("Chassis"));
    EXPECT_EQ(EntityFetcher::getBoundingEntity(sample.model.root()), at("Test Chamber"));
    EntityEditor::deleteEntity(at("Test Chamber"));
    EXPECT_EQ(EntityFetcher::getBoundingEntity(sample.model.root()), nullptr);
    const Model chassis(Chassis_t);
    EXPECT_EQ(EntityFetcher::getBoundingEntity(create(chassis.root(), "PCBs", "PCB")), chassis.root());
    const Model board(PCB_t);
    EXPECT_EQ(EntityFetcher::getBoundingEntity(board.root()), nullptr);
}

TEST_F(Editor, ChildrenComeInTheOrderOfTheSchema) {
    std::vector<Entity *> children;
    at("PCB")->getChildEntities(children);
    std::vector<std::string> types;
    for (const Entity *child : children)
        types.push_back(child->getType().getLabel());
    EXPECT_EQ(types, (std::vector<std::string>{"PCB Hole", "Board Keepout", "Via", "Conductor Layer",
                                               "Dielectric Layer", "Resistor", "Capacitor", "Inductor",
                                               "Chip Socket", "Cable Socket", "Daughter Board Socket"}));
    children.clear();
    at("PCB")->getOwnedChildEntitiesOfType(children, Via_t, false, true);
    EXPECT_EQ(children, std::vector<Entity *>{at("Via")});
    at("PCB")->getOwnedChildEntitiesOfType(children, Via_t, false, true);
    EXPECT_EQ(children.size(), 2u) << "appended";
}

TEST_F(Editor, ModelOfAnUnknownTypeThrows) { EXPECT_THROW(Model(TypeRef("Spoon")), std::invalid_argument); }
