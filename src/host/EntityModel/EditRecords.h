// Undo records of edits that change the tree.
#pragma once

#include "host/EntityModel/Undo.h"

#include <utility>

namespace EntityModel {

// A child that was put into or taken out of its holder. Holds the child while the model does not.
class PresenceRecord : public UndoRecord {
public:
    // The child is in the holder now.
    PresenceRecord(ChildHolder &holder, Entity *child, int index)
        : holder_(holder), child_(child), index_(index), wasInserted_(true) {}

    // The child was taken out.
    PresenceRecord(ChildHolder &holder, std::unique_ptr<Entity> child, int index)
        : holder_(holder), child_(child.get()), held_(std::move(child)), index_(index), wasInserted_(false) {}

    void undo() override { wasInserted_ ? takeOut() : putBack(); }
    void redo() override { wasInserted_ ? putBack() : takeOut(); }

private:
    // After edits that were not recorded the child may have gone, or its place be taken: then it stays where
    // it is.
    void takeOut() {
        int index = 0;
        std::unique_ptr<Entity> taken = holder_.removeChild(child_, index);
        if (!taken) return;
        held_ = std::move(taken);
        index_ = index;
    }
    void putBack() {
        if (held_ && holder_.canTake(held_->getType())) holder_.insertChild(index_, std::move(held_));
    }

    ChildHolder &holder_;
    Entity *child_;
    std::unique_ptr<Entity> held_;
    int index_;
    bool wasInserted_;
};

// Several children taken out of one list at once.
class RemovalRecord : public UndoRecord {
public:
    RemovalRecord(EntityList &list, std::unordered_set<const Entity *> children,
                  std::vector<EntityList::Placed> held)
        : list_(list), children_(std::move(children)), held_(std::move(held)) {}

    void undo() override { list_.insertChildren(std::exchange(held_, {})); }
    void redo() override {
        for (EntityList::Placed &placed : list_.removeChildren(children_))
            held_.push_back(std::move(placed));
    }

private:
    EntityList &list_;
    std::unordered_set<const Entity *> children_;
    std::vector<EntityList::Placed> held_;
};

class MoveRecord : public UndoRecord {
public:
    MoveRecord(Entity *child, ChildHolder &from, int fromIndex, ChildHolder &to, int toIndex)
        : child_(child), from_(from), fromIndex_(fromIndex), to_(to), toIndex_(toIndex) {}

    void undo() override { move(to_, toIndex_, from_, fromIndex_); }
    void redo() override { move(from_, fromIndex_, to_, toIndex_); }

private:
    void move(ChildHolder &source, int &sourceIndex, ChildHolder &target, int targetIndex) {
        if (child_->holder() != &source || !target.canTake(child_->getType())) return;
        target.insertChild(targetIndex, source.removeChild(child_, sourceIndex));
    }

    Entity *child_;
    ChildHolder &from_;
    int fromIndex_;
    ChildHolder &to_;
    int toIndex_;
};

} // namespace EntityModel
