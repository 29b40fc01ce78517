// Ownership of child entities, and references between entities.
#include "host/EntityModel/ChildAttributes.h"

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"

#include <algorithm>
#include <utility>

namespace EntityModel {

EntityList::~EntityList() {
    for (Entity *child : children_)
        delete child;
}

Entity *EntityList::childAt(int index) const {
    return index >= 0 && index < size() ? children_[static_cast<size_t>(index)] : nullptr;
}

bool EntityList::canTake(const Type &childType) const { return definition()->takesChild(childType); }

bool EntityList::isDefault() const { return children_.empty() && !isLocked() && !getFlag(); }

void EntityList::clear() { EntityEditor::deleteEntities(children_); }

void EntityList::insertChild(int index, std::unique_ptr<Entity> child) {
    child->setHolder(this);
    const bool append = index < 0 || index >= size();
    children_.insert(append ? children_.end() : children_.begin() + index, child.get());
    child.release();
}

std::unique_ptr<Entity> EntityList::removeChild(Entity *child, int &index) {
    // From the back: what is taken away again is most often what came last.
    for (index = size() - 1; index >= 0; --index) {
        if (children_[static_cast<size_t>(index)] != child) continue;
        children_.erase(children_.begin() + index);
        child->setHolder(nullptr);
        return std::unique_ptr<Entity>(child);
    }
    return nullptr;
}

std::vector<EntityList::Placed>
EntityList::removeChildren(const std::unordered_set<const Entity *> &removed) {
    // Found from the back, for the reason above; nothing before the first of them is touched.
    size_t first = children_.size();
    for (size_t found = 0; first > 0 && found < removed.size();)
        found += removed.count(children_[--first]);
    std::vector<Placed> taken;
    size_t kept = first;
    for (size_t i = first; i < children_.size(); ++i) {
        Entity *child = children_[i];
        if (removed.count(child) == 0) {
            children_[kept++] = child;
            continue;
        }
        child->setHolder(nullptr);
        taken.push_back({static_cast<int>(i), std::unique_ptr<Entity>(child)});
    }
    children_.resize(kept);
    return taken;
}

void EntityList::insertChildren(std::vector<Placed> children) {
    if (children.empty()) return;
    const size_t first = std::min(static_cast<size_t>(children.front().index), children_.size());
    const std::vector<Entity *> others(children_.begin() + static_cast<std::ptrdiff_t>(first),
                                       children_.end());
    children_.resize(first);
    auto other = others.begin();
    for (Placed &placed : children) {
        while (other != others.end() && children_.size() < static_cast<size_t>(placed.index)) {
            children_.push_back(*other++);
        }
        placed.child->setHolder(this);
        children_.push_back(placed.child.release());
    }
    children_.insert(children_.end(), other, others.end());
}

OwningLink::OwningLink(const AttributeDef *def, Entity *owner) : EntityLink(def, owner) {}

OwningLink::~OwningLink() = default;

bool OwningLink::canTake(const Type &childType) const {
    return !child_ && definition()->takesChild(childType);
}

bool OwningLink::isDefault() const { return !child_ && !isLocked() && !getFlag(); }

void OwningLink::insertChild(int, std::unique_ptr<Entity> child) {
    child->setHolder(this);
    child_ = std::move(child);
}

std::unique_ptr<Entity> OwningLink::removeChild(Entity *child, int &index) {
    index = 0;
    if (child_.get() != child) return nullptr;
    child->setHolder(nullptr);
    return std::move(child_);
}

ReferenceLink::ReferenceLink(const ReferenceLink &other) : EntityLink(other) {
    if (other.target_) relink(other.target_);
}

ReferenceLink::~ReferenceLink() {
    if (target_) relink(nullptr);
}

void ReferenceLink::relink(Entity *target) {
    if (target_) {
        auto &referrers = *target_->referrers_;
        referrers.back()->place_ = place_;
        std::swap(referrers[place_], referrers.back());
        referrers.pop_back();
    }
    target_ = target;
    if (!target) return;
    if (!target->referrers_) target->referrers_ = std::make_unique<std::vector<ReferenceLink *>>();
    place_ = target->referrers_->size();
    target->referrers_->push_back(this);
}

bool ReferenceLink::setTarget(Entity *target) {
    if (target && !definition()->takesChild(target->getType())) return false;
    relink(target);
    return true;
}

bool ReferenceLink::isDefault() const { return !target_ && !isLocked() && !getFlag(); }

bool ReferenceLink::sameValue(const Attribute *other) const {
    return other && other->kind() == kind() && static_cast<const ReferenceLink *>(other)->target_ == target_;
}

Attribute *ReferenceLink::clone() const { return new ReferenceLink(*this); }

void ReferenceLink::swapValue(Attribute &other) {
    Attribute::swapValue(other);
    auto &link = static_cast<ReferenceLink &>(other);
    Entity *const mine = target_;
    relink(link.target_);
    link.relink(mine);
}

} // namespace EntityModel
