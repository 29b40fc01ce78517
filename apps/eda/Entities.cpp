// Looking through the entities of a model.
#include "Entities.h"

#include "Failure.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"
#include "Printable.h"

#include <functional>

namespace EDATool {

using namespace EntityModel;

namespace {

// Parents before their children, without recursion: a model may be nested as deeply as its file.
void visitEntities(const Model &model, const std::function<void(Entity &)> &visit) {
    std::vector<Entity *> waiting;
    if (model.root() != nullptr) waiting.push_back(model.root());
    while (!waiting.empty()) {
        Entity *const entity = waiting.back();
        waiting.pop_back();
        visit(*entity);
        std::vector<Entity *> children;
        entity->getChildEntities(children);
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
}

std::string designatorOf(const Entity &board) { return textOf(board, Reference_Designator_t); }

std::string listOf(const std::vector<Entity *> &boards) {
    std::string list;
    for (const Entity *board : boards)
        list += (list.empty() ? "" : ", ") + inQuotes(designatorOf(*board));
    return list;
}

std::vector<Entity *> findPackages(const Model &model) {
    std::vector<Entity *> packages;
    visitEntities(model, [&packages](Entity &entity) {
        if (entity.getType() == Component_t) packages.push_back(&entity);
    });
    return packages;
}

Entity *choose(const std::vector<Entity *> &boards, const std::string &file, const std::string &designator) {
    if (boards.empty()) throw DesignFailure(inQuotes(file) + ": the model has no board");
    if (designator.empty() && boards.size() > 1) {
        throw UsageFailure(inQuotes(file) +
                           " has several boards; choose one with --board: " + listOf(boards));
    }
    for (Entity *board : boards) {
        if (designator.empty() || designatorOf(*board) == designator) return board;
    }
    throw UsageFailure(inQuotes(file) + " has no board " + inQuotes(designator) +
                       "; its boards: " + listOf(boards));
}

} // namespace

EntityCounts countEntities(const Model &model) {
    EntityCounts counts;
    visitEntities(model, [&counts](Entity &entity) { ++counts[entity.getType().getLabel()]; });
    return counts;
}

std::vector<Entity *> findBoards(const Model &model) {
    std::vector<Entity *> boards;
    visitEntities(model, [&boards](Entity &entity) {
        if (entity.getType() == PCB_t || entity.getType() == Substrate_t) boards.push_back(&entity);
    });
    return boards;
}

Entity *findBoard(const Model &model, const std::string &file, const std::string &designator) {
    return choose(findBoards(model), file, designator);
}

Entity *findBoardOrPackage(const Model &model, const std::string &file, const std::string &designator) {
    const std::vector<Entity *> boards = findBoards(model);
    return choose(boards.empty() ? findPackages(model) : boards, file, designator);
}

std::unique_ptr<Model> loadModel(const std::string &file) {
    std::string error;
    std::unique_ptr<Model> model = ModelFile::load(file, error);
    if (!model) throw DesignFailure(printable(error));
    return model;
}

std::string textOf(const Entity &entity, const AttributePath &path) {
    const Attribute *const attribute = entity.readAttribute(path);
    std::string text;
    return attribute != nullptr ? attribute->getString(text) : text;
}

} // namespace EDATool
