// What the editor's files share; not for others.
#pragma once

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Undo.h"

#include <memory>
#include <optional>

namespace EntityModel {

// Makes an edit of several records one step where no step is open.
class EditScope {
public:
    EditScope();

private:
    std::optional<UndoStackOpener> opener_;
};

// The attribute as an owner of children, or null.
ChildHolder *asHolder(Attribute *attribute);

// Where a child of this type goes under `parent`: into `where`, which must be a list or owning link of it, or
// without it into the first attribute of the schema that takes the type. Null if there is none.
ChildHolder *holderFor(Entity &parent, Attribute *where, const Type &childType);

// Puts an entity into its holder and records it.
Entity *insertAndRecord(ChildHolder &holder, int index, std::unique_ptr<Entity> entity);

} // namespace EntityModel
