// Undo and redo: after each, the model's text is what it was.
#include "ModelSupport.h"

#include <functional>
#include <random>

using namespace EntityModel;

namespace {

class Undo : public testing::Test {
protected:
    Undo() { stack().clear(); }

    static UndoStack &stack() { return UndoStack::instance(); }
    Entity *at(const char *type) const { return sample[type]; }

    // Does, undoes, redoes and undoes again, and compares the text each time.
    void expectOneStep(const std::function<void()> &edit) {
        const std::string before = sample.text();
        edit();
        const std::string after = sample.text();
        EXPECT_NE(after, before);
        for (int round = 0; round < 2; ++round) {
            EXPECT_TRUE(stack().undo());
            EXPECT_EQ(sample.text(), before);
            EXPECT_TRUE(stack().redo());
            EXPECT_EQ(sample.text(), after);
        }
        EXPECT_TRUE(stack().undo());
        EXPECT_EQ(sample.text(), before);
    }

    SampleModel sample;
};

// Random edits of a model; what is picked depends on the generator alone.
class RandomEdits {
public:
    RandomEdits(Model &model, unsigned seed) : model_(model), random_(seed) {}

    void edit() {
        std::vector<Entity *> all{model_.root()};
        for (size_t i = 0; i < all.size(); ++i)
            all[i]->getChildEntities(all);
        Entity *const one = pick(all);
        Entity *const other = pick(all);
        switch (random_() % 10) {
        case 0:
        case 1:
        case 2:
            return createIn(*one);
        case 3:
        case 4:
            return setValueOf(*one);
        case 5:
            return linkSomething(*one, all);
        case 6:
            EntityEditor::moveEntity(one, other);
            return;
        case 7:
            EntityEditor::deleteEntities({one, other});
            return;
        case 8:
            if (all.size() < 400) EntityEditor::copyEntity(one, other);
            return;
        default:
            return resizeList(*one);
        }
    }

private:
    template <typename Item> Item pick(const std::vector<Item> &items) {
        return items[random_() % items.size()];
    }

    const AttributeDef &pickDef(const Entity &entity) {
        const auto &defs = entity.entityType().attributes();
        return *defs[random_() % defs.size()];
    }

    void createIn(Entity &entity) {
        for (int tries = 0; tries < 20; ++tries) {
            const AttributeDef &def = pickDef(entity);
            if (def.childTypes.empty() || def.kind == AttributeKind::ReferenceLink) continue;
            const std::string name = "n" + std::to_string(random_() % 100);
            EntityEditor::createEntity(TypeRef(pick(def.childTypes)), &entity, TypeRef(def.type), nullptr,
                                       true, true, false, name, static_cast<int>(random_() % 4) - 1);
            return;
        }
    }

    void setValueOf(Entity &entity) {
        const std::string values[] = {"1 mm", "2.5 in", "Yes", "No",       "Polygon", "3",
                                      "1,2",  "",       "-1",  "Detailed", "1 W",     "7,8 <in>"};
        for (int tries = 0; tries < 10; ++tries) {
            const AttributePath path(TypeRef(pickDef(entity).type));
            if (EntityEditor::setValue(&entity, path, values[random_() % std::size(values)])) return;
        }
    }

    void linkSomething(Entity &entity, const std::vector<Entity *> &all) {
        for (int tries = 0; tries < 20; ++tries) {
            const AttributeDef &def = pickDef(entity);
            if (def.kind != AttributeKind::ReferenceLink) continue;
            Entity *target = nullptr;
            for (Entity *candidate : all) {
                if (def.takesChild(candidate->getType()) && (!target || random_() % 3 == 0))
                    target = candidate;
            }
            EntityEditor::addEntity(&entity, TypeRef(def.type), target);
            return;
        }
    }

    void resizeList(Entity &entity) {
        if (entity.getType() != PCB_Conductor_t) return createIn(entity);
        const UndoStackOpener both("Resize and set");
        auto *const holes = static_cast<ListAttribute *>(entity.findAttribute(Outline_Holes_t));
        holes->resize(static_cast<int>(random_() % 4));
        EntityEditor::setValue(&entity, AttributePath("Hole 1"), "1,2 <mm>");
    }

    Model &model_;
    std::mt19937 random_;
};

} // namespace

TEST_F(Undo, SettingValuesOfEveryKind) {
    expectOneStep([&] { set(at("PCB"), "Name", "x"); });
    expectOneStep([&] { set(at("PCB"), "Width", "2 in"); });
    expectOneStep([&] { set(at("PCB"), "Shape", "Polygon"); });
    expectOneStep([&] { set(at("Via"), "Plated", "No"); });
    expectOneStep([&] { set(at("Via"), "Number Of Vias", "4"); });
    expectOneStep([&] { set(at("PCB"), "Outline", "1,2 <in>"); });
    expectOneStep([&] { EntityEditor::setValue(at("PCB"), Width_t, 7.0); });
    expectOneStep([&] { EntityEditor::setValue(at("Via"), Number_Of_Vias_t, 7); });
    expectOneStep([&] { EntityEditor::setSIValue(at("PCB"), Width_t, 7.0); });
    expectOneStep([&] { EntityEditor::setValueWithUnits(at("PCB"), Width_t, 7.0, "in"); });
    expectOneStep([&] {
        EntityEditor::setValue(at("Conductor Layer"), MaterialMap_t, std::vector<int>{1, 2});
    });
    expectOneStep([&] { EntityEditor::setSIValue(at("Material"), Density_t / AttributePath(Value_t), 2.0); });
    expectOneStep([&] { EntityEditor::addEntity(at("PCB"), Conductor_Material_t, at("Material")); });
}

TEST_F(Undo, ElementsOfAttributeLists) {
    Entity *const conductor = at("PCB Conductor");
    auto &holes = static_cast<ListAttribute &>(*conductor->findAttribute(Outline_Holes_t));
    expectOneStep([&] { holes.resize(2); });
    holes.resize(3);
    expectOneStep([&] { set(conductor, "Hole 2", "1,2 <mm>"); });
    set(conductor, "Hole 2", "1,2 <mm>");
    expectOneStep([&] { holes.resize(1); });
    EXPECT_EQ(holes.at(1)->getOwnerEntity(), conductor);
}

TEST_F(Undo, TreeEdits) {
    expectOneStep([&] { create(at("PCB"), "Holes", "PCB Hole", "h"); });
    expectOneStep([&] { create(at("Component"), "SubcomponentGroups", "Subcomponent Group", "g"); });
    expectOneStep([&] { create(sample.model.root(), "Chassis", "Chassis", "replaces the old one"); });
    expectOneStep([&] { EntityEditor::copyEntity(at("Component"), at("PCB")); });
    expectOneStep([&] { EntityEditor::moveEntity(at("Component"), at("Chip Socket")); });
    expectOneStep([&] { EntityEditor::deleteEntity(at("PCB")); });
    expectOneStep([&] { EntityEditor::deleteEntities({at("Via"), at("Component"), at("PCB Hole")}); });
    expectOneStep([&] { static_cast<EntityList &>(*at("PCB")->findAttribute(Holes_t)).clear(); });
    expectOneStep([&] {
        EntityEditor::addEntity(at("PCB"), Components_t, new Entity(*Schema::instance().find(Component_t)));
    });
}

TEST_F(Undo, MovesWithinOneListKeepTheirPlaces) {
    Entity *const pcb = at("PCB");
    Entity *const first = at("PCB Hole");
    create(pcb, "Holes", "PCB Hole", "b");
    create(pcb, "Holes", "PCB Hole", "c");
    expectOneStep([&] { EntityEditor::moveEntity(first, pcb); });
    expectOneStep([&] { EntityEditor::moveEntity(first, pcb, nullptr, false, 1); });
}

TEST_F(Undo, ScatteredDeletionsComeBackInTheirPlaces) {
    Entity *const pcb = at("PCB");
    std::vector<Entity *> holes;
    for (int i = 0; i < 10; ++i)
        holes.push_back(create(pcb, "Holes", "PCB Hole", std::to_string(i)));
    expectOneStep([&] { EntityEditor::deleteEntities({holes[9], holes[0], holes[4], holes[5]}); });
}

TEST_F(Undo, OpenerMakesOneStepOfItsName) {
    expectOneStep([&] {
        const UndoStackOpener opener("Import Board");
        set(at("PCB"), "Width", "1 in");
        Entity *const hole = create(at("PCB"), "Holes", "PCB Hole");
        set(hole, "Width", "3 mm");
        EntityEditor::deleteEntity(at("Via"));
    });
    ASSERT_TRUE(stack().redo());
    EXPECT_EQ(stack().undoName(), "Import Board");
}

TEST_F(Undo, NestedOpenersJoinTheOuterStep) {
    expectOneStep([&] {
        const UndoStackOpener outer("Outer");
        set(at("PCB"), "Width", "1 in");
        {
            const UndoStackOpener inner("Inner");
            set(at("PCB"), "Depth", "1 in");
        }
        set(at("PCB"), "Name", "x");
    });
    ASSERT_TRUE(stack().redo());
    EXPECT_EQ(stack().undoName(), "Outer");
}

TEST_F(Undo, DisablerInsideAnOpenerStillBelongsToTheStep) {
    expectOneStep([&] {
        const UndoStackOpener opener("Import");
        set(at("PCB"), "Width", "1 in");
        const UndoStackDisabler disabler;
        Entity *const component = create(at("PCB"), "Components", "Component");
        EntityEditor::addEntity(component, MaterialLink_t, at("Material"));
        set(at("PCB"), "Depth", "1 in");
        EntityEditor::deleteEntity(at("PCB Hole"));
    });
}

TEST_F(Undo, DisabledEditsMakeNoStep) {
    set(at("PCB"), "Width", "1 in");
    {
        const UndoStackDisabler disabler;
        set(at("PCB"), "Depth", "1 in");
        create(at("PCB"), "Holes", "PCB Hole");
    }
    EXPECT_EQ(stack().numSteps(), 1u);
    ASSERT_TRUE(stack().undo());
    EXPECT_EQ(textOf(at("PCB"), Width_t), "100 mm");
    EXPECT_EQ(textOf(at("PCB"), Depth_t), "1 in");
}

TEST_F(Undo, EmptyOpenerMakesNoStep) {
    {
        const UndoStackOpener opener("Nothing");
        set(at("PCB"), "Width", "-1 mm");
    }
    EXPECT_EQ(stack().numSteps(), 0u);
    EXPECT_FALSE(stack().undo());
    EXPECT_FALSE(stack().redo());
    EXPECT_EQ(stack().undoName(), "");
}

TEST_F(Undo, NoUndoWhileAStepIsOpen) {
    set(at("PCB"), "Width", "1 in");
    const UndoStackOpener opener("Open");
    EXPECT_FALSE(stack().undo());
    EXPECT_FALSE(stack().canUndo());
}

TEST_F(Undo, NewEditDropsWhatWasUndone) {
    set(at("PCB"), "Width", "1 in");
    set(at("PCB"), "Width", "2 in");
    stack().undo();
    set(at("PCB"), "Depth", "3 in");
    EXPECT_FALSE(stack().redo());
    EXPECT_EQ(stack().numSteps(), 2u);
}

TEST_F(Undo, OldestStepsAreDropped) {
    for (size_t i = 0; i < UndoStack::maxSteps + 5; ++i)
        set(at("PCB"), "Width", std::to_string(i + 1) + " mm");
    EXPECT_EQ(stack().numSteps(), UndoStack::maxSteps);
    while (stack().undo()) {
    }
    EXPECT_EQ(textOf(at("PCB"), Width_t), "5 mm");
}

TEST_F(Undo, DeletedEntityLivesWhileAStepHoldsIt) {
    Entity *const via = at("Via");
    set(via, "Diameter", "9 mm");
    EntityEditor::deleteEntity(via);
    stack().undo();
    EXPECT_EQ(textOf(via, Diameter_t), "9 mm");
    EXPECT_EQ(via->getOwnerEntity(), at("PCB"));
    stack().undo();
    EXPECT_EQ(textOf(via, Diameter_t), "0.3 mm");
}

TEST_F(Undo, CreatedAndDeletedInOneStep) {
    expectOneStep([&] {
        const UndoStackOpener opener("Import");
        Entity *const group = create(at("Component"), "SubcomponentGroups", "Subcomponent Group", "g");
        static_cast<EntityList &>(*group->findAttribute(Obstructions_t)).clear();
        Entity *const hole = create(at("PCB"), "Holes", "PCB Hole");
        set(hole, "Width", "1 in");
        EntityEditor::deleteEntity(hole);
        Entity *const material = create(sample.model.root(), "Materials", "Material", "m");
        EntityEditor::addEntity(at("PCB"), Conductor_Material_t, material);
        EntityEditor::addEntity(at("Component"), MaterialLink_t, material);
        EntityEditor::deleteEntity(material);
    });
}

TEST_F(Undo, NewEntityLinkedFromAnOldOne) {
    expectOneStep([&] {
        const UndoStackOpener opener("Import");
        Entity *const material = create(sample.model.root(), "Materials", "Material", "m");
        EntityEditor::addEntity(at("PCB"), Conductor_Material_t, material);
        Entity *const component = create(at("PCB"), "Components", "Component");
        EntityEditor::addEntity(component, MaterialLink_t, material);
        EntityEditor::moveEntity(component, at("Chip Socket"));
    });
}

TEST_F(Undo, LongRandomRunsComeBackStepByStep) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        stack().clear();
        Model model;
        create(create(model.root(), "Chassis", "Chassis"), "PCBs", "PCB");
        create(model.root(), "Materials", "Material");
        stack().clear();
        RandomEdits edits(model, seed);
        std::vector<std::string> texts{ModelFile::toText(model)};
        while (stack().numSteps() < 150) {
            edits.edit();
            ASSERT_LE(stack().numSteps(), texts.size()) << "seed " << seed;
            if (stack().numSteps() == texts.size()) texts.push_back(ModelFile::toText(model));
            ASSERT_EQ(ModelFile::toText(model), texts.back()) << "an edit without a step, seed " << seed;
        }
        for (size_t i = texts.size(); i-- > 1;) {
            ASSERT_EQ(ModelFile::toText(model), texts[i]) << "seed " << seed << ", step " << i;
            ASSERT_TRUE(stack().undo());
        }
        ASSERT_EQ(ModelFile::toText(model), texts[0]) << "seed " << seed;
        for (size_t i = 1; i < texts.size(); ++i) {
            ASSERT_TRUE(stack().redo());
            ASSERT_EQ(ModelFile::toText(model), texts[i]) << "redo, seed " << seed << ", step " << i;
        }
    }
}

TEST_F(Undo, RandomEditsInOneStepComeBackAtOnce) {
    for (unsigned seed = 101; seed <= 140; ++seed) {
        Model model;
        create(create(model.root(), "Chassis", "Chassis"), "PCBs", "PCB");
        create(model.root(), "Materials", "Material");
        stack().clear();
        RandomEdits edits(model, seed);
        const std::string before = ModelFile::toText(model);
        {
            const UndoStackOpener opener("Many");
            for (int i = 0; i < 120; ++i)
                edits.edit();
        }
        const std::string after = ModelFile::toText(model);
        ASSERT_NE(after, before);
        for (int round = 0; round < 2; ++round) {
            ASSERT_TRUE(stack().undo());
            ASSERT_EQ(ModelFile::toText(model), before) << "seed " << seed;
            ASSERT_TRUE(stack().redo());
            ASSERT_EQ(ModelFile::toText(model), after) << "seed " << seed;
        }
    }
}
