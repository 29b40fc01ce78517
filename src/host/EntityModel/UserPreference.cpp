// The user's preferences and their file.
#include "host/EntityModel/UserPreference.h"

#include "host/EntityModel/ModelFile.h"
#include "host/FileSystem/Directory.h"
#include "host/FileSystem/File.h"
#include "host/FileSystem/OSPaths.h"

namespace EntityModel {

namespace {

const TypeRef &rootType() {
    static const TypeRef type("User Preferences");
    return type;
}

EntityList *listThatTakes(Entity &root, const Type &type) {
    for (const auto &def : root.entityType().attributes()) {
        if (def->kind != AttributeKind::EntityList || !def->takesChild(type)) continue;
        return &static_cast<EntityList &>(root.attribute(*def));
    }
    return nullptr;
}

Entity *findNamed(const EntityList &list, const Type &type, const AttributePath &path,
                  const std::string &name) {
    std::string text;
    for (Entity *entity : list) {
        const Attribute *const attribute = entity->getType() == type ? entity->readAttribute(path) : nullptr;
        if (attribute && attribute->getString(text) == name) return entity;
    }
    return nullptr;
}

} // namespace

std::string UserPreference::fileName() {
    const std::string folder = FileSystem::OSPaths::getConfigurationFolder();
    return folder.empty() ? folder : folder + "/preferences.json";
}

UserPreference &UserPreference::instance() {
    // Never destroyed: readers may ask for options while the process ends.
    static UserPreference *const store = new UserPreference;
    return *store;
}

Entity *UserPreference::root() {
    if (model_) return model_->root();
    const std::string file = fileName();
    if (FileSystem::File::exists(file)) {
        model_ = ModelFile::load(file, loadError_);
        if (model_ && model_->root()->getType() != rootType()) {
            loadError_ = file + ": is not a preferences file";
            model_.reset();
        }
    }
    if (!model_) model_ = std::make_unique<Model>(rootType());
    return model_->root();
}

// Preferences are no part of a design: nothing here becomes an undo step.
Entity *UserPreference::getPreference(const Type &type, const Type &nameType, const std::string &name,
                                      bool create, bool *created) {
    if (created) *created = false;
    Entity &top = *root();
    EntityList *const list = listThatTakes(top, type);
    if (!list) return nullptr;
    const AttributePath path{TypeRef(nameType)};
    if (Entity *const found = findNamed(*list, type, path, name)) return found;
    if (!create) return nullptr;
    auto entity = std::make_unique<Entity>(*Schema::instance().find(type));
    Attribute *const attribute = entity->findAttribute(path);
    if (!attribute || !attribute->setFromString(name)) return nullptr;
    Entity *const made = entity.get();
    model_->assignIds(*made);
    list->insertChild(-1, std::move(entity));
    if (created) *created = true;
    return made;
}

Entity *UserPreference::getPreferences() { return root(); }

bool UserPreference::save(std::string &error) const {
    error.clear();
    if (!model_) return true;
    const std::string file = fileName();
    if (file.empty()) {
        error = "preferences.json: the system names no folder for the user's preferences";
        return false;
    }
    FileSystem::Directory::create(FileSystem::OSPaths::getConfigurationFolder());
    return ModelFile::save(*model_, file, error);
}

void UserPreference::reload() {
    model_.reset();
    loadError_.clear();
}

Type UserPreferencesProxy::typeValue(const AttributePath &path, Type defaultValue) {
    return getTypeValue(UserPreference::instance().getPreferences(), path, TypeRef(defaultValue));
}

} // namespace EntityModel
