// Looking through the entities of a model.
#pragma once

#include "host/EntityModel/Model.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace EDATool {

using EntityCounts = std::map<std::string, std::size_t>;

// Every entity of the model, the root included, by the label of its type.
EntityCounts countEntities(const EntityModel::Model &model);

// The boards of the model: every entity of type PCB or Substrate, in the order of the tree.
std::vector<EntityModel::Entity *> findBoards(const EntityModel::Model &model);

// The one board that is meant: that with this reference designator, or the only one where it is empty. Throws
// UsageFailure, naming the designators, when there is a choice; DesignFailure when there is no such board.
EntityModel::Entity *findBoard(const EntityModel::Model &model, const std::string &file,
                               const std::string &designator);

// The same of what a picture can be made of: in a model without a board, the components that stand by
// themselves, as an import of a package leaves them.
EntityModel::Entity *findBoardOrPackage(const EntityModel::Model &model, const std::string &file,
                                        const std::string &designator);

// Loads a model file. Throws DesignFailure.
std::unique_ptr<EntityModel::Model> loadModel(const std::string &file);

// The value of an attribute as text, empty where there is none.
std::string textOf(const EntityModel::Entity &entity, const EntityModel::AttributePath &path);

} // namespace EDATool
