// Random edits with undo and redo: every step must restore the model exactly, and nothing may dangle.
#include "ModelSupport.h"

#include <deque>
#include <functional>
#include <random>
#include <set>

using namespace EntityModel;

namespace {

// Edits a model at random.
class RandomEditor {
public:
    // Begins with an entity of every type, so that every kind of edit finds something to act on.
    explicit RandomEditor(unsigned seed) : random_(seed) {
        for (const Place &place : places()) {
            Entity *const parent = anyOf(place.parent);
            create(parent, place.list, place.child);
        }
    }

    int below(size_t limit) { return static_cast<int>(random_() % limit); }

    std::vector<Entity *> all() const {
        std::vector<Entity *> found{model.root()};
        for (size_t i = 0; i < found.size(); ++i)
            found[i]->getChildEntities(found);
        return found;
    }
    Entity *any() {
        const auto entities = all();
        return entities[static_cast<size_t>(below(entities.size()))];
    }

    // False when the edit was refused; then nothing may have changed.
    bool editOnce() {
        const bool isLarge = all().size() > 200;
        switch (isLarge ? 9 + below(3) : below(12)) {
        case 0:
        case 1:
        case 2:
            return createOne();
        case 3:
            return moveOrCopy(true);
        case 4:
            return moveOrCopy(false);
        case 5:
        case 6:
            return link();
        case 7:
        case 8:
            return setSome();
        case 9:
            return EntityEditor::deleteEntity(any());
        case 10:
            return EntityEditor::deleteEntities({any(), any(), any()});
        default:
            return clearSome();
        }
    }

    Model model;

private:
    Entity *anyOf(const char *type) {
        std::vector<Entity *> fitting;
        for (Entity *entity : all()) {
            if (entity->getType() == TypeRef(type)) fitting.push_back(entity);
        }
        return fitting.empty() ? nullptr : fitting[static_cast<size_t>(below(fitting.size()))];
    }

    bool moveOrCopy(bool isMove) {
        const Place &place = places()[static_cast<size_t>(below(places().size()))];
        Entity *const child = anyOf(place.child);
        Entity *const parent = anyOf(place.parent);
        if (isMove) return EntityEditor::moveEntity(child, parent, nullptr, false, below(4) - 1);
        return EntityEditor::copyEntity(child, parent) != nullptr;
    }

    bool createOne() {
        const Place &place = places()[static_cast<size_t>(below(places().size()))];
        Entity *const parent = anyOf(place.parent);
        if (!parent) return false;
        const std::string name = std::to_string(below(1000));
        return EntityEditor::createEntity(TypeRef(place.child), parent, AttributePath(place.list), nullptr,
                                          true, true, false, name, below(4) - 1) != nullptr;
    }

    const AttributeDef *someAttribute(const Entity &entity, const std::set<AttributeKind> &kinds) {
        std::vector<const AttributeDef *> fitting;
        for (const auto &def : entity.entityType().attributes()) {
            if (kinds.count(def->kind) > 0) fitting.push_back(def.get());
        }
        return fitting.empty() ? nullptr : fitting[static_cast<size_t>(below(fitting.size()))];
    }

    bool link() {
        Entity *const entity = any();
        const AttributeDef *const def = someAttribute(*entity, {AttributeKind::ReferenceLink});
        if (!def) return false;
        std::vector<Entity *> targets{nullptr};
        for (Entity *target : all()) {
            if (def->takesChild(target->getType())) targets.push_back(target);
        }
        Entity *const target = targets[static_cast<size_t>(below(targets.size()))];
        return EntityEditor::addEntity(entity, AttributePath(TypeRef(def->type)), target);
    }

    bool setSome() {
        Entity *const entity = any();
        const AttributeDef *const def =
            someAttribute(*entity, {AttributeKind::Text, AttributeKind::Number, AttributeKind::YesNo,
                                    AttributeKind::DoubleList, AttributeKind::AttributeList});
        if (!def) return false;
        const AttributePath path{TypeRef(def->type)};
        switch (def->kind) {
        case AttributeKind::Text:
            return EntityEditor::setValue(entity, path, std::to_string(below(99)));
        case AttributeKind::Number:
            return EntityEditor::setValue(entity, path, double(below(99)));
        case AttributeKind::YesNo:
            return EntityEditor::setValue(entity, path, below(2) ? "Yes" : "No");
        case AttributeKind::DoubleList:
            return EntityEditor::setValue(entity, path, std::to_string(below(9)) + ",2");
        default:
            return resizeOrFill(entity, *def);
        }
    }

    bool resizeOrFill(Entity *entity, const AttributeDef &def) {
        auto &list = static_cast<ListAttribute &>(*entity->findAttribute(TypeRef(def.type)));
        const int size = below(4);
        if (below(2) == 0 && size != list.size()) {
            list.resize(size);
            return true;
        }
        const std::string label = def.elementLabel + ' ' + std::to_string(1 + below(3));
        return EntityEditor::setValue(entity, AttributePath(label), std::to_string(below(9)) + ",1");
    }

    bool clearSome() {
        Entity *const entity = any();
        const AttributeDef *const def = someAttribute(*entity, {AttributeKind::EntityList});
        if (!def) return false;
        auto &list = static_cast<EntityList &>(*entity->findAttribute(TypeRef(def->type)));
        if (list.size() == 0) return false;
        list.clear();
        return true;
    }

    std::mt19937 random_;
};

// Walks the whole model: owners, ids and link targets.
void expectSound(const RandomEditor &editor) {
    std::set<std::uint64_t> ids;
    for (Entity *entity : editor.all()) {
        EXPECT_EQ(entity->model(), &editor.model);
        EXPECT_NE(entity->getID().value(), 0u);
        EXPECT_TRUE(ids.insert(entity->getID().value()).second);
        std::vector<Entity *> children;
        entity->getChildEntities(children);
        for (Entity *child : children)
            EXPECT_EQ(child->getOwnerEntity(), entity);
        std::string name;
        entity->forEachStored([&name](const Attribute &attribute) {
            if (attribute.kind() != AttributeKind::ReferenceLink) return;
            if (Entity *target = static_cast<const ReferenceLink &>(attribute).target())
                target->getName(name);
        });
    }
}

// The texts that undo and redo must bring back.
class History {
public:
    explicit History(RandomEditor &editor) : editor_(editor) { states_.push_back(text()); }

    std::string text() const { return ModelFile::toText(editor_.model); }

    void step() {
        const std::string before = text();
        ASSERT_EQ(before, states_[place_]);
        bool isChange = false;
        if (editor_.below(3) == 0) {
            const UndoStackOpener outer("outer");
            const int edits = 1 + editor_.below(8);
            for (int i = 0; i < edits; ++i)
                isChange |= nestedEdit();
        } else {
            isChange = editor_.editOnce();
        }
        if (!isChange) {
            ASSERT_EQ(text(), before);
            return;
        }
        states_.resize(place_ + 1);
        states_.push_back(text());
        if (states_.size() > UndoStack::maxSteps + 1) states_.pop_front();
        place_ = states_.size() - 1;
    }

    void undo() {
        ASSERT_EQ(UndoStack::instance().undo(), place_ > 0);
        if (place_ > 0) --place_;
        ASSERT_EQ(text(), states_[place_]);
    }

    void redo() {
        ASSERT_EQ(UndoStack::instance().redo(), place_ + 1 < states_.size());
        if (place_ + 1 < states_.size()) ++place_;
        ASSERT_EQ(text(), states_[place_]);
    }

private:
    bool nestedEdit() {
        switch (editor_.below(3)) {
        case 0: {
            const UndoStackOpener inner("inner");
            return editor_.editOnce();
        }
        case 1: {
            const UndoStackDisabler disabler;
            return editor_.editOnce();
        }
        default:
            return editor_.editOnce();
        }
    }

    RandomEditor &editor_;
    std::deque<std::string> states_;
    size_t place_ = 0;
};

void runHistory(unsigned seed, int steps, int undoShare) {
    SCOPED_TRACE(seed);
    RandomEditor editor(seed);
    UndoStack::instance().clear();
    History history(editor);
    for (int i = 0; i < steps && !testing::Test::HasFatalFailure(); ++i) {
        const int choice = editor.below(100);
        if (choice < undoShare) {
            history.undo();
        } else if (choice < 2 * undoShare - 2) {
            history.redo();
        } else {
            history.step();
        }
        if (i % 50 == 0) expectSound(editor);
    }
    // All the way back and forth.
    while (UndoStack::instance().canUndo() && !testing::Test::HasFatalFailure())
        history.undo();
    while (UndoStack::instance().canRedo() && !testing::Test::HasFatalFailure())
        history.redo();
    expectSound(editor);
}

} // namespace

TEST(UndoStress, EveryStepRestoresTheModelExactly) {
    for (unsigned seed = 1; seed <= 12 && !HasFatalFailure(); ++seed)
        runHistory(seed, 250, 22);
}

TEST(UndoStress, StepsBeyondTheLimitAreForgottenAndTheOthersStillRestore) {
    runHistory(77, 2600, 5);
    EXPECT_LE(UndoStack::instance().numSteps(), UndoStack::maxSteps);
}

TEST(UndoStress, UnrecordedEditsInBetweenLeaveTheModelSound) {
    for (unsigned seed = 1; seed <= 25; ++seed) {
        SCOPED_TRACE(seed);
        RandomEditor editor(seed);
        for (int i = 0; i < 250; ++i) {
            switch (editor.below(6)) {
            case 0:
                UndoStack::instance().undo();
                break;
            case 1:
                UndoStack::instance().redo();
                break;
            case 2: {
                const UndoStackDisabler disabler;
                editor.editOnce();
                break;
            }
            case 3: {
                const UndoStackDisabler disabler;
                const UndoStackOpener opener("not recorded");
                editor.editOnce();
                editor.editOnce();
                break;
            }
            default:
                editor.editOnce();
            }
            if (i % 25 == 0) expectSound(editor);
        }
        while (UndoStack::instance().undo()) {
        }
        while (UndoStack::instance().redo()) {
        }
        expectSound(editor);
        UndoStack::instance().clear();
        expectSound(editor);
    }
}
