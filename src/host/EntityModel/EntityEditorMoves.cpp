// Moving many entities at once.
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/EntityEditorDetail.h"
#include "host/EntityModel/Model.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace EntityModel {

namespace {

struct Moved {
    Entity *child;
    ChildHolder *from;
    int fromIndex; // In the list as it was before the first of all these moves.
    ChildHolder *to;
};

// Takes all out before it puts any in, so that the places of those that leave one list are told of one state
// of it.
class MovesRecord : public UndoRecord {
public:
    explicit MovesRecord(std::vector<Moved> moves) : moves_(std::move(moves)) {}

    void undo() override;
    void redo() override;

private:
    using ByChild = std::unordered_map<const Entity *, EntityList::Placed>;
    ByChild takeOut() const;

    std::vector<Moved> moves_;
};

// After edits that were not recorded a child may be elsewhere: then it stays there.
MovesRecord::ByChild MovesRecord::takeOut() const {
    std::unordered_map<EntityList *, std::unordered_set<const Entity *>> leaving;
    ByChild taken;
    for (const Moved &move : moves_) {
        if (move.child->holder() != move.from || !move.to->canTake(move.child->getType())) continue;
        if (auto *const list = dynamic_cast<EntityList *>(move.from)) {
            leaving[list].insert(move.child);
        } else {
            int index = 0;
            taken[move.child] = {0, move.from->removeChild(move.child, index)};
        }
    }
    for (auto &[list, children] : leaving) {
        for (EntityList::Placed &placed : list->removeChildren(children)) {
            const Entity *const child = placed.child.get();
            taken[child] = std::move(placed);
        }
    }
    return taken;
}

void MovesRecord::redo() {
    ByChild taken = takeOut();
    for (Moved &move : moves_) {
        const auto found = taken.find(move.child);
        if (found == taken.end()) continue;
        move.fromIndex = found->second.index;
        move.to->insertChild(-1, std::move(found->second.child));
    }
}

void MovesRecord::undo() {
    std::unordered_map<EntityList *, std::vector<EntityList::Placed>> returning;
    for (auto move = moves_.rbegin(); move != moves_.rend(); ++move) {
        if (move->child->holder() != move->to) continue;
        auto *const list = dynamic_cast<EntityList *>(move->from);
        if (!list && !move->from->canTake(move->child->getType())) continue;
        int index = 0;
        std::unique_ptr<Entity> child = move->to->removeChild(move->child, index);
        if (list) {
            returning[list].push_back({move->fromIndex, std::move(child)});
        } else {
            move->from->insertChild(0, std::move(child));
        }
    }
    for (auto &[list, children] : returning) {
        std::sort(children.begin(), children.end(),
                  [](const auto &a, const auto &b) { return a.index < b.index; });
        list->insertChildren(std::move(children));
    }
}

// Decides which moves are made, in their order.
class Admission {
public:
    explicit Admission(const std::vector<EntityEditor::Move> &moves) {
        for (const EntityEditor::Move &move : moves)
            named_.insert(move.entity);
    }

    // Where the entity goes, or null.
    ChildHolder *admit(const EntityEditor::Move &move) {
        Entity *const entity = move.entity;
        // The root of a model has no other place.
        if (!entity || !move.newParent || !entity->getOwnerEntity() || entity->isHeldByStep()) return nullptr;
        Model *const model = move.newParent->model();
        if (!model || entity->model() != model || isInOneNamed(move.newParent)) return nullptr;
        ChildHolder *const to = holderFor(*move.newParent, nullptr, entity->getType());
        if (!to || !to->canTake(entity->getType()) || moved_.count(entity) > 0) return nullptr;
        const bool isList = dynamic_cast<EntityList *>(to) != nullptr;
        if (!isList && !taken_.insert(to).second) return nullptr;
        moved_.insert(entity);
        return to;
    }

private:
    bool isInOneNamed(const Entity *entity) const {
        for (; entity; entity = entity->getOwnerEntity()) {
            if (named_.count(entity) > 0) return true;
        }
        return false;
    }

    std::unordered_set<const Entity *> named_;
    std::unordered_set<const Entity *> moved_;
    std::unordered_set<const ChildHolder *> taken_; // Owning links.
};

} // namespace

void EntityEditor::moveEntities(const std::vector<Move> &moves) {
    Admission admission(moves);
    std::vector<Moved> admitted;
    for (const Move &move : moves) {
        ChildHolder *const to = admission.admit(move);
        if (to) admitted.push_back({move.entity, move.entity->holder(), 0, to});
    }
    if (admitted.empty()) return;
    UndoStack &undo = UndoStack::instance();
    if (!undo.isRecording()) undo.noteUnrecordedRemoval();
    auto record = std::make_unique<MovesRecord>(std::move(admitted));
    record->redo();
    undo.add(std::move(record));
}

} // namespace EntityModel
