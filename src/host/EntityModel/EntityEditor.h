// Every change to a model goes through here and is recorded for undo.
#pragma once

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/LibraryInterface.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace EntityModel {

// The flags of these operations are accepted for the interface and have no meaning in this host.
//
// Nothing that data can cause throws, with one exception: setValueWithUnits throws std::out_of_range for an
// unknown unit or a number that the attribute cannot take. Everything else answers false or null, and then
// the model stays as it was. Locks and protection never stop an edit.
//
// A link never leads from one model into another, or into a library. What enters a model, by any operation
// here, keeps its links within itself and to that model. A link to a material elsewhere then leads to the
// model's own material of that name, which is copied from there if need be into the "Materials" of the top
// of the tree. Where the top has no such list, and for links to other things, the link is cleared.
class EntityEditor {
public:
    using CopyMap = std::map<const Entity *, Entity *>;

    // A new child of `type` in the list or owning link `where` of `parent`, with the schema's default
    // children, at `index` (-1 appends). Its "Name" is `name`, which need not be unique. `loader`, if given,
    // supplies the content. An owning link's old child is deleted first. Null when the parent is null, the
    // type is empty or unknown, the attribute is missing, or it does not take the type.
    static Entity *createEntity(const TypeRef &type, Entity *parent, const AttributePath &where,
                                LibraryInterface *loader = nullptr, bool = true, bool = true, bool = false,
                                const std::string &name = std::string(), int index = -1);

    // In a list or owning link: puts an entity without owner, made by a library, there and takes ownership;
    // one that was in a model before, and now belongs to an undo step, is refused. In a reference link: sets
    // the link and leaves the child where it is (null clears it); one of another model is refused.
    static bool addEntity(Entity *parent, const AttributePath &where, Entity *child, bool = false,
                          bool = true, bool = true, bool = true, bool = false, int index = -1);

    // A deep copy under `parent`, in `where` (a list or owning link of it) or the first that takes it:
    // values, links (their targets are kept, or their copies when copied along), children, names; not the
    // locks. The copies have new ids. `copied`, if given, receives original and copy of each entity.
    static Entity *copyEntity(Entity *entity, Entity *parent, Attribute *where = nullptr, bool = false,
                              CopyMap *copied = nullptr);

    // A deep copy without owner, as copyEntity makes it, for addEntity. Links that leave the copied tree keep
    // their targets until the copy enters a model.
    static std::unique_ptr<Entity> cloneEntity(const Entity &entity);

    // Gives an entity that is outside every model the values, links and children of another of its type, in
    // place of its own. A name that it has stays. False, and nothing changed, when the types differ or the
    // entity is in a model.
    static bool copyContent(const Entity &from, Entity &to);

    // Moves an entity under a new parent: into `where` (a list or owning link of it), or else the first that
    // takes the type. Refused into an occupied owning link, into itself, into an orphan outside every model,
    // and from one model into another.
    static bool moveEntity(Entity *entity, Entity *newParent, Attribute *where = nullptr, bool = false,
                           int index = -1);

    struct Move {
        Entity *entity;
        Entity *newParent;
    };
    // Moves many entities of one model, each as moveEntity does without `where`, in one pass over each list
    // that they leave. Refused, besides what moveEntity refuses: a place that was occupied before the call or
    // by an earlier one of these, an entity named again, and a new parent in one of the entities. Who owns an
    // entity then tells whether it moved.
    static void moveEntities(const std::vector<Move> &moves);

    // Deletes the entity with all below it; reference links elsewhere that point into it are cleared.
    static bool deleteEntity(Entity *entity, bool = false, bool = true);
    static bool deleteEntities(const std::vector<Entity *> &entities, bool = false, bool = true);

    // Sets a value from text, which may carry a unit or be a list.
    static bool setValue(Entity *entity, const AttributePath &path, const std::string &text, bool = true,
                         std::vector<Entity *> *affected = nullptr, bool = true, bool = true);
    static bool setValue(Entity *entity, const AttributePath &path, const char *text, bool = true,
                         std::vector<Entity *> *affected = nullptr, bool = true);

    // Sets a number in the attribute's own unit, or a list of integers.
    static bool setValue(Entity *entity, const AttributePath &path, double value, bool = true);
    static bool setValue(Entity *entity, const AttributePath &path, int value, bool = true);
    static bool setValue(Entity *entity, const AttributePath &path, const std::vector<int> &values,
                         bool = true);

    // Sets a list of numbers given in `units`, as its text form would; empty means the own unit it has. False
    // for an unknown unit and for numbers that are not finite.
    static bool setValue(Entity *entity, const AttributePath &path, std::vector<double> values,
                         const std::string &units, bool = true);

    // Sets a number given in the quantity's standard unit; the own unit stays.
    static bool setSIValue(Entity *entity, const AttributePath &path, double value, bool = true);

    // Sets a number given in `units`, which becomes the own unit; empty means the own unit it has. False if
    // the attribute is missing. Throws std::out_of_range as told above.
    static bool setValueWithUnits(Entity *entity, const AttributePath &path, double value,
                                  const std::string &units, bool = true);

    // The same as their namesakes.
    static bool setValueNoThrow(Entity *entity, const AttributePath &path, const std::string &text,
                                bool = true);
    static bool setValueNoThrow(Entity *entity, const AttributePath &path, double value, bool = true);
    static bool setSIValueNoThrow(Entity *entity, const AttributePath &path, double value, bool = true);

private:
    static std::unique_ptr<Entity> makeEntity(const EntityType &type, const std::string &name);
    static void assignIds(Entity &entity);
    static void finishCopies(const CopyMap &copies);
    static void adoptLinks(Entity &entering, const Entity &parent);
};

class EntityFetcher {
public:
    // The entity that bounds the project of `entity`: climbs to the Velkin Solver Project (or takes `entity`
    // if it is one) and gives its Chassis, else its Test Chamber, else null. Without a project above: the top
    // entity if it is a Chassis or a Test Chamber, else null.
    static Entity *getBoundingEntity(const Entity *entity);
};

} // namespace EntityModel
