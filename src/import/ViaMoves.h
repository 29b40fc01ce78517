// Vias that go into the parts they belong to.
#pragma once

#include "host/EntityModel/Entity.h"

#include <cstddef>
#include <string>
#include <vector>

namespace EDA {

// Collects the vias that an import makes on its board, and at the end moves those of parts into their parts,
// all at once: to build solid parts and to take children out of a list costs as much for one as for many.
//
// The result is that of moving each as soon as it is made, numbers in names included: "Via 3" is the third of
// the list that it came into, as the list was then.
class ViaMoves {
public:
    // `board` is what the vias are made on, and may be null.
    explicit ViaMoves(EntityModel::Entity *board) : board_(board) {}

    // Name of the next via of the board that has none of its own.
    std::string numberedName() const;

    // The entities that one definition became, in order. `part` is what they go into, or null. `numbered` is
    // the one of them that has a name by `numberedName`, or null: then all have names of their own.
    void add(const std::vector<EntityModel::Entity *> &vias, EntityModel::Entity *part,
             EntityModel::Entity *numbered);

    // Moves what can move: without a builder of parts, without solid parts of both, and into a part that
    // keeps no vias, a via stays on the board, where it was put.
    void make();

private:
    struct Definition {
        std::size_t end; // of its entities, which begin where those of the one before end
        EntityModel::Entity *part;
        EntityModel::Entity *numbered;
        int listSize; // of the board's list when it was made, nothing having left it
    };

    template <typename Visit> void forEach(const Visit &visit) const;
    void renumber() const;

    EntityModel::Entity *board_;
    std::vector<EntityModel::Entity *> vias_;
    std::vector<Definition> definitions_;
};

} // namespace EDA
