// The user's preferences: option entities per format and global choices, kept on disk.
#pragma once

#include "host/EntityModel/Model.h"

#include <memory>
#include <string>

namespace EntityModel {

// One store a process, read from the configuration folder at first use. A file that cannot be read or is no
// valid preferences file counts as absent; loadError() then tells why.
class UserPreference {
public:
    static UserPreference &instance();

    // The preference entity of `type` whose attribute `nameType` has the text `name`; made on first use when
    // `create` is set. `created`, if given, tells whether it was made now. Null when absent or the type is no
    // preference type. Making it is no undo step.
    Entity *getPreference(const Type &type, const Type &nameType, const std::string &name, bool create,
                          bool *created);

    // The entity of the global choices ("Global Units" and others).
    Entity *getPreferences();

    // The file on disk, which need not exist; empty when the system names no folder for it.
    static std::string fileName();

    // Writes the preferences to disk. False with `error` naming the file and the reason.
    bool save(std::string &error) const;
    const std::string &loadError() const { return loadError_; }

    // Forgets what is in memory and reads the file again at the next use. Entities given out before die, and
    // the calling thread's undo steps with them.
    void reload();

private:
    UserPreference() = default;
    Entity *root();

    std::unique_ptr<Model> model_;
    std::string loadError_;
};

class UserPreferencesProxy {
public:
    // A choice of the global preferences, or `defaultValue` if absent.
    static Type typeValue(const AttributePath &path, Type defaultValue);
};

} // namespace EntityModel
